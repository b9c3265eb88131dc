// Captures the library's log lines while the tap exists, each split into label, function and
// message and kept with the context frames that were open when it was written (file, mode, rule,
// section, table, member), so that a tool can tell which unit of a file a line is about without
// parsing its text.
//
// Two uses: the file checkers keep only the error lines, to tell which unit the library refused
// and why, and let every other line through to standard error as before; lint records every line
// at log level 2, since several explanations are information lines. One tap at a time.
#ifndef VEXA_TOOLS_MODES_FILES_LIBRARY_LOG_TAP_H_
#define VEXA_TOOLS_MODES_FILES_LIBRARY_LOG_TAP_H_

#include <android/log.h>

#include <cstdint>
#include <string>
#include <vector>

#include "formats/json_access.h"

namespace vexa::tools {

struct LoggedLine {
  int priority = ANDROID_LOG_INFO;
  std::string label;     // "VexaJsonModeParser::HwAssetGC"
  std::string function;  // "SetConfig"
  std::string message;   // after the "label::function():line " prefix
  std::vector<JsonContextFrame> frames;
};

class LibraryLogTap {
 public:
  enum class Capture {
    kErrors,    // error lines kept; the others go on to standard error
    kVerbose,   // every line kept, the library at log level 2 while the tap exists
  };

  explicit LibraryLogTap(Capture capture = Capture::kErrors);
  ~LibraryLogTap();
  LibraryLogTap(const LibraryLogTap&) = delete;
  LibraryLogTap& operator=(const LibraryLogTap&) = delete;

  void Clear() { Take(); }
  // The lines kept so far, moved out.
  std::vector<LoggedLine> Take();
  bool HasErrors() const;
  // The first error's message (without its prefix); empty if none.
  std::string FirstError() const;

  // Splits "label::function():line message"; false when the line has another shape.
  static bool SplitLine(const std::string& text, LoggedLine* line);

 private:
  uint32_t saved_level_;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_MODES_FILES_LIBRARY_LOG_TAP_H_
