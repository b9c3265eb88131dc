#include "platform/device_paths.h"

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace vexa {
namespace {

TEST(DevicePathsTest, AbsolutePathsGoBelowTheSysrootReadAtEachCall) {
  const struct {
    const char* sysroot;  // null: unset
    const char* path;
    const char* mapped;
  } cases[] = {
      {nullptr, "/data/x", "/data/x"},    {"", "/data/x", "/data/x"},
      {"/r", "/data/x", "/r/data/x"},     {"/r//", "/vendor/x", "/r/vendor/x"},
      {"/r", "relative/x", "relative/x"}, {"/r", "", ""},
      {"/", "/data/x", "/data/x"},
  };
  for (const auto& c : cases) {
    testing::ScopedEnv env(kSysrootVariable, c.sysroot);
    EXPECT_EQ(MapDevicePath(c.path), c.mapped) << (c.sysroot ? c.sysroot : "(unset)");
  }
}

}  // namespace
}  // namespace vexa
