#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/json_parser.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::LogCapture;
using testing::ParseReadable;
using testing::RulesFileText;

constexpr char kPanel[] = "panel";

// A rules file for `kPanel` whose "MergedModes" is `merged_modes` (readable JSON).
std::string RulesFile(const std::string& merged_modes,
                      const std::string& mode_merge = R"({"Version": 1})") {
  return RulesFileText(R"({"panel": {"ModeMerge": )" + mode_merge + R"(, "MergedModes": )" +
                       merged_modes + "}}");
}

std::vector<std::string> RuleNames(const KivModeMergeDefList& rules) {
  std::vector<std::string> names;
  for (const auto& rule : rules) names.push_back(rule->descr->name);
  return names;
}

uint32_t Op(const KivModeMergeDef& rule, const std::string& key);

TEST(RulesFileTest, ReadsEveryFieldOfARuleAndOrdersRulesByName) {
  const std::string text = RulesFile(R"({
      "Zeta": {"ModeNameInputLeft": "factory", "ModeNameInputRight": "z"},
      "Cinema": {
        "ModeNameInputLeft": "Factory Floor", "ModeNameInputRight": "Cinema P3",
        "Applicability": {"RenderIntent": 260, "GammaTransfer": "2p2", "ColorPrimaries": "P3",
                          "RenderIntentName": "cinema"},
        "WhitePoint": 6500, "MergeId": "m1", "DynamicRange": "HDR",
        "MergeOps": {"PostBlendGamutMergeOp": "MERGE_OPERAND", "PostBlendGCMergeOp": "RIGHT_OPERAND",
                     "PostBlendIGCMergeOp": "LEFT_OPERAND", "PostBlendSomethingElse": "LEFT_OPERAND"}},
      "Amber": {}})",
      R"({"Version": 1, "PostBlendGamutMergeOp": {"Version": 2}, "PostBlendPCCMergeOp": {"Version": 2},
          "PostBlendHdrBlobMergeOp": {"Version": 1}})");
  LogCapture log;
  auto rules = json_parser::parse_mode_merge_rules(text, kPanel);
  ASSERT_TRUE(rules);
  EXPECT_EQ(RuleNames(*rules), (std::vector<std::string>{"Amber", "Cinema", "Zeta"}));
  EXPECT_TRUE(log.Contains("Merged Mode: Cinema")) << log.Dump();
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();

  const KivModeMergeDef& cinema = *(*rules)[1];
  EXPECT_EQ(cinema.left_mode_name, "Factory Floor");
  EXPECT_EQ(cinema.right_mode_name, "Cinema P3");
  EXPECT_EQ(cinema.descr->render_intent, 260);
  EXPECT_EQ(cinema.descr->gamma_transfer, Transfer_Gamma2_2);
  EXPECT_EQ(cinema.descr->color_primaries, ColorPrimaries_DCIP3);
  EXPECT_EQ(cinema.descr->render_intent_name, "cinema");
  EXPECT_EQ(cinema.descr->white_point, 6500u);
  EXPECT_EQ(cinema.descr->merge_id, "m1");
  EXPECT_EQ(cinema.descr->dynamic_range, kHdr);
  EXPECT_EQ(Op(cinema, "PostBlendGamutMergeOp"), 3u);
  EXPECT_EQ(Op(cinema, "PostBlendGCMergeOp"), 2u);
  EXPECT_EQ(Op(cinema, "PostBlendIGCMergeOp"), 1u);
  EXPECT_EQ(Op(cinema, "PostBlendPCCMergeOp"), 0u);

  // Each rule carries its own copy of the same versions.
  ASSERT_TRUE(cinema.version_context);
  EXPECT_EQ(cinema.version_context->version, 1);
  EXPECT_EQ(cinema.version_context->gamut, 2);
  EXPECT_EQ(cinema.version_context->pcc, 2);
  EXPECT_EQ(cinema.version_context->hdr_blob, 1);
  EXPECT_EQ(cinema.version_context->gc, 0);
  EXPECT_NE((*rules)[0]->version_context, cinema.version_context);
  EXPECT_EQ((*rules)[0]->version_context->gamut, 2);

  // A rule without members: empty names, defaults and the word tables' fallbacks, all identity.
  const KivModeMergeDef& amber = *(*rules)[0];
  EXPECT_EQ(amber.left_mode_name, "");
  EXPECT_EQ(amber.descr->render_intent, 0);
  EXPECT_EQ(amber.descr->gamma_transfer, Transfer_sRGB);
  EXPECT_EQ(amber.descr->color_primaries, ColorPrimaries_BT709_5);
  EXPECT_EQ(amber.descr->dynamic_range, kSdr);
}

// The field that each "MergeOps" key sets.
uint32_t Op(const KivModeMergeDef& rule, const std::string& key) {
  const std::pair<const char*, uint32_t> fields[] = {
      {"PostBlendGamutMergeOp", static_cast<uint32_t>(rule.gamut_op)},
      {"PostBlendGCMergeOp", static_cast<uint32_t>(rule.gc_op)},
      {"PostBlendPaGlobalMergeOp", static_cast<uint32_t>(rule.pa_global_op)},
      {"PostBlendPaMultiZoneMergeOp", static_cast<uint32_t>(rule.pa_multi_zone_op)},
      {"PostBlendPaMemoryColorMergeOp", static_cast<uint32_t>(rule.pa_memory_colors_op)},
      {"PostBlendPaDitherMergeOp", static_cast<uint32_t>(rule.pa_dither_op)},
      {"PostBlendIGCMergeOp", static_cast<uint32_t>(rule.igc_op)},
      {"PostBlendPCCMergeOp", static_cast<uint32_t>(rule.pcc_op)},
      {"PostBlendDitherMergeOp", static_cast<uint32_t>(rule.dither_op)},
      {"PostBlendDEMergeOp", static_cast<uint32_t>(rule.de_op)},
      {"PostBlendHdrBlobMergeOp", static_cast<uint32_t>(rule.hdr_blob_op)},
      {"PostBlendGameBlobMergeOp", static_cast<uint32_t>(rule.game_blob_op)},
  };
  for (const auto& [name, value] : fields) {
    if (key == name) return value;
  }
  ADD_FAILURE() << "no field for " << key;
  return 99;
}

TEST(RulesFileTest, EachMergeOpKeySetsItsOwnOperationOnly) {
  const std::vector<std::string> keys = {
      "PostBlendGamutMergeOp", "PostBlendGCMergeOp", "PostBlendPaGlobalMergeOp",
      "PostBlendPaMultiZoneMergeOp", "PostBlendPaMemoryColorMergeOp", "PostBlendPaDitherMergeOp",
      "PostBlendIGCMergeOp", "PostBlendPCCMergeOp", "PostBlendDitherMergeOp", "PostBlendDEMergeOp",
      "PostBlendHdrBlobMergeOp", "PostBlendGameBlobMergeOp"};
  for (const std::string& key : keys) {
    SCOPED_TRACE(key);
    Json::Value rule(Json::objectValue);
    rule["MergeOps"][key] = "RIGHT_OPERAND";
    auto parsed = json_parser::parse_merge_rule(rule, "r", Json::Value());
    ASSERT_TRUE(parsed);
    for (const std::string& other : keys) EXPECT_EQ(Op(*parsed, other), other == key ? 2u : 0u) << other;
  }
}

TEST(RulesFileTest, OperandWordsAreLookedUpPerBlock) {
  const struct {
    const char* key;
    const char* word;
    uint32_t op;
  } cases[] = {
      {"PostBlendGCMergeOp", "MERGE_OPERAND", 0},   {"PostBlendPCCMergeOp", "MERGE_OPERAND", 3},
      {"PostBlendGamutMergeOp", "MERGE_OPERAND", 3}, {"PostBlendDEMergeOp", "left_operand", 0},
      {"PostBlendHdrBlobMergeOp", "LEFT_OPERAND", 1}, {"PostBlendPaDitherMergeOp", "IDENTITY", 0},
  };
  for (const auto& c : cases) {
    Json::Value rule(Json::objectValue);
    rule["MergeOps"][c.key] = c.word;
    auto parsed = json_parser::parse_merge_rule(rule, "r", Json::Value());
    ASSERT_TRUE(parsed);
    EXPECT_EQ(Op(*parsed, c.key), c.op) << c.key << " " << c.word;
  }
}

TEST(RulesFileTest, AWrongTypedMemberDropsOnlyItsRule) {
  const struct {
    const char* rule;
    const char* member;
  } cases[] = {
      {R"({"ModeNameInputLeft": {"name": "a"}})", "ModeNameInputLeft"},
      {R"({"ModeNameInputRight": ["a"]})", "ModeNameInputRight"},
      {R"({"Applicability": "P3"})", "Applicability"},
      {R"({"Applicability": {"RenderIntent": "vivid"}})", "RenderIntent"},
      {R"({"Applicability": {"RenderIntent": -1}})", "RenderIntent"},
      {R"({"Applicability": {"ColorPrimaries": ["P3"]}})", "ColorPrimaries"},
      {R"({"WhitePoint": "D65"})", "WhitePoint"},
      {R"({"MergeId": {}})", "MergeId"},
      {R"({"DynamicRange": ["HDR"]})", "DynamicRange"},
      {R"({"MergeOps": ["LEFT_OPERAND"]})", "MergeOps"},
      {R"({"MergeOps": {"PostBlendGCMergeOp": ["LEFT_OPERAND"]}})", "PostBlendGCMergeOp"},
      {R"("not a rule")", "(section)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.rule);
    LogCapture log;
    auto rules = json_parser::parse_mode_merge_rules(
        RulesFile(std::string(R"({"Bad": )") + c.rule + R"(, "Good": {"MergeId": "g"}})"), kPanel);
    ASSERT_TRUE(rules);
    EXPECT_EQ(RuleNames(*rules), std::vector<std::string>{"Good"});
    ASSERT_EQ(log.Errors().size(), 1u) << log.Dump();
    EXPECT_NE(log.Errors()[0].find(std::string("\"") + c.member + "\""), std::string::npos)
        << log.Dump();
    EXPECT_NE(log.Errors()[0].find("merge rule \"Bad\""), std::string::npos) << log.Dump();
  }
}

TEST(RulesFileTest, FileLevelFailures) {
  const struct {
    const char* what;
    std::string text;
    bool null_result;
    size_t rules;
  } cases[] = {
      {"not JSON", "{\"panel\": ", true, 0},
      {"empty text", "", true, 0},
      {"nested too deep", std::string(1001, '[') + std::string(1001, ']'), true, 0},
      {"root is an array", "[1, 2]", true, 0},
      {"panel is a string", R"({"panel": "x"})", true, 0},
      {"MergedModes is an array", R"({"panel": {"MergedModes": []}})", true, 0},
      {"no panel key", R"({"other": {"MergedModes": {"A": {}}}})", false, 0},
      {"no MergedModes", R"({"panel": {"ModeMerge": {"Version": 1}}})", false, 0},
      {"no ModeMerge", R"({"panel": {"MergedModes": {"A": {}}}})", false, 1},
      {"bad ModeMerge version", R"({"panel": {"ModeMerge": {"Version": "1"}, "MergedModes": {"A": {}, "B": {}}}})", false, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    LogCapture log;
    auto rules = json_parser::parse_mode_merge_rules(c.text, kPanel);
    EXPECT_EQ(rules == nullptr, c.null_result);
    if (rules) {
      EXPECT_EQ(rules->size(), c.rules);
    }
  }
}

TEST(RulesFileTest, MissingModeMergeGivesZeroVersions) {
  auto rules = json_parser::parse_mode_merge_rules(R"({"panel": {"MergedModes": {"A": {}}}})", kPanel);
  ASSERT_TRUE(rules);
  ASSERT_EQ(rules->size(), 1u);
  const KivModeMergeVersionContext& context = *(*rules)[0]->version_context;
  EXPECT_EQ(context.version, 0);
  EXPECT_EQ(context.gamut, 0);
  EXPECT_EQ(context.game_blob, 0);
}

}  // namespace
}  // namespace vexa
