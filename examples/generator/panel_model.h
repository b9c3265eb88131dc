// A panel characterised by its measured primaries and white point, and the corrections that
// make it reproduce a target colour space: the 3D LUT's chromaticity mapping and the PCC's
// white balance.
//
// In linear light the pipeline runs gamut LUT, then PCC. The full colorimetric correction from
// target RGB to panel RGB is split in two: the gamut matrix maps the target primaries onto the
// panel's and keeps white at (1, 1, 1); the PCC's diagonal gains then pull the panel's native
// white to D65. Their product is the full correction, scaled so that no channel exceeds 1.
#ifndef VEXA_EXAMPLES_GENERATOR_PANEL_MODEL_H_
#define VEXA_EXAMPLES_GENERATOR_PANEL_MODEL_H_

#include <optional>

#include "examples/generator/colour_math.h"

namespace vexa::example {

class PanelModel {
 public:
  // Null when the measured primaries are degenerate.
  static std::optional<PanelModel> Create(const Primaries& measured);

  // Linear target RGB to linear panel RGB showing the same chromaticity; white maps to white.
  // Null for degenerate target primaries.
  std::optional<Mat3> GamutMatrix(const Primaries& target) const;

  // Per-channel gains (largest 1) that turn the panel's native white into D65.
  const Vec3& WhiteBalanceGains() const { return white_balance_; }

  // The PCC's linear part: white balance after a saturation change about the panel's
  // luminance (1 keeps saturation; white stays white whatever the factor).
  Mat3 PccMatrix(double saturation) const;

 private:
  PanelModel(const Mat3& xyz_to_panel, const Vec3& luminance_weights);

  Mat3 xyz_to_panel_;
  Vec3 luminance_weights_;  // Y of each panel primary; they sum to 1
  Vec3 white_balance_;
};

}  // namespace vexa::example

#endif  // VEXA_EXAMPLES_GENERATOR_PANEL_MODEL_H_
