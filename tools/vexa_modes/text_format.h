// Small text helpers for the tool's tables and payload dumps.
#ifndef VEXA_TOOLS_VEXA_MODES_TEXT_FORMAT_H_
#define VEXA_TOOLS_VEXA_MODES_TEXT_FORMAT_H_

#include <string>
#include <vector>

namespace vexa::tools {

// printf into a std::string.
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

// The items separated by `separator`.
std::string Join(const std::vector<std::string>& items, const std::string& separator);

// `text` with &, <, >, " and ' written as XML character references, for SVG and XHTML.
std::string XmlEscape(const std::string& text);

// `text` cut to `max_length` characters, with "..." marking the cut.
std::string Abbreviate(const std::string& text, size_t max_length);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_TEXT_FORMAT_H_
