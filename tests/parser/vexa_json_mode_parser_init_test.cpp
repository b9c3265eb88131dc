// Start-up and teardown of the parser library, loaded with dlopen in a temporary device tree.
#include <gtest/gtest.h>

#include <json/json.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/fixture_writer.h"
#include "support/parser_e2e.h"

namespace vexa::testing {
namespace {

using InitTest = ParserE2eTest;

constexpr char kMergeVersionFile[] = "/data/vendor/display/vexa_mode_merge_version.json";
constexpr char kDebugModesFile[] = "/data/vendor/display/vexa_debug_modes_list_panelA.json";

std::vector<std::string> IntentNames(const ColorModeList& list) {
  std::vector<std::string> names;
  for (const ColorMode& mode : list.modes) names.push_back(mode.render_intent_name);
  return names;
}

const ColorMode* FindByIntentName(const ColorModeList& list, const std::string& name) {
  for (const ColorMode& mode : list.modes) {
    if (mode.render_intent_name == name) return &mode;
  }
  return nullptr;
}

// The hardware payloads of the listed mode named `intent_name`.
HwConfigOutputParams PayloadsOf(VexaKivInterface& parser, const ColorModeList& list,
                                const std::string& intent_name) {
  HwConfigOutputParams output = EmptyOutput();
  const ColorMode* mode = FindByIntentName(list, intent_name);
  EXPECT_NE(mode, nullptr) << intent_name;
  if (mode == nullptr) return output;
  EXPECT_EQ(RequestMode(parser, kKivModeRenderIntent,
                        ModeRequest(mode->gamut, mode->gamma, mode->intent, mode->hw_assets),
                        &output),
            0);
  return output;
}

const HwConfigPayload* Find(const HwConfigOutputParams& output, const std::string& name) {
  for (const HwConfigPayload& payload : output.payloads) {
    if (payload.name == name) return &payload;
  }
  return nullptr;
}

// Each directory's calibration file has one mode whose intent name is the directory.
TEST_F(InitTest, CalibrationFileIsTakenFromTheFirstSearchDirectoryThatParses) {
  struct Case {
    std::vector<std::string> present;
    std::vector<std::string> unparsable;
    std::optional<std::string> used;
  };
  const std::vector<Case> cases = {
      {{kDataDir, kVendorDir, kOemDir, kOdmDir}, {}, kDataDir},
      {{kVendorDir, kOemDir, kOdmDir}, {}, kVendorDir},
      {{kOemDir, kOdmDir}, {}, kOemDir},
      {{kOdmDir}, {}, kOdmDir},
      {{kDataDir, kOdmDir}, {kDataDir}, kOdmDir},
      {{kOemDir}, {kVendorDir}, kOemDir},
      // Neither the factory directory nor /usr/data/display holds calibration files.
      {{kPersistDir, kUsrDataDir}, {}, std::nullopt},
  };
  for (const Case& c : cases) {
    DeviceTree device;
    for (const std::string& dir : c.present) {
      TestMode mode{"sRGB", "sRGB", 2, dir, 6500, "", "SDR", {}};
      device.Write(CalibFile(dir), PanelModesText(kPanel, {{"Mode", mode}}));
    }
    for (const std::string& dir : c.unparsable) device.Write(CalibFile(dir), "{\"panelA\": ");
    auto parser = InitParser();
    const ColorModeList list = Modes(*parser);
    const std::vector<std::string> expected =
        c.used ? std::vector<std::string>{*c.used} : std::vector<std::string>{};
    EXPECT_EQ(IntentNames(list), expected) << "first present: " << c.present.front();
  }
}

// Each directory's rules file names the merged mode after the directory.
TEST_F(InitTest, MergeRulesAreTakenFromTheFirstSearchDirectoryThatParses) {
  struct Case {
    std::vector<std::string> present;
    std::vector<std::string> unparsable;
    std::string used;
  };
  const std::vector<Case> cases = {
      {{kDataDir, kVendorDir, kOemDir, kOdmDir}, {}, kDataDir},
      {{kVendorDir, kOemDir, kOdmDir}, {}, kVendorDir},
      {{kOemDir, kOdmDir}, {kDataDir}, kOemDir},
      {{kOdmDir}, {kVendorDir, kOemDir}, kOdmDir},
  };
  for (const Case& c : cases) {
    DeviceTree device;
    device.Write(FactoryFile(), PanelModesText(kPanel, {{"FactoryFloor", FactoryFloorMode()}}));
    device.Write(CalibFile(kDataDir), PanelModesText(kPanel, {{"Workflow", WorkflowMode()}}));
    for (const std::string& dir : c.present) {
      TestMergeRule rule = MergedRule();
      rule.merged.intent_name = dir;
      device.Write(RulesFile(dir), PanelRulesText(kPanel, {{"Merged", rule}}, DeviceModeMergeJson()));
    }
    for (const std::string& dir : c.unparsable) device.Write(RulesFile(dir), "[1,");
    auto parser = InitParser();
    // The merged mode replaces the workflow mode it shares its identity with.
    EXPECT_EQ(IntentNames(Modes(*parser)), (std::vector<std::string>{"factory", c.used}));
  }
}

TEST_F(InitTest, FactoryOnlyDeviceMakesTheFactoryFloorModeColorimetric) {
  WriteModes(FactoryFile(), {{"FactoryFloor", FactoryFloorMode()}});
  // A factory file anywhere but the persist directory is not looked at.
  WriteModes(FactoryFile(kDataDir), {{"Other", VividMode()}});
  auto parser = InitParser();
  const ColorModeList list = Modes(*parser);
  ASSERT_EQ(list.modes.size(), 1u);
  EXPECT_EQ(list.modes[0].render_intent_name, "factory");
  EXPECT_EQ(list.modes[0].intent, 1);
  EXPECT_EQ(list.modes[0].gamut, 12);
  EXPECT_EQ(list.modes[0].gamma, 1);
  EXPECT_EQ(list.modes[0].hw_assets,
            (std::vector<std::string>{"PostBlendDither", "PostBlendGamut", "PostBlendPCC"}));
}

TEST_F(InitTest, CalibrationOnlyDeviceKeepsItsModesAsRead) {
  WriteModes(CalibFile(kOdmDir), {{"FactoryLike", FactoryFloorMode()}, {"Vivid", VividMode()}});
  WriteRules(kDataDir, {{"Merged", MergedRule()}});
  auto parser = InitParser();
  const ColorModeList list = Modes(*parser);
  EXPECT_EQ(IntentNames(list), (std::vector<std::string>{"factory", "vivid"}));
  // Not promoted, not merged: there is no factory file.
  EXPECT_EQ(list.modes[0].intent, 384);
  EXPECT_EQ(log_.Count("merged mode from"), 0u);
  EXPECT_FALSE(log_.Contains("Failed to load"));
}

TEST_F(InitTest, MergesThroughTheAlgorithmLibraryBesideTheParser) {
  WriteStandardPanel(device_, /*with_rules=*/true);
  LoadLibrary(kTestAlgoLibraryPath);
  auto parser = InitParser();
  const ColorModeList list = Modes(*parser);
  EXPECT_EQ(IntentNames(list), (std::vector<std::string>{"factory", "native", "vivid", "merged"}));
  // With merging on, the factory-floor mode is only an operand and keeps its intent.
  EXPECT_EQ(list.modes[0].intent, 384);
  EXPECT_EQ(CountLines("I", "Init", "Created Merged merged mode from FactoryFloor and Workflow"), 1u);
  EXPECT_FALSE(log_.Contains("not supported for factory")) << Errors();

  const std::optional<TestAlgoCounters> counters = AlgoCounters();
  ASSERT_TRUE(counters.has_value());
  EXPECT_EQ(counters->inits, 1);
  EXPECT_EQ(counters->gamut_merges, 1);
  EXPECT_EQ(counters->pcc_merges, 1);
  EXPECT_EQ(counters->framing_errors, 0);

  const HwConfigOutputParams merged = PayloadsOf(*parser, list, "merged");
  const HwConfigPayload* gamut = Find(merged, "PostBlendGamut");
  ASSERT_NE(gamut, nullptr);
  const auto& lut = RecordOf<GamutConfig>(*gamut);
  EXPECT_TRUE(lut.enable);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(lut.entries[i].out_0, kMergedGamutOut[i][0]);
    EXPECT_EQ(lut.entries[i].out_1, kMergedGamutOut[i][1]);
    EXPECT_EQ(lut.entries[i].out_2, kMergedGamutOut[i][2]);
  }
  EXPECT_EQ(lut.entries[1].in_0, 256u);  // the grid point handed to the library
  const HwConfigPayload* pcc = Find(merged, "PostBlendPCC");
  ASSERT_NE(pcc, nullptr);
  const auto& coeffs = RecordOf<PccConfig>(*pcc).coeffs;
  EXPECT_DOUBLE_EQ(coeffs.red.c, kMergedRedC);
  EXPECT_DOUBLE_EQ(coeffs.red.r, kMergedRedR);
  EXPECT_DOUBLE_EQ(coeffs.green.g, kMergedGreenG);
  EXPECT_DOUBLE_EQ(coeffs.blue.b, kMergedBlueB);
  const HwConfigPayload* dither = Find(merged, "PostBlendDither");
  ASSERT_NE(dither, nullptr);
  EXPECT_EQ(RecordOf<DitherConfig>(*dither).strength_r, 1u);  // taken from the left operand
}

TEST_F(InitTest, MergesStillRunWhenTheAlgorithmLibraryIsMissingOrUnusable) {
  struct Case {
    const char* name;
    std::string library;  // copied beside the parser as libvexa-algo.so; empty for none
    std::optional<std::string> behaviour;
    std::string error;  // the loader's error line, empty when it logs none
  };
  const std::vector<Case> cases = {
      {"missing", "", std::nullopt, ""},
      {"no factory symbol", kNoAlgoSymbolLibraryPath, std::nullopt,
       "Failed to retrieve = GetVexaAlgoInterface from libvexa-algo.so"},
      {"null interface", kTestAlgoLibraryPath, kTestAlgoNoInterface,
       "Failed to get vexa algo intf from libvexa-algo.so"},
      {"Init fails", kTestAlgoLibraryPath, kTestAlgoInitFails,
       "Failed to initialize vexa algo, ret = -5"},
  };
  WriteStandardPanel(device_, /*with_rules=*/true);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ScopedEnv behaviour(kTestAlgoBehaviourVariable, c.behaviour ? c.behaviour->c_str() : nullptr);
    log_.Clear();
    LoadLibrary(c.library);
    {
      auto parser = InitParser();
      if (c.error.empty()) {
        EXPECT_EQ(CountLines("I", "LoadVexaAlgoLib", "Failed to load = libvexa-algo.so"), 1u);
      } else {
        EXPECT_EQ(CountLines("E", "LoadVexaAlgoLib", c.error), 1u) << Errors();
      }
      EXPECT_EQ(CountLines("E", "Init", "gamut and pcc merge not supported for factory"), 1u);
      // The merged mode exists, with gamut and PCC left off for want of the library.
      const ColorModeList list = Modes(*parser);
      const HwConfigOutputParams merged = PayloadsOf(*parser, list, "merged");
      const HwConfigPayload* gamut = Find(merged, "PostBlendGamut");
      ASSERT_NE(gamut, nullptr);
      EXPECT_FALSE(RecordOf<GamutConfig>(*gamut).enable);
      const HwConfigPayload* pcc = Find(merged, "PostBlendPCC");
      ASSERT_NE(pcc, nullptr);
      EXPECT_FALSE(RecordOf<PccConfig>(*pcc).enable);
      const HwConfigPayload* dither = Find(merged, "PostBlendDither");
      ASSERT_NE(dither, nullptr);
      EXPECT_EQ(RecordOf<DitherConfig>(*dither).strength_b, 3u);
    }
    library_.reset();
    stage_.reset();
  }
}

TEST_F(InitTest, NewerRuleVersionsOrAnEmptyRuleListTurnMergingOff) {
  struct Case {
    const char* mode_merge;
    bool has_rule;
    bool merging;
  };
  const std::vector<Case> cases = {
      {R"({"Version":1,"PostBlendGamutMergeOp":{"Version":2},"PostBlendGCMergeOp":{"Version":1}})",
       true, true},
      {R"({})", true, true},
      {R"({"Version":2})", true, false},
      {R"({"Version":1,"PostBlendPCCMergeOp":{"Version":3}})", true, false},
      {R"({"Version":1,"PostBlendHdrBlobMergeOp":{"Version":2}})", true, false},
      {R"({"Version":1})", false, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.mode_merge);
    DeviceTree device;
    log_.Clear();
    device.Write(FactoryFile(), PanelModesText(kPanel, {{"FactoryFloor", FactoryFloorMode()}}));
    device.Write(CalibFile(kDataDir), PanelModesText(kPanel, {{"Workflow", WorkflowMode()}}));
    std::map<std::string, TestMergeRule> rules;
    if (c.has_rule) rules["Merged"] = MergedRule();
    device.Write(RulesFile(kDataDir), PanelRulesText(kPanel, rules, c.mode_merge));
    auto parser = InitParser();
    const ColorModeList list = Modes(*parser);
    const char* incompatible =
        "Error: incompatible versions of the vexa merge rules and device merge mode code.";
    // Only a version refusal is an error; an empty list turns merging off silently.
    EXPECT_EQ(CountLines("E", "Init", incompatible), c.merging || !c.has_rule ? 0u : 1u);
    if (c.merging) {
      EXPECT_EQ(IntentNames(list), (std::vector<std::string>{"factory", "merged"}));
      EXPECT_EQ(list.modes[0].intent, 384);
    } else {
      // Without merging the factory-floor mode becomes the colorimetric default.
      EXPECT_EQ(IntentNames(list), (std::vector<std::string>{"factory", "workflow"}));
      EXPECT_EQ(list.modes[0].intent, 1);
    }
  }
}

TEST_F(InitTest, RuleWithoutOperandsIsReportedAndSkipped) {
  WriteStandardPanel(device_, /*with_rules=*/false);
  TestMergeRule orphan = MergedRule();
  orphan.right = "Nowhere";
  orphan.merged.intent = 77;  // no workflow mode has this intent
  orphan.merged.intent_name = "orphan";
  WriteRules(kDataDir, {{"Merged", MergedRule()}, {"Orphan", orphan}});
  auto parser = InitParser();
  EXPECT_EQ(CountLines("E", "Init", "Failed to create Orphan merge from FactoryFloor and Nowhere"), 1u)
      << Errors();
  EXPECT_EQ(IntentNames(Modes(*parser)),
            (std::vector<std::string>{"factory", "native", "vivid", "merged"}));
}

TEST_F(InitTest, DeviceWithoutFilesStillInitialises) {
  device_.MakeDirectory(kDataDir);
  auto parser = InitParser();
  EXPECT_EQ(CountLines("I", "Init", "Warning: no modes were loaded"), 1u);
  EXPECT_TRUE(Modes(*parser).modes.empty());
  HwConfigOutputParams output = EmptyOutput();
  EXPECT_EQ(RequestMode(*parser, kKivModeRenderIntent, ModeRequest(1, 1, 2, {}), &output), -22);
  EXPECT_EQ(CountLines("I", "ProcessModeRenderIntent", "Cannot find mode (gamut 1, gamma 1, intent 2)"),
            1u);
  // The merge-version file is written whatever else the device holds.
  EXPECT_EQ(device_.Read(kMergeVersionFile),
            R"({"ModeMerge":{"PostBlendDEMergeOp":{"Version":1},"PostBlendDitherMergeOp":{"Version":1},)"
            R"("PostBlendGCMergeOp":{"Version":1},"PostBlendGameBlobMergeOp":{"Version":1},)"
            R"("PostBlendGamutMergeOp":{"Version":2},"PostBlendHdrBlobMergeOp":{"Version":1},)"
            R"("PostBlendIGCMergeOp":{"Version":1},"PostBlendPCCMergeOp":{"Version":2},)"
            R"("PostBlendPaDitherMergeOp":{"Version":1},"PostBlendPaGlobalMergeOp":{"Version":1},)"
            R"("PostBlendPaMemoryColorMergeOp":{"Version":1},"PostBlendPaMultiZoneMergeOp":{"Version":1},)"
            R"("Version":1}})"
            "\n");
}

TEST_F(InitTest, SecondInitOnlyStoresThePanelName) {
  WriteStandardPanel(device_, /*with_rules=*/false);
  auto parser = InitParser();
  const size_t modes = Modes(*parser).modes.size();
  log_.Clear();
  EXPECT_EQ(parser->Init("other"), 0);
  EXPECT_EQ(CountLines("I", "Init", "panel: other"), 1u);
  EXPECT_FALSE(log_.Contains("reading from")) << log_.Dump();
  EXPECT_EQ(Modes(*parser).modes.size(), modes);
}

TEST_F(InitTest, DeInitThenInitPublishesTheModesAgainAfterTheOldOnes) {
  WriteStandardPanel(device_, /*with_rules=*/true);
  LoadLibrary(kTestAlgoLibraryPath);
  auto parser = InitParser();
  const ColorModeList first = Modes(*parser);

  EXPECT_EQ(parser->DeInit(), 0);
  EXPECT_EQ(AlgoCounters()->deinits, 1);
  EXPECT_EQ(AlgoCounters()->objects_alive, 1) << "DeInit keeps the algorithm object";
  ColorModeList refused{kColorModeListVersion, {}};
  EXPECT_EQ(GetModes(*parser, &refused), -22);

  {
    // Held here, the library stays loaded across Init and keeps counting.
    const AlgoLibraryHold hold;
    EXPECT_EQ(parser->Init(kPanel), 0);
    // The old object is deleted and a new one made and initialised.
    EXPECT_EQ(AlgoCounters()->factory_calls, 2);
    EXPECT_EQ(AlgoCounters()->objects_alive, 1);
    EXPECT_EQ(AlgoCounters()->inits, 2);
  }
  std::vector<std::string> expected = IntentNames(first);
  const std::vector<std::string> again = expected;
  expected.insert(expected.end(), again.begin(), again.end());
  EXPECT_EQ(IntentNames(Modes(*parser)), expected);
}

TEST_F(InitTest, DebugModesListIsWrittenOnlyWhenTheLogLevelPropertyIsTwo) {
  struct Case {
    std::optional<std::string> property;
    bool written;
  };
  const std::vector<Case> cases = {{"2", true}, {"1", false}, {"0", false}, {"two", false},
                                   {std::nullopt, false}};
  WriteStandardPanel(device_, /*with_rules=*/false);
  LoadLibrary();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.property.value_or("unset"));
    ScopedEnv level(kLogLevelVariable, c.property ? c.property->c_str() : nullptr);
    std::filesystem::remove(device_.HostPath(kDebugModesFile));
    auto parser = InitParser();
    ASSERT_EQ(device_.Exists(kDebugModesFile), c.written);
    if (!c.written) continue;
    const Json::Value list = ParseReadable(device_.Read(kDebugModesFile));
    EXPECT_EQ(list[kPanel].getMemberNames(),
              (std::vector<std::string>{"FactoryFloor", "Native", "Vivid", "Workflow"}));
  }
}

}  // namespace
}  // namespace vexa::testing
