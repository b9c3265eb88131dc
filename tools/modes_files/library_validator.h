// Reads the units of an unpacked modes or rules file with the library's own readers (the
// descriptor reader, the asset classes, the shared-table builder, the rule parser) and reports
// the first unit the library refuses, with the library's reason: what a device would drop.
#ifndef VEXA_TOOLS_MODES_FILES_LIBRARY_VALIDATOR_H_
#define VEXA_TOOLS_MODES_FILES_LIBRARY_VALIDATOR_H_

#include <json/json.h>

#include <cstdint>
#include <memory>
#include <string>

#include "formats/common_data.h"
#include "tools/modes_files/library_log_tap.h"

namespace vexa::tools {

class LibraryValidator {
 public:
  // Each check returns false with `error` set to the library's message.

  // "Version" of a modes file (0 when absent).
  bool CheckVersion(const Json::Value& document, uint32_t* version, std::string* error);
  // The decoded "Common" object; its tables then serve the modes checked afterwards.
  bool CheckCommon(const Json::Value& common, std::string* error);
  // The descriptor members of a mode.
  bool CheckDescriptor(const Json::Value& mode, std::string* error);
  // One decoded asset section of a mode of a file of `version`. A section enabled in the file
  // that the library leaves switched off is refused too.
  bool CheckSection(const std::string& key, const Json::Value& section, uint32_t version,
                    std::string* error);
  // One rule of a rules file with its panel's "ModeMerge" block.
  bool CheckRule(const std::string& name, const Json::Value& rule, const Json::Value& mode_merge,
                 std::string* error);

 private:
  // False with the first error line, when the library logged one since the last Clear.
  bool Verdict(std::string* error);

  LibraryLogTap tap_;
  std::shared_ptr<HwAssetsCommonData> common_data_;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_MODES_FILES_LIBRARY_VALIDATOR_H_
