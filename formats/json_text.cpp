#include "formats/json_text.h"

#include <algorithm>

// The old Reader and FastWriter are jsoncpp's deprecated classes, kept for their exact
// behaviour: strict mode as the files were always read, and the one-line form they were written in.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace vexa {

size_t JsonNestingDepth(std::string_view text) {
  size_t depth = 0;  // containers open at this point
  size_t deepest = 0;
  bool in_string = false;
  bool escaped = false;
  for (char c : text) {
    if (in_string) {
      if (escaped) {
        escaped = false;
      } else if (c == '\\') {
        escaped = true;
      } else if (c == '"') {
        in_string = false;
      }
      continue;
    }
    switch (c) {
      case ' ':
      case '\t':
      case '\n':
      case '\r':
        break;
      case '[':
      case '{':
        deepest = std::max(deepest, ++depth);
        break;
      case ']':
      case '}':
        // The root container is closed (or the text is malformed): the reader stops here.
        if (depth <= 1) return deepest;
        --depth;
        break;
      default:
        // A scalar root holds no nesting; anything else inside a container belongs to a member
        // one level down.
        if (depth == 0) return deepest;
        deepest = std::max(deepest, depth + 1);
        if (c == '"') in_string = true;
        break;
    }
  }
  return deepest;
}

std::string JsonToCompactText(const Json::Value& value) {
  Json::FastWriter writer;
  return writer.write(value);
}

std::shared_ptr<std::string> jsonWriteString(const std::shared_ptr<Json::Value>& value) {
  if (!value) return std::make_shared<std::string>();
  return std::make_shared<std::string>(JsonToCompactText(*value));
}

bool PopulateJsonValue(const std::string& text, Json::Value& value) {
  if (JsonNestingDepth(text) > kMaxJsonNesting) return false;
  Json::Reader reader(Json::Features::strictMode());
  return reader.parse(text, value, /*collectComments=*/false);
}

}  // namespace vexa

#pragma GCC diagnostic pop
