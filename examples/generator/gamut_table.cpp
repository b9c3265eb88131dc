#include "examples/generator/gamut_table.h"

#include <algorithm>

#include "examples/generator/transfer_curves.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::example {
namespace {

constexpr uint32_t kGridStep = 256;

}  // namespace

uint32_t GamutGridLevel(uint32_t k) { return std::min(k * kGridStep, kGamutMaxCode); }

std::vector<GamutOutput> GamutTable(const Mat3& transform) {
  std::vector<GamutOutput> table;
  table.reserve(kGamutEntries);
  const double top = static_cast<double>(kGamutMaxCode);
  for (uint32_t k2 = 0; k2 < kGamutGridLevels; ++k2) {
    for (uint32_t k1 = 0; k1 < kGamutGridLevels; ++k1) {
      for (uint32_t k0 = 0; k0 < kGamutGridLevels; ++k0) {
        const Vec3 input = {GamutGridLevel(k0) / top, GamutGridLevel(k1) / top,
                            GamutGridLevel(k2) / top};
        const Vec3 output = Multiply(transform, input);
        table.push_back({Quantize(output[0], kGamutCodeBits), Quantize(output[1], kGamutCodeBits),
                         Quantize(output[2], kGamutCodeBits)});
      }
    }
  }
  return table;
}

}  // namespace vexa::example
