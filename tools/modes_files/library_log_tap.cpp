#include "tools/modes_files/library_log_tap.h"

#include <android/log.h>


namespace vexa::tools {
namespace {

// The text after "<label>::<function>():<line> ", or the whole line when it has no such prefix.
std::string WithoutPrefix(const std::string& line) {
  const size_t call = line.find("():");
  if (call == std::string::npos) return line;
  const size_t space = line.find(' ', call);
  return space == std::string::npos ? line : line.substr(space + 1);
}

}  // namespace

LibraryLogTap::LibraryLogTap() {
  Clear();
  __android_log_set_logger(Record);
}

LibraryLogTap::~LibraryLogTap() {
  __android_log_set_logger(__android_log_stderr_logger);
  Clear();
}

std::string LibraryLogTap::FirstError() const {
  return errors_.empty() ? std::string() : WithoutPrefix(errors_.front());
}

void LibraryLogTap::Record(const __android_logger_data* data, const char* message) {
  if (data->priority >= ANDROID_LOG_ERROR) {
    errors_.emplace_back(message);
  } else {
    __android_log_stderr_logger(data, message);
  }
}

}  // namespace vexa::tools
