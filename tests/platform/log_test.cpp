#include "platform/log.h"

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/log_lines.h"
#include "support/temp_dir.h"

namespace vexa {
namespace {

using testing::CountLogLines;
using testing::LogCapture;
using testing::ScopedEnv;

constexpr char kLogLabel[] = "VexaJsonModeParser::LogTest";
constexpr char kLevelVariable[] = "VENDOR_DISPLAY_KIVLOGLEVEL";

TEST(LogLevelPropertyTest, OnlyDecimalZeroToTwoReplaceTheDefault) {
  const struct {
    const char* value;  // null: unset
    uint32_t level;
  } cases[] = {
      {nullptr, 1}, {"0", 0},   {"1", 1},   {"2", 2},    {"01", 1},  {"002", 2},
      {"3", 1},     {"", 1},    {"x", 1},   {" 2", 1},   {"2 ", 1},  {"+2", 1},
      {"-0", 1},    {"2x", 1},  {"0x2", 1}, {"4294967298", 1},
  };
  for (const auto& c : cases) {
    ScopedEnv env(kLevelVariable, c.value);
    EXPECT_EQ(ReadLogLevelProperty(), c.level) << (c.value ? c.value : "(unset)");
  }
}

void LogOneOfEach() {
  VKR_LOGE("error %d", 7);
  VKR_LOGI(1, "start-up %s", "line");
  VKR_LOGI(2, "verbose");
}

TEST(LogTest, InformationLinesAreGatedByLevelAndErrorsAlwaysPrint) {
  const struct {
    uint32_t level;
    size_t startup_lines;
    size_t verbose_lines;
  } cases[] = {{0, 0, 0}, {1, 1, 0}, {2, 1, 1}};
  const std::string where = std::string(kLogLabel) + "::LogOneOfEach";
  for (const auto& c : cases) {
    LogCapture log(c.level);
    LogOneOfEach();
    EXPECT_EQ(CountLogLines(log, 'E', where, "error 7"), 1u) << log.Dump();
    EXPECT_EQ(CountLogLines(log, 'I', where, "start-up line"), c.startup_lines) << log.Dump();
    EXPECT_EQ(CountLogLines(log, 'I', where, "verbose"), c.verbose_lines) << log.Dump();
    EXPECT_EQ(log.Lines().size(), 1 + c.startup_lines + c.verbose_lines) << log.Dump();
  }
}

TEST(LogTest, ExplicitPlaceIsPrintedAsGiven) {
  LogCapture log(2);
  VKR_LOGE_AT("VexaJsonModeParser::Named", "Function", 177, "fixed %s", "place");
  VKR_LOGI_AT(2, "VexaJsonModeParser::Named", "Other", 43, "info");
  EXPECT_EQ(log.Lines(), (std::vector<std::string>{
                             "E VexaJsonModeParser::Named::Function():177 fixed place",
                             "I VexaJsonModeParser::Named::Other():43 info"}));
}

}  // namespace
}  // namespace vexa
