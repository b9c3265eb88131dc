// Merging two modes: choosing the operands, and building the merged mode block by block.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "assets/hw_asset_gamut.h"
#include "assets/hw_asset_pa.h"
#include "assets/hw_asset_pcc.h"
#include "modes/kiv_modes_manager.h"
#include "support/algo_double.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"
#include "support/mode_fixtures.h"

namespace vexa {
namespace {

using namespace kiv_mode_merge_caps;
using testing::LogCapture;

KivModeDescr Pattern(const std::string& name) {
  return KivModeDescr{name, ColorPrimaries_DCIP3, Transfer_Gamma2_2, 258, "", 6500, kSdr, "m"};
}

// A rule with every operation `op`, at merge version `version`.
std::shared_ptr<KivModeMergeDef> Rule(uint32_t op, uint16_t version = 1) {
  auto rule = std::make_shared<KivModeMergeDef>();
  rule->version_context = std::make_shared<KivModeMergeVersionContext>();
  rule->version_context->version = version;
  rule->left_mode_name = "left as written";
  rule->right_mode_name = "right as written";
  rule->descr = std::make_shared<KivModeDescr>(Pattern("Merged"));
  rule->gamut_op = KivPostBlendGamutMergeOp(op);
  rule->gc_op = KivPostBlendGCMergeOp(op);
  rule->pa_global_op = KivPostBlendPaGlobalMergeOp(op);
  rule->pa_multi_zone_op = KivPostBlendPaMultiZoneMergeOp(op);
  rule->pa_memory_colors_op = KivPostBlendPaMemoryColorsMergeOp(op);
  rule->pa_dither_op = KivPostBlendPaDitherMergeOp(op);
  rule->igc_op = KivPostBlendIGCMergeOp(op);
  rule->pcc_op = KivPostBlendPCCMergeOp(op);
  rule->dither_op = KivPostBlendDitherMergeOp(op);
  rule->de_op = KivPostBlendDEMergeOp(op);
  rule->hdr_blob_op = KivPostBlendHdrBlobMergeOp(op);
  rule->game_blob_op = KivPostBlendGameBlobMergeOp(op);
  return rule;
}

TEST(ModeMergeTest, OperandsAreTheFirstMatchingFactoryAndWorkflowModes) {
  using Change = void (*)(KivModeDescr&);
  const Change same = [](KivModeDescr&) {};
  const Change intent = [](KivModeDescr& d) { d.render_intent = 384; };
  const Change merge_id = [](KivModeDescr& d) { d.merge_id = ""; };
  const Change white = [](KivModeDescr& d) { d.white_point = 6504; };
  const Change range = [](KivModeDescr& d) { d.dynamic_range = kHdr; };
  const struct {
    std::vector<std::pair<const char*, Change>> factory, workflow;
    const char* left;  // expected operands; "" when none matches
    const char* right;
  } cases[] = {
      {{{"F1", same}, {"F2", same}}, {{"W", same}}, "F1", "W"},
      {{{"Floor", intent}}, {{"W1", intent}, {"W2", same}}, "Floor", "W2"},  // intent: workflow only
      {{{"F", white}, {"F2", same}}, {{"W", merge_id}}, "F2", ""},
      {{{"F", range}}, {{"W", same}}, "", "W"},
      {{{"F", merge_id}}, {}, "", ""},
  };
  for (const auto& c : cases) {
    KivModeList lists[2];
    for (int side : {0, 1}) {
      for (const auto& [name, change] : side == 0 ? c.factory : c.workflow) {
        lists[side].push_back(testing::ModeWithDescr(Pattern(name)));
        change(*lists[side].back()->descr());
      }
    }
    auto rule = Rule(kMergeOpIdentity);
    KivModesManager manager("panel");
    LogCapture log;
    auto merged = manager.MergeModesFromList(nullptr, rule, lists[0], lists[1]);
    const bool found_left = *c.left != '\0';
    const bool found_right = *c.right != '\0';
    EXPECT_EQ(log.Count(std::string("MergeModesFromList():43 Found applicable factory floor mode: ") + c.left),
              found_left ? 1u : 0u) << log.Dump();
    EXPECT_EQ(log.Count(std::string("MergeModesFromList():63 Found applicable workflow mode: ") + c.right),
              found_right ? 1u : 0u) << log.Dump();
    // Only the left name is written back, and only when a factory mode was found.
    EXPECT_EQ(rule->left_mode_name, found_left ? c.left : "left as written");
    EXPECT_EQ(rule->right_mode_name, "right as written");
    EXPECT_EQ(merged != nullptr, found_left && found_right);
    const std::string failure = "E VexaJsonModeParser::KivModesManager::MergeModesFromList():71 Failed to "
                                "create merged mode Merged: left mode: " + rule->left_mode_name +
                                ", right mode: right as written";
    EXPECT_EQ(log.Errors(), merged ? std::vector<std::string>{} : std::vector<std::string>{failure});
  }
}

// Operands holding every asset kind, each with contents of its own.
std::shared_ptr<KivMode> Operand(const std::string& name, int tag) {
  const std::string t = std::to_string(tag);
  auto mode = testing::ParseReadableMode(name, R"({"Applicability": {"RenderIntent": )" + t + R"(},
      "PostBlendIGC": {"enable": true, "lutR": [)" + t + R"(], "lutG": [3], "lutB": [5]},
      "PostBlendGC": {"enable": true, "lutR": [)" + t + R"(], "lutG": [8], "lutB": [9]},
      "PostBlendGamut": {"enable": true, "mapFine": [")" + t + R"(,2,3"]},
      "PostBlendPCC": {"enable": true, "R": {"r": )" + t + R"(}},
      "PostBlendDither": {"enable": true, "strengthR": )" + t + R"(},
      "PostBlendPaDither": {"enable": true, "strength": )" + t + R"(},
      "PostBlendDE": {"enable": true, "sharp": )" + t + R"(},
      "PostBlendPa": {"hue": )" + t + R"(, "MemColSky": {"enable": true, "sat": {"adj": )" + t + R"(}}},
      "PostBlendHdrBlob": {"blob": "hdr )" + t + R"("},
      "PostBlendGameBlob": {"enable": true, "blob": "game )" + t + R"("}})");
  return mode;
}

TEST(ModeMergeTest, EachBlockTakesTheOperandItsOperationNamesUnderTheRulesDescriptor) {
  const auto left = Operand("L", 1);
  const auto right = Operand("R", 2);
  for (uint32_t op : {kMergeOpLeftOperand, kMergeOpRightOperand, kMergeOpIdentity}) {
    LogCapture log;
    KivMode merged(nullptr, Rule(op), left, right);
    EXPECT_TRUE(log.Errors().empty()) << log.Dump();
    EXPECT_EQ(merged.descr()->name + "|" + merged.descr()->merge_id, "Merged|m");
    EXPECT_EQ(merged.descr()->render_intent, 258);
    EXPECT_EQ(merged.descr()->white_point, 6500u);
    EXPECT_NE(merged.descr(), left->descr());
    const KivMode* source = op == kMergeOpLeftOperand ? left.get() : right.get();
    // An identity HDR operation makes no HDR entry; every other identity block is switched off.
    EXPECT_EQ(merged.assets().size(), op == kMergeOpIdentity ? 9u : 10u);
    for (const auto& [key, asset] : merged.assets()) {
      ASSERT_TRUE(asset) << key;
      const Json::Value expected = op == kMergeOpIdentity ? testing::ParseReadable(R"({"enable": false})")
                                                          : *source->assets().at(key)->AsJV();
      EXPECT_EQ(*asset->AsJV(), expected) << key << " op " << op;
      EXPECT_NE(asset, source->assets().at(key));
    }
  }
  for (uint16_t version : {0, 2}) {  // versions that list nothing to merge
    EXPECT_TRUE(KivMode(nullptr, Rule(kMergeOpLeftOperand, version), left, right).assets().empty());
  }
}

// A PA asset whose sections carry `tag` and whose feature word is `ops`.
std::shared_ptr<HwAssetPA> Pa(int32_t tag, uint32_t ops) {
  auto record = std::make_unique<PaConfig>();
  record->enable = true;
  record->ops = ops;
  record->global.hue = tag;
  record->sky.sat.adj = static_cast<float>(tag + 20);
  record->six_zone.entries[kPaSixZoneEntries - 1].sat_high = static_cast<uint32_t>(tag + 40);
  auto pa = std::make_shared<HwAssetPA>(0, nullptr);
  pa->SetConfig(*record);
  return pa;
}

TEST(ModeMergeTest, ThePaPartsAreMergedSeparatelyAndAssembledIntoOneAsset) {
  const struct {
    uint32_t global, memory_colors, multi_zone;
    int32_t global_from, regions_from, six_zone_from;  // 1 left, 2 right, 0 cleared
    uint32_t ops;
  } cases[] = {
      {kMergeOpLeftOperand, kMergeOpRightOperand, kMergeOpLeftOperand, 1, 2, 1, 0x1 | 0x440 | 0x100},
      {kMergeOpIdentity, kMergeOpLeftOperand, kMergeOpIdentity, 0, 1, 0, 0x20},
      {kMergeOpIdentity, kMergeOpIdentity, kMergeOpRightOperand, 0, 0, 2, 0},
  };
  auto left = testing::ModeWithDescr(Pattern("L"));
  auto right = testing::ModeWithDescr(Pattern("R"));
  left->SetPa(Pa(1, 0x121));   // global, skin, six-zone
  right->SetPa(Pa(2, 0x441));  // global, sky, blending off
  for (const auto& c : cases) {
    auto rule = Rule(kMergeOpIdentity);
    rule->pa_global_op = KivPostBlendPaGlobalMergeOp(c.global);
    rule->pa_memory_colors_op = KivPostBlendPaMemoryColorsMergeOp(c.memory_colors);
    rule->pa_multi_zone_op = KivPostBlendPaMultiZoneMergeOp(c.multi_zone);
    KivMode merged(nullptr, rule, left, right);
    ASSERT_TRUE(merged.GetPa());
    const PaConfig& pa = merged.GetPa()->config();
    EXPECT_EQ(pa.ops, c.ops);
    EXPECT_EQ(pa.enable, c.ops != 0);
    EXPECT_EQ(pa.global.hue, c.global_from);
    EXPECT_EQ(pa.sky.sat.adj, c.regions_from ? c.regions_from + 20.0f : 0.0f);
    EXPECT_EQ(pa.six_zone.entries[kPaSixZoneEntries - 1].sat_high, c.six_zone_from ? c.six_zone_from + 40u : 0u);
  }
}

TEST(ModeMergeTest, GamutAndPccMergeOperandsGoThroughTheAlgorithmLibrary) {
  auto left = testing::ParseReadableMode("L", R"({"PostBlendGamut": {"enable": true, "mapFine": ["1,2,3"]},
      "PostBlendPCC": {"enable": true, "R": {"r": 0.5}}})");
  auto right = testing::ParseReadableMode("R", R"({
      "PostBlendGamut": {"enable": true, "mapFine": ["7,7,7"], "Tuning": ["10,20,30"]},
      "PostBlendPCC": {"enable": true, "R": {"r": 3.0}, "Tuning": {"R": {"r": 1.0}}}})");
  auto rule = Rule(kMergeOpIdentity);
  rule->gamut_op = KivPostBlendGamutMergeOp::kMergeOperand;
  rule->pcc_op = KivPostBlendPCCMergeOp::kMergeOperand;
  testing::AlgoDouble algo;
  algo.set_check_framing(true);
  KivMode merged(&algo, rule, left, right);
  // The double answers left + 2 * right (the right operand's tuning table), in merge order.
  ASSERT_EQ(algo.calls().size(), 2u);
  EXPECT_EQ(algo.calls()[0].op, kKivGamutMerge);
  EXPECT_EQ(algo.calls()[1].op, kKivPccMerge);
  EXPECT_TRUE(algo.framing_errors().empty());
  const GamutEntry& entry = merged.GetGamut()->config().entries[0];
  EXPECT_EQ(std::vector<uint32_t>({entry.out_0, entry.out_1, entry.out_2}), std::vector<uint32_t>({21, 42, 63}));
  EXPECT_DOUBLE_EQ(merged.GetPcc()->config().coeffs.red.r, 2.5);

  // Without the library both blocks are left at identity, and the merge still succeeds.
  LogCapture log;
  KivMode without(nullptr, rule, left, right);
  EXPECT_FALSE(without.GetGamut()->config().enable || without.GetPcc()->config().enable);
  EXPECT_TRUE(log.Contains("Gamut Merge Error: Source (either left or right operand) is empty or "
                           "vexa_algo_intf is nullptr")) << log.Dump();
  EXPECT_TRUE(log.Contains("vexa_algo_intf(null)")) << log.Dump();
}

}  // namespace
}  // namespace vexa
