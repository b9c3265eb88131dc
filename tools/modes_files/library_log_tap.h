// Collects the error lines that the library's readers log while the tap exists, so that a tool can
// tell which unit of a file the library refused and say why. Other lines go to standard error as
// before. One tap at a time; the tools are single-threaded.
#ifndef VEXA_TOOLS_MODES_FILES_LIBRARY_LOG_TAP_H_
#define VEXA_TOOLS_MODES_FILES_LIBRARY_LOG_TAP_H_

#include <string>
#include <vector>

struct __android_logger_data;

namespace vexa::tools {

class LibraryLogTap {
 public:
  LibraryLogTap();
  ~LibraryLogTap();
  LibraryLogTap(const LibraryLogTap&) = delete;
  LibraryLogTap& operator=(const LibraryLogTap&) = delete;

  void Clear() { errors_.clear(); }
  bool HasErrors() const { return !errors_.empty(); }
  // The first error's message without its "<label>::<function>():<line> " prefix; empty if none.
  std::string FirstError() const;

 private:
  static void Record(const __android_logger_data* data, const char* message);

  static inline std::vector<std::string> errors_;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_MODES_FILES_LIBRARY_LOG_TAP_H_
