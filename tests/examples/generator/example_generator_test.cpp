// The numbers the example generator computes (colour matrices, the panel's corrections, transfer
// tables), the gamut tables of the device tree that the build generated from examples/panel, read
// back with the library's own hex decoding and number lists, and the refusal of broken sources.
#include "examples/generator/example_device_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "examples/generator/gamut_table.h"
#include "examples/generator/panel_model.h"
#include "examples/generator/transfer_curves.h"
#include "formats/decimal_list.h"
#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "support/temp_dir.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::example {
namespace {

namespace fs = std::filesystem;

const std::string kPanel = VEXA_EXAMPLE_PANEL;

// One shared table of the generated calibration file, as its list of numbers.
std::vector<uint32_t> SharedTable(const char* group, const char* kind, const char* name) {
  std::ifstream file(fs::path(VEXA_EXAMPLE_DEVICE_ROOT) / "vendor/etc/display" /
                     ("vexa_calib_data_" + kPanel + ".json"));
  const std::string text(std::istreambuf_iterator<char>(file), {});
  Json::Value calibration, tables;
  std::string json;
  EXPECT_TRUE(PopulateJsonValue(text, calibration));
  DecodeData(calibration["Common"][group], json);
  EXPECT_TRUE(PopulateJsonValue(json, tables)) << json.substr(0, 200);
  const std::string list = tables[kind][name].asString();
  std::vector<uint32_t> values;
  EXPECT_TRUE(ParseDecimalList(list, std::count(list.begin(), list.end(), ',') + 1, &values));
  return values;
}

// The sRGB matrix has the standard luminance row; for a panel, the gamut matrix keeps white, the
// PCC balances it, and P3 leaves a near-sRGB panel.
TEST(ExampleGeneratorTest, ColourMatricesOfStandardPrimariesAndOfThePanel) {
  const auto m = RgbToXyzMatrix(SrgbPrimaries());
  ASSERT_TRUE(m.has_value());
  const double bt709_luma[3] = {0.2126, 0.7152, 0.0722};
  // A bluish panel (white below D65 in x and y) close to sRGB.
  const auto panel = PanelModel::Create({{0.642, 0.334}, {0.303, 0.605}, {0.151, 0.058}, {0.309, 0.326}});
  ASSERT_TRUE(panel.has_value());
  const Vec3& gains = panel->WhiteBalanceGains();
  EXPECT_DOUBLE_EQ(gains[0], 1.0);
  EXPECT_LT(gains[2], gains[1]);
  EXPECT_LT(gains[1], 1.0);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR((*m)[1][i], bt709_luma[i], 1e-4) << i;
    EXPECT_NEAR(Multiply(*panel->GamutMatrix(DisplayP3Primaries()), Vec3{1, 1, 1})[i], 1.0, 1e-12);
    EXPECT_NEAR(Multiply(panel->PccMatrix(1.12), Vec3{1, 1, 1})[i], gains[i], 1e-12);
  }
  EXPECT_LT(Multiply(panel->PccMatrix(1.2), Vec3{1, 0, 0})[1],
            Multiply(panel->PccMatrix(1.0), Vec3{1, 0, 0})[1]);
  const Vec3 p3_red = Multiply(*panel->GamutMatrix(DisplayP3Primaries()), Vec3{1, 0, 0});
  EXPECT_GT(p3_red[0], 1.1);
  EXPECT_LT(p3_red[1], 0.0);
}

TEST(ExampleGeneratorTest, TransferTablesAreMonotonicWithFullRangeEndpointsAndKnownMidpoints) {
  const struct {
    std::vector<uint32_t> table;
    uint32_t top;
    size_t probe;
    uint32_t expected;  // computed by hand
  } cases[] = {
      // sRGB decode of 128/256 is 0.2140 (876 of 4095); gamma 2.2 gives 0.2176 (891).
      {LinearisingTable(TransferCurve::kSrgb, 257, 12), 4095, 128, 876},
      {LinearisingTable(TransferCurve::kGamma22, 257, 12), 4095, 128, 891},
      // sRGB encode of 184/1023 (0.18) is 0.4612 (472 of 1023); gamma 2.2 gives 0.4585 (469).
      {EncodingTable(TransferCurve::kSrgb, 1024, 10), 1023, 184, 472},
      {EncodingTable(TransferCurve::kGamma22, 1024, 10), 1023, 184, 469},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expected);
    EXPECT_TRUE(std::is_sorted(c.table.begin(), c.table.end()));
    EXPECT_EQ(c.table.front(), 0u);
    EXPECT_EQ(c.table.back(), c.top);
    EXPECT_EQ(c.table[c.probe], c.expected);
  }
  // The sRGB toe is linear both ways: no power law below the break points.
  EXPECT_DOUBLE_EQ(ToLinear(TransferCurve::kSrgb, 0.04), 0.04 / 12.92);
  EXPECT_DOUBLE_EQ(ToEncoded(TransferCurve::kSrgb, 0.003), 0.003 * 12.92);
}

// The largest distance of a gamut table's outputs from its grid inputs (first coordinate fastest).
uint32_t MaxDistanceFromIdentity(const std::vector<uint32_t>& outputs) {
  uint32_t worst = 0;
  for (uint32_t i = 0; i < outputs.size(); ++i) {
    const uint32_t entry = i / 3, k[3] = {entry % 17, entry / 17 % 17, entry / 289};
    const uint32_t level = GamutGridLevel(k[i % 3]);
    worst = std::max(worst, outputs[i] > level ? outputs[i] - level : level - outputs[i]);
  }
  return worst;
}

TEST(ExampleGeneratorTest, SrgbGamutIsNearIdentityAndP3IsClipped) {
  const std::vector<uint32_t> srgb = SharedTable("PostBlendGamut", "Custom", "srgb");
  const std::vector<uint32_t> p3 = SharedTable("PostBlendGamut", "Custom", "p3");
  ASSERT_EQ(srgb.size(), 3 * kGamutEntries);
  ASSERT_EQ(p3.size(), 3 * kGamutEntries);
  // The panel is close to sRGB: small corrections (2.4 % of full scale at most), white exact.
  EXPECT_LE(MaxDistanceFromIdentity(srgb), 100u);
  EXPECT_EQ(std::vector<uint32_t>(srgb.end() - 3, srgb.end()), (std::vector<uint32_t>(3, 4095)));
  // P3 is wider than the panel: half red is pushed well past 2048 and full red is clipped.
  EXPECT_GT(MaxDistanceFromIdentity(p3), 400u);
  EXPECT_GT(p3[3 * 8], 2048u + 300u);
  EXPECT_EQ(std::vector<uint32_t>(p3.begin() + 3 * 16, p3.begin() + 3 * 17),
            (std::vector<uint32_t>{4095, 0, 0}));
}

TEST(ExampleGeneratorTest, BuildRefusesBrokenSourcesNamingFileAndPlace) {
  const std::string recipe = R"({"@panel": {"m": {"PostBlendGC": {"generate": "gc", )";
  const struct {
    const char* file;  // replaced in a copy of the sources (empty contents: removed)
    std::string contents;
    std::string message;
  } cases[] = {
      {"panel.json", "", "cannot read"},
      {"panel.json",
       R"({"name": "p", "primaries": {"red": [0.3, 0.3], "green": [0.3, 0.3],
                                         "blue": [0.3, 0.3], "white": [0.3, 0.3]}})",
       "degenerate"},
      {"factory_calib_data.json", recipe + "\"curve\": 1}}}}",
       "factory_calib_data.json: /" + kPanel + "/m/PostBlendGC: \"curve\" must be a string"},
      {"vexa_calib_data.json", recipe + R"("curve": "srgb", "entries": 1025, "form": "list"}}}})",
       "must lie in 2..1024"},
      {"vexa_calib_data.json",
       R"({"@panel": {"m": {"PostBlendGamut": {"Tuning": {"generate": "gamut", "matrix": )"
       R"([[1, 0, 0], [0, 1, 0], [0, 1]], "form": "list"}}}}})",
       "/m/PostBlendGamut/Tuning: \"matrix\" must be three rows of three numbers"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.file) + ": " + c.contents);
    const vexa::testing::TempDir temp;
    const fs::path sources = fs::path(temp.path()) / "sources";
    fs::copy(fs::path(VEXA_SOURCE_DIR) / "examples/panel", sources, fs::copy_options::recursive);
    fs::remove(sources / c.file);
    if (!c.contents.empty()) std::ofstream(sources / c.file) << c.contents;
    std::string error;
    EXPECT_FALSE(ExampleDeviceTree(sources, fs::path(temp.path()) / "device").Build(&error));
    EXPECT_NE(error.find(c.message), std::string::npos) << error;
  }
}

}  // namespace
}  // namespace vexa::example
