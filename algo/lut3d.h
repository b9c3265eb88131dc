// A 17x17x17 colour lookup table on the gamut block's 12-bit grid (levels 0, 256, ..., 3840,
// 4095), sampled between grid points by tetrahedral interpolation.
//
// Entry i = 289 * k2 + 17 * k1 + k0 holds the output for the input (level k0, level k1, level k2),
// the order of the gamut record's entries.
#ifndef VEXA_ALGO_LUT3D_H_
#define VEXA_ALGO_LUT3D_H_

#include <array>
#include <cstdint>
#include <vector>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::algo {

using Rgb = std::array<double, 3>;
using RgbWord = std::array<uint32_t, 3>;

class Lut3d {
 public:
  static constexpr uint32_t kLevels = kGamutGridLevels;
  static constexpr uint32_t kEntries = kGamutEntries;
  static constexpr uint32_t kMaxCode = 4095;

  // The table that maps every grid point to itself.
  static Lut3d Identity();

  // The 12-bit value of grid level k (0 to 16); the last level is 4095, not 4096.
  static uint32_t Level(uint32_t k);
  static uint32_t Index(uint32_t k0, uint32_t k1, uint32_t k2);
  // The input point of entry i.
  static RgbWord GridPoint(uint32_t index);

  RgbWord& at(uint32_t index) { return outputs_[index]; }
  const RgbWord& at(uint32_t index) const { return outputs_[index]; }
  bool IsAllZero() const;

  // The table's value at `point` (12-bit components, clamped into 0..4095): exact at grid
  // points, tetrahedral interpolation of the enclosing cell's corners elsewhere.
  Rgb Sample(const Rgb& point) const;

 private:
  Lut3d() : outputs_(kEntries, RgbWord{0, 0, 0}) {}

  std::vector<RgbWord> outputs_;  // about 58 KiB: kept on the heap
};

}  // namespace vexa::algo

#endif  // VEXA_ALGO_LUT3D_H_
