#include "examples/generator/transfer_curves.h"

#include <gtest/gtest.h>

namespace vexa::example {
namespace {

TEST(TransferCurvesTest, TablesHaveFullRangeEndpointsAndKnownMidpoints) {
  const struct {
    const char* name;
    std::vector<uint32_t> table;
    uint32_t top;
    size_t probe;
    uint32_t expected;  // computed by hand
  } cases[] = {
      // sRGB decode of 128/256 is 0.2140 (876 of 4095); gamma 2.2 gives 0.2176 (891).
      {"igc srgb", LinearisingTable(TransferCurve::kSrgb, 257, 12), 4095, 128, 876},
      {"igc gamma2.2", LinearisingTable(TransferCurve::kGamma22, 257, 12), 4095, 128, 891},
      // sRGB encode of 184/1023 (0.18) is 0.4612 (472 of 1023); gamma 2.2 gives 0.4585 (469).
      {"gc srgb", EncodingTable(TransferCurve::kSrgb, 1024, 10), 1023, 184, 472},
      {"gc gamma2.2", EncodingTable(TransferCurve::kGamma22, 1024, 10), 1023, 184, 469},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(c.table.front(), 0u);
    EXPECT_EQ(c.table.back(), c.top);
    EXPECT_EQ(c.table[c.probe], c.expected);
  }
}

TEST(TransferCurvesTest, EncodingUndoesLinearising) {
  for (TransferCurve curve : {TransferCurve::kSrgb, TransferCurve::kGamma22}) {
    for (double x = 0.0; x <= 1.0; x += 0.01)
      EXPECT_NEAR(ToEncoded(curve, ToLinear(curve, x)), x, 1e-9);
  }
  // The sRGB toe is linear: no power law below the break point.
  EXPECT_DOUBLE_EQ(ToLinear(TransferCurve::kSrgb, 0.04), 0.04 / 12.92);
}

}  // namespace
}  // namespace vexa::example
