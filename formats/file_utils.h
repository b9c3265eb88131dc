// Whole-file access for device paths (taken below VEXA_SYSROOT on Linux hosts).
#ifndef VEXA_FORMATS_FILE_UTILS_H_
#define VEXA_FORMATS_FILE_UTILS_H_

#include <memory>
#include <string>

#include "formats/byte_buffer.h"

namespace vexa {

// The whole file, embedded zero bytes kept; an empty string when it cannot be read.
std::shared_ptr<std::string> ReadFromFile(const std::string& path);

// The same bytes and log lines as ReadFromFile, in a buffer that is not zero-filled before the
// read; empty on any failure.
ByteBuffer ReadFileBytes(const std::string& path);

// Replaces the file with `contents` up to their first zero byte. The new text goes to a temporary
// file in the same directory that is then renamed over the old one, so a crash or a full disk
// never leaves a truncated file behind. A new file gets mode 0666 less the umask, as fopen gives.
// Returns whether the file now holds the contents; on failure no temporary file is left.
bool WriteToFile(const std::string& path, const std::shared_ptr<std::string>& contents);

// True when the file is a regular file holding exactly `contents` up to their first zero byte, so
// that a writer can leave it as it is.
bool FileHolds(const std::string& path, const std::string& contents);

// True when the file can be opened for reading.
bool Exists(const std::string& path);

}  // namespace vexa

#endif  // VEXA_FORMATS_FILE_UTILS_H_
