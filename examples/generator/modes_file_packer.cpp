#include "examples/generator/modes_file_packer.h"

#include <set>

#include "examples/generator/generator_words.h"
#include "formats/hex_coding.h"
#include "formats/json_access.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "formats/merge_caps.h"

namespace vexa::example {
namespace {

// Members of a mode that describe it; every other member is an asset section.
const std::set<std::string>& DescriptorMembers() {
  static const std::set<std::string> kMembers = {keys::kApplicability, keys::kDynamicRange,
                                                 keys::kWhitePoint, keys::kMergeId};
  return kMembers;
}

// Replaces each member of `object` (except those in `keep`) by its hex text.
bool PackMembers(Json::Value& object, const std::set<std::string>& keep, const std::string& where,
                 std::string* error) {
  for (const std::string& name : MemberNames(object)) {
    if (keep.count(name) > 0) continue;
    Json::Value& member = object[name];
    if (!member.isObject()) {
      *error = where + "/" + name + " must be an object";
      return false;
    }
    member = HexOfJson(member);
  }
  return true;
}

}  // namespace

std::string HexOfJson(const Json::Value& document) {
  std::string hex;
  EncodeData(JsonToCompactText(document), hex);
  return hex;
}

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

bool PackModesFile(Json::Value& document, const std::string& panel, std::string* error) {
  if (HasMember(document, keys::kCommon)) {
    Json::Value& common = document[keys::kCommon];
    if (!common.isObject()) {
      *error = std::string("/") + keys::kCommon + " must be an object";
      return false;
    }
    if (!PackMembers(common, {}, std::string("/") + keys::kCommon, error)) return false;
  }
  Json::Value& modes = document[panel];
  for (const std::string& mode : MemberNames(modes)) {
    if (!modes[mode].isObject()) {
      *error = "/" + panel + "/" + mode + " must be an object";
      return false;
    }
    if (!PackMembers(modes[mode], DescriptorMembers(), "/" + panel + "/" + mode, error))
      return false;
  }
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
