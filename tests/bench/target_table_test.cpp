#include "bench/target_table.h"

#include <gtest/gtest.h>

namespace vexa::bench {
namespace {

// A target is missed only beyond limit x margin; one the run did not measure is not checked.
TEST(TargetTableTest, MissedOnlyBeyondTheMarginAndUnmeasuredIgnored) {
  TargetTable table;
  table.Add("ratio", 1.3, 1.15, "");
  table.Add("not run", std::nullopt, 1.0, "");
  EXPECT_FALSE(table.Met(1.0));
  EXPECT_TRUE(table.Met(1.2));
  table.Add("zero held", 1.0, 0, "B");
  EXPECT_FALSE(table.Met(100));
}

TEST(TargetTableTest, FlagsAreTakenOutOfTheArgumentsAndModeCountsParsed) {
  char program[] = "bench", modes[] = "--vexa_modes=10,40", other[] = "--benchmark_filter=x";
  char* argv[] = {program, modes, other};
  int argc = 3;
  EXPECT_EQ(TakeFlag(&argc, argv, "vexa_modes"), "10,40");
  EXPECT_EQ(argc, 2);
  EXPECT_STREQ(argv[1], "--benchmark_filter=x");
  EXPECT_FALSE(TakeFlag(&argc, argv, "vexa_modes"));
  EXPECT_EQ(ParseModeCounts("10,40,160"), (std::vector<uint32_t>{10, 40, 160}));
  for (const char* bad : {"", "10,,40", "x", "0", "10;40"}) EXPECT_TRUE(ParseModeCounts(bad).empty()) << bad;
}

}  // namespace
}  // namespace vexa::bench
