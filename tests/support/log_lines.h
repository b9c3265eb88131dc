// Exact matching of captured log lines: "<E|I> <label>::<function>():<line> <message>", where
// the source line is any number.
#ifndef VEXA_TESTS_SUPPORT_LOG_LINES_H_
#define VEXA_TESTS_SUPPORT_LOG_LINES_H_

#include <algorithm>
#include <string>

#include "support/log_capture.h"

namespace vexa::testing {

// `kind` is "E" or "I"; `where` is "<label>::<function>", e.g. "VexaJsonModeParser::Utils::Exists".
inline bool IsLogLine(const std::string& line, const std::string& kind, const std::string& where,
                      const std::string& message) {
  const std::string head = kind + " " + where + "():";
  const size_t digits_end = line.find_first_not_of("0123456789", head.size());
  return line.rfind(head, 0) == 0 && digits_end != std::string::npos && digits_end > head.size() &&
         line.compare(digits_end, std::string::npos, " " + message) == 0;
}

inline size_t CountLogLines(const LogCapture& log, const std::string& kind,
                            const std::string& where, const std::string& message) {
  const auto lines = log.Lines();
  return std::count_if(lines.begin(), lines.end(),
                       [&](const std::string& l) { return IsLogLine(l, kind, where, message); });
}

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_LOG_LINES_H_
