#include "tools/lint/log_recorder.h"

#include <mutex>
#include <utility>

#include "platform/log.h"

namespace vexa::lint {
namespace {

constexpr uint32_t kVerboseLogLevel = 2;

std::mutex g_mutex;
std::vector<LoggedLine> g_lines;

void Record(const struct __android_logger_data* data, const char* message) {
  LoggedLine line;
  line.priority = data->priority;
  if (!LogRecorder::SplitLine(message, &line)) line.message = message;
  line.frames = JsonContextFrames();
  std::lock_guard<std::mutex> lock(g_mutex);
  g_lines.push_back(std::move(line));
}

}  // namespace

LogRecorder::LogRecorder() : saved_level_(LogLevel()) {
  Take();
  SetLogLevel(kVerboseLogLevel);
  __android_log_set_logger(Record);
}

LogRecorder::~LogRecorder() {
  __android_log_set_logger(__android_log_stderr_logger);
  SetLogLevel(saved_level_);
}

std::vector<LoggedLine> LogRecorder::Take() {
  std::lock_guard<std::mutex> lock(g_mutex);
  return std::exchange(g_lines, {});
}

bool LogRecorder::SplitLine(const std::string& text, LoggedLine* line) {
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

}  // namespace vexa::lint
