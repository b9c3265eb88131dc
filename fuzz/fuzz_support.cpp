#include "fuzz/fuzz_support.h"

#include <android/log.h>

#include "fuzz/throw_guard.h"
#include "platform/log.h"

namespace vexa::fuzz {
namespace {

void DropLine(const struct __android_logger_data*, const char*) {}

}  // namespace

void InitFuzzing() {
  static const bool done = [] {
    __android_log_set_logger(DropLine);
    SetLogLevel(2);
    SetAbortOnThrow(true);
    return true;
  }();
  (void)done;
}

std::vector<std::string> SplitText(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  size_t start = 0;
  while (true) {
    const size_t at = text.find(separator, start);
    if (at == std::string::npos) break;
    parts.push_back(text.substr(start, at - start));
    start = at + separator.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

}  // namespace vexa::fuzz
