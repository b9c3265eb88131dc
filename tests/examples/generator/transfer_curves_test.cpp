#include "examples/generator/transfer_curves.h"

#include <gtest/gtest.h>

namespace vexa::example {
namespace {

TEST(TransferCurvesTest, TablesAreMonotonicWithFullRangeEndpointsAndKnownMidpoints) {
  const struct {
    const char* name;
    std::vector<uint32_t> table;
    size_t entries;
    uint32_t top;
    size_t probe;       // entry checked against a value computed by hand
    uint32_t expected;  // its code
  } cases[] = {
      // sRGB decode of 128/256 = 0.2140 -> 876 of 4095; gamma 2.2: 0.2176 -> 891.
      {"igc srgb", LinearisingTable(TransferCurve::kSrgb, 257, 12), 257, 4095, 128, 876},
      {"igc gamma2.2", LinearisingTable(TransferCurve::kGamma22, 257, 12), 257, 4095, 128, 891},
      // sRGB encode of 0.18 (entry 184 of 1023) = 0.4614 -> 472; gamma 2.2: 0.4587 -> 469.
      {"gc srgb", EncodingTable(TransferCurve::kSrgb, 1024, 10), 1024, 1023, 184, 472},
      {"gc gamma2.2", EncodingTable(TransferCurve::kGamma22, 1024, 10), 1024, 1023, 184, 469},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ASSERT_EQ(c.table.size(), c.entries);
    EXPECT_EQ(c.table.front(), 0u);
    EXPECT_EQ(c.table.back(), c.top);
    for (size_t i = 1; i < c.table.size(); ++i) ASSERT_LE(c.table[i - 1], c.table[i]) << i;
    EXPECT_NEAR(static_cast<double>(c.table[c.probe]), c.expected, 1.0);
  }
}

TEST(TransferCurvesTest, EncodingUndoesLinearising) {
  for (TransferCurve curve : {TransferCurve::kSrgb, TransferCurve::kGamma22}) {
    for (double x = 0.0; x <= 1.0; x += 0.01) {
      EXPECT_NEAR(ToEncoded(curve, ToLinear(curve, x)), x, 1e-9) << x;
    }
  }
  // The sRGB toe is linear: no power law below the break point.
  EXPECT_DOUBLE_EQ(ToLinear(TransferCurve::kSrgb, 0.04), 0.04 / 12.92);
}

TEST(TransferCurvesTest, QuantizeRoundsAndClamps) {
  EXPECT_EQ(Quantize(-0.5, 10), 0u);
  EXPECT_EQ(Quantize(1.5, 10), 1023u);
  EXPECT_EQ(Quantize(0.5, 12), 2048u);  // 2047.5 rounds up
  EXPECT_EQ(TransferCurveNamed("srgb"), TransferCurve::kSrgb);
  EXPECT_EQ(TransferCurveNamed("gamma2.2"), TransferCurve::kGamma22);
  EXPECT_FALSE(TransferCurveNamed("SRGB").has_value());
}

}  // namespace
}  // namespace vexa::example
