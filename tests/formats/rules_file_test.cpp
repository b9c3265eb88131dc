#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/json_parser.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::LogCapture;

std::string RulesFile(const std::string& merged_modes, const std::string& mode_merge = "{}") {
  return testing::RulesFileText(R"({"panel": {"ModeMerge": )" + mode_merge +
                                R"(, "MergedModes": )" + merged_modes + "}}");
}

std::vector<std::string> RuleNames(const KivModeMergeDefList& rules) {
  std::vector<std::string> names;
  for (const auto& rule : rules) names.push_back(rule->descr->name);
  return names;
}

TEST(RulesFileTest, ReadsRulesInNameOrderWithDescriptorOperandsAndVersions) {
  LogCapture log;
  auto rules = json_parser::parse_mode_merge_rules(
      RulesFile(R"({"Zeta": {}, "Cinema": {
          "ModeNameInputLeft": "Floor", "ModeNameInputRight": "Cinema P3", "WhitePoint": 6500,
          "Applicability": {"RenderIntent": 260, "GammaTransfer": "2p2", "ColorPrimaries": "P3",
                            "RenderIntentName": "cinema"},
          "MergeId": "m1", "DynamicRange": "HDR", "MergeOps": {"PostBlendGCMergeOp": "RIGHT_OPERAND"}}})",
                R"({"Version": 1, "PostBlendGamutMergeOp": {"Version": 2}})"),
      "panel");
  ASSERT_TRUE(rules);
  ASSERT_EQ(RuleNames(*rules), (std::vector<std::string>{"Cinema", "Zeta"}));
  EXPECT_TRUE(log.Contains("Merged Mode: Zeta"));
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  const KivModeMergeDef& cinema = *(*rules)[0];
  const KivModeDescr& d = *cinema.descr;
  EXPECT_EQ(cinema.left_mode_name + "|" + cinema.right_mode_name + "|" + d.render_intent_name + "|" +
                d.merge_id, "Floor|Cinema P3|cinema|m1");
  EXPECT_EQ(d.render_intent, 260);
  EXPECT_EQ(d.gamma_transfer, Transfer_Gamma2_2);
  EXPECT_EQ(d.color_primaries, ColorPrimaries_DCIP3);
  EXPECT_EQ(d.white_point, 6500u);
  EXPECT_EQ(d.dynamic_range, kHdr);
  EXPECT_EQ(cinema.gc_op, kiv_mode_merge_caps::KivPostBlendGCMergeOp::kRightOperand);
  // Every rule carries its own copy of the file's versions.
  const KivModeMergeDef& zeta = *(*rules)[1];
  ASSERT_TRUE(cinema.version_context && zeta.version_context);
  EXPECT_NE(cinema.version_context, zeta.version_context);
  EXPECT_EQ(zeta.version_context->version + zeta.version_context->gamut, 3);
  EXPECT_EQ(zeta.descr->color_primaries, ColorPrimaries_BT709_5);  // the word table's fallback
}

TEST(RulesFileTest, EachMergeOpKeyLooksUpItsOwnWordsIntoItsOwnOperation) {
  const struct {
    const char* key;
    uint32_t (*op)(const KivModeMergeDef&);
    bool knows_merge;
  } kinds[] = {
      {"PostBlendGamutMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.gamut_op); }, true},
      {"PostBlendGCMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.gc_op); }, false},
      {"PostBlendPaGlobalMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.pa_global_op); }, false},
      {"PostBlendPaMultiZoneMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.pa_multi_zone_op); }, false},
      {"PostBlendPaMemoryColorMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.pa_memory_colors_op); }, false},
      {"PostBlendPaDitherMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.pa_dither_op); }, false},
      {"PostBlendIGCMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.igc_op); }, false},
      {"PostBlendPCCMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.pcc_op); }, true},
      {"PostBlendDitherMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.dither_op); }, false},
      {"PostBlendDEMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.de_op); }, false},
      {"PostBlendHdrBlobMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.hdr_blob_op); }, false},
      {"PostBlendGameBlobMergeOp", [](const KivModeMergeDef& r) { return uint32_t(r.game_blob_op); }, false},
  };
  const struct {
    const char* word;
    uint32_t op;  // for blocks without a merge of their own, "MERGE_OPERAND" gives 0
  } words[] = {{"IDENTITY", 0},     {"LEFT_OPERAND", 1}, {"RIGHT_OPERAND", 2}, {"MERGE_OPERAND", 3},
               {"left_operand", 0}, {"RIGHT", 0},        {"", 0}};
  for (const auto& kind : kinds) {
    for (const auto& word : words) {
      Json::Value rule;
      rule["MergeOps"][kind.key] = word.word;
      rule["MergeOps"]["PostBlendUnknownMergeOp"] = "LEFT_OPERAND";
      auto parsed = json_parser::parse_merge_rule(rule, "r", Json::Value());
      ASSERT_TRUE(parsed);
      const uint32_t expected = word.op == 3 && !kind.knows_merge ? 0 : word.op;
      for (const auto& other : kinds) {
        EXPECT_EQ(other.op(*parsed), other.key == kind.key ? expected : 0u)
            << kind.key << ": " << word.word << ", looking at " << other.key;
      }
    }
  }
}

TEST(RulesFileTest, AWrongTypedMemberDropsOnlyItsRuleWithAnErrorNamingIt) {
  const struct {
    const char* rule;
    const char* member;
  } cases[] = {
      {R"({"ModeNameInputLeft": {"name": "a"}})", "ModeNameInputLeft"},
      {R"({"Applicability": {"RenderIntent": -1}})", "RenderIntent"},
      {R"({"WhitePoint": "D65"})", "WhitePoint"},
      {R"({"MergeOps": ["LEFT_OPERAND"]})", "MergeOps"},
      {R"({"MergeOps": {"PostBlendGCMergeOp": ["LEFT_OPERAND"]}})", "PostBlendGCMergeOp"},
      {R"("not a rule")", "(section)"},
  };
  for (const auto& c : cases) {
    LogCapture log;
    auto rules = json_parser::parse_mode_merge_rules(
        RulesFile(std::string(R"({"Bad": )") + c.rule + R"(, "Good": {}})"), "panel");
    ASSERT_TRUE(rules);
    EXPECT_EQ(RuleNames(*rules), std::vector<std::string>{"Good"}) << c.rule;
    ASSERT_EQ(log.Errors().size(), 1u) << log.Dump();
    EXPECT_NE(log.Errors()[0].find(std::string("\"") + c.member + "\" in merge rule \"Bad\""),
              std::string::npos)
        << log.Dump();
  }
}

TEST(RulesFileTest, FileLevelResults) {
  const struct {
    std::string text;
    int rules;  // -1: no list at all
  } cases[] = {
      {R"({"panel": )", -1},
      {std::string(1001, '[') + std::string(1001, ']'), -1},
      {R"({"panel": "x"})", -1},
      {R"({"panel": {"MergedModes": []}})", -1},
      {R"({"other": {"MergedModes": {"A": {}}}})", 0},
      {R"({"panel": {"ModeMerge": {"Version": 1}}})", 0},
      {R"({"panel": {"MergedModes": {"A": {}, "B": {}}}})", 2},
      // A version that is not a number refuses every rule, which all carry the block.
      {R"({"panel": {"ModeMerge": {"PostBlendGCMergeOp": {"Version": "1"}}, "MergedModes": {"A": {}}}})", 0},
  };
  for (const auto& c : cases) {
    LogCapture log;
    auto rules = json_parser::parse_mode_merge_rules(c.text, "panel");
    EXPECT_EQ(rules ? static_cast<int>(rules->size()) : -1, c.rules) << c.text;
  }
}

}  // namespace
}  // namespace vexa
