#include "platform/log.h"

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/log_lines.h"
#include "support/temp_dir.h"

namespace vexa {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::LogTest";

TEST(LogLevelPropertyTest, OnlyDecimalZeroToTwoReplaceTheDefault) {
  const std::pair<const char*, uint32_t> cases[] = {  // value (null: unset), level
      {nullptr, 1}, {"0", 0},  {"1", 1},   {"2", 2},   {"01", 1},  {"002", 2}, {"3", 1},
      {"", 1},      {"x", 1},  {" 2", 1},  {"2 ", 1},  {"+2", 1},  {"-0", 1},  {"0x2", 1},
      {"4294967298", 1},  // 2 modulo 2^32
  };
  for (const auto& [value, level] : cases) {
    testing::ScopedEnv env("VENDOR_DISPLAY_KIVLOGLEVEL", value);
    EXPECT_EQ(ReadLogLevelProperty(), level) << (value ? value : "(unset)");
  }
}

void LogOneOfEach() {
  VKR_LOGE("error %d", 7);
  VKR_LOGI(1, "start-up %s", "line");
  VKR_LOGI(2, "verbose");
}

TEST(LogTest, InformationLinesAreGatedByLevelAndErrorsAlwaysPrint) {
  const std::string where = std::string(kLogLabel) + "::LogOneOfEach";
  for (uint32_t level : {0u, 1u, 2u}) {
    testing::LogCapture log(level);
    LogOneOfEach();
    EXPECT_EQ(testing::CountLogLines(log, "E", where, "error 7"), 1u) << log.Dump();
    EXPECT_EQ(testing::CountLogLines(log, "I", where, "start-up line"), level >= 1 ? 1u : 0u);
    EXPECT_EQ(testing::CountLogLines(log, "I", where, "verbose"), level >= 2 ? 1u : 0u);
    EXPECT_EQ(log.Lines().size(), 1 + level) << log.Dump();
  }
}

}  // namespace
}  // namespace vexa
