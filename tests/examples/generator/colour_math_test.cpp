#include "examples/generator/colour_math.h"

#include <gtest/gtest.h>

namespace vexa::example {
namespace {

TEST(ColourMathTest, SrgbMatrixHasTheStandardLuminanceRowAndD65White) {
  const auto m = RgbToXyzMatrix(SrgbPrimaries());
  ASSERT_TRUE(m.has_value());
  const double expected_y[3] = {0.2126, 0.7152, 0.0722};  // BT.709 luma weights
  for (int i = 0; i < 3; ++i) EXPECT_NEAR((*m)[1][i], expected_y[i], 1e-4) << i;
  const Vec3 white = Multiply(*m, Vec3{1.0, 1.0, 1.0});
  EXPECT_NEAR(white[0], 0.9505, 1e-4);
  EXPECT_NEAR(white[1], 1.0, 1e-12);
  EXPECT_NEAR(white[2], 1.0891, 1e-4);
}

TEST(ColourMathTest, InverseUndoesTheMatrixAndDegenerateInputsHaveNone) {
  for (const Primaries& primaries : {SrgbPrimaries(), DisplayP3Primaries()}) {
    const Mat3 m = *RgbToXyzMatrix(primaries);
    const Mat3 product = Multiply(m, *Inverse(m));
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) EXPECT_NEAR(product[i][j], i == j ? 1.0 : 0.0, 1e-12);
    }
  }
  EXPECT_FALSE(Inverse(Mat3{Vec3{1, 2, 3}, Vec3{2, 4, 6}, Vec3{0, 1, 0}}).has_value());
  Primaries collinear = SrgbPrimaries();
  collinear.green = {0.395, 0.195};  // on the line from red to blue
  EXPECT_FALSE(RgbToXyzMatrix(collinear).has_value());
  Primaries zero_y = SrgbPrimaries();
  zero_y.white.y = 0.0;
  EXPECT_FALSE(RgbToXyzMatrix(zero_y).has_value());
}

}  // namespace
}  // namespace vexa::example
