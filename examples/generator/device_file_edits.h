// Edits that turn an expanded example source into its device file: the real panel key in place of
// the placeholder, and the device's merge versions in a rules file.
#ifndef VEXA_EXAMPLES_GENERATOR_DEVICE_FILE_EDITS_H_
#define VEXA_EXAMPLES_GENERATOR_DEVICE_FILE_EDITS_H_

#include <json/json.h>

#include <string>

namespace vexa::example {

// Renames the root member "@panel" to `panel`. False when the root has no such object.
bool ReplacePanelPlaceholder(Json::Value& document, const std::string& panel, std::string* error);

// Sets the panel's "ModeMerge" block of a rules file to this device's merge versions.
bool SetDeviceMergeVersions(Json::Value& rules, const std::string& panel, std::string* error);

}  // namespace vexa::example

#endif  // VEXA_EXAMPLES_GENERATOR_DEVICE_FILE_EDITS_H_
