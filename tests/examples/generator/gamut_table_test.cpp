#include "examples/generator/gamut_table.h"

#include <gtest/gtest.h>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::example {
namespace {

TEST(GamutTableTest, IdentityReproducesTheGridWithTheFirstCoordinateFastest) {
  const std::vector<GamutOutput> table = GamutTable(Identity());
  ASSERT_EQ(table.size(), kGamutEntries);
  for (uint32_t i = 0; i < kGamutEntries; ++i) {
    const GamutOutput grid = {GamutGridLevel(i % 17), GamutGridLevel(i / 17 % 17),
                              GamutGridLevel(i / 289)};
    ASSERT_EQ(table[i], grid) << i;
  }
  EXPECT_EQ(table[1], (GamutOutput{256, 0, 0}));
  EXPECT_EQ(table[289], (GamutOutput{0, 0, 256}));
  EXPECT_EQ(table[kGamutEntries - 1], (GamutOutput{4095, 4095, 4095}));
}

TEST(GamutTableTest, OutputsOutsideThePanelGamutAreClipped) {
  const Mat3 transform = {Vec3{2, 0, 0}, Vec3{-1, 1, 0}, Vec3{0, 0, 1}};
  const std::vector<GamutOutput> table = GamutTable(transform);
  EXPECT_EQ(table[16], (GamutOutput{4095, 0, 0}));             // red 2 -> 1, green -1 -> 0
  EXPECT_EQ(table[4 + 17 * 8], (GamutOutput{2048, 1024, 0}));  // (1024, 2048, 0) in range
}

}  // namespace
}  // namespace vexa::example
