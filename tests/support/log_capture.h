// Captures the library's log lines for the life of the object (instead of standard error).
// Lines are kept as "E <message>" or "I <message>", the message with its "label::func():line "
// prefix.
#ifndef VEXA_TESTS_SUPPORT_LOG_CAPTURE_H_
#define VEXA_TESTS_SUPPORT_LOG_CAPTURE_H_

#include <android/log.h>

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "platform/log.h"

namespace vexa::testing {

class LogCapture {
 public:
  // Sets the library's log level for the life of the capture (restored afterwards).
  explicit LogCapture(uint32_t log_level = 2) : saved_level_(LogLevel()) {
    Clear();
    SetLogLevel(log_level);
    __android_log_set_logger(Capture);
  }
  ~LogCapture() {
    __android_log_set_logger(__android_log_stderr_logger);
    SetLogLevel(saved_level_);
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  std::vector<std::string> Lines() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return lines_;
  }
  std::vector<std::string> Errors() const { return Matching("E ", true); }
  std::vector<std::string> Infos() const { return Matching("I ", true); }
  // Number of lines containing `text`.
  size_t Count(const std::string& text) const { return Matching(text, false).size(); }
  bool Contains(const std::string& text) const { return Count(text) > 0; }
  // All lines, one per line, for failure messages.
  std::string Dump() const {
    std::string out;
    for (const std::string& line : Lines()) out += line + "\n";
    return out;
  }
  void Clear() {
    std::lock_guard<std::mutex> lock(mutex_);
    lines_.clear();
  }

 private:
  static void Capture(const struct __android_logger_data* data, const char* message) {
    std::lock_guard<std::mutex> lock(mutex_);
    lines_.push_back(std::string(data->priority >= ANDROID_LOG_ERROR ? "E " : "I ") + message);
  }
  // The lines that start with `text`, or, unless `at_start`, contain it.
  std::vector<std::string> Matching(const std::string& text, bool at_start) const {
    std::vector<std::string> out;
    for (const std::string& line : Lines()) {
      if (at_start ? line.rfind(text, 0) == 0 : line.find(text) != line.npos) out.push_back(line);
    }
    return out;
  }

  static inline std::mutex mutex_;
  static inline std::vector<std::string> lines_;
  uint32_t saved_level_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_LOG_CAPTURE_H_
