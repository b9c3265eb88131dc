// The packed and the unpacked form of a panel's files. On the device every "Common" table of a
// version-3 modes file and every asset section of a mode is hex text of a compact JSON document
// (the library's EncodeData, pairwise byte order); in the unpacked form, which people edit and
// diff, each is the JSON document itself. Rules files hold no hex and differ only in layout.
//
// Packing reads each unit with the library's own readers before encoding it, so a file that
// packs is one the library takes whole. The example generator and vexa-modes both pack here.
#ifndef VEXA_TOOLS_MODES_FILES_MODES_FILE_PACKER_H_
#define VEXA_TOOLS_MODES_FILES_MODES_FILE_PACKER_H_

#include <json/json.h>

#include <string>

namespace vexa::tools {

enum class ModesFileKind { kModes, kMergeRules };

// A rules file holds "MergedModes" or "ModeMerge" in a root object; any other file is a modes file.
ModesFileKind KindOfFile(const Json::Value& document);

// The hex text that carries `document` inside a modes file.
std::string HexOfJson(const Json::Value& document);

// Both convert `document` in place and return false, with `error` naming the unit ("mode
// \"srgb\", section \"PostBlendGC\": ..."), at the first unit that cannot be converted or, when
// packing, that the library refuses. Panel blocks are the root's object members but "Common".
bool UnpackModesFile(Json::Value& document, std::string* error);
bool PackModesFile(Json::Value& document, std::string* error);

// The rules of every panel block, read as the library reads them; false at the first it drops.
bool CheckRulesFile(const Json::Value& document, std::string* error);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_MODES_FILES_MODES_FILE_PACKER_H_
