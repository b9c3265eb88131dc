// The fixture of the end-to-end tests: a temporary device tree (VEXA_SYSROOT), the parser
// library loaded with dlopen at log level 2, its log captured, and the panel's files written from
// readable descriptions.
#ifndef VEXA_TESTS_SUPPORT_PARSER_E2E_H_
#define VEXA_TESTS_SUPPORT_PARSER_E2E_H_

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "support/device_tree.h"
#include "support/log_capture.h"
#include "support/log_lines.h"
#include "support/panel_files.h"
#include "support/parser_library.h"

namespace vexa::testing {

constexpr char kPanel[] = "panelA";
constexpr char kLogLevelVariable[] = "VENDOR_DISPLAY_KIVLOGLEVEL";

// Device directories.
constexpr char kDataDir[] = "/data/vendor/display";
constexpr char kPersistDir[] = "/mnt/vendor/persist/display";
constexpr char kVendorDir[] = "/vendor/etc/display";
constexpr char kUsrDataDir[] = "/usr/data/display";
constexpr char kOemDir[] = "/oem/etc";
constexpr char kOdmDir[] = "/odm/etc/display";

// "<dir>/<stem>_<panel>.json".
std::string PanelFile(const std::string& dir, const std::string& stem,
                      const std::string& panel = kPanel);
std::string CalibFile(const std::string& dir);
std::string FactoryFile(const std::string& dir = kPersistDir);
std::string RulesFile(const std::string& dir);

// A pointer as the library's "%pK" prints it.
std::string PointerText(const void* pointer);

// Readable asset sections.
std::string DitherJson(uint32_t strength_r, uint32_t strength_g, uint32_t strength_b);
std::string GammaJson(uint32_t entries);

// A panel with a factory-floor mode and a calibration workflow mode that one rule merges
// ("Merged": gamut and PCC merged, dither from the left), plus two calibration modes of sRGB:
// "Vivid" (intent 2, hardware and software assets) and "Native" (intent 0, PA dither only).
TestMode FactoryFloorMode();
TestMode WorkflowMode();
TestMode VividMode();
TestMode NativeMode();
TestMergeRule MergedRule();
// Writes the standard panel's factory, calibration and (when asked) merge-rules files.
void WriteStandardPanel(const DeviceTree& device, bool with_rules);
// The gamut and PCC values a merge through the test algorithm library gives (left + 2 * right).
constexpr uint32_t kMergedGamutOut[2][3] = {{12, 24, 36}, {48, 60, 72}};
constexpr double kMergedRedC = 0.75, kMergedRedR = 1.5, kMergedGreenG = 2.0, kMergedBlueB = 0.5;

class ParserE2eTest : public ::testing::Test {
 protected:
  // Loads the library from the build tree, where no libvexa-algo.so is reachable, or from a
  // stage with a copy of `algo_source` beside it as libvexa-algo.so.
  void LoadLibrary(const std::string& algo_source = "");
  // A new parser from the loaded library (loading it first if needed), initialised for kPanel.
  std::unique_ptr<VexaKivInterface> InitParser(const std::string& panel = kPanel);
  // The modes the parser lists.
  ColorModeList Modes(VexaKivInterface& parser);

  void WriteModes(const std::string& path, const std::map<std::string, TestMode>& modes) const;
  void WriteRules(const std::string& dir, const std::map<std::string, TestMergeRule>& rules,
                  const std::string& mode_merge_json = DeviceModeMergeJson()) const;

  // Number of log lines "<kind> VexaJsonModeParser::<function>():<line> <message>".
  size_t CountLines(const char* kind, const std::string& function,
                    const std::string& message) const;
  // Error lines, for failure messages.
  std::string Errors() const;

  void TearDown() override;

  ScopedEnv log_level_{kLogLevelVariable, "2"};
  DeviceTree device_;
  LogCapture log_{2};
  std::unique_ptr<LibraryStage> stage_;
  std::unique_ptr<ParserLibrary> library_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_PARSER_E2E_H_
