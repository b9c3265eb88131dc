// 3x3 colour matrices and the RGB-to-XYZ matrix of a set of primaries.
#ifndef VEXA_EXAMPLES_GENERATOR_COLOUR_MATH_H_
#define VEXA_EXAMPLES_GENERATOR_COLOUR_MATH_H_

#include <array>
#include <optional>

namespace vexa::example {

using Vec3 = std::array<double, 3>;
using Mat3 = std::array<Vec3, 3>;  // rows

struct Chromaticity {
  double x;
  double y;
};

// Red, green and blue primaries and the white point, as CIE 1931 xy chromaticities.
struct Primaries {
  Chromaticity red;
  Chromaticity green;
  Chromaticity blue;
  Chromaticity white;
};

// sRGB / BT.709 and Display P3, both with the D65 white point.
Primaries SrgbPrimaries();
Primaries DisplayP3Primaries();

Mat3 Identity();
Mat3 Diagonal(const Vec3& diagonal);
Mat3 Multiply(const Mat3& a, const Mat3& b);
Vec3 Multiply(const Mat3& m, const Vec3& v);
Mat3 Add(const Mat3& a, const Mat3& b);
Mat3 Scale(const Mat3& m, double factor);
// Null for a singular matrix.
std::optional<Mat3> Inverse(const Mat3& m);

// XYZ of a chromaticity at luminance Y = 1; null for y = 0.
std::optional<Vec3> XyzOf(Chromaticity c);

// The matrix from linear RGB to XYZ: each primary's column scaled so that RGB (1, 1, 1) gives
// the white point at Y = 1. Null for degenerate primaries.
std::optional<Mat3> RgbToXyzMatrix(const Primaries& primaries);

}  // namespace vexa::example

#endif  // VEXA_EXAMPLES_GENERATOR_COLOUR_MATH_H_
