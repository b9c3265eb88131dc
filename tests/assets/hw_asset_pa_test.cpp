#include "assets/hw_asset_pa.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/asset_json.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::LogCapture;
namespace merge = kiv_mode_merge_caps;

// Any JSON value, scalars included.
Json::Value Parse(const std::string& text) { return testing::ParseJson("[" + text + "]")[0]; }

// The capture holds one line: `kind` from `where`, with `message`.
bool OnlyLine(const LogCapture& log, const char* kind, const char* where, const std::string& message) {
  const std::vector<std::string> lines = log.Lines();
  return lines.size() == 1 && testing::IsLogLine(lines[0], kind, where, message);
}

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
  Json::Value json = Parse(R"({"cont": 0.25, "hue": -7, "sat": 1.5, "satThresh": 0.125, "val": -0.75,
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
         std::memcmp(reinterpret_cast<const char*>(&a) + start,
                     reinterpret_cast<const char*>(&b) + start, sizeof(PaConfig) - start) == 0;
}

bool IsIdentity(const HwAssetPA& asset) {
  return !asset.config().enable && asset.config().ops == 0 && asset.config().reserved == 0;
}

TEST(HwAssetPaTest, ReadsEveryFieldAndRoundTripsInTheVersionsForm) {
  for (uint32_t version : {0u, 2u, 3u, 7u}) {
    SCOPED_TRACE(version);
    LogCapture log;
    auto asset = Configured(FullSection(version >= 3), version);
    const PaConfig& c = asset->config();
    EXPECT_TRUE(c.enable);
    EXPECT_EQ(c.ops, 0x7BFu);
    EXPECT_EQ(c.global.sat_thresh, 0.125f);
    EXPECT_EQ(c.skin.hue.mid, 25u);
    EXPECT_EQ(c.foliage.hue.min, -20);
    EXPECT_EQ(c.six_zone.entries[383].sat, 1383u);
    EXPECT_EQ(c.six_zone.entries[5].sat_high, 4005u);
    EXPECT_EQ(c.six_zone.thresholds.sat_high, 33u);
    const std::shared_ptr<Json::Value> written = asset->AsJV();
    EXPECT_EQ((*written)["SixZone"]["satCurveMid"].isString(), version >= 3);
    EXPECT_TRUE(SameRecord(Configured(Parse(JsonToCompactText(*written)), version)->config(), c));
    EXPECT_TRUE(log.Lines().empty()) << log.Dump();
  }
}

TEST(HwAssetPaTest, FeatureBitsFollowTheMembersThatSetThem) {
  const struct {
    const char* json;
    uint32_t ops;
  } cases[] = {
      {R"({})", 0}, {R"({"hue": 0, "sat": 0.0, "MemColSky": {"blendingEnable": true}})", 0},
      {R"({"hue": 2})", 0x1}, {R"({"sat": 0.5})", 0x1}, {R"({"val": -0.5})", 0x1},
      {R"({"cont": 0.1})", 0x1}, {R"({"satThresh": 1})", 0x1},
      {R"({"MemColSky": {"blendingEnable": true, "hue": {"protect": true}}})", 0x2},
      {R"({"MemColFol": {"blendingEnable": true, "sat": {"protect": true}}})", 0x4},
      {R"({"MemColSkin": {"blendingEnable": true, "val": {"protect": true}}})", 0x8},
      {R"({"MemColFol": {"blendingEnable": true, "protectContrast": true}})", 0x10},
      {R"({"MemColSkin": {"blendingEnable": true, "enable": true}})", 0x20},
      {R"({"MemColSky": {"blendingEnable": true, "enable": true}})", 0x40},
      {R"({"MemColFol": {"blendingEnable": true, "enable": true}})", 0x80},
      {R"({"SixZone": {"enable": true, "numEntries": 384}})", 0x100},
      {R"({"SixZone": {"enable": false, "numEntries": 384}})", 0},
      {R"({"MemColSkin": {"blendingEnable": true, "protectVsSixZone": true}})", 0x200},
      {R"({"MemColSky": {}})", 0x400}, {R"({"MemColFol": {"blendingEnable": false}, "val": 1})", 0x401},
  };
  for (const auto& c : cases) {
    auto asset = Configured(Parse(c.json));
    EXPECT_EQ(asset->config().ops, c.ops) << c.json;
    EXPECT_EQ(asset->config().enable, c.ops != 0) << c.json;
    EXPECT_EQ(asset->AsJV()->size() == 1, c.ops == 0) << c.json;  // disabled: "enable" alone
  }
}

TEST(HwAssetPaTest, EdgeNamesMapBothWaysWithTheSkinSaturationOddity) {
  const char* names[] = {"STEP", "SLOPE"};
  for (uint32_t type = 0; type < 4; ++type) {
    EXPECT_EQ(HwAssetPA::Map(names[type & 1], names[type >> 1]), type);
    EXPECT_EQ(HwAssetPA::MapLeftEdge(type), names[type & 1]);
    EXPECT_EQ(HwAssetPA::MapRightEdge(type), names[type >> 1]);
  }
  EXPECT_EQ(HwAssetPA::Map("slope", "RAMP"), 0u);  // unknown names are steps
  EXPECT_EQ(HwAssetPA::MapLeftEdge(4), "INVALID");
  EXPECT_EQ(HwAssetPA::MapRightEdge(4), "INVALID");

  const auto kSkin = &PaConfig::skin;
  const auto kSat = &PaMemColRegion::sat;
  const struct {
    const char* json;
    PaMemColRegion PaConfig::*region;
    PaMemColRange PaMemColRegion::*range;
    uint32_t type;
  } cases[] = {
      {R"("MemColSky": {"sat": {"trapezoidEdgeLeft": "SLOPE", "trapezoidEdgeRight": "STEP")", &PaConfig::sky, kSat, 1},
      {R"("MemColSkin": {"sat": {"trapezoidEdgeLeft": "SLOPE", "trapezoidEdgeRight": "STEP")", kSkin, kSat, 3},
      {R"("MemColSkin": {"sat": {"trapezoidEdgeLeft": "STEP", "trapezoidEdgeRight": "SLOPE")", kSkin, kSat, 0},
      {R"("MemColSkin": {"sat": {"trapezoidEdgeLeft": "SLOPE")", kSkin, kSat, 1},
      {R"("MemColSkin": {"sat": {"trapezoidEdgeRight": "SLOPE")", kSkin, kSat, 0},
      {R"("MemColSkin": {"val": {"trapezoidEdgeLeft": "SLOPE", "trapezoidEdgeRight": "STEP")", kSkin,
       &PaMemColRegion::val, 1},
      {R"("MemColFol": {"val": {"trapezoidEdgeRight": "SLOPE")", &PaConfig::foliage, &PaMemColRegion::val, 2},
  };
  for (const auto& c : cases) {
    auto asset = Configured(Parse(std::string(R"({"hue": 1, )") + c.json + "}}}"));
    EXPECT_EQ((asset->config().*c.region.*c.range).trapezoid_edge_type, c.type) << c.json;
    EXPECT_TRUE(SameRecord(Configured(*asset->AsJV())->config(), asset->config())) << c.json;
  }
}

TEST(HwAssetPaTest, SaturationCurvesFallBackToSatCurve) {
  Json::Value json = FullSection(true);
  json["SixZone"].removeMember("satCurveMid");
  json["SixZone"].removeMember("hueCurve");  // a missing curve leaves zeros
  const auto asset = Configured(json);
  const PaSixZoneEntry& entry = asset->config().six_zone.entries[200];
  EXPECT_EQ(entry.sat_mid, 1200u);
  EXPECT_EQ(entry.sat_high, 4200u);
  EXPECT_EQ(entry.hue, 0u);
}

TEST(HwAssetPaTest, CurvesMustBeTextFromVersionThree) {
  for (const char* curve : {"hueCurve", "valCurve", "satCurveMid", "satCurve"}) {
    Json::Value json = FullSection(true);
    json["SixZone"][curve] = Curve(0, false);
    json["SixZone"].removeMember("satCurveHigh");  // satCurve stands in for it
    auto asset = Configured(FullSection(true));
    LogCapture log;
    asset->SetConfig(json);
    EXPECT_TRUE(IsIdentity(*asset)) << curve;
    EXPECT_EQ(asset->config().global.hue, -7) << "identity keeps the sections";
    EXPECT_TRUE(OnlyLine(log, "I", "VexaJsonModeParser::HwAssetPA::SetConfig",
                         "Incompatible PA Six-zone JSON Data String"))
        << log.Dump();
  }
  Json::Value mixed = FullSection(false);
  mixed["SixZone"]["valCurve"] = Curve(2000, true);  // both forms are read below 3
  EXPECT_EQ(Configured(mixed, 2)->config().six_zone.entries[9].val, 2009u);
  LogCapture quiet(1);
  EXPECT_TRUE(IsIdentity(*Configured(mixed, 3)));
  EXPECT_TRUE(quiet.Lines().empty()) << quiet.Dump();
}

TEST(HwAssetPaTest, SixZoneNeedsExactly384Entries) {
  for (const std::string entries : {"383", "385", "-1", "null"}) {
    Json::Value json = FullSection(true);
    json["SixZone"]["numEntries"] = Parse(entries);
    LogCapture log;
    EXPECT_TRUE(IsIdentity(*Configured(json))) << entries;
    const std::string shown = entries == "null" ? "0" : entries;
    EXPECT_TRUE(OnlyLine(log, "I", "VexaJsonModeParser::HwAssetPA::SetConfig",
                         "Unexpected number of entries size " + shown + ", expecting 384"))
        << log.Dump();
  }
}

TEST(HwAssetPaTest, IdentityKeepsTheSectionsAndThePayloadIsACopy) {
  auto asset = Configured(FullSection(true));
  const std::shared_ptr<HwConfigPayload> payload = asset->AsPayload();
  ASSERT_NE(payload, nullptr);
  EXPECT_EQ(payload->size, 56u);
  EXPECT_EQ(payload->name, "PostBlendPa");
  EXPECT_EQ(payload->config_size, 15752u);
  const auto* record = static_cast<const PaConfig*>(payload->config.get());
  EXPECT_TRUE(SameRecord(*record, asset->config()));

  auto changed = std::make_unique<PaConfig>(asset->config());
  changed->len = 1;
  changed->reserved = 5;
  asset->SetConfig(*changed);
  EXPECT_EQ(asset->config().len, kPaConfigLen);
  EXPECT_EQ(asset->config().reserved, 5u);
  asset->SetIdentity();
  EXPECT_TRUE(IsIdentity(*asset));
  EXPECT_EQ(asset->config().skin.hue.adj, -3);
  EXPECT_EQ(record->ops, 0x7BFu);
}

template <typename Op>
void CheckMerges(const std::string& name) {
  SCOPED_TRACE(name);
  auto left = Configured(FullSection(true));
  auto right = Configured(Parse(R"({"hue": 9, "MemColSky": {"blendingEnable": true}})"), 2);
  auto merge = [](Op op, std::shared_ptr<HwAssetPA> l, std::shared_ptr<HwAssetPA> r) {
    return std::make_shared<HwAssetPA>(op, l, r);
  };
  EXPECT_TRUE(SameRecord(merge(Op::kLeftOperand, left, right)->config(), left->config()));
  EXPECT_TRUE(SameRecord(merge(Op::kRightOperand, left, right)->config(), right->config()));
  EXPECT_EQ(merge(Op::kRightOperand, left, right)->asset_version(), 0u);
  EXPECT_TRUE(IsIdentity(*merge(Op::kIdentity, left, right)));
  EXPECT_TRUE(IsIdentity(*merge(static_cast<Op>(7), left, right)));
  for (const std::string side : {"left", "right"}) {
    LogCapture log;
    EXPECT_TRUE(IsIdentity(*(side == "left" ? merge(Op::kLeftOperand, nullptr, right)
                                            : merge(Op::kRightOperand, left, nullptr))));
    EXPECT_TRUE(OnlyLine(log, "E", "VexaJsonModeParser::HwAssetPA::HwAssetPA",
                         name + " Merge Error: Source (" + side + " operand) is empty"))
        << log.Dump();
  }
}

TEST(HwAssetPaTest, EachMergeTakesTheWholeRecordOfOneOperand) {
  CheckMerges<merge::KivPostBlendPaGlobalMergeOp>("PaGlobal");
  CheckMerges<merge::KivPostBlendPaMemoryColorsMergeOp>("PaMemoryColors");
  CheckMerges<merge::KivPostBlendPaMultiZoneMergeOp>("PaMultiZone");
}

TEST(HwAssetPaTest, AssemblyTakesEachSectionAndItsBitsFromItsPart) {
  auto global = Configured(Parse(R"({"hue": 5, "MemColSky": {"enable": true, "blendingEnable": true}})"));
  auto colors = Configured(FullSection(true));
  Json::Value zone_json = FullSection(false);
  zone_json["SixZone"]["hueCurve"] = Curve(50, false);
  auto zone = Configured(zone_json, 2);
  auto assembled = std::make_shared<HwAssetPA>(0, nullptr);
  const PaConfig& c = assembled->config();
  assembled->Assemble(global, colors, zone);
  EXPECT_EQ(c.ops, 0x1u | (0x7BFu & 0x6FEu) | 0x100u);
  EXPECT_TRUE(c.enable);
  EXPECT_EQ(std::memcmp(&c.global, &global->config().global, sizeof(c.global)), 0);
  EXPECT_EQ(std::memcmp(&c.skin, &colors->config().skin, 3 * sizeof(c.skin)), 0);
  EXPECT_EQ(std::memcmp(&c.six_zone, &zone->config().six_zone, sizeof(c.six_zone)), 0);

  assembled->Assemble(colors, nullptr, global);  // the other parts' bits are not taken
  EXPECT_EQ(c.ops, 0x1u);
  EXPECT_EQ(c.sky.blending_enable, 1u);  // a missing part gives neutral regions
  EXPECT_EQ(c.six_zone.num_entries, 0u);
  assembled->Assemble(nullptr, nullptr, nullptr);
  EXPECT_TRUE(IsIdentity(*assembled));
}

TEST(HwAssetPaTest, WrongTypesAndBadNumbersRefuseTheSection) {
  const struct {
    std::vector<std::string> path;  // empty: the whole section
    std::string value;              // JSON text put there
    const char* error;              // expected in the first error line
  } cases[] = {
      {{}, "[1]", "Invalid member \"(section)\""},
      {{"hue"}, "1e20", R"(Invalid member "hue": expected integer, found number out of range)"},
      {{"sat"}, "1e300", R"(Invalid member "sat": expected number, found number out of range)"},
      {{"MemColSkin"}, "5", R"(Invalid member "MemColSkin")"},
      {{"MemColSky", "hue", "adj"}, R"("3")", R"(Invalid member "adj" in member "MemColSky", member "hue")"},
      {{"MemColFol", "val", "mid"}, "5e9", R"(Invalid member "mid")"},
      {{"MemColSkin", "sat", "trapezoidEdgeRight"}, "[]", R"(Invalid member "trapezoidEdgeRight")"},
      {{"SixZone", "numEntries"}, R"("384")", R"(Invalid member "numEntries")"},
      {{"SixZone", "satCurve"}, "true", R"(Invalid member "satCurve" in member "SixZone": expected string or array)"},
      {{"SixZone", "hueCurve"}, R"("1,2,3")", R"(Invalid six-zone curve "hueCurve" in member "SixZone")"},
      {{"SixZone", "valCurve"}, R"("4294967296")", R"(Invalid six-zone curve "valCurve")"},
      {{"SixZone", "satCurveHigh"}, "[1, 2]", R"(Invalid six-zone curve "satCurveHigh")"},
      {{"SixZone", "hueCurve", "100"}, "-1", R"(Invalid member "hueCurve" in member "SixZone": expected array of)"},
      {{"SixZone", "valCurve"},  // all 384 wrong: still one error line
       [] { std::string t = R"(["x")"; for (int i = 1; i < 384; ++i) t += R"(,"x")"; return t + "]"; }(),
       R"(Invalid member "valCurve" in member "SixZone": expected array of)"},
      {{"SixZoneThresholds", "sat", "offset"}, "-3", R"(Invalid member "offset")"},
      {{"SixZoneThresholds", "satLow"}, R"("a")", R"(Invalid member "satLow")"},
  };
  for (const auto& c : cases) {
    Json::Value json = FullSection(false);  // below 3 both curve forms are read
    Json::Value* target = &json;
    for (const std::string& key : c.path) {
      target = target->isArray() ? &(*target)[std::stoi(key)] : &(*target)[key];
    }
    *target = Parse(c.value);
    LogCapture log;
    EXPECT_TRUE(IsIdentity(*Configured(json, 2))) << c.error;
    ASSERT_EQ(log.Errors().size(), 1u) << log.Dump();
    EXPECT_NE(log.Errors()[0].find(c.error), std::string::npos) << log.Dump();
  }
}

}  // namespace
}  // namespace vexa
