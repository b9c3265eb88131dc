#include "support/panel_files.h"

#include <json/json.h>

#include "formats/keys.h"
#include "support/fixture_writer.h"

namespace vexa::testing {
namespace {

constexpr uint32_t kInlineTablesVersion = 2;

Json::Value DescriptorJson(const TestMode& mode) {
  Json::Value out(Json::objectValue);
  Json::Value& applicability = out[keys::kApplicability];
  applicability[keys::kColorPrimaries] = mode.primaries;
  applicability[keys::kGammaTransfer] = mode.transfer;
  applicability[keys::kRenderIntent] = mode.intent;
  applicability[keys::kRenderIntentName] = mode.intent_name;
  out[keys::kWhitePoint] = mode.white_point;
  out[keys::kMergeId] = mode.merge_id;
  out[keys::kDynamicRange] = mode.range;
  return out;
}

}  // namespace

std::string PanelModesText(const std::string& panel, const std::map<std::string, TestMode>& modes) {
  Json::Value file(Json::objectValue);
  file[keys::kVersion] = kInlineTablesVersion;
  Json::Value& panel_modes = file[panel] = Json::Value(Json::objectValue);
  for (const auto& [name, mode] : modes) {
    Json::Value& out = panel_modes[name] = DescriptorJson(mode);
    for (const auto& [key, text] : mode.assets) out[key] = ParseReadable(text);
  }
  return CompactText(EncodeModesFile(file, panel));
}

std::string PanelRulesText(const std::string& panel,
                           const std::map<std::string, TestMergeRule>& rules,
                           const std::string& mode_merge_json) {
  Json::Value file(Json::objectValue);
  Json::Value& panel_rules = file[panel];
  panel_rules[keys::kModeMerge] = ParseReadable(mode_merge_json);
  Json::Value& merged_modes = panel_rules[keys::kMergedModes] = Json::Value(Json::objectValue);
  for (const auto& [name, rule] : rules) {
    Json::Value& out = merged_modes[name] = DescriptorJson(rule.merged);
    out[keys::kModeNameInputLeft] = rule.left;
    out[keys::kModeNameInputRight] = rule.right;
    Json::Value& ops = out[keys::kMergeOps] = Json::Value(Json::objectValue);
    for (const auto& [key, word] : rule.ops) ops[key] = word;
  }
  return CompactText(file);
}

std::string DeviceModeMergeJson() {
  Json::Value block(Json::objectValue);
  for (const auto& [key, version] : DeviceMergeVersions()) {
    if (key == keys::kVersion) {
      block[key] = version;
    } else {
      block[key][keys::kVersion] = version;
    }
  }
  return CompactText(block);
}

}  // namespace vexa::testing
