// The PCC merge's fit of main(tuning(rgb)): exact when the result lies in the basis, the
// least-squares optimum when it does not.
#include "algo/pcc_fitter.h"

#include <gtest/gtest.h>

#include "support/pcc_coeffs.h"

namespace vexa::testing {
namespace {

using algo::PccFitter;
using algo::Rgb;

// A tuning and a main table with every kind of term, within the hardware's ranges.
const pcc_coeff_data kTuning = Coeffs({4, 0.9, 0.05, 0, 1e-4, 0, 0, 2e-4, 0, 0, 3e-7},
                                      {-2, 0.1, 0.8, 0.1, 0, -1e-4, 0, 0, 5e-5, 0, 0},
                                      {0, 0, 0.02, 1.1, 0, 0, 3e-4, 0, 0, -2e-4, -1e-7});
const pcc_coeff_data kMain = Coeffs({10, 0.8, 0.1, 0.1}, {-5, 0, 1.2, -0.1}, {0, 0.05, 0.05, 0.9});

// A linear main after any tuning stays in the basis: main's matrix times the tuning's terms,
// plus main's constant. Identity on either side (a zero tuning counts as none) leaves the other.
TEST(PccFitterTest, ComposesExactlyWhenTheResultLiesInTheBasis) {
  const auto compose = [](const pcc_coeff_data& main, const pcc_coeff_data& tuning) {
    const pcc_coeff* m[] = {&main.red, &main.green, &main.blue};
    const Terms t[] = {PccPolynomial::AsTerms(tuning.red), PccPolynomial::AsTerms(tuning.green),
                       PccPolynomial::AsTerms(tuning.blue)};
    Terms out[3] = {};
    for (int c = 0; c < 3; ++c) {
      for (int i = 0; i < PccPolynomial::kTerms; ++i) {
        out[c][i] = m[c]->r * t[0][i] + m[c]->g * t[1][i] + m[c]->b * t[2][i];
      }
      out[c][0] += m[c]->c;
    }
    return Coeffs(out[0], out[1], out[2]);
  };
  const pcc_coeff_data gains = Coeffs({0, 0.5}, {0, 0, 2}, {0, 0, 0, 1.5});
  const pcc_coeff_data offsets = Coeffs({20, 1}, {-30, 0, 1}, {255, 0, 0, 1});
  const struct {
    pcc_coeff_data main, tuning, expected;
  } cases[] = {
      {offsets, gains, Coeffs({20, 0.5}, {-30, 0, 2}, {255, 0, 0, 1.5})},
      {gains, offsets, Coeffs({10, 0.5}, {-60, 0, 2}, {382.5, 0, 0, 1.5})},
      {kMain, kTuning, compose(kMain, kTuning)},
      {kIdentityPcc, kTuning, kTuning},
      {kTuning, pcc_coeff_data{}, kTuning},
      {kTuning, kIdentityPcc, kTuning},
  };
  for (const auto& c : cases) {
    const pcc_coeff_data fit = PccFitter::FitComposition(PccPolynomial(c.main), PccPolynomial(c.tuning));
    EXPECT_LT(ScaledDifference(fit, c.expected), 1e-9) << &c - cases;
  }
}

// A quadratic main after a quadratic tuning has terms of degree four: the fit's error over the
// fitting grid is orthogonal to every basis term, and stays small.
TEST(PccFitterTest, FitsACompositionOutsideTheBasisInTheLeastSquaresSense) {
  const pcc_coeff_data main = Coeffs({0, 1, 0, 0, 2e-3}, {0, 0, 1, 0, 0, 0, 0, 0, 1e-3}, {0, 0, 0, 1, 0, 0, -1e-3});
  const PccPolynomial m(main), t(kTuning);
  const PccPolynomial fit(PccFitter::FitComposition(m, t));
  constexpr int n = PccFitter::kSamplesPerAxis;
  Terms error_by_term[3] = {};
  double worst = 0;
  for (int i = 0; i < n * n * n; ++i) {
    const Rgb rgb = {255.0 * (i % n) / (n - 1), 255.0 * (i / n % n) / (n - 1), 255.0 * (i / (n * n)) / (n - 1)};
    const Rgb got = fit.Evaluate(rgb), want = m.Evaluate(t.Evaluate(rgb));
    const Terms basis = PccPolynomial::BasisAt({rgb[0] / 255, rgb[1] / 255, rgb[2] / 255});
    for (int c = 0; c < 3; ++c) {
      worst = std::max(worst, std::abs(got[c] - want[c]));
      for (int k = 0; k < PccPolynomial::kTerms; ++k) error_by_term[c][k] += basis[k] * (got[c] - want[c]);
    }
  }
  for (const Terms& channel : error_by_term) {
    for (double e : channel) EXPECT_NEAR(e, 0.0, 1e-6);
  }
  EXPECT_GT(worst, 0.1);  // the composition really is outside the basis
  EXPECT_LT(worst, 8.0);
}

}  // namespace
}  // namespace vexa::testing
