#include "examples/generator/panel_model.h"

#include <algorithm>

namespace vexa::example {

std::optional<PanelModel> PanelModel::Create(const Primaries& measured) {
  const auto panel_to_xyz = RgbToXyzMatrix(measured);
  if (!panel_to_xyz) return std::nullopt;
  const auto xyz_to_panel = Inverse(*panel_to_xyz);
  if (!xyz_to_panel) return std::nullopt;
  return PanelModel(*xyz_to_panel, (*panel_to_xyz)[1]);
}

PanelModel::PanelModel(const Mat3& xyz_to_panel, const Vec3& luminance_weights)
    : xyz_to_panel_(xyz_to_panel), luminance_weights_(luminance_weights) {
  // Panel drive that shows D65 at full luminance, scaled so the strongest channel is 1.
  const Vec3 d65 = *XyzOf(SrgbPrimaries().white);
  const Vec3 drive = Multiply(xyz_to_panel_, d65);
  const double strongest = std::max({drive[0], drive[1], drive[2]});
  for (int i = 0; i < 3; ++i) white_balance_[i] = drive[i] / strongest;
}

std::optional<Mat3> PanelModel::GamutMatrix(const Primaries& target) const {
  const auto target_to_xyz = RgbToXyzMatrix(target);
  if (!target_to_xyz) return std::nullopt;
  const Mat3 full = Multiply(xyz_to_panel_, *target_to_xyz);
  // Divide out the white balance (what full makes of target white) so white stays (1, 1, 1).
  const Vec3 white_drive = Multiply(full, Vec3{1.0, 1.0, 1.0});
  return Multiply(Diagonal({1.0 / white_drive[0], 1.0 / white_drive[1], 1.0 / white_drive[2]}),
                  full);
}

Mat3 PanelModel::PccMatrix(double saturation) const {
  // s * I + (1 - s) * 1 * w^T: keeps luminance, moves chroma by s.
  Mat3 towards_grey{};
  for (Vec3& row : towards_grey) row = luminance_weights_;
  const Mat3 adjust = Add(Scale(Identity(), saturation), Scale(towards_grey, 1.0 - saturation));
  return Multiply(Diagonal(white_balance_), adjust);
}

}  // namespace vexa::example
