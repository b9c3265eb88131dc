#include "examples/generator/colour_math.h"

#include <gtest/gtest.h>

namespace vexa::example {
namespace {

void ExpectNear(const Mat3& actual, const Mat3& expected, double tolerance) {
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      EXPECT_NEAR(actual[row][column], expected[row][column], tolerance) << row << "," << column;
    }
  }
}

TEST(ColourMathTest, SrgbMatrixHasTheStandardLuminanceRowAndD65White) {
  const auto m = RgbToXyzMatrix(SrgbPrimaries());
  ASSERT_TRUE(m.has_value());
  // BT.709 luma weights, and the published first row of the sRGB matrix.
  EXPECT_NEAR((*m)[1][0], 0.2126, 1e-4);
  EXPECT_NEAR((*m)[1][1], 0.7152, 1e-4);
  EXPECT_NEAR((*m)[1][2], 0.0722, 1e-4);
  EXPECT_NEAR((*m)[0][0], 0.4124, 1e-4);
  const Vec3 white = Multiply(*m, Vec3{1.0, 1.0, 1.0});
  EXPECT_NEAR(white[0], 0.9505, 1e-4);
  EXPECT_NEAR(white[1], 1.0, 1e-12);
  EXPECT_NEAR(white[2], 1.0891, 1e-4);
}

TEST(ColourMathTest, InverseUndoesTheMatrixAndRefusesSingularOnes) {
  for (const Primaries& primaries : {SrgbPrimaries(), DisplayP3Primaries()}) {
    const auto m = RgbToXyzMatrix(primaries);
    ASSERT_TRUE(m.has_value());
    const auto inverse = Inverse(*m);
    ASSERT_TRUE(inverse.has_value());
    ExpectNear(Multiply(*m, *inverse), Identity(), 1e-12);
    ExpectNear(Multiply(*inverse, *m), Identity(), 1e-12);
  }
  EXPECT_FALSE(Inverse(Mat3{Vec3{1, 2, 3}, Vec3{2, 4, 6}, Vec3{0, 1, 0}}).has_value());
}

TEST(ColourMathTest, DegeneratePrimariesHaveNoMatrix) {
  Primaries zero_y = SrgbPrimaries();
  zero_y.white.y = 0.0;
  EXPECT_FALSE(RgbToXyzMatrix(zero_y).has_value());
  Primaries collinear = SrgbPrimaries();
  collinear.green = {0.395, 0.195};  // on the line between red and blue
  EXPECT_FALSE(RgbToXyzMatrix(collinear).has_value());
}

}  // namespace
}  // namespace vexa::example
