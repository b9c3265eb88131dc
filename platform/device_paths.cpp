#include "platform/device_paths.h"

#include <cstdlib>

namespace vexa {

std::string MapDevicePath(const std::string& device_path) {
#ifdef __ANDROID__
  return device_path;
#else
  const char* sysroot = std::getenv(kSysrootVariable);
  if (sysroot == nullptr || *sysroot == '\0' || device_path.empty() || device_path[0] != '/') {
    return device_path;
  }
  std::string root(sysroot);
  while (!root.empty() && root.back() == '/') root.pop_back();
  return root + device_path;
#endif
}

}  // namespace vexa
