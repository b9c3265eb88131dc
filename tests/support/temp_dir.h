// A fresh directory under the build tree for one test, removed with its contents afterwards;
// and an environment variable set (or, with a null value, unset) for the life of an object.
#ifndef VEXA_TESTS_SUPPORT_TEMP_DIR_H_
#define VEXA_TESTS_SUPPORT_TEMP_DIR_H_

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace vexa::testing {

class TempDir {
 public:
  TempDir() : path_((std::filesystem::path(VEXA_BINARY_DIR) / "test-tmp-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) std::abort();
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

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
    if (!in) return "<missing>";
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  // The names in a directory, sorted.
  std::vector<std::string> Entries(const std::string& relative = "") const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(File(relative))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::string path_;
};

class ScopedEnv {
 public:
  ScopedEnv(const char* name, const char* value) : name_(name) {
    const char* old = std::getenv(name);
    if (old != nullptr) old_value_ = std::make_unique<std::string>(old);
    Set(value);
  }
  ~ScopedEnv() { Set(old_value_ ? old_value_->c_str() : nullptr); }
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  void Set(const char* value) {
    if (value == nullptr) {
      unsetenv(name_.c_str());
    } else {
      setenv(name_.c_str(), value, 1);
    }
  }

  std::string name_;
  std::unique_ptr<std::string> old_value_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_TEMP_DIR_H_
