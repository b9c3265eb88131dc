#include "examples/generator/example_device_tree.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "examples/generator/gamut_table.h"
#include "formats/decimal_list.h"
#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "formats/merge_caps.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::example {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = VEXA_EXAMPLE_DEVICE_ROOT;
const std::string kPanel = VEXA_EXAMPLE_PANEL;

std::string ReadText(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

Json::Value ParseText(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << text.substr(0, 200);
  return value;
}

Json::Value DeviceFile(const std::string& dir, const std::string& stem) {
  return ParseText(ReadText(kRoot / dir / (stem + "_" + kPanel + ".json")));
}

Json::Value Unpack(const Json::Value& hex) {
  std::string text;
  DecodeData(hex, text);
  return ParseText(text);
}

std::vector<uint32_t> Numbers(const Json::Value& list) {
  const std::string text = list.asString();
  std::vector<uint32_t> values;
  EXPECT_TRUE(ParseDecimalList(text, std::count(text.begin(), text.end(), ',') + 1, &values));
  return values;
}

std::vector<uint32_t> ArrayNumbers(const Json::Value& array) {
  std::vector<uint32_t> values;
  for (const Json::Value& v : array) values.push_back(v.asUInt());
  return values;
}

// The largest distance of a gamut table's outputs from its inputs, over all grid points.
uint32_t MaxDistanceFromIdentity(const std::vector<uint32_t>& outputs) {
  uint32_t worst = 0;
  for (uint32_t i = 0; i < kGamutEntries; ++i) {
    const uint32_t levels[3] = {GamutGridLevel(i % 17), GamutGridLevel(i / 17 % 17),
                                GamutGridLevel(i / 289)};
    for (int c = 0; c < 3; ++c) {
      const uint32_t out = outputs[3 * i + c];
      worst = std::max(worst, out > levels[c] ? out - levels[c] : levels[c] - out);
    }
  }
  return worst;
}

class ExampleDeviceTreeTest : public ::testing::Test {
 protected:
  Json::Value factory_ = DeviceFile("mnt/vendor/persist/display", "factory_calib_data");
  Json::Value calibration_ = DeviceFile("vendor/etc/display", "vexa_calib_data");
  Json::Value rules_ = DeviceFile("vendor/etc/display", "vexa_merge_rules");
};

TEST_F(ExampleDeviceTreeTest, FilesStandWhereTheDeviceLooksForThem) {
  EXPECT_EQ(factory_["Version"], 2);
  EXPECT_EQ(calibration_["Version"], 3);
  const Json::Value& floor = factory_[kPanel]["factory_floor"];
  EXPECT_EQ(floor["Applicability"]["RenderIntent"], 384);
  EXPECT_TRUE(floor["PostBlendGamut"].isString());  // packed
  EXPECT_EQ(calibration_[kPanel].size(), 5u);
  for (const Json::Value* file : {&factory_, &calibration_, &rules_}) {
    EXPECT_FALSE(file->isMember("@panel"));
  }
  // The library writes its merge-version file here.
  const fs::path data = kRoot / "data/vendor/display";
  EXPECT_TRUE(fs::is_directory(data));
  EXPECT_EQ(access(data.c_str(), W_OK), 0);
}

TEST_F(ExampleDeviceTreeTest, SharedGammaTablesAreMonotonicFullRangeCurves) {
  const Json::Value& common = calibration_["Common"];
  const struct {
    const char* group;
    const char* table;
    size_t entries;
    uint32_t top;
  } cases[] = {
      {"PostBlendIGC", "srgb", 257, 4095},
      {"PostBlendIGC", "gamma22", 257, 4095},
      {"PostBlendGC", "srgb", 1024, 1023},
      {"PostBlendGC", "gamma22", 1024, 1023},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.group) + " " + c.table);
    const Json::Value group = Unpack(common[c.group]);
    EXPECT_EQ(group["numEntries"].asUInt(), c.entries);
    const std::vector<uint32_t> values = Numbers(group["Predefined"][c.table]);
    ASSERT_EQ(values.size(), c.entries);
    EXPECT_EQ(values.front(), 0u);
    EXPECT_EQ(values.back(), c.top);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
  }
  // Gamma 2.2 is darker than sRGB in the shadows once linearised.
  const Json::Value igc = Unpack(common["PostBlendIGC"]);
  EXPECT_LT(Numbers(igc["Predefined"]["gamma22"])[16], Numbers(igc["Predefined"]["srgb"])[16]);
}

TEST_F(ExampleDeviceTreeTest, SrgbGamutIsNearIdentityAndP3IsNot) {
  const Json::Value gamut = Unpack(calibration_["Common"]["PostBlendGamut"]);
  EXPECT_EQ(gamut["numEntries"].asUInt(), kGamutEntries);
  const std::vector<uint32_t> srgb = Numbers(gamut["Custom"]["srgb"]);
  const std::vector<uint32_t> p3 = Numbers(gamut["Custom"]["p3"]);
  ASSERT_EQ(srgb.size(), 3 * kGamutEntries);
  ASSERT_EQ(p3.size(), 3 * kGamutEntries);
  // The panel is close to sRGB: small corrections only, white and black exact.
  EXPECT_LE(MaxDistanceFromIdentity(srgb), 100u);  // 2.4 % of full scale
  const size_t white = 3 * (kGamutEntries - 1);
  for (int c = 0; c < 3; ++c) {
    EXPECT_EQ(srgb[c], 0u);
    EXPECT_EQ(srgb[white + c], 4095u);
    EXPECT_EQ(p3[white + c], 4095u);
  }
  // P3 is wider than the panel: half red is pushed well beyond 2048 and full red is clipped.
  EXPECT_GT(MaxDistanceFromIdentity(p3), 400u);
  EXPECT_GT(p3[3 * 8], 2048u + 300u);
  EXPECT_EQ(p3[3 * 16 + 0], 4095u);
  EXPECT_EQ(p3[3 * 16 + 1], 0u);
  EXPECT_EQ(p3[3 * 16 + 2], 0u);
}

TEST_F(ExampleDeviceTreeTest, InlineFactoryTablesMatchTheSharedOnes) {
  const Json::Value& floor = factory_[kPanel]["factory_floor"];
  const Json::Value& common = calibration_["Common"];
  const Json::Value igc = Unpack(floor["PostBlendIGC"]);
  const Json::Value gc = Unpack(floor["PostBlendGC"]);
  EXPECT_EQ(ArrayNumbers(igc["lutR"]), Numbers(Unpack(common["PostBlendIGC"])["Predefined"]["srgb"]));
  EXPECT_EQ(ArrayNumbers(gc["lutB"]), Numbers(Unpack(common["PostBlendGC"])["Predefined"]["srgb"]));
  const Json::Value map_fine = Unpack(floor["PostBlendGamut"])["mapFine"];
  ASSERT_EQ(map_fine.size(), kGamutEntries);
  std::string joined;
  for (const Json::Value& entry : map_fine) joined += (joined.empty() ? "" : ",") + entry.asString();
  EXPECT_EQ(joined, Unpack(common["PostBlendGamut"])["Custom"]["srgb"].asString());
  const Json::Value pcc = Unpack(floor["PostBlendPCC"]);
  EXPECT_EQ(pcc["enable"], true);
  EXPECT_DOUBLE_EQ(pcc["R"]["r"].asDouble(), 1.0);  // red needs no cut on this bluish panel
  EXPECT_LT(pcc["B"]["b"].asDouble(), 1.0);
}

TEST_F(ExampleDeviceTreeTest, RulesCarryTheDeviceMergeVersions) {
  const Json::Value& panel = rules_[kPanel];
  EXPECT_EQ(panel["ModeMerge"], ParseText(ModeMergeVersionText())["ModeMerge"]);
  EXPECT_EQ(panel["MergedModes"].size(), 2u);
  EXPECT_EQ(panel["MergedModes"]["srgb_factory"]["ModeNameInputLeft"], "factory_floor");
}

TEST(ExampleDeviceTreeBuildTest, ReportsBrokenSources) {
  const fs::path sources = fs::path(VEXA_SOURCE_DIR) / "examples/panel";
  const struct {
    const char* file;      // replaced in a copy of the sources (empty text: removed)
    const char* contents;
    const char* message;
  } cases[] = {
      {"panel.json", "", "cannot read"},
      {"panel.json", R"({"name": ""})", "\"name\" must be a non-empty string"},
      {"panel.json", R"({"name": "p", "primaries": {"red": [0.6, 0.3]}})", "\"primaries\" needs"},
      {"panel.json",
       R"({"name": "p", "primaries": {"red": [0.3, 0.3], "green": [0.3, 0.3], "blue": [0.3, 0.3], "white": [0.3, 0.3]}})",
       "degenerate"},
      {"vexa_calib_data.json", "{", "vexa_calib_data.json is not valid JSON"},
      {"vexa_merge_rules.json", R"({"panel": {}})", "vexa_merge_rules.json: the root has no"},
      {"factory_calib_data.json", R"({"@panel": {"m": {"PostBlendGC": {"generate": "gc"}}}})",
       "/m/PostBlendGC: \"curve\" must be a string"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.file) + ": " + c.contents);
    const fs::path dir = fs::temp_directory_path() / ("vexa_tree_" + std::to_string(getpid()));
    fs::remove_all(dir);
    fs::create_directories(dir);
    fs::copy(sources, dir / "sources", fs::copy_options::recursive);
    fs::remove(dir / "sources" / c.file);
    if (*c.contents != '\0') std::ofstream(dir / "sources" / c.file) << c.contents;
    ExampleDeviceTree tree(dir / "sources", dir / "device");
    std::string error;
    EXPECT_FALSE(tree.Build(&error));
    EXPECT_NE(error.find(c.message), std::string::npos) << error;
    fs::remove_all(dir);
  }
}

}  // namespace
}  // namespace vexa::example
