// PCC coefficient blocks for the algorithm tests, written per channel in basis-term order
// (c, r, g, b, rr, gg, bb, rg, gb, rb, rgb), and their comparison at a common scale.
#ifndef VEXA_TESTS_SUPPORT_PCC_COEFFS_H_
#define VEXA_TESTS_SUPPORT_PCC_COEFFS_H_

#include <algorithm>
#include <cmath>

#include "algo/pcc_polynomial.h"

namespace vexa::testing {

using algo::PccPolynomial;
using Terms = PccPolynomial::Terms;

inline pcc_coeff_data Coeffs(const Terms& red, const Terms& green, const Terms& blue) {
  return {0, PccPolynomial::FromTerms(red), PccPolynomial::FromTerms(green), PccPolynomial::FromTerms(blue)};
}

inline const pcc_coeff_data kIdentityPcc = Coeffs({0, 1}, {0, 0, 1}, {0, 0, 0, 1});

// The largest coefficient difference, each term weighed by what it adds at full scale (255 to
// the power of its degree, divided by 255), so that a cubic term counts like a constant.
inline double ScaledDifference(const pcc_coeff_data& a, const pcc_coeff_data& b) {
  double worst = 0;
  const pcc_coeff* channels_a[] = {&a.red, &a.green, &a.blue};
  const pcc_coeff* channels_b[] = {&b.red, &b.green, &b.blue};
  for (int c = 0; c < 3; ++c) {
    const Terms ta = PccPolynomial::AsTerms(*channels_a[c]), tb = PccPolynomial::AsTerms(*channels_b[c]);
    for (int i = 0; i < PccPolynomial::kTerms; ++i) {
      const double scale = std::pow(PccPolynomial::kFullScale, PccPolynomial::TermDegrees()[i] - 1);
      worst = std::max(worst, std::abs(ta[i] - tb[i]) * scale);
    }
  }
  return worst;
}

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_PCC_COEFFS_H_
