// Gamut composition: which entries of the two tables count, and the tuning applied before the
// main table, identity on either side leaving the other.
#include "algo/gamut_composer.h"

#include <gtest/gtest.h>

#include "support/gamut_tables.h"

namespace vexa::testing {
namespace {

RgbWord Same(const RgbWord& p) { return p; }

std::vector<RgbWord> Outputs(const Lut3d& lut) {
  std::vector<RgbWord> outputs;
  for (uint32_t i = 0; i < Lut3d::kEntries; ++i) outputs.push_back(lut.at(i));
  return outputs;
}

// Every entry is filled; the main table reads only the counted ones, the tuning table all of them.
TEST(GamutComposerTest, MainTableHoldsItsCountedEntriesAndTuningTableEveryEntry) {
  const auto first = [](const RgbWord& p) { return Lut3d::GridPoint(0) == p ? Scramble(p) : p; };
  const auto zero = [](const RgbWord&) { return RgbWord{0, 0, 0}; };
  const struct {
    bool tuning;
    uint32_t count;
    GridFunction filled, expected;
  } cases[] = {
      {false, 0, Scramble, Same},              // nothing programmed: identity
      {false, 1, Scramble, first},             // the counted entry only
      {false, 0xFFFFFFFF, Scramble, Scramble},  // a count beyond the grid reads the grid
      {true, 0, Scramble, Scramble},           // tuning read from text leaves the count at 0
      {true, kGamutEntries, zero, Same},       // all zero: no tuning
  };
  for (const auto& c : cases) {
    const auto record = GamutRecord(c.filled, c.count);
    const Lut3d lut = c.tuning ? GamutComposer::TuningTable(Body(*record)) : GamutComposer::MainTable(Body(*record));
    EXPECT_EQ(Outputs(lut), GridOutputs(c.expected)) << c.count << " tuning " << c.tuning;
  }
}

// Gains and offsets compose exactly; a tuning that permutes grid points picks the main table's
// entries; a tuning between grid points interpolates the main table.
TEST(GamutComposerTest, AppliesTheTuningFirstThenTheMainTable) {
  const GridFunction gains = [](const RgbWord& p) -> RgbWord { return {p[0] / 2, p[1] / 4 + 1000, p[2]}; };
  const GridFunction affine = [](const RgbWord& p) -> RgbWord { return {2 * p[0], p[1] + p[2], 3 * p[2]}; };
  const GridFunction offsets = [](const RgbWord& p) -> RgbWord { return {p[0] + 13, 4095 - p[1], 2 * p[2] / 3}; };
  const GridFunction swap = [](const RgbWord& p) -> RgbWord { return {p[2], p[1], p[0]}; };
  const GridFunction halve = [](const RgbWord& p) -> RgbWord { return {p[0] / 2, p[1] / 2, p[2] / 2}; };
  const GridFunction curve = [](const RgbWord& p) -> RgbWord {
    return {p[0] * p[0] / 4095, p[1] ^ 0xff, p[2] / 3 + p[0] / 3};
  };
  const struct {
    GridFunction main, tuning;
  } cases[] = {{offsets, gains}, {curve, swap}, {affine, halve}, {Scramble, Same}, {Same, Scramble}};
  for (const auto& c : cases) {
    const Lut3d main = GamutComposer::MainTable(Body(*GamutRecord(c.main)));
    const Lut3d tuning = GamutComposer::TuningTable(Body(*GamutRecord(c.tuning)));
    const auto expected = [&](const RgbWord& p) { return c.main(c.tuning(p)); };
    EXPECT_EQ(Outputs(GamutComposer::Compose(main, tuning)), GridOutputs(expected)) << &c - cases;
  }
}

}  // namespace
}  // namespace vexa::testing
