#include "algo/pcc_polynomial.h"

#include <algorithm>
#include <cmath>

namespace vexa::algo {
namespace {

double Dot(const PccPolynomial::Terms& a, const PccPolynomial::Terms& b) {
  double sum = 0.0;
  for (int i = 0; i < PccPolynomial::kTerms; ++i) sum += a[i] * b[i];
  return sum;
}

std::array<const pcc_coeff*, 3> Channels(const pcc_coeff_data& data) {
  return {&data.red, &data.green, &data.blue};
}

}  // namespace

PccPolynomial::Terms PccPolynomial::BasisAt(const Rgb& rgb) {
  const double r = rgb[0], g = rgb[1], b = rgb[2];
  return {1.0, r, g, b, r * r, g * g, b * b, r * g, g * b, r * b, r * g * b};
}

const std::array<int, PccPolynomial::kTerms>& PccPolynomial::TermDegrees() {
  static const std::array<int, kTerms> kDegrees = {0, 1, 1, 1, 2, 2, 2, 2, 2, 2, 3};
  return kDegrees;
}

PccPolynomial::Terms PccPolynomial::AsTerms(const pcc_coeff& k) {
  return {k.c, k.r, k.g, k.b, k.rr, k.gg, k.bb, k.rg, k.gb, k.rb, k.rgb};
}

pcc_coeff PccPolynomial::FromTerms(const Terms& t) {
  return {t[0], t[1], t[2], t[3], t[4], t[5], t[6], t[7], t[8], t[9], t[10]};
}

Rgb PccPolynomial::Evaluate(const Rgb& rgb) const {
  const Terms basis = BasisAt(rgb);
  const auto channels = Channels(coeffs_);
  return {Dot(AsTerms(*channels[0]), basis), Dot(AsTerms(*channels[1]), basis),
          Dot(AsTerms(*channels[2]), basis)};
}

bool PccPolynomial::IsAllZero() const {
  for (const pcc_coeff* channel : Channels(coeffs_)) {
    const Terms terms = AsTerms(*channel);
    if (std::any_of(terms.begin(), terms.end(), [](double v) { return v != 0.0; })) return false;
  }
  return true;
}

bool PccPolynomial::IsFinite() const {
  for (const pcc_coeff* channel : Channels(coeffs_)) {
    const Terms terms = AsTerms(*channel);
    if (!std::all_of(terms.begin(), terms.end(), [](double v) { return std::isfinite(v); })) return false;
  }
  return true;
}

}  // namespace vexa::algo
