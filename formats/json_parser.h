// The modes file and the merge-rules file.
#ifndef VEXA_FORMATS_JSON_PARSER_H_
#define VEXA_FORMATS_JSON_PARSER_H_

#include <json/json.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "formats/common_data.h"
#include "formats/merge_rule.h"

namespace vexa {

class KivMode;

namespace json_parser {

constexpr uint32_t kLatestModesFileVersion = 3;

// The modes of a modes file for the panel key, in ascending name order; null when the text does
// not parse, a "Common" table does not decode, or "Version", "Common" or the panel key has the
// wrong type. A mode whose section does not decode is dropped alone.
std::shared_ptr<std::vector<std::shared_ptr<KivMode>>> parse_modes(std::string_view text,
                                                                    const std::string& panel_key);

// One mode from its JSON object (its hex sections replaced in place by their parsed documents);
// null when a section does not decode or a member has the wrong type. `reserved` is not read.
std::shared_ptr<KivMode> parse_mode(Json::Value& mode_value, const std::string& mode_name,
                                    const std::string& reserved, uint32_t& version,
                                    const std::shared_ptr<HwAssetsCommonData>& common_data);

// The rules of a merge-rules file for the panel key, in ascending name order; null when the
// text does not parse or the panel key or its "MergedModes" is not an object.
std::shared_ptr<KivModeMergeDefList> parse_mode_merge_rules(std::string_view text,
                                                            const std::string& panel_key);

// One rule; null (with an error line naming the member) when a member of the rule or of the
// "ModeMerge" block has the wrong type.
std::shared_ptr<KivModeMergeDef> parse_merge_rule(Json::Value rule_value, const std::string& name,
                                                  const Json::Value& mode_merge_value);

}  // namespace json_parser
}  // namespace vexa

#endif  // VEXA_FORMATS_JSON_PARSER_H_
