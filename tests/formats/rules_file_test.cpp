#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "formats/json_parser.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::LogCapture;
using Names = std::vector<std::string>;

TEST(RulesFileTest, ReadsRulesInNameOrderWithDescriptorAndOperands) {
  LogCapture log;
  auto rules = json_parser::parse_mode_merge_rules(R"({"panel": {
      "MergedModes": {"Zeta": {}, "Cinema": {
          "ModeNameInputLeft": "Floor", "ModeNameInputRight": "Cinema P3", "WhitePoint": 6500,
          "Applicability": {"RenderIntent": 260, "GammaTransfer": "2p2", "ColorPrimaries": "P3",
                            "RenderIntentName": "cinema"},
          "MergeId": "m1", "DynamicRange": "HDR"}}}})",
                                                   "panel");
  ASSERT_TRUE(rules && rules->size() == 2);
  EXPECT_TRUE(log.Contains("Merged Mode: Zeta"));
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  const KivModeMergeDef& cinema = *(*rules)[0];
  const KivModeMergeDef& zeta = *(*rules)[1];
  EXPECT_EQ(cinema.left_mode_name + "|" + cinema.right_mode_name, "Floor|Cinema P3");
  EXPECT_EQ(testing::DescrText(*cinema.descr),
            testing::DescrText({"Cinema", ColorPrimaries_DCIP3, Transfer_Gamma2_2, 260, "cinema", 6500, kHdr, "m1"}));
  // Missing members take the defaults.
  EXPECT_EQ(testing::DescrText(*zeta.descr),
            testing::DescrText({"Zeta", ColorPrimaries_BT709_5, Transfer_sRGB, 0, "", 0, kSdr, ""}));
}

// "MergeOps" keys, gamut and PCC (the two that know "MERGE_OPERAND") first, and their operations in the same order.
const char* const kOpKeys[] = {"PostBlendGamutMergeOp", "PostBlendPCCMergeOp", "PostBlendGCMergeOp",
    "PostBlendPaGlobalMergeOp", "PostBlendPaMultiZoneMergeOp", "PostBlendPaMemoryColorMergeOp", "PostBlendPaDitherMergeOp",
    "PostBlendIGCMergeOp", "PostBlendDitherMergeOp", "PostBlendDEMergeOp", "PostBlendHdrBlobMergeOp", "PostBlendGameBlobMergeOp"};

std::vector<uint32_t> Ops(const KivModeMergeDef& r) {
  return {uint32_t(r.gamut_op), uint32_t(r.pcc_op), uint32_t(r.gc_op), uint32_t(r.pa_global_op),
          uint32_t(r.pa_multi_zone_op), uint32_t(r.pa_memory_colors_op), uint32_t(r.pa_dither_op), uint32_t(r.igc_op),
          uint32_t(r.dither_op), uint32_t(r.de_op), uint32_t(r.hdr_blob_op), uint32_t(r.game_blob_op)};
}

TEST(RulesFileTest, EachMergeOpKeyLooksUpItsOwnWordsIntoItsOwnOperation) {
  const std::pair<const char*, uint32_t> words[] = {
      {"LEFT_OPERAND", 1}, {"RIGHT_OPERAND", 2}, {"MERGE_OPERAND", 3}, {"left_operand", 0}};
  for (size_t k = 0; k < std::size(kOpKeys); ++k) {
    for (const auto& [word, op] : words) {
      Json::Value rule;
      rule["MergeOps"][kOpKeys[k]] = word;
      rule["MergeOps"]["PostBlendUnknownMergeOp"] = "LEFT_OPERAND";
      auto parsed = json_parser::parse_merge_rule(rule, "r", Json::Value());
      ASSERT_TRUE(parsed);
      std::vector<uint32_t> expected(std::size(kOpKeys), 0);
      expected[k] = op == 3 && k >= 2 ? 0 : op;
      EXPECT_EQ(Ops(*parsed), expected) << kOpKeys[k] << ": " << word;
    }
  }
}

// The rules kept ("(none)": no list at all) and the member an error names, for each kind of flaw.
TEST(RulesFileTest, AFlawVoidsTheFileOrDropsOnlyItsRuleAndIsNamed) {
  const std::string bad = R"({"panel": {"MergedModes": {"Good": {}, "Bad": )";
  const std::tuple<std::string, Names, std::string> cases[] = {  // text, rules kept, the member named
      {bad + R"({"ModeNameInputLeft": {"name": "a"}}}}})", {"Good"}, "\"ModeNameInputLeft\" in merge rule \"Bad\""},
      {bad + R"({"MergeOps": {"PostBlendGCMergeOp": [1]}}}}})", {"Good"}, "\"PostBlendGCMergeOp\" in merge rule \"Bad\""},
      {bad + R"("not a rule"}}})", {"Good"}, "\"(section)\" in merge rule \"Bad\""},
      {R"({"panel": )", {"(none)"}, ""},
      {R"({"panel": {"MergedModes": []}})", {"(none)"}, "\"MergedModes\""},
      {R"({"other": {"MergedModes": {"A": {}}}})", {}, ""},
      // A version that is not a number refuses every rule, which all carry the block.
      {R"({"panel": {"ModeMerge": {"PostBlendGCMergeOp": {"Version": "1"}}, "MergedModes": {"A": {}}}})", {}, "\"Version\""},
  };
  for (const auto& [text, kept, member] : cases) {
    LogCapture log;
    auto rules = json_parser::parse_mode_merge_rules(text, "panel");
    Names names = rules ? Names{} : Names{"(none)"};
    for (const auto& rule : rules ? *rules : KivModeMergeDefList{}) names.push_back(rule->descr->name);
    EXPECT_EQ(names, kept) << text;
    EXPECT_LE(log.Errors().size(), 1u) << log.Dump();
    EXPECT_TRUE(member.empty() || log.Contains(member)) << text << "\n" << log.Dump();
  }
}

}  // namespace
}  // namespace vexa
