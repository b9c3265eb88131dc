#include "tools/modes_files/library_log_tap.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "platform/log.h"

namespace vexa::tools {
namespace {

constexpr uint32_t kVerboseLogLevel = 2;

// The logger hook takes no user data, so the tap's state is the process's.
std::mutex g_mutex;
std::vector<LoggedLine> g_lines;
LibraryLogTap::Capture g_capture = LibraryLogTap::Capture::kErrors;

bool IsError(const LoggedLine& line) { return line.priority >= ANDROID_LOG_ERROR; }

void Record(const struct __android_logger_data* data, const char* message) {
  if (g_capture == LibraryLogTap::Capture::kErrors && data->priority < ANDROID_LOG_ERROR) {
    __android_log_stderr_logger(data, message);
    return;
  }
  LoggedLine line;
  line.priority = data->priority;
  if (!LibraryLogTap::SplitLine(message, &line)) line.message = message;
  line.frames = JsonContextFrames();
  std::lock_guard<std::mutex> lock(g_mutex);
  g_lines.push_back(std::move(line));
}

}  // namespace

LibraryLogTap::LibraryLogTap(Capture capture) : saved_level_(LogLevel()) {
  Take();
  g_capture = capture;
  if (capture == Capture::kVerbose) SetLogLevel(kVerboseLogLevel);
  __android_log_set_logger(Record);
}

LibraryLogTap::~LibraryLogTap() {
  __android_log_set_logger(__android_log_stderr_logger);
  SetLogLevel(saved_level_);
  Take();
}

std::vector<LoggedLine> LibraryLogTap::Take() {
  std::lock_guard<std::mutex> lock(g_mutex);
  return std::exchange(g_lines, {});
}

bool LibraryLogTap::HasErrors() const {
  std::lock_guard<std::mutex> lock(g_mutex);
  return std::any_of(g_lines.begin(), g_lines.end(), IsError);
}

std::string LibraryLogTap::FirstError() const {
  std::lock_guard<std::mutex> lock(g_mutex);
  for (const LoggedLine& line : g_lines) {
    if (IsError(line)) return line.message;
  }
  return std::string();
}

bool LibraryLogTap::SplitLine(const std::string& text, LoggedLine* line) {
  const size_t call = text.find("():");
  if (call == std::string::npos) return false;
  const size_t digits_end = text.find_first_not_of("0123456789", call + 3);
  if (digits_end == std::string::npos || digits_end == call + 3 || text[digits_end] != ' ') {
    return false;
  }
  const std::string where = text.substr(0, call);
  const size_t last_scope = where.rfind("::");
  line->label = last_scope == std::string::npos ? std::string() : where.substr(0, last_scope);
  line->function = last_scope == std::string::npos ? where : where.substr(last_scope + 2);
  line->message = text.substr(digits_end + 1);
  return true;
}

}  // namespace vexa::tools
