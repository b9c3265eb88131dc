// JSON text in and out: the strict reader and the compact one-line writer.
#ifndef VEXA_FORMATS_JSON_TEXT_H_
#define VEXA_FORMATS_JSON_TEXT_H_

#include <json/json.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vexa {

// Deepest value level that the reader is handed (the root is level 1, the members of a container
// at level L stand at L + 1). The reader throws beyond it, or aborts where jsoncpp is built
// without exceptions, so deeper text is refused before the reader sees it.
constexpr size_t kMaxJsonNesting = 1000;

// The value as compact one-line JSON ending in a newline (jsoncpp's FastWriter form).
std::shared_ptr<std::string> jsonWriteString(const std::shared_ptr<Json::Value>& value);
std::string JsonToCompactText(const Json::Value& value);

// Parses `text` strictly (no comments, the root must be an array or an object); a duplicate
// member keeps the last value and text after the root is ignored. False when it does not parse.
bool PopulateJsonValue(std::string_view text, Json::Value& value);

// The level of the deepest value of the root container in `text`, as the reader counts it: a
// container nested k deep is at level k, anything inside it at k + 1. An empty container adds no
// level. Text after the root container is not looked at (the reader ignores it as well).
size_t JsonNestingDepth(std::string_view text);

// The same without the SSE2 path: what other targets run, and what that path is checked against.
size_t JsonNestingDepthPortable(std::string_view text);

}  // namespace vexa

#endif  // VEXA_FORMATS_JSON_TEXT_H_
