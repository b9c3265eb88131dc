// A device file system below a temporary directory, with VEXA_SYSROOT pointing at it while the
// object lives. Paths are given as on the device ("/data/vendor/display/x.json").
#ifndef VEXA_TESTS_SUPPORT_DEVICE_TREE_H_
#define VEXA_TESTS_SUPPORT_DEVICE_TREE_H_

#include <filesystem>
#include <string>

#include "platform/device_paths.h"
#include "support/temp_dir.h"

namespace vexa::testing {

class DeviceTree {
 public:
  DeviceTree() : sysroot_(kSysrootVariable, root_.path().c_str()) {}

  std::string HostPath(const std::string& device_path) const { return root_.path() + device_path; }
  void MakeDirectory(const std::string& device_path) const {
    std::filesystem::create_directories(HostPath(device_path));
  }
  // Writes the file, making its directories.
  void Write(const std::string& device_path, const std::string& text) const {
    root_.Put(device_path.substr(1), text);
  }
  // The file's text, or "<missing>".
  std::string Read(const std::string& device_path) const { return root_.Get(device_path.substr(1)); }
  bool Exists(const std::string& device_path) const {
    return std::filesystem::exists(HostPath(device_path));
  }

 private:
  TempDir root_;
  ScopedEnv sysroot_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_DEVICE_TREE_H_
