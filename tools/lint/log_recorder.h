// Records the library's log lines while it loads files, each with the context frames that were
// open when it was written (file, mode, rule, section, table, member), so that a line can be
// attributed without parsing its text. Info lines are recorded too: the library is run at log
// level 2 for the life of the recorder, and several explanations are info lines.
#ifndef VEXA_TOOLS_LINT_LOG_RECORDER_H_
#define VEXA_TOOLS_LINT_LOG_RECORDER_H_

#include <android/log.h>

#include <cstdint>
#include <string>
#include <vector>

#include "formats/json_access.h"

namespace vexa::lint {

struct LoggedLine {
  int priority = ANDROID_LOG_INFO;
  std::string label;     // "VexaJsonModeParser::HwAssetGC"
  std::string function;  // "SetConfig"
  std::string message;   // after the "label::function():line " prefix
  std::vector<JsonContextFrame> frames;
};

class LogRecorder {
 public:
  LogRecorder();
  ~LogRecorder();
  LogRecorder(const LogRecorder&) = delete;
  LogRecorder& operator=(const LogRecorder&) = delete;

  // The lines so far, moved out.
  std::vector<LoggedLine> Take();

  // Splits "label::function():line message"; false when the line has another shape.
  static bool SplitLine(const std::string& text, LoggedLine* line);

 private:
  uint32_t saved_level_;
};

}  // namespace vexa::lint

#endif  // VEXA_TOOLS_LINT_LOG_RECORDER_H_
