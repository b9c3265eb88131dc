// Merging two modes into one, block by block.
#include "modes/kiv_mode.h"

#include <gtest/gtest.h>

#include <string>

#include "assets/hw_asset_pa.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using namespace kiv_mode_merge_caps;

// A rule with every operation `op`, at merge version 1.
std::shared_ptr<KivModeMergeDef> Rule(uint32_t op) {
  auto version = std::make_shared<KivModeMergeVersionContext>();
  version->version = 1;
  return std::make_shared<KivModeMergeDef>(KivModeMergeDef{
      version, "L", "R", KivPostBlendGamutMergeOp(op), KivPostBlendGCMergeOp(op), KivPostBlendPaGlobalMergeOp(op),
      KivPostBlendPaMultiZoneMergeOp(op), KivPostBlendPaMemoryColorsMergeOp(op), KivPostBlendPaDitherMergeOp(op),
      KivPostBlendIGCMergeOp(op), KivPostBlendPCCMergeOp(op), KivPostBlendDitherMergeOp(op),
      KivPostBlendDEMergeOp(op), KivPostBlendHdrBlobMergeOp(op), KivPostBlendGameBlobMergeOp(op),
      std::make_shared<KivModeDescr>(KivModeDescr{"Merged", ColorPrimaries_DCIP3, Transfer_sRGB, 7, "m", 1, kHdr, "id"})});
}

// An operand holding every asset kind, each with contents of its own; its PA has the feature word
// `pa_ops`, and its hue and last six-zone entry carry `tag`.
std::shared_ptr<KivMode> Operand(int tag, uint32_t pa_ops) {
  const std::string t = std::to_string(tag);
  auto mode = testing::MakeMode({}, R"({"PostBlendIGC": {"enable": true, "lutR": [)" + t + R"(], "lutG": [3], "lutB": [5]},
      "PostBlendGC": {"enable": true, "lutR": [)" + t + R"(], "lutG": [8], "lutB": [9]},
      "PostBlendGamut": {"enable": true, "mapFine": [")" + t + R"(,2,3"]}, "PostBlendPCC": {"enable": true, "R": {"r": )" + t + R"(}},
      "PostBlendDither": {"enable": true, "strengthR": )" + t + R"(}, "PostBlendDE": {"enable": true, "sharp": )" + t + R"(},
      "PostBlendPaDither": {"enable": true, "strength": )" + t + R"(}, "PostBlendHdrBlob": {"blob": "hdr )" + t + R"("},
      "PostBlendGameBlob": {"enable": true, "blob": "game )" + t + R"("}, "PostBlendPa": {"hue": )" + t + R"(}})");
  auto pa = std::make_unique<PaConfig>(mode->GetPa()->config());
  pa->ops = pa_ops;
  pa->six_zone.entries[kPaSixZoneEntries - 1].sat_high = static_cast<uint32_t>(tag + 40);
  mode->GetPa()->SetConfig(*pa);
  return mode;
}

// The PA parts (global, memory colours, six-zone) are merged separately and assembled into one asset.
TEST(KivModeTest, EachMergedBlockTakesTheOperandItsOperationNamesUnderTheRulesDescriptor) {
  const uint32_t L = kMergeOpLeftOperand, R = kMergeOpRightOperand, I = kMergeOpIdentity;
  const struct {
    uint32_t op, pa_global, pa_memory_colors, pa_multi_zone, pa_ops;
    int32_t hue;  // 1 left, 2 right, 0 cleared
    uint32_t six_zone;
  } cases[] = {
      {L, L, L, L, 0x121, 1, 41}, {R, R, R, R, 0x441, 2, 42}, {I, I, I, I, 0, 0, 0},
      {L, L, R, L, 0x1 | 0x440 | 0x100, 1, 41}, {I, I, L, R, 0x20, 0, 42},
  };
  const auto left = Operand(1, 0x121);   // PA: global, skin, six-zone
  const auto right = Operand(2, 0x441);  // PA: global, sky, blending off
  for (const auto& c : cases) {
    auto rule = Rule(c.op);
    rule->pa_global_op = KivPostBlendPaGlobalMergeOp(c.pa_global);
    rule->pa_memory_colors_op = KivPostBlendPaMemoryColorsMergeOp(c.pa_memory_colors);
    rule->pa_multi_zone_op = KivPostBlendPaMultiZoneMergeOp(c.pa_multi_zone);
    testing::LogCapture log;
    KivMode merged(nullptr, rule, left, right);
    EXPECT_TRUE(log.Errors().empty()) << log.Dump();
    EXPECT_EQ(testing::DescrText(*merged.descr()), testing::DescrText(*rule->descr));
    const KivMode* source = c.op == L ? left.get() : right.get();
    // An identity HDR operation makes no HDR entry; every other identity block is switched off.
    EXPECT_EQ(merged.assets().size(), c.op == I ? 9u : 10u);
    for (const auto& [key, asset] : merged.assets()) {
      ASSERT_TRUE(asset) << key;
      EXPECT_NE(asset, source->assets().at(key));
      EXPECT_EQ(source->assets().at(key)->AsPayload()->name, key);  // each key makes an asset of its own class
      if (key == "PostBlendPa") continue;
      const Json::Value expected =
          c.op == I ? testing::ParseReadable(R"({"enable": false})") : *source->assets().at(key)->AsJV();
      EXPECT_EQ(*asset->AsJV(), expected) << key << " op " << c.op;
    }
    const PaConfig& pa = merged.GetPa()->config();
    EXPECT_EQ(pa.ops, c.pa_ops);
    EXPECT_EQ(pa.global.hue, c.hue);
    EXPECT_EQ(pa.six_zone.entries[kPaSixZoneEntries - 1].sat_high, c.six_zone);
  }
}

}  // namespace
}  // namespace vexa
