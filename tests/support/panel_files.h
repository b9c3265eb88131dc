// A panel's modes and merge-rules files, described as modes and rules with readable asset
// sections and written through the fixture writer.
#ifndef VEXA_TESTS_SUPPORT_PANEL_FILES_H_
#define VEXA_TESTS_SUPPORT_PANEL_FILES_H_

#include <cstdint>
#include <map>
#include <string>

namespace vexa::testing {

// One mode of a modes file, or the merged mode that a rule describes.
struct TestMode {
  std::string primaries = "sRGB";
  std::string transfer = "sRGB";
  uint32_t intent = 0;
  std::string intent_name;
  uint32_t white_point = 6500;
  std::string merge_id;
  std::string range = "SDR";
  // Asset key to the section's readable JSON text.
  std::map<std::string, std::string> assets;
};

// One rule of a merge-rules file: its operands, the merged mode's descriptor and the operand
// word of each "MergeOps" key.
struct TestMergeRule {
  std::string left;
  std::string right;
  TestMode merged;
  std::map<std::string, std::string> ops;
};

// {"Version": 2, panel: {name: mode, ...}}, asset sections hex-encoded.
std::string PanelModesText(const std::string& panel, const std::map<std::string, TestMode>& modes);

// {panel: {"ModeMerge": mode_merge, "MergedModes": {name: rule, ...}}}.
std::string PanelRulesText(const std::string& panel,
                           const std::map<std::string, TestMergeRule>& rules,
                           const std::string& mode_merge_json);

// The "ModeMerge" block of this device's own merge versions.
std::string DeviceModeMergeJson();

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_PANEL_FILES_H_
