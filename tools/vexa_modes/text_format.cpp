#include "tools/vexa_modes/text_format.h"

#include <cstdarg>
#include <cstdio>

namespace vexa::tools {

std::string Format(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  const int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string text;
  if (length > 0) {
    text.resize(static_cast<size_t>(length) + 1);
    std::vsnprintf(text.data(), text.size(), format, args);
    text.resize(static_cast<size_t>(length));
  }
  va_end(args);
  return text;
}

std::string Join(const std::vector<std::string>& items, const std::string& separator) {
  std::string text;
  for (size_t i = 0; i < items.size(); ++i) {
    if (i > 0) text += separator;
    text += items[i];
  }
  return text;
}

std::string XmlEscape(const std::string& text) {
  std::string escaped;
  for (char c : text) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      case '\'': escaped += "&apos;"; break;
      default: escaped += c;
    }
  }
  return escaped;
}

std::string Abbreviate(const std::string& text, size_t max_length) {
  constexpr char kEllipsis[] = "...";
  constexpr size_t kEllipsisLength = sizeof(kEllipsis) - 1;
  if (text.size() <= max_length) return text;
  if (max_length <= kEllipsisLength) return text.substr(0, max_length);
  return text.substr(0, max_length - kEllipsisLength) + kEllipsis;
}

}  // namespace vexa::tools
