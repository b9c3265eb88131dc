#include "examples/generator/colour_math.h"

#include <cmath>

namespace vexa::example {
namespace {

// Below this a determinant or a chromaticity y is taken as zero.
constexpr double kSingularEpsilon = 1e-12;

}  // namespace

Primaries SrgbPrimaries() {
  return {{0.640, 0.330}, {0.300, 0.600}, {0.150, 0.060}, {0.3127, 0.3290}};
}

Primaries DisplayP3Primaries() {
  return {{0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}, {0.3127, 0.3290}};
}

Mat3 Identity() { return Diagonal({1.0, 1.0, 1.0}); }

Mat3 Diagonal(const Vec3& diagonal) {
  Mat3 m{};
  for (int i = 0; i < 3; ++i) m[i][i] = diagonal[i];
  return m;
}

Mat3 Multiply(const Mat3& a, const Mat3& b) {
  Mat3 m{};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      for (int k = 0; k < 3; ++k) m[row][column] += a[row][k] * b[k][column];
    }
  }
  return m;
}

Vec3 Multiply(const Mat3& m, const Vec3& v) {
  Vec3 result{};
  for (int row = 0; row < 3; ++row) {
    for (int k = 0; k < 3; ++k) result[row] += m[row][k] * v[k];
  }
  return result;
}

Mat3 Add(const Mat3& a, const Mat3& b) {
  Mat3 m{};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) m[row][column] = a[row][column] + b[row][column];
  }
  return m;
}

Mat3 Scale(const Mat3& m, double factor) {
  Mat3 scaled = m;
  for (Vec3& row : scaled) {
    for (double& value : row) value *= factor;
  }
  return scaled;
}

std::optional<Mat3> Inverse(const Mat3& m) {
  // Adjugate over determinant.
  Mat3 cofactors{};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      const int r0 = (row + 1) % 3, r1 = (row + 2) % 3;
      const int c0 = (column + 1) % 3, c1 = (column + 2) % 3;
      cofactors[row][column] = m[r0][c0] * m[r1][c1] - m[r0][c1] * m[r1][c0];
    }
  }
  const double determinant =
      m[0][0] * cofactors[0][0] + m[0][1] * cofactors[0][1] + m[0][2] * cofactors[0][2];
  if (std::fabs(determinant) < kSingularEpsilon) return std::nullopt;
  Mat3 inverse{};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column)
      inverse[row][column] = cofactors[column][row] / determinant;
  }
  return inverse;
}

std::optional<Vec3> XyzOf(Chromaticity c) {
  if (std::fabs(c.y) < kSingularEpsilon) return std::nullopt;
  return Vec3{c.x / c.y, 1.0, (1.0 - c.x - c.y) / c.y};
}

std::optional<Mat3> RgbToXyzMatrix(const Primaries& primaries) {
  const auto red = XyzOf(primaries.red);
  const auto green = XyzOf(primaries.green);
  const auto blue = XyzOf(primaries.blue);
  const auto white = XyzOf(primaries.white);
  if (!red || !green || !blue || !white) return std::nullopt;
  Mat3 columns{};
  for (int row = 0; row < 3; ++row) columns[row] = {(*red)[row], (*green)[row], (*blue)[row]};
  const auto inverse = Inverse(columns);
  if (!inverse) return std::nullopt;
  // Scale each primary so that the three together make the white point.
  const Vec3 scale = Multiply(*inverse, *white);
  return Multiply(columns, Diagonal(scale));
}

}  // namespace vexa::example
