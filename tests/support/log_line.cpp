#include "support/log_line.h"

#include <cctype>

namespace vexa::testing {

bool MatchesLogLine(const std::string& line, const std::string& pattern) {
  if (line.size() < 2 || line[1] != ' ') return false;
  size_t at = 2;
  for (size_t p = 0; p < pattern.size(); ++p) {
    if (pattern.compare(p, 2, "%d") == 0) {
      if (at < line.size() && line[at] == '-') ++at;
      const size_t digits = at;
      while (at < line.size() && std::isdigit(static_cast<unsigned char>(line[at]))) ++at;
      if (at == digits) return false;
      ++p;
      continue;
    }
    if (at >= line.size() || line[at] != pattern[p]) return false;
    ++at;
  }
  return at == line.size();
}

}  // namespace vexa::testing
