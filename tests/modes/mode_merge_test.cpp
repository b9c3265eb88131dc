// Merging two modes into one: choosing the operands, and building the merged mode by rule.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "assets/hw_asset_de.h"
#include "assets/hw_asset_dither.h"
#include "assets/hw_asset_game_blob.h"
#include "assets/hw_asset_gamut.h"
#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_hdr.h"
#include "assets/hw_asset_igc.h"
#include "assets/hw_asset_pa.h"
#include "assets/hw_asset_pa_dither.h"
#include "assets/hw_asset_pcc.h"
#include "modes/kiv_modes_manager.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"
#include "support/mode_fixtures.h"

namespace vexa {
namespace {

using testing::Descr;
using testing::LogCapture;
using testing::ModeWithDescr;
using testing::ParseReadable;

KivModeDescr Pattern(const std::string& name) {
  return Descr(name, ColorPrimaries_DCIP3, Transfer_Gamma2_2, 258, 6500, kSdr, "m");
}

// A rule whose twelve operations are all `op`, at merge version `version`.
std::shared_ptr<KivModeMergeDef> Rule(uint32_t op, uint16_t version = 1) {
  using namespace kiv_mode_merge_caps;
  auto rule = std::make_shared<KivModeMergeDef>();
  rule->version_context = std::make_shared<KivModeMergeVersionContext>();
  rule->version_context->version = version;
  rule->left_mode_name = "left as written";
  rule->right_mode_name = "right as written";
  rule->descr = std::make_shared<KivModeDescr>(Pattern("Merged"));
  rule->gamut_op = static_cast<KivPostBlendGamutMergeOp>(op);
  rule->gc_op = static_cast<KivPostBlendGCMergeOp>(op);
  rule->pa_global_op = static_cast<KivPostBlendPaGlobalMergeOp>(op);
  rule->pa_multi_zone_op = static_cast<KivPostBlendPaMultiZoneMergeOp>(op);
  rule->pa_memory_colors_op = static_cast<KivPostBlendPaMemoryColorsMergeOp>(op);
  rule->pa_dither_op = static_cast<KivPostBlendPaDitherMergeOp>(op);
  rule->igc_op = static_cast<KivPostBlendIGCMergeOp>(op);
  rule->pcc_op = static_cast<KivPostBlendPCCMergeOp>(op);
  rule->dither_op = static_cast<KivPostBlendDitherMergeOp>(op);
  rule->de_op = static_cast<KivPostBlendDEMergeOp>(op);
  rule->hdr_blob_op = static_cast<KivPostBlendHdrBlobMergeOp>(op);
  rule->game_blob_op = static_cast<KivPostBlendGameBlobMergeOp>(op);
  return rule;
}

std::vector<std::string> Keys(const KivMode& mode) {
  std::vector<std::string> keys;
  for (const auto& entry : mode.assets()) keys.push_back(entry.first);
  return keys;
}

// ------------------------------------------------------------------------------------------
// Choosing the operands

struct Candidate {
  const char* name;
  void (*change)(KivModeDescr&);
};

void Same(KivModeDescr&) {}
void OtherIntent(KivModeDescr& d) { d.render_intent = 384; }
void OtherMergeId(KivModeDescr& d) { d.merge_id = ""; }
void OtherWhitePoint(KivModeDescr& d) { d.white_point = 6504; }
void OtherPrimaries(KivModeDescr& d) { d.color_primaries = ColorPrimaries_BT709_5; }
void OtherTransfer(KivModeDescr& d) { d.gamma_transfer = Transfer_sRGB; }
void OtherRange(KivModeDescr& d) { d.dynamic_range = kHdr; }
void OtherNames(KivModeDescr& d) { d.render_intent_name = "x"; }

KivModeList Candidates(const std::vector<Candidate>& candidates) {
  KivModeList modes;
  for (const Candidate& c : candidates) {
    KivModeDescr d = Pattern(c.name);
    c.change(d);
    modes.push_back(ModeWithDescr(d));
  }
  return modes;
}

TEST(ModeMergeTest, OperandsAreTheFirstFactoryAndWorkflowModesThatMatchTheRule) {
  const struct {
    const char* what;
    std::vector<Candidate> factory;
    std::vector<Candidate> workflow;
    const char* left;   // expected operand, or nullptr when none matches
    const char* right;
  } cases[] = {
      {"first of two matching factory modes", {{"F1", Same}, {"F2", Same}}, {{"W", Same}}, "F1", "W"},
      {"factory render intent is not compared", {{"Floor", OtherIntent}}, {{"W", OtherNames}}, "Floor", "W"},
      {"workflow render intent is compared", {{"F", Same}}, {{"W1", OtherIntent}, {"W2", Same}}, "F", "W2"},
      {"workflow merge id is compared", {{"F", Same}}, {{"W", OtherMergeId}}, "F", nullptr},
      {"factory white point", {{"F", OtherWhitePoint}, {"F2", Same}}, {{"W", Same}}, "F2", "W"},
      {"factory primaries", {{"F", OtherPrimaries}}, {{"W", Same}}, nullptr, "W"},
      {"factory transfer", {{"F", OtherTransfer}}, {{"W", Same}}, nullptr, "W"},
      {"factory dynamic range", {{"F", OtherRange}}, {{"W", Same}}, nullptr, "W"},
      {"factory merge id", {{"F", OtherMergeId}}, {{"W", Same}}, nullptr, "W"},
      {"workflow white point", {{"F", Same}}, {{"W", OtherWhitePoint}}, "F", nullptr},
      {"no candidates", {}, {}, nullptr, nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    KivModesManager manager("panel");
    auto rule = Rule(kiv_mode_merge_caps::kMergeOpIdentity);
    LogCapture log;
    std::shared_ptr<KivMode> merged =
        manager.MergeModesFromList(nullptr, rule, Candidates(c.factory), Candidates(c.workflow));
    const std::string left_line =
        std::string("I VexaJsonModeParser::KivModesManager::MergeModesFromList():43 "
                    "Found applicable factory floor mode: ") + (c.left ? c.left : "");
    const std::string right_line =
        std::string("I VexaJsonModeParser::KivModesManager::MergeModesFromList():63 "
                    "Found applicable workflow mode: ") + (c.right ? c.right : "");
    EXPECT_EQ(log.Count(left_line), c.left ? 1u : 0u) << log.Dump();
    EXPECT_EQ(log.Count(right_line), c.right ? 1u : 0u) << log.Dump();
    // Only the left name is written back, and only when a factory mode was found.
    EXPECT_EQ(rule->left_mode_name, c.left ? c.left : "left as written");
    EXPECT_EQ(rule->right_mode_name, "right as written");
    if (c.left && c.right) {
      ASSERT_TRUE(merged);
      EXPECT_EQ(merged->descr()->name, "Merged");
      EXPECT_TRUE(log.Errors().empty()) << log.Dump();
    } else {
      EXPECT_FALSE(merged);
      EXPECT_EQ(log.Errors(),
                std::vector<std::string>{
                    "E VexaJsonModeParser::KivModesManager::MergeModesFromList():71 Failed to create "
                    "merged mode Merged: left mode: " + rule->left_mode_name +
                    ", right mode: right as written"});
    }
  }
}

// ------------------------------------------------------------------------------------------
// Building the merged mode

// A PA asset whose sections carry `tag` and whose feature word is `ops`.
std::shared_ptr<HwAssetPA> Pa(int32_t tag, uint32_t ops) {
  auto record = std::make_unique<PaConfig>();
  record->len = kPaConfigLen;
  record->enable = true;
  record->ops = ops;
  record->global.hue = tag;
  record->global.sat = 0.5f * static_cast<float>(tag);
  record->skin.hue.adj_int = tag + 10;
  record->sky.sat.adj = static_cast<float>(tag + 20);
  record->foliage.val.mid = static_cast<uint32_t>(tag + 30);
  record->six_zone.enable = 1;
  record->six_zone.num_entries = kPaSixZoneEntries;
  record->six_zone.entries[kPaSixZoneEntries - 1].sat_high = static_cast<uint32_t>(tag + 40);
  record->six_zone.thresholds.sat_min = tag + 50;
  auto pa = std::make_shared<HwAssetPA>(0, nullptr);
  pa->SetConfig(*record);
  return pa;
}

// Operands with every asset kind, each with contents of its own.
std::shared_ptr<KivMode> Operand(const std::string& name, int tag) {
  const std::string t = std::to_string(tag);
  KivModeDescr d = Descr(name, ColorPrimaries_BT709_5, Transfer_sRGB, tag, 5000 + tag, kHdr, "op");
  std::shared_ptr<KivMode> mode = testing::ParseReadableMode(name, R"({
      "PostBlendIGC": {"enable": true, "lutR": [)" + t + R"(, 2], "lutG": [3, 4], "lutB": [5, 6],
                       "ditherEnable": true, "ditherStrength": )" + t + R"(},
      "PostBlendGC": {"enable": true, "lutR": [)" + t + R"(], "lutG": [8], "lutB": [9]},
      "PostBlendGamut": {"enable": true, "mapFine": [")" + t + R"(,2,3", "4,5,6"]},
      "PostBlendPCC": {"enable": true, "R": {"r": )" + t + R"(.5}, "G": {"g": 1.0}, "B": {"b": 1.0}},
      "PostBlendDither": {"enable": true, "strengthR": )" + t + R"(, "matrix": [1, 2]},
      "PostBlendPaDither": {"enable": true, "strength": )" + t + R"(, "matrix": [3]},
      "PostBlendDE": {"enable": true, "sharp": )" + t + R"(, "flags": "SHARPNESS"},
      "PostBlendHdrBlob": {"blob": "hdr )" + t + R"("},
      "PostBlendGameBlob": {"enable": true, "blob": "game )" + t + R"("}})");
  *mode->descr() = d;
  mode->SetPa(Pa(tag, 0x121));
  return mode;
}

TEST(ModeMergeTest, TheMergedModeIsNamedAndClassifiedByTheRule) {
  auto rule = Rule(kiv_mode_merge_caps::kMergeOpLeftOperand);
  rule->descr->render_intent_name = "merged intent";
  KivMode merged(nullptr, rule, Operand("L", 1), Operand("R", 2));
  ASSERT_TRUE(merged.descr());
  EXPECT_NE(merged.descr(), rule->descr);  // a descriptor of its own
  const KivModeDescr& d = *merged.descr();
  EXPECT_EQ(d.name, "Merged");
  EXPECT_EQ(d.color_primaries, ColorPrimaries_DCIP3);
  EXPECT_EQ(d.gamma_transfer, Transfer_Gamma2_2);
  EXPECT_EQ(d.render_intent, 258);
  EXPECT_EQ(d.render_intent_name, "merged intent");
  EXPECT_EQ(d.white_point, 6500u);
  EXPECT_EQ(d.dynamic_range, kSdr);
  EXPECT_EQ(d.merge_id, "m");
  EXPECT_EQ(merged.asset_version(), 0u);
  EXPECT_FALSE(merged.common_data());
}

TEST(ModeMergeTest, EachBlockTakesTheOperandThatItsOperationNames) {
  auto left = Operand("L", 1);
  auto right = Operand("R", 2);
  const std::vector<std::string> kinds = {
      "PostBlendDE", "PostBlendDither", "PostBlendGC", "PostBlendGameBlob", "PostBlendGamut",
      "PostBlendHdrBlob", "PostBlendIGC", "PostBlendPCC", "PostBlendPa", "PostBlendPaDither"};
  for (uint32_t op : {kiv_mode_merge_caps::kMergeOpLeftOperand, kiv_mode_merge_caps::kMergeOpRightOperand,
                      kiv_mode_merge_caps::kMergeOpIdentity}) {
    SCOPED_TRACE(op);
    LogCapture log;
    KivMode merged(nullptr, Rule(op), left, right);
    EXPECT_TRUE(log.Errors().empty()) << log.Dump();
    std::vector<std::string> expected_keys = kinds;
    if (op == kiv_mode_merge_caps::kMergeOpIdentity) {
      expected_keys.erase(std::find(expected_keys.begin(), expected_keys.end(), "PostBlendHdrBlob"));
    }
    EXPECT_EQ(Keys(merged), expected_keys);
    for (const std::string& key : kinds) {
      SCOPED_TRACE(key);
      if (op == kiv_mode_merge_caps::kMergeOpIdentity) {
        // An identity HDR operation makes no entry at all; every other block is switched off.
        if (key == "PostBlendHdrBlob") {
          EXPECT_EQ(merged.assets().count(key), 0u);
          continue;
        }
        ASSERT_TRUE(merged.assets().at(key));
        EXPECT_EQ(*merged.assets().at(key)->AsJV(), ParseReadable(R"({"enable": false})"));
        continue;
      }
      const KivMode& source = op == kiv_mode_merge_caps::kMergeOpLeftOperand ? *left : *right;
      ASSERT_EQ(merged.assets().count(key), 1u);
      ASSERT_TRUE(merged.assets().at(key));
      EXPECT_NE(merged.assets().at(key), source.assets().at(key));  // a merged copy
      EXPECT_EQ(*merged.assets().at(key)->AsJV(), *source.assets().at(key)->AsJV());
    }
  }
}

TEST(ModeMergeTest, AMissingOperandAssetLeavesThatBlockAtIdentity) {
  auto left = Operand("L", 1);
  auto bare = ModeWithDescr(Pattern("bare"));
  LogCapture log;
  KivMode merged(nullptr, Rule(kiv_mode_merge_caps::kMergeOpRightOperand), left, bare);
  ASSERT_TRUE(merged.GetDe());
  EXPECT_FALSE(merged.GetDe()->config().enable);
  ASSERT_TRUE(merged.GetGc());
  EXPECT_FALSE(merged.GetGc()->config().enable);
  EXPECT_TRUE(log.Contains("HwAssetDE::HwAssetDE():")) << log.Dump();
  EXPECT_TRUE(log.Contains("DE Merge Error: Source (right operand) is empty")) << log.Dump();
  EXPECT_TRUE(log.Contains("GC Merge Error: Source (right operand) is empty")) << log.Dump();
}

TEST(ModeMergeTest, NothingIsMergedAtAMergeVersionWithoutMergeables) {
  for (uint16_t version : {0, 2}) {
    KivMode merged(nullptr, Rule(kiv_mode_merge_caps::kMergeOpLeftOperand, version), Operand("L", 1),
                   Operand("R", 2));
    EXPECT_TRUE(merged.assets().empty()) << version;
    EXPECT_EQ(merged.descr()->name, "Merged");
  }
  auto rule = Rule(kiv_mode_merge_caps::kMergeOpLeftOperand);
  rule->version_context = nullptr;
  KivMode merged(nullptr, rule, Operand("L", 1), Operand("R", 2));
  EXPECT_TRUE(merged.assets().empty());
}

TEST(ModeMergeTest, ThePaPartsAreMergedSeparatelyAndAssembledIntoOneAsset) {
  using namespace kiv_mode_merge_caps;
  constexpr uint32_t kLeftOps = 0x121;   // global, skin, six-zone
  constexpr uint32_t kRightOps = 0x441;  // global, sky, blending off
  constexpr int32_t kLeft = 1;
  constexpr int32_t kRight = 2;
  const struct {
    const char* what;
    uint32_t global, memory_colors, multi_zone;
    int32_t global_from, regions_from, six_zone_from;  // 0: cleared
    uint32_t ops;
  } cases[] = {
      {"global left, colours right, zones left", kMergeOpLeftOperand, kMergeOpRightOperand,
       kMergeOpLeftOperand, kLeft, kRight, kLeft, 0x1 | 0x440 | 0x100},
      {"memory colours only", kMergeOpIdentity, kMergeOpLeftOperand, kMergeOpIdentity, 0, kLeft, 0, 0x20},
      {"zones right only: no feature bit", kMergeOpIdentity, kMergeOpIdentity, kMergeOpRightOperand, 0,
       0, kRight, 0},
      {"all identity", kMergeOpIdentity, kMergeOpIdentity, kMergeOpIdentity, 0, 0, 0, 0},
  };
  auto left = ModeWithDescr(Pattern("L"));
  auto right = ModeWithDescr(Pattern("R"));
  left->SetPa(Pa(kLeft, kLeftOps));
  right->SetPa(Pa(kRight, kRightOps));
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    auto rule = Rule(kMergeOpIdentity);
    rule->pa_global_op = static_cast<KivPostBlendPaGlobalMergeOp>(c.global);
    rule->pa_memory_colors_op = static_cast<KivPostBlendPaMemoryColorsMergeOp>(c.memory_colors);
    rule->pa_multi_zone_op = static_cast<KivPostBlendPaMultiZoneMergeOp>(c.multi_zone);
    KivMode merged(nullptr, rule, left, right);
    ASSERT_TRUE(merged.GetPa());
    const PaConfig& pa = merged.GetPa()->config();
    EXPECT_EQ(pa.len, kPaConfigLen);
    EXPECT_EQ(pa.ops, c.ops);
    EXPECT_EQ(pa.enable, c.ops != 0);
    EXPECT_EQ(pa.global.hue, c.global_from);
    EXPECT_FLOAT_EQ(pa.global.sat, 0.5f * static_cast<float>(c.global_from));
    EXPECT_EQ(pa.skin.hue.adj_int, c.regions_from ? c.regions_from + 10 : 0);
    EXPECT_FLOAT_EQ(pa.sky.sat.adj, c.regions_from ? static_cast<float>(c.regions_from + 20) : 0.0f);
    EXPECT_EQ(pa.foliage.val.mid, c.regions_from ? static_cast<uint32_t>(c.regions_from + 30) : 0u);
    EXPECT_EQ(pa.six_zone.entries[kPaSixZoneEntries - 1].sat_high,
              c.six_zone_from ? static_cast<uint32_t>(c.six_zone_from + 40) : 0u);
    EXPECT_EQ(pa.six_zone.thresholds.sat_min, c.six_zone_from ? c.six_zone_from + 50 : 0);
  }
}

}  // namespace
}  // namespace vexa
