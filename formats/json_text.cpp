#include "formats/json_text.h"

#include <algorithm>
#include <cstring>

// The old Reader and FastWriter are jsoncpp's deprecated classes, kept for their exact
// behaviour: strict mode as the files were always read, and the one-line form they were written in.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace vexa {

namespace {

// The position just past the closing quote of the string whose contents start at `pos`, or the
// text's size when it is not closed. Files carry long hex strings: memchr finds the candidate
// quotes, and a quote preceded by an odd run of backslashes is escaped.
size_t SkipStringContents(std::string_view text, size_t pos) {
  while (pos < text.size()) {
    const void* hit = std::memchr(text.data() + pos, '"', text.size() - pos);
    if (hit == nullptr) break;
    const size_t quote = static_cast<size_t>(static_cast<const char*>(hit) - text.data());
    size_t run_start = quote;
    while (run_start > pos && text[run_start - 1] == '\\') --run_start;
    if ((quote - run_start) % 2 == 0) return quote + 1;
    pos = quote + 1;
  }
  return text.size();
}

}  // namespace

size_t JsonNestingDepth(std::string_view text) {
  size_t depth = 0;  // containers open at this point
  size_t deepest = 0;
  size_t i = 0;
  while (i < text.size()) {
    const char c = text[i++];
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
        if (c == '"') i = SkipStringContents(text, i);
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

bool PopulateJsonValue(std::string_view text, Json::Value& value) {
  if (JsonNestingDepth(text) > kMaxJsonNesting) return false;
  Json::Reader reader(Json::Features::strictMode());
  // The range form: the string form would first copy the whole text (megabytes) into the reader.
  return reader.parse(text.data(), text.data() + text.size(), value, /*collectComments=*/false);
}

}  // namespace vexa

#pragma GCC diagnostic pop
