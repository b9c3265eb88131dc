#include "support/device_tree.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "platform/device_paths.h"

namespace vexa::testing {

ScopedEnv::ScopedEnv(std::string name, std::optional<std::string> value) : name_(std::move(name)) {
  if (const char* old = std::getenv(name_.c_str())) saved_ = old;
  if (value) {
    setenv(name_.c_str(), value->c_str(), 1);
  } else {
    unsetenv(name_.c_str());
  }
}

ScopedEnv::~ScopedEnv() {
  if (saved_) {
    setenv(name_.c_str(), saved_->c_str(), 1);
  } else {
    unsetenv(name_.c_str());
  }
}

TempDir::TempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "vexa-test-XXXXXX").string();
  std::vector<char> buffer(pattern.begin(), pattern.end());
  buffer.push_back('\0');
  if (mkdtemp(buffer.data()) != nullptr) path_ = buffer.data();
}

TempDir::~TempDir() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
}

DeviceTree::DeviceTree() : sysroot_(kSysrootVariable, root_.path()) {}

std::string DeviceTree::HostPath(const std::string& device_path) const {
  return root_.path() + device_path;
}

void DeviceTree::MakeDirectory(const std::string& device_path) const {
  std::filesystem::create_directories(HostPath(device_path));
}

void DeviceTree::Write(const std::string& device_path, const std::string& text) const {
  const std::filesystem::path path = HostPath(device_path);
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

bool DeviceTree::Exists(const std::string& device_path) const {
  return std::filesystem::exists(HostPath(device_path));
}

std::string DeviceTree::Read(const std::string& device_path) const {
  std::ifstream file(HostPath(device_path), std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace vexa::testing
