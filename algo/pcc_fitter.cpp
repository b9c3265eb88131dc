#include "algo/pcc_fitter.h"

#include <cmath>
#include <vector>

namespace vexa::algo {
namespace {

constexpr int kTerms = PccPolynomial::kTerms;
using Matrix = std::array<std::array<double, kTerms>, kTerms>;
using Terms = PccPolynomial::Terms;

// The fitting grid and the Cholesky factor of its normal matrix. The fit runs in normalised
// components (0 to 1), which keeps the normal matrix well conditioned; the coefficients are
// rescaled to code values afterwards.
struct FittingGrid {
  std::vector<Rgb> points;  // normalised
  std::vector<Terms> basis;  // the basis at each point
  Matrix cholesky{};         // lower triangle L with L * L^T = sum of basis * basis^T

  FittingGrid() {
    constexpr int n = PccFitter::kSamplesPerAxis;
    for (int k2 = 0; k2 < n; ++k2) {
      for (int k1 = 0; k1 < n; ++k1) {
        for (int k0 = 0; k0 < n; ++k0) {
          const Rgb point = {double(k0) / (n - 1), double(k1) / (n - 1), double(k2) / (n - 1)};
          points.push_back(point);
          basis.push_back(PccPolynomial::BasisAt(point));
        }
      }
    }
    Matrix normal{};
    for (const Terms& t : basis) {
      for (int i = 0; i < kTerms; ++i) {
        for (int j = 0; j < kTerms; ++j) normal[i][j] += t[i] * t[j];
      }
    }
    Factorise(normal);
  }

  void Factorise(const Matrix& a) {
    for (int j = 0; j < kTerms; ++j) {
      double diagonal = a[j][j];
      for (int k = 0; k < j; ++k) diagonal -= cholesky[j][k] * cholesky[j][k];
      cholesky[j][j] = std::sqrt(diagonal);
      for (int i = j + 1; i < kTerms; ++i) {
        double sum = a[i][j];
        for (int k = 0; k < j; ++k) sum -= cholesky[i][k] * cholesky[j][k];
        cholesky[i][j] = sum / cholesky[j][j];
      }
    }
  }

  // Solves L * L^T * x = rhs.
  Terms Solve(const Terms& rhs) const {
    Terms y{};
    for (int i = 0; i < kTerms; ++i) {
      double sum = rhs[i];
      for (int k = 0; k < i; ++k) sum -= cholesky[i][k] * y[k];
      y[i] = sum / cholesky[i][i];
    }
    Terms x{};
    for (int i = kTerms - 1; i >= 0; --i) {
      double sum = y[i];
      for (int k = i + 1; k < kTerms; ++k) sum -= cholesky[k][i] * x[k];
      x[i] = sum / cholesky[i][i];
    }
    return x;
  }
};

const FittingGrid& Grid() {
  static const FittingGrid grid;
  return grid;
}

// A term that moves no output by more than this many code values anywhere in the range is the
// fit's rounding noise (a composition that lies in the basis leaves such residues) and is 0.
constexpr double kNegligibleContribution = 1e-9;

// Coefficients of normalised components to coefficients of code values: a term of degree d
// is divided by the full scale to the power d - 1 (the constant is multiplied by it).
pcc_coeff ToCodeValues(const Terms& normalised_terms) {
  Terms terms;
  for (int i = 0; i < kTerms; ++i) {
    const double contribution = normalised_terms[i] * PccPolynomial::kFullScale;
    terms[i] = std::abs(contribution) < kNegligibleContribution
                   ? 0.0
                   : normalised_terms[i] / std::pow(PccPolynomial::kFullScale,
                                                    PccPolynomial::TermDegrees()[i] - 1);
  }
  return PccPolynomial::FromTerms(terms);
}

}  // namespace

pcc_coeff_data PccFitter::Fit(const std::function<Rgb(const Rgb&)>& transform) {
  const FittingGrid& grid = Grid();
  constexpr double scale = PccPolynomial::kFullScale;
  std::array<Terms, 3> rhs{};  // per channel: sum of basis * normalised output
  for (size_t p = 0; p < grid.points.size(); ++p) {
    const Rgb& u = grid.points[p];
    const Rgb out = transform({u[0] * scale, u[1] * scale, u[2] * scale});
    for (int c = 0; c < 3; ++c) {
      for (int i = 0; i < kTerms; ++i) rhs[c][i] += grid.basis[p][i] * out[c] / scale;
    }
  }
  pcc_coeff_data fitted{};
  fitted.red = ToCodeValues(grid.Solve(rhs[0]));
  fitted.green = ToCodeValues(grid.Solve(rhs[1]));
  fitted.blue = ToCodeValues(grid.Solve(rhs[2]));
  return fitted;
}

pcc_coeff_data PccFitter::FitComposition(const PccPolynomial& main, const PccPolynomial& tuning) {
  const bool no_tuning = tuning.IsAllZero();
  return Fit([&](const Rgb& rgb) { return main.Evaluate(no_tuning ? rgb : tuning.Evaluate(rgb)); });
}

}  // namespace vexa::algo
