// Composition of two gamut 3D LUTs as the gamut merge needs it: the right mode's tuning table
// applied first, then the left mode's main table.
//
// The tables travel as record bodies: a gamut record from its first reserved word on (two
// reserved words, grid mode, entry count, then the entries of three input and three output
// words).
#ifndef VEXA_ALGO_GAMUT_COMPOSER_H_
#define VEXA_ALGO_GAMUT_COMPOSER_H_

#include <cstddef>
#include <cstdint>

#include "algo/lut3d.h"

namespace vexa::algo {

class GamutComposer {
 public:
  static constexpr size_t kBodyOffset = offsetof(GamutConfig, reserved0);
  static constexpr uint32_t kBodyLen = kGamutConfigLen - kBodyOffset;

  // The main table of a body. Its entry count, bounded by the grid, says how many entries were
  // programmed; the grid points beyond keep their own value (identity), so a short table changes
  // only the colours it covers. Input words are ignored: entry i is grid point i.
  static Lut3d MainTable(const unsigned char* body);
  // The tuning table of a body: the outputs of every entry (a tuning table read from text fills
  // outputs without setting the count). All outputs zero means no tuning: the identity.
  static Lut3d TuningTable(const unsigned char* body);
  // main(tuning(x)) at every grid point x, rounded to the nearest integer.
  static Lut3d Compose(const Lut3d& main, const Lut3d& tuning);
  // Writes `lut` as a full body: reserved words 0, grid mode 1, every entry with its grid point.
  static void WriteBody(const Lut3d& lut, unsigned char* body);

 private:
  static Lut3d ReadOutputs(const unsigned char* body, uint32_t count);
};

}  // namespace vexa::algo

#endif  // VEXA_ALGO_GAMUT_COMPOSER_H_
