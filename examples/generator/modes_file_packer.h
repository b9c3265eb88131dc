// Turns the unpacked example sources into the form the device reads: asset sections and shared
// tables as hex text of their compact JSON (the project's EncodeData, pairwise byte order), the
// real panel key, and the device's merge versions in a rules file.
#ifndef VEXA_EXAMPLES_GENERATOR_MODES_FILE_PACKER_H_
#define VEXA_EXAMPLES_GENERATOR_MODES_FILE_PACKER_H_

#include <json/json.h>

#include <string>

namespace vexa::example {

// The hex text that carries `document` inside a modes file.
std::string HexOfJson(const Json::Value& document);

// Renames the root member "@panel" to `panel`. False when the root has no such object.
bool ReplacePanelPlaceholder(Json::Value& document, const std::string& panel, std::string* error);

// Packs a modes file in place: each member of "Common", and each member of each mode other than
// "Applicability", "DynamicRange", "WhitePoint" and "MergeId", must be an object and becomes its
// hex text. False, naming the member, when one is not an object.
bool PackModesFile(Json::Value& document, const std::string& panel, std::string* error);

// Sets the panel's "ModeMerge" block of a rules file to this device's merge versions.
bool SetDeviceMergeVersions(Json::Value& rules, const std::string& panel, std::string* error);

}  // namespace vexa::example

#endif  // VEXA_EXAMPLES_GENERATOR_MODES_FILE_PACKER_H_
