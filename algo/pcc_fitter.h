// Least-squares fit of a colour transform in the PCC's polynomial basis, as the PCC merge needs
// it: the composition main(tuning(rgb)) of two PCC polynomials is a polynomial of degree up to
// nine, which the block cannot hold; the fit is its best approximation in the eleven-term basis.
#ifndef VEXA_ALGO_PCC_FITTER_H_
#define VEXA_ALGO_PCC_FITTER_H_

#include <functional>

#include "algo/pcc_polynomial.h"

namespace vexa::algo {

class PccFitter {
 public:
  // Sample points per axis of the fitting grid, evenly spaced over 0..255 (4913 colours).
  static constexpr int kSamplesPerAxis = 17;

  // The coefficients that minimise the squared error to `transform` over the fitting grid, per
  // output channel. Exact (up to rounding) when the transform lies in the basis.
  static pcc_coeff_data Fit(const std::function<Rgb(const Rgb&)>& transform);
  // The fit of main(tuning(rgb)); a tuning of all zeros stands for the identity.
  static pcc_coeff_data FitComposition(const PccPolynomial& main, const PccPolynomial& tuning);
};

}  // namespace vexa::algo

#endif  // VEXA_ALGO_PCC_FITTER_H_
