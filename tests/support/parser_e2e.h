// The parser tests' fixture: a temporary device tree (VEXA_SYSROOT), the log captured at level 2,
// a standard panel's files written from readable JSON, and requests as the display service makes
// them.
#ifndef VEXA_TESTS_SUPPORT_PARSER_E2E_H_
#define VEXA_TESTS_SUPPORT_PARSER_E2E_H_

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "parser/vexa_json_mode_parser.h"
#include "platform/device_paths.h"
#include "support/fixture_writer.h"
#include "support/log_lines.h"
#include "support/temp_dir.h"

namespace vexa::testing {

using Names = std::vector<std::string>;

constexpr char kPanel[] = "panelA";
constexpr char kDataDir[] = "/data/vendor/display";
constexpr char kFactoryFile[] = "/mnt/vendor/persist/display/factory_calib_data_panelA.json";
inline std::string CalibFile(const std::string& d) { return d + "/vexa_calib_data_panelA.json"; }
inline std::string RulesFile(const std::string& d) { return d + "/vexa_merge_rules_panelA.json"; }

// `"<name>": {"Applicability": {...}, <members>}`: a mode of a modes file, or a rule.
inline std::string Mode(const std::string& name, const std::string& primaries, int intent,
                        const std::string& intent_name, const std::string& members) {
  return "\"" + name + R"(":{"Applicability":{"ColorPrimaries":")" + primaries +
         R"(","GammaTransfer":"sRGB","RenderIntent":)" + std::to_string(intent) +
         R"(,"RenderIntentName":")" + intent_name + "\"}" + (members.empty() ? "" : ",") +
         members + "}";
}
inline std::string ModesText(const std::string& modes) {
  return CompactText(EncodeModesFile(ParseReadable(R"({"Version":2,"panelA":{)" + modes + "}}"),
                                     kPanel));
}
// A rules file whose one rule merges FactoryFloor and Workflow: gamut and PCC merged, dither from
// the left.
inline std::string RulesText(const std::string& mode_merge) {
  return R"({"panelA":{"ModeMerge":)" + mode_merge + R"(,"MergedModes":{)" +
         Mode("Merged", "P3", 5, "merged",
              R"("ModeNameInputLeft":"FactoryFloor","ModeNameInputRight":"Workflow","MergeOps":)"
              R"({"PostBlendGamutMergeOp":"MERGE_OPERAND","PostBlendPCCMergeOp":"MERGE_OPERAND",)"
              R"("PostBlendDitherMergeOp":"LEFT_OPERAND"})") +
         "}}}";
}
inline std::string Dither(int strength_r) {
  return R"("PostBlendDither":{"enable":true,"strengthR":)" + std::to_string(strength_r) + "}";
}

// The standard panel. FactoryFloor: the factory file's mode (P3, intent 384, dither 1).
// Calibration: Native (sRGB, intent 0, a PA dither only), Vivid (sRGB, intent 2, dither 4, five
// assets of which two software ones), Workflow (P3, intent 5, gamut and PCC tuning, dither 7), and
// TwinA and TwinB (P3, intent 3, dither 10 and 20) alike but for their white point.
inline const std::string kGamma = R"({"enable":true,"lutR":[0,4],"lutG":[0,4],"lutB":[0,4]})";
inline const std::string kFactoryFloor = Mode(
    "FactoryFloor", "P3", 384, "factory",
    R"("PostBlendGamut":{"enable":true,"mapFine":["10,20,30","40,50,60"]},)"
    R"("PostBlendPCC":{"enable":true,"R":{"c":0.5,"r":1.0},"G":{"g":1.0},"B":{"b":1.0}},)" +
        Dither(1));
inline const std::string kNative =
    Mode("Native", "sRGB", 0, "native", R"("PostBlendPaDither":{"enable":true,"strength":4})");
inline const std::string kVivid = Mode(
    "Vivid", "sRGB", 2, "vivid",
    Dither(4) + R"(,"PostBlendDE":{"enable":true},"PostBlendHdrBlob":{"blob":"h"},)"
                R"("PostBlendIGC":)" + kGamma + R"(,"PostBlendGC":)" + kGamma);
inline const std::string kWorkflow = Mode(
    "Workflow", "P3", 5, "workflow",
    R"("PostBlendGamut":{"enable":true,"mapFine":["0,0,0","0,0,0"],"Tuning":["1,2,3","4,5,6"]},)"
    R"("PostBlendPCC":{"enable":true,"R":{"r":1.0},"G":{"g":1.0},"B":{"b":1.0},"Tuning":)"
    R"({"R":{"c":0.125,"r":0.25},"G":{"g":0.5},"B":{"b":-0.25}}},)" + Dither(7));
inline const std::string kTwins =
    Mode("TwinA", "P3", 3, "twin-a", Dither(10)) + "," +
    Mode("TwinB", "P3", 3, "twin-b", R"("WhitePoint":5,)" + Dither(20));
inline const Names kVividHardware = {"PostBlendDither", "PostBlendGC", "PostBlendIGC"};

// A device file system below a temporary directory, with VEXA_SYSROOT pointing at it.
struct Device {
  Device() = default;
  explicit Device(const std::string& base) : root(base) {}
  void Write(const std::string& path, const std::string& s) const { root.Put(path.substr(1), s); }
  void WriteStandardPanel(bool with_rules) const {
    Write(kFactoryFile, ModesText(kFactoryFloor));
    Write(CalibFile(kDataDir), ModesText(kNative + "," + kVivid + "," + kWorkflow + "," + kTwins));
    if (with_rules) Write(RulesFile(kDataDir), RulesText(R"({"Version":1})"));
  }
  TempDir root;
  ScopedEnv sysroot{kSysrootVariable, root.path().c_str()};
};

inline ModeRenderInputParams ModeRequest(int32_t gamut, int32_t gamma, int32_t intent,
                                         Names hw_assets = {}) {
  return {kModeRenderInputParamsVersion, gamut, gamma, intent, std::move(hw_assets)};
}
inline int32_t GetProperty(VexaKivInterface& parser, uint32_t prop, uint32_t len, void* record) {
  VexaKivPayload payload{kVexaKivPayloadVersion, len, prop, record};
  return parser.GetProperty(&payload);
}
inline int32_t RequestMode(VexaKivInterface& parser, VexaKivOps op,
                           const ModeRenderInputParams& request, HwConfigOutputParams* output) {
  auto* input = const_cast<ModeRenderInputParams*>(&request);
  VexaKivPayload out{0, kHwConfigOutputParamsLen, 0, output};
  return parser.ProcessOps(op, {0, kModeRenderInputParamsLen, 0, input}, &out);
}
inline int32_t SetCaps(VexaKivInterface& parser, VexaKivProperty prop, uint32_t num_of_entries) {
  PostBlendHwCaps caps{0, num_of_entries, 0, {}};
  return parser.SetProperty({kVexaKivPayloadVersion, kPostBlendHwCapsLen, prop, &caps});
}
// "<intent name>/<intent>" of each listed mode.
inline Names ModesSummary(VexaKivInterface& parser) {
  ColorModeList list{kColorModeListVersion, {}};
  EXPECT_EQ(GetProperty(parser, kKivModesList, kColorModeListLen, &list), 0);
  Names out;
  for (auto& m : list.modes) out.push_back(m.render_intent_name + "/" + std::to_string(m.intent));
  return out;
}
inline Names PayloadNames(const HwConfigOutputParams& output) {
  Names names;
  for (const HwConfigPayload& payload : output.payloads) names.push_back(payload.name);
  return names;
}
template <typename Record>
const Record& RecordOf(const HwConfigPayload& payload) {
  return *static_cast<const Record*>(payload.config.get());
}

class ParserE2eTest : public ::testing::Test {
 protected:
  // Lines "<kind> VexaJsonModeParser::<function>():<line> <message>".
  size_t CountLines(const char* kind, const std::string& function, const std::string& message) {
    return CountLogLines(log_, kind, "VexaJsonModeParser::" + function, message);
  }
  Device device_;
  LogCapture log_{2};
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_PARSER_E2E_H_
