// JSON text in and out: the strict reader and the compact one-line writer.
#ifndef VEXA_FORMATS_JSON_TEXT_H_
#define VEXA_FORMATS_JSON_TEXT_H_

#include <json/json.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vexa {

// Deepest nesting of arrays and objects that the reader is handed; deeper text is refused
// without parsing (the reader itself would throw, or abort where built without exceptions).
constexpr size_t kMaxJsonNesting = 1000;

// The value as compact one-line JSON ending in a newline (jsoncpp's FastWriter form).
std::shared_ptr<std::string> jsonWriteString(const std::shared_ptr<Json::Value>& value);
std::string JsonToCompactText(const Json::Value& value);

// Parses `text` strictly (no comments, the root must be an array or an object); a duplicate
// member keeps the last value and text after the root is ignored. False when it does not parse.
bool PopulateJsonValue(const std::string& text, Json::Value& value);

// The deepest nesting of arrays and objects in `text`, outside strings.
size_t JsonNestingDepth(std::string_view text);

}  // namespace vexa

#endif  // VEXA_FORMATS_JSON_TEXT_H_
