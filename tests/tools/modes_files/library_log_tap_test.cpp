// The one log tap of the tools: the file checkers keep errors and let the rest through to
// standard error; lint keeps every line, split and placed, at the verbose level.
#include "tools/modes_files/library_log_tap.h"

#include <gtest/gtest.h>

#include "platform/log.h"

namespace vexa::tools {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::Test";

// One information line at level 2 and one error line, written inside mode "m".
void LogInfoThenError() {
  ScopedJsonContext mode(JsonScope::kMode, "m", "mode \"m\"");
  VKR_LOGI(2, "progress");
  VKR_LOGE("broken %d", 7);
}

TEST(LibraryLogTapTest, ErrorsTapPassesOtherLinesOnAndVerboseTapKeepsThemAll) {
  const uint32_t saved_level = LogLevel();
  SetLogLevel(2);
  {
    LibraryLogTap tap;
    ::testing::internal::CaptureStderr();
    LogInfoThenError();
    const std::string passed_on = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(passed_on.find("progress"), std::string::npos);
    EXPECT_EQ(passed_on.find("broken"), std::string::npos);
    EXPECT_TRUE(tap.HasErrors());
    EXPECT_EQ(tap.FirstError(), "broken 7");
    tap.Clear();
    EXPECT_FALSE(tap.HasErrors());
  }
  SetLogLevel(0);
  {
    LibraryLogTap tap(LibraryLogTap::Capture::kVerbose);
    LogInfoThenError();
    const std::vector<LoggedLine> lines = tap.Take();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].message, "progress");
    EXPECT_EQ(lines[1].priority, ANDROID_LOG_ERROR);
    EXPECT_EQ(lines[1].label, kLogLabel);
    EXPECT_EQ(lines[1].function, "LogInfoThenError");
    ASSERT_EQ(lines[1].frames.size(), 1u);
    EXPECT_EQ(lines[1].frames[0].name, "m");
  }
  EXPECT_EQ(LogLevel(), 0u);  // the verbose level lasts only as long as the tap
  SetLogLevel(saved_level);
}

}  // namespace
}  // namespace vexa::tools
