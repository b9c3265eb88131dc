#include "formats/json_text.h"

// The old Reader and FastWriter are jsoncpp's deprecated classes, kept for their exact
// behaviour: strict mode as the files were always read, and the one-line form they were written in.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace vexa {

size_t JsonNestingDepth(std::string_view text) {
  size_t depth = 0;
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
      case '"': in_string = true; break;
      case '[':
      case '{':
        if (++depth > deepest) deepest = depth;
        break;
      case ']':
      case '}':
        if (depth > 0) --depth;
        break;
      default: break;
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
