#include "tools/modes_files/library_validator.h"

#include "formats/json_access.h"
#include "formats/json_parser.h"
#include "formats/keys.h"
#include "formats/mode_descr_json.h"
#include "modes/kiv_mode.h"

namespace vexa::tools {
namespace {

// Error lines of the readers run here carry this label, like the library's own file parser.
constexpr char kLogLabel[] = "VexaJsonModeParser::JsonParser";

// Whether a section asks for its block to be on, and whether an asset's JSON says it is off. The
// HDR blob writes no "enable" at all, so only an explicit false counts as off.
bool AsksEnabled(const Json::Value& section) {
  const Json::Value* enable = FindMember(section, keys::kEnable);
  return enable != nullptr && enable->isBool() && enable->asBool();
}
bool SwitchedOff(const Json::Value& asset_json) {
  const Json::Value* enable = FindMember(asset_json, keys::kEnable);
  return enable != nullptr && enable->isBool() && !enable->asBool();
}

}  // namespace

bool LibraryValidator::Verdict(std::string* error) {
  if (!tap_.HasErrors()) return true;
  *error = tap_.FirstError();
  return false;
}

bool LibraryValidator::CheckVersion(const Json::Value& document, uint32_t* version,
                                    std::string* error) {
  tap_.Clear();
  JsonFieldReader reader(document, kLogLabel, "parse_modes");
  *version = reader.Uint(keys::kVersion);
  return Verdict(error);
}

bool LibraryValidator::CheckCommon(const Json::Value& common, std::string* error) {
  tap_.Clear();
  common_data_ = std::make_shared<HwAssetsCommonData>(common);
  return Verdict(error);
}

bool LibraryValidator::CheckDescriptor(const Json::Value& mode, std::string* error) {
  tap_.Clear();
  JsonFieldReader reader(mode, kLogLabel, "parse_mode");
  KivModeDescr descr{};
  ReadModeDescrFields(reader, kLogLabel, &descr);
  return Verdict(error);
}

bool LibraryValidator::CheckSection(const std::string& key, const Json::Value& section,
                                    uint32_t version, std::string* error) {
  tap_.Clear();
  auto def = std::make_shared<KivModeDef>();
  def->descr = std::make_shared<KivModeDescr>();
  def->asset_version = version;
  KivMode probe(def, common_data_);
  probe.SetHwAsset(key, section);
  if (!Verdict(error)) return false;
  const auto asset = probe.assets().find(key);
  // Keys the library does not know make no asset; the device ignores them as well.
  if (asset == probe.assets().end()) return true;
  if (AsksEnabled(section) && SwitchedOff(*asset->second->AsJV())) {
    *error = "enabled in the file, but the library leaves the block switched off";
    return false;
  }
  return true;
}

bool LibraryValidator::CheckRule(const std::string& name, const Json::Value& rule,
                                 const Json::Value& mode_merge, std::string* error) {
  tap_.Clear();
  const bool parsed = json_parser::parse_merge_rule(rule, name, mode_merge) != nullptr;
  if (!Verdict(error)) return false;
  if (!parsed) *error = "the library drops this rule";
  return parsed;
}

}  // namespace vexa::tools
