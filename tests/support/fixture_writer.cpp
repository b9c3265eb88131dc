#include "support/fixture_writer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "formats/keys.h"

namespace vexa::testing {
namespace {

bool IsDescrMember(const std::string& name) {
  return name == keys::kApplicability || name == keys::kDynamicRange ||
         name == keys::kWhitePoint || name == keys::kMergeId;
}

// Replaces each object or array member of `object` (but those `skip` names) by its hex text.
void EncodeMembers(Json::Value& object, bool (*skip)(const std::string&)) {
  if (!object.isObject()) return;
  for (const std::string& name : object.getMemberNames()) {
    if (skip != nullptr && skip(name)) continue;
    Json::Value& member = object[name];
    if (member.isObject() || member.isArray()) member = HexOf(member);
  }
}

}  // namespace

Json::Value ParseReadable(const std::string& text) {
  Json::Value value;
  if (!PopulateJsonValue(text, value)) {
    ADD_FAILURE() << "fixture is not valid JSON:\n" << text;
    return Json::Value();
  }
  return value;
}

std::string CompactText(const Json::Value& value) { return JsonToCompactText(value); }

std::string HexOf(const Json::Value& document) {
  std::string hex;
  EncodeData(JsonToCompactText(document), hex);
  return hex;
}

Json::Value EncodeModesFile(Json::Value readable, const std::string& panel_key) {
  if (!readable.isObject()) return readable;
  if (readable.isMember(keys::kCommon)) EncodeMembers(readable[keys::kCommon], nullptr);
  if (readable.isMember(panel_key) && readable[panel_key].isObject()) {
    Json::Value& panel = readable[panel_key];
    for (const std::string& mode : panel.getMemberNames()) EncodeMembers(panel[mode], &IsDescrMember);
  }
  return readable;
}

std::string ModesFileText(const Json::Value& readable, const std::string& panel_key) {
  return JsonToCompactText(EncodeModesFile(readable, panel_key));
}

std::string ModesFileText(const std::string& readable, const std::string& panel_key) {
  return ModesFileText(ParseReadable(readable), panel_key);
}

std::string ModesFileText(const char* readable, const std::string& panel_key) {
  return ModesFileText(std::string(readable), panel_key);
}

std::string RulesFileText(const Json::Value& readable) { return JsonToCompactText(readable); }

std::string RulesFileText(const std::string& readable) {
  return RulesFileText(ParseReadable(readable));
}

std::string RulesFileText(const char* readable) { return RulesFileText(std::string(readable)); }

bool WriteTextFile(const std::string& path, const std::string& text) {
  std::error_code error;
  const std::filesystem::path parent = std::filesystem::path(path).parent_path();
  if (!parent.empty()) std::filesystem::create_directories(parent, error);
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  return static_cast<bool>(out.flush());
}

}  // namespace vexa::testing
