#include "assets/hw_asset_pa.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/asset_json.h"

namespace vexa {
namespace {

using testing::LogCapture;
using testing::ParseJson;
namespace merge = kiv_mode_merge_caps;

constexpr char kWhere[] = "VexaJsonModeParser::HwAssetPA";

// A curve of the 384 numbers first, first + 1, ... as text or as an array.
Json::Value Curve(uint32_t first, bool as_text) {
  std::string text;
  Json::Value array(Json::arrayValue);
  for (uint32_t i = 0; i < kPaSixZoneEntries; ++i) {
    text += (i ? "," : "") + std::to_string(first + i);
    array.append(first + i);
  }
  return as_text ? Json::Value(text) : array;
}

// Every field set and told apart from its neighbours; ops 0x7BF (all bits but sky's enable).
Json::Value FullSection(bool curves_as_text) {
  Json::Value json = ParseJson(R"({"cont": 0.25, "hue": -7, "sat": 1.5, "satThresh": 0.125, "val": -0.75,
    "MemColSkin": {"enable": true, "protectContrast": true, "blendingEnable": true,
      "hue": {"adj": -3, "min": 10, "max": 40, "mid": 25, "protect": true},
      "sat": {"adj": 0.5, "min": 0.1, "max": 0.9, "mid": 3, "trapezoidEdgeLeft": "SLOPE"},
      "val": {"adj": -0.5, "protect": true, "trapezoidEdgeLeft": "STEP", "trapezoidEdgeRight": "SLOPE"}},
    "MemColSky": {"protectVsSixZone": true, "sat": {"protect": true, "trapezoidEdgeLeft": "SLOPE",
                                                     "trapezoidEdgeRight": "SLOPE"}},
    "MemColFol": {"enable": true, "blendingEnable": true, "hue": {"adj": 12, "min": -20}},
    "SixZone": {"enable": true, "numEntries": 384},
    "SixZoneThresholds": {"sat": {"min": -5, "max": 60, "offset": 7, "trapezoidEdgeRight": "SLOPE",
                                  "svEnable": true}, "satLow": 11, "satMid": 22, "satHigh": 33}})");
  const char* curves[] = {"hueCurve", "satCurve", "valCurve", "satCurveMid", "satCurveHigh"};
  for (uint32_t i = 0; i < 5; ++i) json["SixZone"][curves[i]] = Curve(1000 * i, curves_as_text);
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
    const std::shared_ptr<Json::Value> written = asset->AsJV();
    EXPECT_EQ((*written)["SixZone"]["satCurveMid"].isString(), version >= 3);
    EXPECT_TRUE(SameRecord(Configured(ParseJson(testing::Compact(*written)), version)->config(), c));
    EXPECT_TRUE(log.Lines().empty()) << log.Dump();
  }
}

TEST(HwAssetPaTest, FeatureBitsFollowTheMembersThatSetThem) {
  const struct {
    const char* json;
    uint32_t ops;
  } cases[] = {
      {R"({"hue": 0, "sat": 0.0, "MemColSky": {"blendingEnable": true}})", 0}, {R"({"satThresh": 1})", 0x1},
      {R"({"MemColSky": {"blendingEnable": true, "hue": {"protect": true}}})", 0x2},
      {R"({"MemColFol": {"blendingEnable": true, "sat": {"protect": true}}})", 0x4},
      {R"({"MemColSkin": {"blendingEnable": true, "val": {"protect": true}}})", 0x8},
      {R"({"MemColFol": {"blendingEnable": true, "protectContrast": true}})", 0x10},
      {R"({"MemColSkin": {"blendingEnable": true, "enable": true}})", 0x20},
      {R"({"MemColSky": {"blendingEnable": true, "enable": true}})", 0x40},
      {R"({"MemColFol": {"blendingEnable": true, "enable": true}})", 0x80},
      {R"({"SixZone": {"enable": true, "numEntries": 384}})", 0x100},
      {R"({"MemColSkin": {"blendingEnable": true, "protectVsSixZone": true}})", 0x200},
      {R"({"MemColSky": {}})", 0x400}, {R"({"MemColFol": {"blendingEnable": false}, "val": 1})", 0x401},
  };
  for (const auto& c : cases) {
    auto asset = Configured(ParseJson(c.json));
    EXPECT_TRUE(asset->config().ops == c.ops && asset->config().enable == (c.ops != 0)) << c.json;
    EXPECT_EQ(asset->AsJV()->size() == 1, c.ops == 0) << c.json;  // disabled: "enable" alone
  }
}

TEST(HwAssetPaTest, EdgeNamesMapBothWaysWithTheSkinSaturationOddity) {
  const char* names[] = {"STEP", "SLOPE"};
  for (uint32_t type = 0; type < 4; ++type) {
    EXPECT_EQ(HwAssetPA::Map(names[type & 1], names[type >> 1]), type);
    EXPECT_TRUE(HwAssetPA::MapLeftEdge(type) == names[type & 1] && HwAssetPA::MapRightEdge(type) == names[type >> 1]);
  }
  EXPECT_EQ(HwAssetPA::Map("slope", "RAMP"), 0u);  // unknown names are steps
  EXPECT_TRUE(HwAssetPA::MapLeftEdge(4) == "INVALID" && HwAssetPA::MapRightEdge(4) == "INVALID");
  const struct {
    const char* json;
    PaMemColRegion PaConfig::*region;
    uint32_t type;
  } cases[] = {
      {R"("MemColSky": {"sat": {"trapezoidEdgeLeft": "SLOPE", "trapezoidEdgeRight": "STEP")", &PaConfig::sky, 1},
      {R"("MemColSkin": {"sat": {"trapezoidEdgeLeft": "SLOPE", "trapezoidEdgeRight": "STEP")", &PaConfig::skin, 3},
      {R"("MemColSkin": {"sat": {"trapezoidEdgeRight": "SLOPE")", &PaConfig::skin, 0},
  };
  for (const auto& c : cases) {
    auto asset = Configured(ParseJson(std::string(R"({"hue": 1, )") + c.json + "}}}"));
    EXPECT_EQ((asset->config().*c.region).sat.trapezoid_edge_type, c.type) << c.json;
    EXPECT_TRUE(SameRecord(Configured(*asset->AsJV())->config(), asset->config())) << c.json;
  }
}

// From version 3 the curves must be text; a missing saturation curve falls back to "satCurve".
TEST(HwAssetPaTest, SixZoneCurvesAndEntryCount) {
  Json::Value json = FullSection(true);
  json["SixZone"].removeMember("satCurveMid");
  json["SixZone"].removeMember("hueCurve");  // a missing curve leaves zeros
  const PaSixZoneEntry entry = Configured(json)->config().six_zone.entries[200];
  EXPECT_TRUE(entry.sat_mid == 1200u && entry.sat_high == 4200u && entry.hue == 0u);

  Json::Value mixed = FullSection(false);
  mixed["SixZone"]["valCurve"] = Curve(2000, true);  // both forms are read below 3
  EXPECT_EQ(Configured(mixed, 2)->config().six_zone.entries[9].val, 2009u);
  const struct {
    const char* member;
    Json::Value value;
    std::string info;
  } cases[] = {{"satCurve", Curve(0, false), "SetConfig(): Incompatible PA Six-zone JSON Data String"},
               {"numEntries", 385, "SetConfig(): Unexpected number of entries size 385, expecting 384"},
               {"numEntries", -1, "SetConfig(): Unexpected number of entries size -1, expecting 384"}};
  for (const auto& c : cases) {
    json = FullSection(true);
    json["SixZone"][c.member] = c.value;
    auto asset = Configured(FullSection(true));
    LogCapture log;
    asset->SetConfig(json);
    EXPECT_TRUE(IsIdentity(*asset)) << c.info;
    EXPECT_EQ(asset->config().global.hue, -7) << "identity keeps the sections";
    testing::ExpectOneLine(log, "I", kWhere, c.info);
  }
}

TEST(HwAssetPaTest, EachMergeTakesTheWholeRecordOfOneOperand) {
  auto left = Configured(FullSection(true));
  auto right = Configured(ParseJson(R"({"hue": 9, "MemColSky": {"blendingEnable": true}})"), 2);
  const auto check = [&](auto op, const char* name) {
    using Op = decltype(op);
    EXPECT_TRUE(SameRecord(HwAssetPA(Op::kLeftOperand, left, right).config(), left->config())) << name;
    EXPECT_TRUE(SameRecord(HwAssetPA(Op::kRightOperand, left, right).config(), right->config())) << name;
    EXPECT_TRUE(IsIdentity(HwAssetPA(static_cast<Op>(7), left, right))) << name;
    LogCapture log;
    EXPECT_TRUE(IsIdentity(HwAssetPA(Op::kRightOperand, left, nullptr))) << name;
    testing::ExpectOneLine(log, "E", kWhere, std::string("HwAssetPA(): ") + name + " Merge Error: Source (right operand) is empty");
  };
  check(merge::KivPostBlendPaGlobalMergeOp(), "PaGlobal");
  check(merge::KivPostBlendPaMemoryColorsMergeOp(), "PaMemoryColors");
  check(merge::KivPostBlendPaMultiZoneMergeOp(), "PaMultiZone");
}

TEST(HwAssetPaTest, AssemblyTakesEachSectionAndItsBitsFromItsPart) {
  auto global = Configured(ParseJson(R"({"hue": 5, "MemColSky": {"enable": true, "blendingEnable": true}})"));
  auto colors = Configured(FullSection(true));
  Json::Value zone_json = FullSection(false);
  zone_json["SixZone"]["hueCurve"] = Curve(50, false);
  auto zone = Configured(zone_json, 2);
  HwAssetPA assembled(0, nullptr);
  const PaConfig& c = assembled.config();
  assembled.Assemble(global, colors, zone);
  EXPECT_TRUE(c.enable && c.ops == (0x1u | (0x7BFu & 0x6FEu) | 0x100u));
  EXPECT_EQ(std::memcmp(&c.global, &global->config().global, sizeof(c.global)), 0);
  EXPECT_EQ(std::memcmp(&c.skin, &colors->config().skin, 3 * sizeof(c.skin)), 0);
  EXPECT_EQ(std::memcmp(&c.six_zone, &zone->config().six_zone, sizeof(c.six_zone)), 0);
  assembled.Assemble(colors, nullptr, global);  // the other parts' bits are not taken
  EXPECT_TRUE(c.ops == 0x1u && c.sky.blending_enable == 1u && c.six_zone.num_entries == 0u);  // neutral parts
  assembled.Assemble(nullptr, nullptr, nullptr);
  EXPECT_TRUE(IsIdentity(assembled));
}

TEST(HwAssetPaTest, WrongTypesAndBadNumbersRefuseTheSection) {
  const struct {
    std::vector<std::string> path;  // empty: the whole section
    std::string value;              // JSON text put there
    const char* error;              // expected in the error line
  } cases[] = {
      {{}, "[1]", "Invalid member \"(section)\""},
      {{"hue"}, "1e20", R"(Invalid member "hue": expected integer, found number out of range)"},
      {{"sat"}, "1e300", R"(Invalid member "sat": expected number, found number out of range)"},
      {{"MemColSky", "hue", "adj"}, R"("3")", R"(Invalid member "adj" in member "MemColSky", member "hue")"},
      {{"SixZone", "satCurve"}, "true", R"(Invalid member "satCurve" in member "SixZone": expected string or array)"},
      {{"SixZone", "hueCurve"}, R"("1,2,3")", R"(Invalid six-zone curve "hueCurve" in member "SixZone")"},
      {{"SixZone", "valCurve"}, R"("4294967296")", R"(Invalid six-zone curve "valCurve")"},
      {{"SixZone", "hueCurve", "100"}, "-1", R"(Invalid member "hueCurve" in member "SixZone": expected array of)"},
      {{"SixZone", "valCurve"},  // all 384 wrong: still one error line
       [] { std::string t = R"(["x")"; for (int i = 1; i < 384; ++i) t += R"(,"x")"; return t + "]"; }(),
       R"(Invalid member "valCurve" in member "SixZone": expected array of)"},
      {{"SixZoneThresholds", "satLow"}, R"("a")", R"(Invalid member "satLow")"},
  };
  for (const auto& c : cases) {
    Json::Value json = FullSection(false);  // below 3 both curve forms are read
    Json::Value* target = &json;
    for (const std::string& key : c.path) target = target->isArray() ? &(*target)[std::stoi(key)] : &(*target)[key];
    *target = ParseJson(c.value);
    LogCapture log;
    EXPECT_TRUE(IsIdentity(*Configured(json, 2))) << c.error;
    testing::ExpectOneLine(log, "E", kWhere, c.error);
  }
}

}  // namespace
}  // namespace vexa
