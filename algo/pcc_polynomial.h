// The polynomial colour correction of the PCC block: per output channel
//   c + r*R + g*G + b*B + rr*R*R + gg*G*G + bb*B*B + rg*R*G + gb*G*B + rb*R*B + rgb*R*G*B.
//
// Components are 8-bit code values, 0 to 255: the hardware's coefficient ranges fit this scale
// (a constant up to 256, linear gains up to 4, quadratic terms up to 1/64 and the cubic term up
// to 2^-14, each able to move a full-scale input by about four times the range).
#ifndef VEXA_ALGO_PCC_POLYNOMIAL_H_
#define VEXA_ALGO_PCC_POLYNOMIAL_H_

#include <array>

#include "algo/lut3d.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::algo {

class PccPolynomial {
 public:
  static constexpr double kFullScale = 255.0;
  static constexpr int kTerms = 11;
  // One value per basis term, in coefficient order (c, r, g, b, rr, gg, bb, rg, gb, rb, rgb).
  using Terms = std::array<double, kTerms>;

  explicit PccPolynomial(const pcc_coeff_data& coeffs) : coeffs_(coeffs) {}

  // The basis terms at `rgb`.
  static Terms BasisAt(const Rgb& rgb);
  // The total degree of each basis term: 0, 1, 1, 1, 2, ..., 2, 3.
  static const std::array<int, kTerms>& TermDegrees();
  static Terms AsTerms(const pcc_coeff& channel);
  static pcc_coeff FromTerms(const Terms& terms);

  Rgb Evaluate(const Rgb& rgb) const;
  // Every one of the 33 coefficients is 0 (a mode without tuning).
  bool IsAllZero() const;
  bool IsFinite() const;
  const pcc_coeff_data& coeffs() const { return coeffs_; }

 private:
  pcc_coeff_data coeffs_;
};

}  // namespace vexa::algo

#endif  // VEXA_ALGO_PCC_POLYNOMIAL_H_
