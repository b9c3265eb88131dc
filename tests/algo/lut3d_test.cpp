// Tetrahedral sampling of the 17-level table: exact at grid points, exact for affine tables,
// close for smooth curves, the right tetrahedron for each ordering of the cell fractions.
#include "algo/lut3d.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/gamut_tables.h"

namespace vexa::testing {
namespace {

algo::Rgb AsRgb(const RgbWord& w) { return {double(w[0]), double(w[1]), double(w[2])}; }

Lut3d TableOf(const GridFunction& f) {
  Lut3d lut = Lut3d::Identity();
  for (uint32_t i = 0; i < Lut3d::kEntries; ++i) lut.at(i) = f(Lut3d::GridPoint(i));
  return lut;
}

double Gamma(double x) { return 4095.0 * std::pow(x / 4095.0, 2.2); }

TEST(Lut3dTest, SamplesExactlyAtGridPointsAndCloselyBetween) {
  EXPECT_EQ(Lut3d::GridPoint(Lut3d::Index(16, 1, 15)), (RgbWord{4095, 256, 3840}));
  const auto curve = [](const RgbWord& p) -> RgbWord {
    return {uint32_t(std::lround(Gamma(p[0]))), uint32_t(std::lround(Gamma(p[1]))), p[0] / 2 + p[2] / 2};
  };
  const Lut3d lut = TableOf(curve);
  for (uint32_t i = 0; i < Lut3d::kEntries; ++i) {
    ASSERT_EQ(lut.Sample(AsRgb(Lut3d::GridPoint(i))), AsRgb(curve(Lut3d::GridPoint(i)))) << i;
  }
  // Between grid points the error of interpolating the 2.2 curve stays within a few codes.
  for (double x = 0; x <= 4095; x += 37.5) {
    const algo::Rgb at = {x, 4095 - x, std::fmod(x * 7, 4095)};
    const algo::Rgb got = lut.Sample(at);
    EXPECT_NEAR(got[0], Gamma(at[0]), 6.0) << x;
    EXPECT_NEAR(got[1], Gamma(at[1]), 6.0) << x;
    EXPECT_NEAR(got[2], at[0] / 2 + at[2] / 2, 1.0) << x;
  }
}

TEST(Lut3dTest, ReproducesAffineTablesAndClampsOutsideTheGrid) {
  const Lut3d lut = TableOf([](const RgbWord& p) -> RgbWord {
    return {p[0] + p[1] + 100, 4095 - p[1], 2 * p[2] + p[0]};
  });
  for (const algo::Rgb& at : {algo::Rgb{1000, 3000, 17}, algo::Rgb{4000.5, 3841, 12.25}}) {
    const algo::Rgb got = lut.Sample(at);
    EXPECT_NEAR(got[0], at[0] + at[1] + 100, 1e-9);
    EXPECT_NEAR(got[1], 4095 - at[1], 1e-9);
    EXPECT_NEAR(got[2], 2 * at[2] + at[0], 1e-9);
  }
  EXPECT_EQ(lut.Sample({-50, 9000, 4095}), lut.Sample({0, 4095, 4095}));
}

// One corner of the first cell set: its weight is that of its tetrahedron vertex, which depends
// on the order of the fractions (trilinear interpolation or a wrong ordering gives other values).
TEST(Lut3dTest, WeighsTheCornersOfTheTetrahedronThatHoldsThePoint) {
  const struct {
    RgbWord corner;
    algo::Rgb point;
    double weight;
  } cases[] = {
      {{1, 1, 1}, {64, 128, 192}, 0.25},  // the smallest fraction
      {{1, 0, 0}, {192, 128, 64}, 0.25},  // f0 - f1
      {{1, 0, 0}, {64, 128, 192}, 0.0},   // not a vertex of this tetrahedron
      {{0, 1, 1}, {64, 128, 192}, 0.25},  // f1 - f0
      {{0, 0, 0}, {64, 128, 192}, 0.25},  // 1 - f2
      {{1, 1, 0}, {255, 4, 0}, 4.0 / 256},
  };
  for (const auto& c : cases) {
    Lut3d lut = TableOf([](const RgbWord&) { return RgbWord{0, 0, 0}; });
    lut.at(Lut3d::Index(c.corner[0], c.corner[1], c.corner[2])) = {4096, 0, 0};
    EXPECT_NEAR(lut.Sample(c.point)[0], 4096 * c.weight, 1e-9);
  }
}

}  // namespace
}  // namespace vexa::testing
