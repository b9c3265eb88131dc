// Exact comparison of a captured log line with the message it should be.
#ifndef VEXA_TESTS_SUPPORT_LOG_LINE_H_
#define VEXA_TESTS_SUPPORT_LOG_LINE_H_

#include <string>

namespace vexa::testing {

// True when `line` ("E <message>" or "I <message>", as LogCapture keeps it) carries exactly
// `pattern`, in which each "%d" stands for a decimal integer (a source line, typically).
bool MatchesLogLine(const std::string& line, const std::string& pattern);

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_LOG_LINE_H_
