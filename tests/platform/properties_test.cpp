#include "platform/properties.h"

#include <gtest/gtest.h>

#include "platform/device_paths.h"
#include "support/temp_dir.h"

namespace vexa {
namespace {

using testing::ScopedEnv;

TEST(PropertiesTest, PropertyIsTheUpperCasedEnvironmentVariable) {
  EXPECT_EQ(PropertyEnvironmentName("vendor.display.kivloglevel"), "VENDOR_DISPLAY_KIVLOGLEVEL");
  EXPECT_EQ(PropertyEnvironmentName("a.b-c.9"), "A_B-C_9");
  {
    ScopedEnv env("VEXA_TEST_SOME_PROP", nullptr);
    EXPECT_FALSE(GetSystemProperty("vexa.test.some.prop").has_value());
  }
  {
    ScopedEnv env("VEXA_TEST_SOME_PROP", "");  // set but empty is not unset
    EXPECT_EQ(GetSystemProperty("vexa.test.some.prop"), std::optional<std::string>(""));
  }
  ScopedEnv env("VEXA_TEST_SOME_PROP", "value 1");
  EXPECT_EQ(GetSystemProperty("vexa.test.some.prop"), std::optional<std::string>("value 1"));
}

TEST(DevicePathsTest, AbsolutePathsGoBelowTheSysrootReadAtEachCall) {
  const struct {
    const char* sysroot;  // null: unset
    const char* path;
    const char* mapped;
  } cases[] = {
      {nullptr, "/data/vendor/display/x", "/data/vendor/display/x"},
      {"", "/data/x", "/data/x"},
      {"/tmp/root", "/data/x", "/tmp/root/data/x"},
      {"/tmp/root//", "/vendor/etc/x", "/tmp/root/vendor/etc/x"},
      {"/tmp/root", "relative/x", "relative/x"},
      {"/tmp/root", "", ""},
      {"/", "/data/x", "/data/x"},
  };
  for (const auto& c : cases) {
    ScopedEnv env(kSysrootVariable, c.sysroot);
    EXPECT_EQ(MapDevicePath(c.path), c.mapped) << (c.sysroot ? c.sysroot : "(unset)");
  }
}

}  // namespace
}  // namespace vexa
