#include "support/fixture_writer.h"

#include <gtest/gtest.h>

#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "formats/keys.h"

namespace vexa::testing {
namespace {

bool IsDescrMember(const std::string& name) {
  return name == keys::kApplicability || name == keys::kDynamicRange ||
         name == keys::kWhitePoint || name == keys::kMergeId;
}

// Replaces each object or array member (but descriptor members) by the hex of its JSON text.
void EncodeMembers(Json::Value& object) {
  if (!object.isObject()) return;
  for (const std::string& name : object.getMemberNames()) {
    Json::Value& member = object[name];
    if (IsDescrMember(name) || !(member.isObject() || member.isArray())) continue;
    std::string hex;
    EncodeData(JsonToCompactText(member), hex);
    member = hex;
  }
}

}  // namespace

Json::Value ParseReadable(const std::string& text) {
  Json::Value value;
  if (!PopulateJsonValue(text, value)) ADD_FAILURE() << "fixture is not valid JSON:\n" << text;
  return value;
}

std::string CompactText(const Json::Value& value) { return JsonToCompactText(value); }

Json::Value EncodeModesFile(Json::Value readable, const std::string& panel_key) {
  if (!readable.isObject()) return readable;
  if (readable.isMember(keys::kCommon)) EncodeMembers(readable[keys::kCommon]);
  if (readable.isMember(panel_key) && readable[panel_key].isObject()) {
    Json::Value& panel = readable[panel_key];
    for (const std::string& mode : panel.getMemberNames()) EncodeMembers(panel[mode]);
  }
  return readable;
}

std::string ModesFileText(const std::string& readable, const std::string& panel_key) {
  return JsonToCompactText(EncodeModesFile(ParseReadable(readable), panel_key));
}

std::string RulesFileText(const std::string& readable) {
  return JsonToCompactText(ParseReadable(readable));
}

}  // namespace vexa::testing
