// Captures the library's log lines for the life of the object (instead of standard error).
// Lines are kept as "E <message>" or "I <message>", the message with its "label::func():line "
// prefix.
#ifndef VEXA_TESTS_SUPPORT_LOG_CAPTURE_H_
#define VEXA_TESTS_SUPPORT_LOG_CAPTURE_H_

#include <cstdint>
#include <string>
#include <vector>

namespace vexa::testing {

class LogCapture {
 public:
  // Sets the library's log level for the life of the capture (restored afterwards).
  explicit LogCapture(uint32_t log_level = 2);
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  std::vector<std::string> Lines() const;
  std::vector<std::string> Errors() const;  // "E ..." lines only
  std::vector<std::string> Infos() const;   // "I ..." lines only
  // True when some line contains `text`.
  bool Contains(const std::string& text) const;
  // Number of lines containing `text`.
  size_t Count(const std::string& text) const;
  // All lines, one per line, for failure messages.
  std::string Dump() const;
  void Clear();

 private:
  uint32_t saved_level_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_LOG_CAPTURE_H_
