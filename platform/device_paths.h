// Device file-system paths. On Linux, when VEXA_SYSROOT is set, every absolute device path is
// taken below that directory, so a host tool or a test can stand in a device tree anywhere.
// The variable is read each time a path is mapped.
#ifndef VEXA_PLATFORM_DEVICE_PATHS_H_
#define VEXA_PLATFORM_DEVICE_PATHS_H_

#include <string>

namespace vexa {

constexpr char kSysrootVariable[] = "VEXA_SYSROOT";

// The host path of a device path.
std::string MapDevicePath(const std::string& device_path);

}  // namespace vexa

#endif  // VEXA_PLATFORM_DEVICE_PATHS_H_
