#include "support/log_capture.h"

#include <android/log.h>

#include <mutex>

#include "platform/log.h"

namespace vexa::testing {
namespace {

std::mutex g_mutex;
std::vector<std::string> g_lines;

void CaptureLogger(const struct __android_logger_data* data, const char* message) {
  std::lock_guard<std::mutex> lock(g_mutex);
  const char kind = data->priority >= ANDROID_LOG_ERROR ? 'E' : 'I';
  g_lines.push_back(std::string(1, kind) + " " + message);
}

}  // namespace

LogCapture::LogCapture(uint32_t log_level) : saved_level_(LogLevel()) {
  Clear();
  SetLogLevel(log_level);
  __android_log_set_logger(CaptureLogger);
}

LogCapture::~LogCapture() {
  __android_log_set_logger(__android_log_stderr_logger);
  SetLogLevel(saved_level_);
}

std::vector<std::string> LogCapture::Lines() const {
  std::lock_guard<std::mutex> lock(g_mutex);
  return g_lines;
}

std::vector<std::string> LogCapture::Errors() const {
  std::vector<std::string> out;
  for (const std::string& line : Lines()) {
    if (line.rfind("E ", 0) == 0) out.push_back(line);
  }
  return out;
}

std::vector<std::string> LogCapture::Infos() const {
  std::vector<std::string> out;
  for (const std::string& line : Lines()) {
    if (line.rfind("I ", 0) == 0) out.push_back(line);
  }
  return out;
}

bool LogCapture::Contains(const std::string& text) const { return Count(text) > 0; }

size_t LogCapture::Count(const std::string& text) const {
  size_t count = 0;
  for (const std::string& line : Lines()) {
    if (line.find(text) != std::string::npos) ++count;
  }
  return count;
}

std::string LogCapture::Dump() const {
  std::string out;
  for (const std::string& line : Lines()) out += line + "\n";
  return out;
}

void LogCapture::Clear() {
  std::lock_guard<std::mutex> lock(g_mutex);
  g_lines.clear();
}

}  // namespace vexa::testing
