#include "examples/generator/transfer_curves.h"

#include <algorithm>
#include <cmath>

#include "examples/generator/generator_words.h"

namespace vexa::example {
namespace {

// IEC 61966-2-1: a linear toe below the break point, a 2.4 power segment above it.
constexpr double kSrgbEncodedBreak = 0.04045;
constexpr double kSrgbLinearBreak = 0.0031308;
constexpr double kSrgbToeSlope = 12.92;
constexpr double kSrgbOffset = 0.055;
constexpr double kSrgbExponent = 2.4;
constexpr double kGamma22Exponent = 2.2;

template <typename Curve>
std::vector<uint32_t> SampledTable(uint32_t entries, uint32_t bits, Curve curve) {
  std::vector<uint32_t> table;
  table.reserve(entries);
  const double last = entries > 1 ? static_cast<double>(entries - 1) : 1.0;
  for (uint32_t i = 0; i < entries; ++i) table.push_back(Quantize(curve(i / last), bits));
  return table;
}

}  // namespace

std::optional<TransferCurve> TransferCurveNamed(const std::string& word) {
  if (word == words::kCurveSrgb) return TransferCurve::kSrgb;
  if (word == words::kCurveGamma22) return TransferCurve::kGamma22;
  return std::nullopt;
}

double ToLinear(TransferCurve curve, double encoded) {
  encoded = std::clamp(encoded, 0.0, 1.0);
  if (curve == TransferCurve::kGamma22) return std::pow(encoded, kGamma22Exponent);
  if (encoded <= kSrgbEncodedBreak) return encoded / kSrgbToeSlope;
  return std::pow((encoded + kSrgbOffset) / (1.0 + kSrgbOffset), kSrgbExponent);
}

double ToEncoded(TransferCurve curve, double linear) {
  linear = std::clamp(linear, 0.0, 1.0);
  if (curve == TransferCurve::kGamma22) return std::pow(linear, 1.0 / kGamma22Exponent);
  if (linear <= kSrgbLinearBreak) return linear * kSrgbToeSlope;
  return (1.0 + kSrgbOffset) * std::pow(linear, 1.0 / kSrgbExponent) - kSrgbOffset;
}

uint32_t Quantize(double value, uint32_t bits) {
  const double top = static_cast<double>((1u << bits) - 1u);
  return static_cast<uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * top));
}

std::vector<uint32_t> LinearisingTable(TransferCurve curve, uint32_t entries, uint32_t bits) {
  return SampledTable(entries, bits, [curve](double x) { return ToLinear(curve, x); });
}

std::vector<uint32_t> EncodingTable(TransferCurve curve, uint32_t entries, uint32_t bits) {
  return SampledTable(entries, bits, [curve](double x) { return ToEncoded(curve, x); });
}

}  // namespace vexa::example
