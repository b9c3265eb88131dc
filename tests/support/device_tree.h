// Temporary directories and environment for tests that stand in a device's file system.
#ifndef VEXA_TESTS_SUPPORT_DEVICE_TREE_H_
#define VEXA_TESTS_SUPPORT_DEVICE_TREE_H_

#include <optional>
#include <string>

namespace vexa::testing {

// Sets (or, with nullopt, unsets) an environment variable for the life of the object.
class ScopedEnv {
 public:
  ScopedEnv(std::string name, std::optional<std::string> value);
  ~ScopedEnv();
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string name_;
  std::optional<std::string> saved_;
};

// A fresh directory, removed with everything in it when the object goes.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// A device file system below a temporary directory, with VEXA_SYSROOT pointing at it while the
// object lives. Paths are given as on the device ("/data/vendor/display/x.json").
class DeviceTree {
 public:
  DeviceTree();

  std::string HostPath(const std::string& device_path) const;
  void MakeDirectory(const std::string& device_path) const;
  // Writes the file, creating its directories.
  void Write(const std::string& device_path, const std::string& text) const;
  bool Exists(const std::string& device_path) const;
  // The file's text, or an empty string when it cannot be read.
  std::string Read(const std::string& device_path) const;

 private:
  TempDir root_;
  ScopedEnv sysroot_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_DEVICE_TREE_H_
