#include "support/parser_e2e.h"

#include <cstdio>

namespace vexa::testing {

std::string PanelFile(const std::string& dir, const std::string& stem, const std::string& panel) {
  return dir + "/" + stem + "_" + panel + ".json";
}

std::string CalibFile(const std::string& dir) { return PanelFile(dir, "vexa_calib_data"); }
std::string FactoryFile(const std::string& dir) { return PanelFile(dir, "factory_calib_data"); }
std::string RulesFile(const std::string& dir) { return PanelFile(dir, "vexa_merge_rules"); }

std::string PointerText(const void* pointer) {
  char text[32];
  std::snprintf(text, sizeof(text), "%pK", pointer);
  return text;
}

std::string DitherJson(uint32_t strength_r, uint32_t strength_g, uint32_t strength_b) {
  return R"({"enable":true,"ditherMode":"LUMA","temporalEnable":1,"matrix":[1,2,3,4],)"
         R"("strengthR":)" + std::to_string(strength_r) + R"(,"strengthG":)" +
         std::to_string(strength_g) + R"(,"strengthB":)" + std::to_string(strength_b) + "}";
}

std::string GammaJson(uint32_t entries) {
  std::string lut = "[";
  for (uint32_t i = 0; i < entries; ++i) lut += (i ? "," : "") + std::to_string(i * 4);
  lut += "]";
  return R"({"enable":true,"lutR":)" + lut + R"(,"lutG":)" + lut + R"(,"lutB":)" + lut + "}";
}

TestMode FactoryFloorMode() {
  TestMode mode{"P3", "sRGB", 384, "factory", 6500, "m1", "SDR", {}};
  mode.assets["PostBlendGamut"] = R"({"enable":true,"mapFine":["10,20,30","40,50,60"]})";
  mode.assets["PostBlendPCC"] =
      R"({"enable":true,"R":{"c":0.5,"r":1.0},"G":{"g":1.0},"B":{"b":1.0}})";
  mode.assets["PostBlendDither"] = DitherJson(1, 2, 3);
  return mode;
}

TestMode WorkflowMode() {
  TestMode mode{"P3", "sRGB", 5, "workflow", 6500, "m1", "SDR", {}};
  mode.assets["PostBlendGamut"] =
      R"({"enable":true,"mapFine":["0,0,0","0,0,0"],"Tuning":["1,2,3","4,5,6"]})";
  mode.assets["PostBlendPCC"] = R"({"enable":true,"R":{"r":1.0},"G":{"g":1.0},"B":{"b":1.0},)"
                                R"("Tuning":{"R":{"c":0.125,"r":0.25},"G":{"g":0.5},"B":{"b":-0.25}}})";
  mode.assets["PostBlendDither"] = DitherJson(7, 8, 9);
  return mode;
}

TestMode VividMode() {
  TestMode mode{"sRGB", "sRGB", 2, "vivid", 6500, "", "SDR", {}};
  mode.assets["PostBlendDither"] = DitherJson(4, 5, 6);
  mode.assets["PostBlendDE"] = R"({"enable":true,"flags":"SHARPNESS","sharp":5})";
  mode.assets["PostBlendHdrBlob"] = R"({"blob":"hdr-data"})";
  mode.assets["PostBlendGameBlob"] = R"({"enable":true,"blob":"game-data"})";
  mode.assets["PostBlendIGC"] = GammaJson(3);
  mode.assets["PostBlendGC"] = GammaJson(3);
  return mode;
}

TestMode NativeMode() {
  TestMode mode{"sRGB", "sRGB", 0, "native", 6500, "", "SDR", {}};
  mode.assets["PostBlendPaDither"] = R"({"enable":true,"strength":4,"offsetEn":1,"matrix":[5,6]})";
  return mode;
}

TestMergeRule MergedRule() {
  TestMergeRule rule;
  rule.left = "FactoryFloor";
  rule.right = "Workflow";
  rule.merged = TestMode{"P3", "sRGB", 5, "merged", 6500, "m1", "SDR", {}};
  rule.ops = {{"PostBlendGamutMergeOp", "MERGE_OPERAND"},
              {"PostBlendPCCMergeOp", "MERGE_OPERAND"},
              {"PostBlendDitherMergeOp", "LEFT_OPERAND"}};
  return rule;
}

void WriteStandardPanel(const DeviceTree& device, bool with_rules) {
  device.Write(FactoryFile(), PanelModesText(kPanel, {{"FactoryFloor", FactoryFloorMode()}}));
  device.Write(CalibFile(kDataDir),
               PanelModesText(kPanel, {{"Native", NativeMode()},
                                      {"Vivid", VividMode()},
                                      {"Workflow", WorkflowMode()}}));
  if (with_rules) {
    device.Write(RulesFile(kDataDir),
                 PanelRulesText(kPanel, {{"Merged", MergedRule()}}, DeviceModeMergeJson()));
  }
}

size_t ParserE2eTest::CountLines(const char* kind, const std::string& function,
                                 const std::string& message) const {
  return CountLogLines(log_, kind, "VexaJsonModeParser::" + function, message);
}

void ParserE2eTest::LoadLibrary(const std::string& algo_source) {
  std::string path = kParserLibraryPath;
  if (!algo_source.empty()) {
    stage_ = std::make_unique<LibraryStage>(algo_source);
    path = stage_->parser_path();
  }
  library_ = std::make_unique<ParserLibrary>(path);
  ASSERT_TRUE(library_->loaded()) << library_->error();
}

std::unique_ptr<VexaKivInterface> ParserE2eTest::InitParser(const std::string& panel) {
  if (!library_) LoadLibrary();
  std::unique_ptr<VexaKivInterface> parser = library_->NewParser();
  EXPECT_NE(parser, nullptr);
  if (parser) {
    EXPECT_EQ(parser->Init(panel), 0);
  }
  return parser;
}

ColorModeList ParserE2eTest::Modes(VexaKivInterface& parser) {
  ColorModeList list{kColorModeListVersion, {}};
  EXPECT_EQ(GetModes(parser, &list), 0);
  return list;
}

void ParserE2eTest::WriteModes(const std::string& path,
                               const std::map<std::string, TestMode>& modes) const {
  device_.Write(path, PanelModesText(kPanel, modes));
}

void ParserE2eTest::WriteRules(const std::string& dir,
                               const std::map<std::string, TestMergeRule>& rules,
                               const std::string& mode_merge_json) const {
  device_.Write(RulesFile(dir), PanelRulesText(kPanel, rules, mode_merge_json));
}

std::string ParserE2eTest::Errors() const {
  std::string out;
  for (const std::string& line : log_.Errors()) out += line + "\n";
  return out;
}

void ParserE2eTest::TearDown() {
  library_.reset();
  stage_.reset();
  // Every parser is gone, so the algorithm library it loaded must be unloaded too.
  EXPECT_FALSE(AlgoLibraryLoaded());
}

}  // namespace vexa::testing
