// Transfer curves and the one-dimensional tables built from them: the inverse-gamma table
// (encoded input to linear light) and the gamma table (linear light to encoded output).
#ifndef VEXA_EXAMPLES_GENERATOR_TRANSFER_CURVES_H_
#define VEXA_EXAMPLES_GENERATOR_TRANSFER_CURVES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexa::example {

enum class TransferCurve { kSrgb, kGamma22 };

// The curve named by a recipe word ("srgb", "gamma2.2"); null for another word.
std::optional<TransferCurve> TransferCurveNamed(const std::string& word);

// Encoded value in [0, 1] to linear light in [0, 1], and back.
double ToLinear(TransferCurve curve, double encoded);
double ToEncoded(TransferCurve curve, double linear);

// The nearest `bits`-bit code of a value in [0, 1] (clamped).
uint32_t Quantize(double value, uint32_t bits);

// Entry i linearises the encoded input i / (entries - 1); outputs have `bits` bits.
std::vector<uint32_t> LinearisingTable(TransferCurve curve, uint32_t entries, uint32_t bits);

// Entry i encodes the linear input i / (entries - 1); outputs have `bits` bits.
std::vector<uint32_t> EncodingTable(TransferCurve curve, uint32_t entries, uint32_t bits);

}  // namespace vexa::example

#endif  // VEXA_EXAMPLES_GENERATOR_TRANSFER_CURVES_H_
