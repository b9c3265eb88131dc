// The 17 x 17 x 17 gamut 3D LUT of a linear RGB transform, clipped to the panel's gamut.
#ifndef VEXA_EXAMPLES_GENERATOR_GAMUT_TABLE_H_
#define VEXA_EXAMPLES_GENERATOR_GAMUT_TABLE_H_

#include <array>
#include <cstdint>
#include <vector>

#include "examples/generator/colour_math.h"

namespace vexa::example {

// Grid and output codes are 12-bit.
constexpr uint32_t kGamutCodeBits = 12;
constexpr uint32_t kGamutMaxCode = (1u << kGamutCodeBits) - 1;

using GamutOutput = std::array<uint32_t, 3>;

// Level k of the grid: 0, 256, ..., 3840, and 4095 for the last point.
uint32_t GamutGridLevel(uint32_t k);

// Output of every grid point, entry i = 289 * k2 + 17 * k1 + k0 for the input (level k0,
// level k1, level k2). Each output is `transform` applied to the input, with every channel
// clipped into [0, 1]: colours outside the panel's gamut go to its boundary.
std::vector<GamutOutput> GamutTable(const Mat3& transform);

}  // namespace vexa::example

#endif  // VEXA_EXAMPLES_GENERATOR_GAMUT_TABLE_H_
