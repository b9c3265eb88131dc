#include "examples/generator/panel_model.h"

#include <gtest/gtest.h>

namespace vexa::example {
namespace {

const Primaries kExamplePanel = {{0.642, 0.334}, {0.303, 0.605}, {0.151, 0.058}, {0.309, 0.326}};

TEST(PanelModelTest, PanelThatIsExactlySrgbNeedsNoCorrection) {
  const auto panel = PanelModel::Create(SrgbPrimaries());
  ASSERT_TRUE(panel.has_value());
  const auto gamut = panel->GamutMatrix(SrgbPrimaries());
  ASSERT_TRUE(gamut.has_value());
  const Mat3 pcc = panel->PccMatrix(1.0);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(panel->WhiteBalanceGains()[i], 1.0, 1e-9);
    for (int j = 0; j < 3; ++j) {
      EXPECT_NEAR((*gamut)[i][j], i == j ? 1.0 : 0.0, 1e-9);
      EXPECT_NEAR(pcc[i][j], i == j ? 1.0 : 0.0, 1e-9);
    }
  }
}

TEST(PanelModelTest, GamutKeepsWhiteAndPccCarriesTheWhiteBalance) {
  const auto panel = PanelModel::Create(kExamplePanel);
  ASSERT_TRUE(panel.has_value());
  const Vec3& gains = panel->WhiteBalanceGains();
  // The example panel is bluish (x, y below D65): blue is turned down, red stays at full.
  EXPECT_DOUBLE_EQ(gains[0], 1.0);
  EXPECT_LT(gains[2], gains[1]);
  EXPECT_LT(gains[1], 1.0);
  for (const Primaries& target : {SrgbPrimaries(), DisplayP3Primaries()}) {
    const Vec3 white = Multiply(*panel->GamutMatrix(target), Vec3{1, 1, 1});
    for (double channel : white) EXPECT_NEAR(channel, 1.0, 1e-12);
  }
  for (double saturation : {1.0, 1.12, 0.8}) {
    const Vec3 white = Multiply(panel->PccMatrix(saturation), Vec3{1, 1, 1});
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(white[i], gains[i], 1e-12) << saturation;
  }
}

TEST(PanelModelTest, SaturationMovesPrimariesAwayFromGreyAndP3LeavesThePanelGamut) {
  const auto panel = PanelModel::Create(kExamplePanel);
  ASSERT_TRUE(panel.has_value());
  const Vec3 plain = Multiply(panel->PccMatrix(1.0), Vec3{1, 0, 0});
  const Vec3 boosted = Multiply(panel->PccMatrix(1.2), Vec3{1, 0, 0});
  EXPECT_GT(boosted[0], plain[0]);
  EXPECT_LT(boosted[1], plain[1]);
  // P3 red is outside this near-sRGB panel: more than full red, negative green and blue.
  const Vec3 p3_red = Multiply(*panel->GamutMatrix(DisplayP3Primaries()), Vec3{1, 0, 0});
  EXPECT_GT(p3_red[0], 1.1);
  EXPECT_LT(p3_red[1], 0.0);
  EXPECT_LT(p3_red[2], 0.0);
}

}  // namespace
}  // namespace vexa::example
