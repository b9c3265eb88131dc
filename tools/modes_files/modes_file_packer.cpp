#include "tools/modes_files/modes_file_packer.h"

#include "formats/hex_coding.h"
#include "formats/json_access.h"
#include "formats/json_parser.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "tools/modes_files/library_validator.h"

namespace vexa::tools {
namespace {

// Members of a mode that describe it; every other member is an asset section.
bool IsDescriptorMember(const std::string& name) {
  return name == keys::kApplicability || name == keys::kDynamicRange ||
         name == keys::kWhitePoint || name == keys::kMergeId;
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

// "is an object", "is a string": how a wrong member is described.
std::string IsA(const Json::Value& value) {
  const std::string type = JsonTypeName(value);
  return (type.find_first_of("aeiou") == 0 ? "is an " : "is a ") + type;
}

// Names of the root's panel blocks: its object members other than "Common".
std::vector<std::string> PanelBlocks(const Json::Value& document) {
  std::vector<std::string> blocks;
  for (const std::string& name : MemberNames(document)) {
    if (name != keys::kCommon && document[name].isObject()) blocks.push_back(name);
  }
  return blocks;
}

// Walks the units of a modes file in the library's order, turning each hex member into its
// document (unpacking) or, after the library's readers accept it, back (packing).
class ModesFileConverter {
 public:
  explicit ModesFileConverter(bool packing) : packing_(packing) {}

  bool Run(Json::Value& document, std::string* error) {
    if (!document.isObject()) return Fail("the file", "is not a JSON object", error);
    uint32_t version = 0;
    std::string reason;
    if (!validator_.CheckVersion(document, &version, &reason)) return Fail("the file", reason, error);
    // Below version 3 the library ignores "Common": it is carried as it stands.
    if (version >= json_parser::kLatestModesFileVersion && HasMember(document, keys::kCommon) &&
        !ConvertCommon(document[keys::kCommon], error)) {
      return false;
    }
    for (const std::string& panel : PanelBlocks(document)) {
      Json::Value& modes = document[panel];
      for (const std::string& mode : MemberNames(modes)) {
        if (!ConvertMode(mode, modes[mode], version, error)) return false;
      }
    }
    return true;
  }

 private:
  static bool Fail(const std::string& unit, const std::string& reason, std::string* error) {
    *error = unit + ": " + reason;
    return false;
  }

  bool ConvertCommon(Json::Value& common, std::string* error) {
    const std::string unit = std::string(keys::kCommon);
    if (!common.isObject()) return Fail(unit, IsA(common), error);
    std::string reason;
    // The library skips null tables.
    for (const std::string& name : MemberNames(common)) {
      if (!common[name].isNull() && !ConvertMember(common[name], &reason))
        return Fail(unit + " table " + Quoted(name), reason, error);
    }
    // The library's message names the table itself.
    if (packing_ && !validator_.CheckCommon(common, error)) return false;
    if (packing_) EncodeMembers(common, [](const std::string&) { return false; });
    return true;
  }

  bool ConvertMode(const std::string& name, Json::Value& mode, uint32_t version,
                   std::string* error) {
    const std::string unit = "mode " + Quoted(name);
    if (!mode.isObject()) return Fail(unit, IsA(mode), error);
    std::string reason;
    if (packing_ && !validator_.CheckDescriptor(mode, &reason)) return Fail(unit, reason, error);
    for (const std::string& key : MemberNames(mode)) {
      if (IsDescriptorMember(key)) continue;
      const std::string section = unit + ", section " + Quoted(key);
      if (!ConvertMember(mode[key], &reason) ||
          (packing_ && !validator_.CheckSection(key, mode[key], version, &reason))) {
        return Fail(section, reason, error);
      }
    }
    if (packing_) EncodeMembers(mode, IsDescriptorMember);
    return true;
  }

  // Unpacking decodes the member now. Packing only checks that it is a document: it is encoded
  // once its unit has passed the library's readers, which read the document form.
  bool ConvertMember(Json::Value& member, std::string* reason) const {
    if (packing_) {
      if (member.isObject() || member.isArray()) return true;
      *reason = IsA(member) + ", not a JSON document";
      return false;
    }
    if (!member.isString()) {
      *reason = IsA(member) + ", not hex text";
      return false;
    }
    std::string text;
    DecodeData(member, text);
    Json::Value decoded;
    if (!PopulateJsonValue(text, decoded)) {
      *reason = "the hex text does not decode to a JSON document";
      return false;
    }
    member = std::move(decoded);
    return true;
  }

  template <typename Skip>
  static void EncodeMembers(Json::Value& object, Skip skip) {
    for (const std::string& name : MemberNames(object)) {
      if (!skip(name) && !object[name].isNull()) object[name] = HexOfJson(object[name]);
    }
  }

  const bool packing_;
  LibraryValidator validator_;
};

}  // namespace

ModesFileKind KindOfFile(const Json::Value& document) {
  for (const std::string& panel : PanelBlocks(document)) {
    if (HasMember(document[panel], keys::kMergedModes) ||
        HasMember(document[panel], keys::kModeMerge)) {
      return ModesFileKind::kMergeRules;
    }
  }
  return ModesFileKind::kModes;
}

std::string HexOfJson(const Json::Value& document) {
  std::string hex;
  EncodeData(JsonToCompactText(document), hex);
  return hex;
}

bool UnpackModesFile(Json::Value& document, std::string* error) {
  return ModesFileConverter(false).Run(document, error);
}

bool PackModesFile(Json::Value& document, std::string* error) {
  return ModesFileConverter(true).Run(document, error);
}

bool CheckRulesFile(const Json::Value& document, std::string* error) {
  LibraryValidator validator;
  for (const std::string& panel : PanelBlocks(document)) {
    const Json::Value& block = document[panel];
    const Json::Value* rules = FindMember(block, keys::kMergedModes);
    const Json::Value* mode_merge = FindMember(block, keys::kModeMerge);
    const Json::Value none;
    if (rules != nullptr && !rules->isObject() && !rules->isNull()) {
      *error = "panel " + Quoted(panel) + ": \"" + keys::kMergedModes + "\" " + IsA(*rules);
      return false;
    }
    for (const std::string& name : MemberNames(rules != nullptr ? *rules : none)) {
      std::string reason;
      if (!validator.CheckRule(name, (*rules)[name], mode_merge ? *mode_merge : none, &reason)) {
        *error = "rule " + Quoted(name) + ": " + reason;
        return false;
      }
    }
  }
  return true;
}

}  // namespace vexa::tools
