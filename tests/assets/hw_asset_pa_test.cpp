#include "assets/hw_asset_pa.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "support/asset_json.h"

namespace vexa {
namespace {

using testing::LogCapture;
using testing::ParseJson;

constexpr char kWhere[] = "VexaJsonModeParser::HwAssetPA";

// Every field set and told apart from its neighbours; ops 0x7BF (all bits but sky's enable). The
// same saturation edge names give sky type 1 and skin type 3: skin takes its right edge from the left.
Json::Value FullSection(bool curves_as_text) {
  Json::Value json = ParseJson(R"({"cont": 0.25, "hue": -7, "sat": 1.5, "satThresh": 0.125, "val": -0.75,
    "MemColSkin": {"enable": true, "protectContrast": true, "blendingEnable": true, "hue": {"adj": -3, "min": 10,
      "max": 40, "mid": 25, "protect": true}, "sat": {"adj": 0.5, "min": 0.1, "max": 0.9, "mid": 3,
      "trapezoidEdgeLeft": "SLOPE", "trapezoidEdgeRight": "STEP"}, "val": {"adj": -0.5, "protect": true,
      "trapezoidEdgeLeft": "STEP", "trapezoidEdgeRight": "SLOPE"}}, "MemColSky": {"protectVsSixZone": true,
      "sat": {"protect": true, "trapezoidEdgeLeft": "SLOPE", "trapezoidEdgeRight": "STEP"}}, "MemColFol": {"enable":
      true, "blendingEnable": true, "hue": {"adj": 12, "min": -20}}, "SixZone": {"enable": true, "numEntries": 384},
    "SixZoneThresholds": {"sat": {"min": -5, "max": 60, "offset": 7, "trapezoidEdgeRight": "SLOPE", "svEnable": true},
      "satLow": 11, "satMid": 22, "satHigh": 33}})");
  const char* curves[] = {"hueCurve", "satCurve", "valCurve", "satCurveMid", "satCurveHigh"};
  for (uint32_t i = 0; i < 5; ++i) {
    json["SixZone"][curves[i]] = testing::Numbers(kPaSixZoneEntries, 1000 * i, curves_as_text);
  }
  return json;
}

std::shared_ptr<HwAssetPA> Configured(const Json::Value& json, uint32_t version = 3) {
  auto asset = std::make_shared<HwAssetPA>(version, nullptr);
  asset->SetConfig(json);
  return asset;
}

// Field by field up to the sections, then the sections (free of padding) byte by byte.
bool SameRecord(const PaConfig& a, const PaConfig& b) {
  const size_t start = offsetof(PaConfig, global);
  return a.len == b.len && a.enable == b.enable && a.ops == b.ops && a.reserved == b.reserved &&
         std::memcmp(reinterpret_cast<const char*>(&a) + start, reinterpret_cast<const char*>(&b) + start,
                     sizeof(PaConfig) - start) == 0;
}

bool IsIdentity(const HwAssetPA& asset) {
  return !asset.config().enable && asset.config().ops == 0 && asset.config().reserved == 0;
}

TEST(HwAssetPaTest, ReadsEveryFieldAndRoundTripsInTheVersionsForm) {
  for (uint32_t version : {2u, 3u}) {
    LogCapture log;
    auto asset = Configured(FullSection(version >= 3), version);
    const PaConfig& c = asset->config();
    EXPECT_TRUE(c.enable && c.ops == 0x7BFu && c.global.sat_thresh == 0.125f && c.skin.hue.mid == 25u &&
                c.foliage.hue.min == -20 && c.six_zone.thresholds.sat_high == 33u) << version;
    EXPECT_TRUE(c.six_zone.entries[383].sat == 1383u && c.six_zone.entries[5].sat_high == 4005u) << version;
    EXPECT_TRUE(c.sky.sat.trapezoid_edge_type == 1u && c.skin.sat.trapezoid_edge_type == 3u) << version;
    const std::shared_ptr<Json::Value> written = asset->AsJV();
    EXPECT_EQ((*written)["SixZone"]["satCurveMid"].isString(), version >= 3);
    EXPECT_TRUE(SameRecord(Configured(ParseJson(testing::Compact(*written)), version)->config(), c));
    EXPECT_TRUE(log.Lines().empty()) << log.Dump();
  }
}

TEST(HwAssetPaTest, FeatureBitsFollowTheMembersThatSetThem) {
  const std::pair<const char*, uint32_t> cases[] = {
      {R"({"hue": 0, "sat": 0.0, "MemColSky": {"blendingEnable": true}})", 0}, {R"({"satThresh": 1})", 0x1},
      {R"({"MemColSky": {"blendingEnable": true, "hue": {"protect": true}}})", 0x2}, {R"({"MemColSky": {}})", 0x400},
      {R"({"MemColFol": {"blendingEnable": true, "sat": {"protect": true}}})", 0x4},
      {R"({"MemColSkin": {"blendingEnable": true, "val": {"protect": true}}})", 0x8},
      {R"({"MemColFol": {"blendingEnable": true, "protectContrast": true}})", 0x10},
      {R"({"MemColSkin": {"blendingEnable": true, "enable": true}})", 0x20},
      {R"({"MemColSky": {"blendingEnable": true, "enable": true}})", 0x40},
      {R"({"MemColFol": {"blendingEnable": true, "enable": true}})", 0x80},
      {R"({"SixZone": {"enable": true, "numEntries": 384}})", 0x100},
      {R"({"MemColSkin": {"blendingEnable": true, "protectVsSixZone": true}})", 0x200},
      {R"({"MemColFol": {"blendingEnable": false}, "val": 1})", 0x401},
  };
  for (const auto& [json, ops] : cases) {
    auto asset = Configured(ParseJson(json));
    EXPECT_TRUE(asset->config().ops == ops && asset->config().enable == (ops != 0)) << json;
    EXPECT_EQ(asset->AsJV()->size() == 1, ops == 0) << json;  // disabled: "enable" alone
  }
}

// From version 3 the curves must be text; a missing saturation curve falls back to "satCurve".
// A bad count or curve form is an information line, a bad curve an error line (one,
// however many entries are wrong); both leave the block off and keep its sections.
TEST(HwAssetPaTest, SixZoneCurvesAndRefusals) {
  Json::Value json = FullSection(true);
  json["SixZone"].removeMember("satCurveMid");
  json["SixZone"].removeMember("hueCurve");  // a missing curve leaves zeros
  const PaSixZoneEntry entry = Configured(json)->config().six_zone.entries[200];
  EXPECT_TRUE(entry.sat_mid == 1200u && entry.sat_high == 4200u && entry.hue == 0u);
  std::string all_bad = R"(["x")";
  for (int i = 1; i < 384; ++i) all_bad += R"(,"x")";
  const std::tuple<uint32_t, const char*, std::string, const char*, const char*> cases[] = {
      // version, member of "SixZone" set to the JSON text, kind of line, message
      {3, "satCurve", "[1]", "I", "SetConfig(): Incompatible PA Six-zone JSON Data String"},
      {3, "numEntries", "385", "I", "SetConfig(): Unexpected number of entries size 385, expecting 384"},
      {2, "hueCurve", R"("1,2,3")", "E", R"(Invalid six-zone curve "hueCurve" in member "SixZone")"},
      {2, "valCurve", all_bad + "]", "E", R"(Invalid member "valCurve" in member "SixZone": expected array of)"},
  };
  for (const auto& [version, member, value, kind, message] : cases) {
    json = FullSection(version >= 3);  // below 3 both curve forms are read
    json["SixZone"][member] = ParseJson(value);
    auto asset = Configured(FullSection(true), version);
    LogCapture log;
    asset->SetConfig(json);
    EXPECT_TRUE(IsIdentity(*asset) && asset->config().global.hue == -7) << message;
    testing::ExpectOneLine(log, kind, kWhere, message);
  }
}

TEST(HwAssetPaTest, AssemblyTakesEachSectionAndItsBitsFromItsPart) {
  auto global = Configured(ParseJson(R"({"hue": 5, "MemColSky": {"enable": true, "blendingEnable": true}})"));
  auto colors = Configured(FullSection(true));
  Json::Value zone_json = FullSection(false);
  zone_json["SixZone"]["hueCurve"] = testing::Numbers(kPaSixZoneEntries, 50);
  auto zone = Configured(zone_json, 2);
  HwAssetPA assembled(0, nullptr);
  assembled.Assemble(global, colors, zone);
  const PaConfig* c = &assembled.config();
  EXPECT_TRUE(c->enable && c->ops == (0x1u | (0x7BFu & 0x6FEu) | 0x100u));
  EXPECT_EQ(std::memcmp(&c->global, &global->config().global, sizeof(c->global)), 0);
  EXPECT_EQ(std::memcmp(&c->skin, &colors->config().skin, 3 * sizeof(c->skin)), 0);
  EXPECT_EQ(std::memcmp(&c->six_zone, &zone->config().six_zone, sizeof(c->six_zone)), 0);
  assembled.Assemble(colors, nullptr, global);  // the other parts' bits are not taken
  c = &assembled.config();
  EXPECT_TRUE(c->ops == 0x1u && c->sky.blending_enable == 1u && c->six_zone.num_entries == 0u);  // neutral parts
}

// Edge names to trapezoid types and back; an unknown name reads as a step, a type above 3 has no name.
TEST(HwAssetPATest, TrapezoidEdgeWordsBothWays) {
  for (uint32_t type = 0; type < 4; ++type) {
    EXPECT_EQ(HwAssetPA::Map(HwAssetPA::MapLeftEdge(type), HwAssetPA::MapRightEdge(type)), type);
  }
  EXPECT_EQ(HwAssetPA::Map("slope", "SLOPE"), 2u);
  EXPECT_EQ(HwAssetPA::MapLeftEdge(4) + HwAssetPA::MapRightEdge(4), "INVALIDINVALID");
}

}  // namespace
}  // namespace vexa
