#include "modes/kiv_modes_manager.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::LogCapture;
using testing::MakeMode;
using Names = std::vector<std::string>;

KivModeDescr Base(const std::string& name, int32_t intent = 258, uint32_t white = 6500, DynamicRange range = kSdr,
                  const std::string& merge_id = "m") {
  return KivModeDescr{name, ColorPrimaries_DCIP3, Transfer_Gamma2_2, intent, "", white, range, merge_id};
}

// A rule for a merged mode like Base("Merged"), with its operand names as written.
std::shared_ptr<KivModeMergeDef> MergeRule() {
  auto rule = std::make_shared<KivModeMergeDef>();
  rule->left_mode_name = "left as written";
  rule->right_mode_name = "right as written";
  rule->descr = std::make_shared<KivModeDescr>(Base("Merged"));
  return rule;
}

// Each row: a mode "B" that differs from Base("A") in one field, and whether it still counts as the
// same mode, as a factory-floor operand and as a workflow operand for a rule like Base("Merged").
TEST(KivModesManagerTest, IdentityAndOperandMatchingEachLookAtTheirOwnFields) {
  const std::tuple<KivModeDescr, bool, bool, bool> cases[] = {  // "B", same, factory, workflow
      {{"B", ColorPrimaries_DCIP3, Transfer_Gamma2_2, 258, "other", 6500, kSdr, "m"}, true, true, true},
      {{"B", ColorPrimaries_BT709_5, Transfer_Gamma2_2, 258, "", 6500, kSdr, "m"}, false, false, false},
      {{"B", ColorPrimaries_DCIP3, Transfer_sRGB, 258, "", 6500, kSdr, "m"}, false, false, false},
      {Base("B", 384), false, true, false},
      {Base("B", 258, 6501), false, false, false},
      {Base("B", 258, 6500, kHdr), false, false, false},
      {Base("B", 258, 6500, kSdr, ""), false, false, false},
  };
  const std::string at = "VexaJsonModeParser::KivModesManager::";
  for (const auto& [b, same, factory, workflow] : cases) {
    // A replacing add drops the equal listed mode and appends; a plain one keeps the listed mode.
    for (bool replace : {false, true}) {
      KivModesManager manager("panel");
      LogCapture log;
      for (const KivModeDescr& descr : {Base("A"), Base("C", 1), b}) manager.AddModeToList(MakeMode(descr), replace);
      Names names;
      for (const auto& mode : manager.mode_list()->modes) names.push_back(mode->descr()->name);
      EXPECT_EQ(names, (!same ? Names{"A", "C", "B"} : replace ? Names{"C", "B"} : Names{"A", "C"}));
      EXPECT_EQ(log.Lines().size(), same && !replace ? 2u : 3u);
      EXPECT_EQ(log.Lines().back(), "I " + at + "AddModeToList():100 Added " + names.back() + " to mode list");
    }
    // The first matching candidate is taken; only the left operand's name is written back.
    auto rule = MergeRule();
    LogCapture log;
    EXPECT_TRUE(KivModesManager("panel").MergeModesFromList(nullptr, rule, {MakeMode(b), MakeMode(Base("F"))},
                                                            {MakeMode(b), MakeMode(Base("W"))}));
    const std::string left = factory ? "B" : "F";
    EXPECT_EQ(rule->left_mode_name + "|" + rule->right_mode_name, left + "|right as written");
    EXPECT_EQ(log.Count(at + "MergeModesFromList():43 Found applicable factory floor mode: " + left), 1u);
    EXPECT_EQ(log.Count(at + "MergeModesFromList():63 Found applicable workflow mode: " + (workflow ? "B" : "W")), 1u);
  }
  auto rule = MergeRule();
  LogCapture log;
  EXPECT_FALSE(KivModesManager("panel").MergeModesFromList(nullptr, rule, {MakeMode(Base("F", 1))}, {}));
  EXPECT_EQ(log.Errors(), Names{"E " + at + "MergeModesFromList():71 Failed to create merged mode Merged: "
                                "left mode: F, right mode: right as written"});
}

TEST(KivModesManagerTest, EveryFactoryFloorModeBecomesColorimetric) {
  KivModeList modes = {MakeMode(Base("f1", 384)), MakeMode(Base("x")), MakeMode(Base("f2", 384))};
  LogCapture log;
  EXPECT_TRUE(KivModesManager("panel").SetFactoryFloorModeAsDefault(modes));
  EXPECT_EQ(modes[2]->descr()->render_intent, 1);
  const std::string at = "I VexaJsonModeParser::KivModesManager::SetFactoryFloorModeAsDefault():110 ";
  EXPECT_EQ(log.Lines(), (Names{at + "Set factory f1 mode as colorimetric", at + "Set factory f2 mode as colorimetric"}));
}

TEST(KivModesManagerTest, TheModeListJsonHoldsDescriptorWordsAndHexEncodedAssets) {
  KivModesManager manager("p");
  const std::string assets = R"("PostBlendHdrBlob": {"blob": "b"})";
  manager.AddModeToList(MakeMode({"Max", ColorPrimaries_Max, Transfer_Max, -5, "factory", 4294967295u, kHdr, "m"},
                                 "{" + assets + "}"), false);
  const std::string expected = R"({"p": {"Max": {"Applicability": {"ColorPrimaries": "ColorPrimaries_MAX",
      "GammaTransfer": "Transfer_MAX", "RenderIntent": -5, "RenderIntentName": "factory"},
      "WhitePoint": 4294967295, "MergeId": "m", "DynamicRange": "HDR", )" + assets + "}}}";
  // Assets travel as hex of their compact JSON text, as in a modes file.
  EXPECT_EQ(testing::CompactText(*manager.GetModeListJV()),
            testing::CompactText(testing::EncodeModesFile(testing::ParseReadable(expected), "p")));
}

}  // namespace
}  // namespace vexa
