#include "examples/generator/device_file_edits.h"

#include "examples/generator/generator_words.h"
#include "formats/json_access.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "formats/merge_caps.h"

namespace vexa::example {

bool ReplacePanelPlaceholder(Json::Value& document, const std::string& panel, std::string* error) {
  const Json::Value* modes = FindMember(document, words::kPanelPlaceholder);
  if (modes == nullptr || !modes->isObject()) {
    *error = std::string("the root has no \"") + words::kPanelPlaceholder + "\" object";
    return false;
  }
  Json::Value moved = *modes;
  document.removeMember(words::kPanelPlaceholder);
  document[panel] = std::move(moved);
  return true;
}

bool SetDeviceMergeVersions(Json::Value& rules, const std::string& panel, std::string* error) {
  Json::Value device;
  if (!PopulateJsonValue(ModeMergeVersionText(), device) || !HasMember(device, keys::kModeMerge)) {
    *error = "the device's merge versions do not parse";
    return false;
  }
  if (!rules[panel].isObject()) {
    *error = "/" + panel + " must be an object";
    return false;
  }
  rules[panel][keys::kModeMerge] = device[keys::kModeMerge];
  return true;
}

}  // namespace vexa::example
