#include "support/fixture_writer.h"

#include <gtest/gtest.h>

#include "formats/hex_coding.h"
#include "formats/json_access.h"
#include "formats/json_text.h"
#include "formats/keys.h"

namespace vexa::testing {
namespace {

// Replaces each object or array member but "Applicability" (the one descriptor member that is an
// object) by the hex of its JSON text.
void EncodeMembers(Json::Value& object) {
  for (const std::string& name : MemberNames(object)) {
    Json::Value& member = object[name];
    if (name == keys::kApplicability || !(member.isObject() || member.isArray())) continue;
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
  if (HasMember(readable, keys::kCommon)) EncodeMembers(readable[keys::kCommon]);
  if (!HasMember(readable, panel_key.c_str())) return readable;
  for (const std::string& mode : MemberNames(readable[panel_key])) EncodeMembers(readable[panel_key][mode]);
  return readable;
}

std::shared_ptr<KivMode> MakeMode(const KivModeDescr& descr, const std::string& assets) {
  Json::Value tree = ParseReadable(assets);
  auto def = std::make_shared<KivModeDef>();
  def->descr = std::make_shared<KivModeDescr>(descr);
  def->assets = &tree;
  return std::make_shared<KivMode>(def, nullptr);
}

std::string DescrText(const KivModeDescr& d) {
  return d.name + "|" + std::to_string(d.color_primaries) + "|" + std::to_string(d.gamma_transfer) + "|" +
         std::to_string(d.render_intent) + "|" + d.render_intent_name + "|" + std::to_string(d.white_point) +
         "|" + std::to_string(d.dynamic_range) + "|" + d.merge_id;
}

}  // namespace vexa::testing
