// Checks the device tree that the build generated from examples/panel, by reading it back with
// the library's own hex decoding and number lists.
#include "examples/generator/example_device_tree.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "examples/generator/gamut_table.h"
#include "formats/decimal_list.h"
#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "formats/merge_caps.h"
#include "support/temp_dir.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::example {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = VEXA_EXAMPLE_DEVICE_ROOT;
const std::string kPanel = VEXA_EXAMPLE_PANEL;

Json::Value ParseText(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << text.substr(0, 200);
  return value;
}

Json::Value DeviceFile(const std::string& dir, const std::string& stem) {
  std::ifstream file(kRoot / dir / (stem + "_" + kPanel + ".json"));
  std::ostringstream text;
  text << file.rdbuf();
  return ParseText(text.str());
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

// The largest distance of a gamut table's outputs from its grid inputs.
uint32_t MaxDistanceFromIdentity(const std::vector<uint32_t>& outputs) {
  uint32_t worst = 0;
  for (uint32_t i = 0; i < 3 * kGamutEntries; ++i) {
    const uint32_t entry = i / 3;
    const uint32_t k[3] = {entry % 17, entry / 17 % 17, entry / 289};
    const uint32_t level = GamutGridLevel(k[i % 3]);
    worst = std::max(worst, outputs[i] > level ? outputs[i] - level : level - outputs[i]);
  }
  return worst;
}

class ExampleDeviceTreeTest : public ::testing::Test {
 protected:
  Json::Value factory_ = DeviceFile("mnt/vendor/persist/display", "factory_calib_data");
  Json::Value calibration_ = DeviceFile("vendor/etc/display", "vexa_calib_data");
  Json::Value common_ = calibration_["Common"];
};

TEST_F(ExampleDeviceTreeTest, FilesStandWhereTheDeviceLooksForThem) {
  EXPECT_EQ(factory_["Version"], 2);
  EXPECT_EQ(calibration_["Version"], 3);
  EXPECT_EQ(factory_[kPanel]["factory_floor"]["Applicability"]["RenderIntent"], 384);
  EXPECT_EQ(calibration_[kPanel].size(), 5u);
  const Json::Value rules = DeviceFile("vendor/etc/display", "vexa_merge_rules")[kPanel];
  EXPECT_EQ(rules["ModeMerge"], ParseText(ModeMergeVersionText())["ModeMerge"]);
  EXPECT_EQ(rules["MergedModes"].size(), 2u);
  // The library writes its merge-version file here.
  EXPECT_EQ(access((kRoot / "data/vendor/display").c_str(), W_OK), 0);
}

TEST_F(ExampleDeviceTreeTest, SharedGammaTablesAreMonotonicFullRangeCurves) {
  const struct {
    const char* group;
    const char* table;
    uint32_t entries;
    uint32_t top;
  } cases[] = {
      {"PostBlendIGC", "srgb", 257, 4095},
      {"PostBlendIGC", "gamma22", 257, 4095},
      {"PostBlendGC", "srgb", 1024, 1023},
      {"PostBlendGC", "gamma22", 1024, 1023},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.group) + " " + c.table);
    const Json::Value group = Unpack(common_[c.group]);
    EXPECT_EQ(group["numEntries"].asUInt(), c.entries);
    const std::vector<uint32_t> values = Numbers(group["Predefined"][c.table]);
    ASSERT_EQ(values.size(), c.entries);
    EXPECT_EQ(values.front(), 0u);
    EXPECT_EQ(values.back(), c.top);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
  }
}

TEST_F(ExampleDeviceTreeTest, SrgbGamutIsNearIdentityAndP3IsNot) {
  const Json::Value gamut = Unpack(common_["PostBlendGamut"]);
  EXPECT_EQ(gamut["numEntries"].asUInt(), kGamutEntries);
  const std::vector<uint32_t> srgb = Numbers(gamut["Custom"]["srgb"]);
  const std::vector<uint32_t> p3 = Numbers(gamut["Custom"]["p3"]);
  ASSERT_EQ(srgb.size(), 3 * kGamutEntries);
  ASSERT_EQ(p3.size(), 3 * kGamutEntries);
  // The panel is close to sRGB: small corrections, black and white exact.
  EXPECT_LE(MaxDistanceFromIdentity(srgb), 100u);  // 2.4 % of full scale
  for (int c = 0; c < 3; ++c) {
    EXPECT_EQ(srgb[c], 0u);
    EXPECT_EQ(srgb[3 * (kGamutEntries - 1) + c], 4095u);
    EXPECT_EQ(p3[3 * (kGamutEntries - 1) + c], 4095u);
  }
  // P3 is wider than the panel: half red is pushed well past 2048 and full red is clipped.
  EXPECT_GT(MaxDistanceFromIdentity(p3), 400u);
  EXPECT_GT(p3[3 * 8], 2048u + 300u);
  EXPECT_EQ(std::vector<uint32_t>(p3.begin() + 3 * 16, p3.begin() + 3 * 17),
            (std::vector<uint32_t>{4095, 0, 0}));
}

TEST_F(ExampleDeviceTreeTest, InlineFactoryTablesMatchTheSharedOnes) {
  const Json::Value& floor = factory_[kPanel]["factory_floor"];
  const Json::Value igc_section = Unpack(floor["PostBlendIGC"]);
  std::vector<uint32_t> igc;
  for (const Json::Value& v : igc_section["lutB"]) igc.push_back(v.asUInt());
  EXPECT_EQ(igc, Numbers(Unpack(common_["PostBlendIGC"])["Predefined"]["srgb"]));
  const Json::Value gamut_section = Unpack(floor["PostBlendGamut"]);
  std::string map_fine;
  for (const Json::Value& entry : gamut_section["mapFine"]) {
    map_fine += (map_fine.empty() ? "" : ",") + entry.asString();
  }
  EXPECT_EQ(map_fine, Unpack(common_["PostBlendGamut"])["Custom"]["srgb"].asString());
  const Json::Value pcc = Unpack(floor["PostBlendPCC"]);
  EXPECT_DOUBLE_EQ(pcc["R"]["r"].asDouble(), 1.0);  // a bluish panel: red stays, blue is cut
  EXPECT_LT(pcc["B"]["b"].asDouble(), 1.0);
}

TEST(ExampleDeviceTreeBuildTest, ReportsBrokenSourcesByFile) {
  const struct {
    const char* file;  // replaced in a copy of the sources (empty contents: removed)
    const char* contents;
    std::string message;
  } cases[] = {
      {"panel.json", "", "cannot read"},
      {"panel.json",
       R"({"name": "p", "primaries": {"red": [0.3, 0.3], "green": [0.3, 0.3], "blue": [0.3, 0.3], "white": [0.3, 0.3]}})",
       "degenerate"},
      {"factory_calib_data.json", R"({"@panel": {"m": {"PostBlendGC": {"generate": "gc"}}}})",
       "factory_calib_data.json: /" + kPanel + "/m/PostBlendGC: \"curve\" must be a string"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.file) + ": " + c.contents);
    const vexa::testing::TempDir temp;
    const fs::path dir = temp.path();
    fs::copy(fs::path(VEXA_SOURCE_DIR) / "examples/panel", dir / "sources",
             fs::copy_options::recursive);
    fs::remove(dir / "sources" / c.file);
    if (*c.contents != '\0') std::ofstream(dir / "sources" / c.file) << c.contents;
    std::string error;
    EXPECT_FALSE(ExampleDeviceTree(dir / "sources", dir / "device").Build(&error));
    EXPECT_NE(error.find(c.message), std::string::npos) << error;
  }
}

}  // namespace
}  // namespace vexa::example
