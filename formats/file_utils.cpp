#include "formats/file_utils.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "platform/device_paths.h"
#include "platform/log.h"

namespace vexa {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::Utils";

std::shared_ptr<std::string> EmptyText() { return std::make_shared<std::string>(); }

// Writes all of `data` to `fd` and flushes it to the device; false on any failure.
bool WriteAllAndSync(int fd, const char* data, size_t size) {
  while (size > 0) {
    const ssize_t written = write(fd, data, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    data += written;
    size -= static_cast<size_t>(written);
  }
  return fsync(fd) == 0;
}

// Creates a new, empty temporary file beside `path` and opens it for writing; -1 on failure.
// The mode is 0666 less the umask, as for a file that fopen creates.
int CreateTemporaryBeside(const std::string& path, std::string* temp_path) {
  static std::atomic<unsigned> counter{0};
  constexpr int kAttempts = 16;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    *temp_path = path + ".tmp." + std::to_string(getpid()) + "." + std::to_string(counter++);
    const int fd = open(temp_path->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  return -1;
}

// Makes a rename in the directory of `path` durable; a failure here costs durability only.
void SyncDirectoryOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  std::string directory = ".";
  if (slash != std::string::npos) directory = (slash == 0) ? "/" : path.substr(0, slash);
  const int fd = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  fsync(fd);
  close(fd);
}

// Reads the whole file into the buffer that `buffer_of(length)` provides (null when it cannot),
// logging each outcome; the bytes read, or -1 on any failure (a file of length 0 included).
template <typename BufferOf>
int64_t ReadWhole(const std::string& path, BufferOf buffer_of) {
  const std::string host_path = MapDevicePath(path);
  FILE* file = std::fopen(host_path.c_str(), "r");
  if (file == nullptr) {
    VKR_LOGI(2, "unable to read %s", path.c_str());
    return -1;
  }
  VKR_LOGI(2, "reading from %s", path.c_str());
  long end = (std::fseek(file, 0, SEEK_END) == 0) ? std::ftell(file) : -1;
  std::fseek(file, 0, SEEK_SET);
  // Lengths beyond what a 32-bit count holds (and the odd values a directory reports) are refused.
  const int32_t length = (end < 0 || end > INT32_MAX) ? -1 : static_cast<int32_t>(end);
  if (length < 1) {
    VKR_LOGI(2, "file len is %d", length);
    std::fclose(file);
    return -1;
  }
  char* buffer = buffer_of(static_cast<size_t>(length));
  if (buffer == nullptr) {
    std::fclose(file);
    return -1;
  }
  const size_t read = std::fread(buffer, 1, static_cast<size_t>(length), file);
  if (read < static_cast<size_t>(length) && std::ferror(file)) {
    VKR_LOGE("error: expected %d bytes. Read %d bytes", length, static_cast<int>(read));
    std::fclose(file);
    return -1;
  }
  std::fclose(file);
  VKR_LOGI(2, "read successfully");
  return static_cast<int64_t>(read);
}

}  // namespace

std::shared_ptr<std::string> ReadFromFile(const std::string& path) {
  auto text = std::make_shared<std::string>();
  const int64_t read = ReadWhole(path, [&](size_t length) -> char* {
    try {
      text->resize(length);  // read straight into the result: no second buffer, no copy
    } catch (const std::bad_alloc&) {
      return nullptr;
    }
    return text->data();
  });
  if (read < 0) return EmptyText();
  text->resize(static_cast<size_t>(read));
  return text;
}

ByteBuffer ReadFileBytes(const std::string& path) {
  ByteBuffer bytes;
  const int64_t read = ReadWhole(path, [&](size_t length) {
    bytes = ByteBuffer::WithCapacity(length);
    return bytes.data.get();
  });
  if (read < 0) return ByteBuffer();
  bytes.size = static_cast<size_t>(read);
  return bytes;
}

bool WriteToFile(const std::string& path, const std::shared_ptr<std::string>& contents) {
  const std::string host_path = MapDevicePath(path);
  std::string temp_path;
  const int fd = CreateTemporaryBeside(host_path, &temp_path);
  if (fd < 0) return false;
  // The contents end at their first zero byte.
  const char* data = contents ? contents->c_str() : "";
  const bool written = WriteAllAndSync(fd, data, std::strlen(data));
  const bool closed = close(fd) == 0;
  if (!written || !closed || std::rename(temp_path.c_str(), host_path.c_str()) != 0) {
    unlink(temp_path.c_str());
    return false;
  }
  SyncDirectoryOf(host_path);
  return true;
}

bool FileHolds(const std::string& path, const std::string& contents) {
  const size_t size = std::strlen(contents.c_str());
  const int fd = open(MapDevicePath(path).c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  struct stat info {};
  bool same = fstat(fd, &info) == 0 && S_ISREG(info.st_mode) &&
              static_cast<uint64_t>(info.st_size) == size;
  std::string held(same ? size + 1 : 0, '\0');  // one byte more shows a file that grew meanwhile
  size_t got = 0;
  while (same && got < held.size()) {
    const ssize_t n = read(fd, held.data() + got, held.size() - got);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    got += static_cast<size_t>(n);
  }
  close(fd);
  return same && got == size && held.compare(0, size, contents, 0, size) == 0;
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
