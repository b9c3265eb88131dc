// Exact matching of captured log lines: "<E|I> <label>::<function>():<line> <message>", where
// the source line is any number.
#ifndef VEXA_TESTS_SUPPORT_LOG_LINES_H_
#define VEXA_TESTS_SUPPORT_LOG_LINES_H_

#include <algorithm>
#include <cctype>
#include <string>

#include "support/log_capture.h"

namespace vexa::testing {

// `where` is "<label>::<function>", e.g. "VexaJsonModeParser::Utils::ReadFromFile".
inline bool IsLogLine(const std::string& line, char kind, const std::string& where,
                      const std::string& message) {
  const std::string head = std::string(1, kind) + " " + where + "():";
  if (line.compare(0, head.size(), head) != 0) return false;
  size_t pos = head.size();
  const size_t digits = pos;
  while (pos < line.size() && std::isdigit(static_cast<unsigned char>(line[pos]))) ++pos;
  return pos > digits && line.compare(pos, std::string::npos, " " + message) == 0;
}

inline size_t CountLogLines(const LogCapture& log, char kind, const std::string& where,
                            const std::string& message) {
  const std::vector<std::string> lines = log.Lines();
  return static_cast<size_t>(std::count_if(lines.begin(), lines.end(), [&](const std::string& l) {
    return IsLogLine(l, kind, where, message);
  }));
}

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_LOG_LINES_H_
