#include "examples/generator/panel_model.h"

#include <gtest/gtest.h>

namespace vexa::example {
namespace {

TEST(PanelModelTest, GamutKeepsWhiteThePccBalancesItAndP3LeavesANearSrgbPanel) {
  // A bluish panel (white below D65 in x and y) close to sRGB.
  const auto panel =
      PanelModel::Create({{0.642, 0.334}, {0.303, 0.605}, {0.151, 0.058}, {0.309, 0.326}});
  ASSERT_TRUE(panel.has_value());
  const Vec3& gains = panel->WhiteBalanceGains();
  EXPECT_DOUBLE_EQ(gains[0], 1.0);
  EXPECT_LT(gains[2], gains[1]);
  EXPECT_LT(gains[1], 1.0);
  for (const Primaries& target : {SrgbPrimaries(), DisplayP3Primaries()}) {
    for (double channel : Multiply(*panel->GamutMatrix(target), Vec3{1, 1, 1}))
      EXPECT_NEAR(channel, 1.0, 1e-12);
  }
  for (double saturation : {0.8, 1.0, 1.12}) {
    const Vec3 white = Multiply(panel->PccMatrix(saturation), Vec3{1, 1, 1});
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(white[i], gains[i], 1e-12) << saturation;
  }
  EXPECT_LT(Multiply(panel->PccMatrix(1.2), Vec3{1, 0, 0})[1],
            Multiply(panel->PccMatrix(1.0), Vec3{1, 0, 0})[1]);
  const Vec3 p3_red = Multiply(*panel->GamutMatrix(DisplayP3Primaries()), Vec3{1, 0, 0});
  EXPECT_GT(p3_red[0], 1.1);
  EXPECT_LT(p3_red[1], 0.0);
  EXPECT_LT(p3_red[2], 0.0);
}

}  // namespace
}  // namespace vexa::example
