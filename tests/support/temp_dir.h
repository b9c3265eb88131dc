// A fresh directory under the build tree for one test, removed with its contents afterwards;
// and an environment variable set (or, with a null value, unset) for the life of an object.
#ifndef VEXA_TESTS_SUPPORT_TEMP_DIR_H_
#define VEXA_TESTS_SUPPORT_TEMP_DIR_H_

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace vexa::testing {

class TempDir {
 public:
  // Below the build tree, or below `base`.
  explicit TempDir(const std::string& base = VEXA_BINARY_DIR)
      : path_((std::filesystem::path(base) / "test-tmp-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) std::abort();
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  const std::string& path() const { return path_; }
  std::string File(const std::string& relative) const { return path_ + "/" + relative; }
  // Writes the file, making its parent directories.
  void Put(const std::string& relative, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(File(relative)).parent_path());
    std::ofstream(File(relative), std::ios::binary) << bytes;
  }
  // The file's bytes, or "<missing>".
  std::string Get(const std::string& relative) const {
    std::ifstream in(File(relative), std::ios::binary);
    return in ? std::string(std::istreambuf_iterator<char>(in), {}) : "<missing>";
  }

 private:
  std::string path_;
};

// A directory in memory where the system has one (tests that run Init thousands of times, each
// syncing the merge-version file), else the build tree.
inline std::string MemoryBase() {
  std::error_code error;
  return std::filesystem::is_directory("/dev/shm", error) ? "/dev/shm" : VEXA_BINARY_DIR;
}

class ScopedEnv {
 public:
  ScopedEnv(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_value_ = old;
    Set(value);
  }
  ~ScopedEnv() { Set(old_value_ ? old_value_->c_str() : nullptr); }

 private:
  void Set(const char* value) { value ? setenv(name_.c_str(), value, 1) : unsetenv(name_.c_str()); }

  std::string name_;
  std::optional<std::string> old_value_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_TEMP_DIR_H_
