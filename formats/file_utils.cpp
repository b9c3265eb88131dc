#include "formats/file_utils.h"

#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/device_paths.h"
#include "platform/log.h"

namespace vexa {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::Utils";

std::shared_ptr<std::string> EmptyText() { return std::make_shared<std::string>(); }

// Writes all of `data` to `file`; false on any short write.
bool WriteAll(FILE* file, const char* data, size_t size) {
  return std::fwrite(data, 1, size, file) == size && std::fflush(file) == 0 &&
         fsync(fileno(file)) == 0;
}

}  // namespace

std::shared_ptr<std::string> ReadFromFile(const std::string& path) {
  const std::string host_path = MapDevicePath(path);
  FILE* file = std::fopen(host_path.c_str(), "r");
  if (file == nullptr) {
    VKR_LOGI(2, "unable to read %s", path.c_str());
    return EmptyText();
  }
  VKR_LOGI(2, "reading from %s", path.c_str());
  long end = (std::fseek(file, 0, SEEK_END) == 0) ? std::ftell(file) : -1;
  std::fseek(file, 0, SEEK_SET);
  // Lengths beyond what a 32-bit count holds (and the odd values a directory reports) are refused.
  const int32_t length = (end < 0 || end > INT32_MAX) ? -1 : static_cast<int32_t>(end);
  if (length < 1) {
    VKR_LOGI(2, "file len is %d", length);
    std::fclose(file);
    return EmptyText();
  }
  char* buffer = static_cast<char*>(std::malloc(static_cast<size_t>(length)));
  if (buffer == nullptr) {
    std::fclose(file);
    return EmptyText();
  }
  const size_t read = std::fread(buffer, 1, static_cast<size_t>(length), file);
  if (read < static_cast<size_t>(length) && std::ferror(file)) {
    VKR_LOGE("error: expected %d bytes. Read %d bytes", length, static_cast<int>(read));
    std::fclose(file);
    std::free(buffer);
    return EmptyText();
  }
  std::fclose(file);
  auto text = std::make_shared<std::string>(buffer, read);
  std::free(buffer);
  VKR_LOGI(2, "read successfully");
  return text;
}

bool WriteToFile(const std::string& path, const std::shared_ptr<std::string>& contents) {
  const std::string host_path = MapDevicePath(path);
  std::string temp_path = host_path + ".tmp.XXXXXX";
  const int fd = mkstemp(temp_path.data());
  if (fd < 0) return false;
  FILE* file = fdopen(fd, "w");
  if (file == nullptr) {
    close(fd);
    unlink(temp_path.c_str());
    return false;
  }
  const char* data = contents ? contents->c_str() : "";
  const bool written = WriteAll(file, data, std::strlen(data));
  const bool closed = std::fclose(file) == 0;
  if (!written || !closed || std::rename(temp_path.c_str(), host_path.c_str()) != 0) {
    unlink(temp_path.c_str());
    return false;
  }
  return true;
}

bool Exists(const std::string& path) {
  FILE* file = std::fopen(MapDevicePath(path).c_str(), "r");
  if (file == nullptr) {
    VKR_LOGI(2, "file %s does not exist", path.c_str());
    return false;
  }
  std::fclose(file);
  VKR_LOGI(2, "file %s exists", path.c_str());
  return true;
}

}  // namespace vexa
