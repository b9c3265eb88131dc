#include "support/panel_files.h"

#include <gtest/gtest.h>

#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "formats/keys.h"

namespace vexa::testing {
namespace {

void FillDescriptor(const TestMode& mode, Json::Value* out) {
  Json::Value& applicability = (*out)[keys::kApplicability];
  applicability[keys::kColorPrimaries] = mode.primaries;
  applicability[keys::kGammaTransfer] = mode.transfer;
  applicability[keys::kRenderIntent] = mode.intent;
  applicability[keys::kRenderIntentName] = mode.intent_name;
  (*out)[keys::kWhitePoint] = mode.white_point;
  (*out)[keys::kMergeId] = mode.merge_id;
  (*out)[keys::kDynamicRange] = mode.range;
}

Json::Value ModeJson(const TestMode& mode) {
  Json::Value out(Json::objectValue);
  FillDescriptor(mode, &out);
  for (const auto& [key, text] : mode.assets) {
    std::string hex;
    EncodeData(JsonToCompactText(ParseJsonText(text)), hex);
    out[key] = hex;
  }
  return out;
}

}  // namespace

Json::Value ParseJsonText(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << "fixture does not parse: " << text;
  return value;
}

std::string ModesFileText(const std::string& panel, const std::map<std::string, TestMode>& modes,
                          uint32_t version) {
  Json::Value file(Json::objectValue);
  file[keys::kVersion] = version;
  Json::Value& panel_modes = file[panel] = Json::Value(Json::objectValue);
  for (const auto& [name, mode] : modes) panel_modes[name] = ModeJson(mode);
  return JsonToCompactText(file);
}

std::string MergeRulesText(const std::string& panel,
                           const std::map<std::string, TestMergeRule>& rules,
                           const std::string& mode_merge_json) {
  Json::Value file(Json::objectValue);
  Json::Value& panel_rules = file[panel];
  panel_rules[keys::kModeMerge] = ParseJsonText(mode_merge_json);
  Json::Value& merged_modes = panel_rules[keys::kMergedModes] = Json::Value(Json::objectValue);
  for (const auto& [name, rule] : rules) {
    Json::Value& out = merged_modes[name];
    out[keys::kModeNameInputLeft] = rule.left;
    out[keys::kModeNameInputRight] = rule.right;
    FillDescriptor(rule.merged, &out);
    Json::Value& ops = out[keys::kMergeOps] = Json::Value(Json::objectValue);
    for (const auto& [key, word] : rule.ops) ops[key] = word;
  }
  return JsonToCompactText(file);
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
  return JsonToCompactText(block);
}

}  // namespace vexa::testing
