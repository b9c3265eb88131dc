// Gamut composition: which entries of the two tables count, the identity laws both ways, and
// known compositions.
#include "algo/gamut_composer.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/gamut_tables.h"

namespace vexa::testing {
namespace {

using algo::GamutComposer;

RgbWord Scramble(const RgbWord& p) { return {p[2] / 2 + 7, p[0] ^ 0x5a5, 4095 - p[1]}; }
RgbWord Zero(const RgbWord&) { return {0, 0, 0}; }
RgbWord Same(const RgbWord& p) { return p; }

std::vector<RgbWord> Outputs(const Lut3d& lut) {
  std::vector<RgbWord> outputs;
  for (uint32_t i = 0; i < Lut3d::kEntries; ++i) outputs.push_back(lut.at(i));
  return outputs;
}

std::vector<RgbWord> Expected(const GridFunction& f) {
  std::vector<RgbWord> outputs;
  for (uint32_t i = 0; i < Lut3d::kEntries; ++i) outputs.push_back(f(Lut3d::GridPoint(i)));
  return outputs;
}

TEST(GamutComposerTest, MainTableHoldsItsCountedEntriesAndTuningTableEveryEntry) {
  const auto first = [](const RgbWord& p) { return Lut3d::GridPoint(0) == p ? Scramble(p) : p; };
  const struct {
    uint32_t count;
    bool tuning;
    GridFunction filled, expected;
  } cases[] = {
      {0, false, Scramble, Same},              // nothing programmed: identity
      {1, false, Scramble, first},              // the counted entry only
      {0xFFFFFFFF, false, Scramble, Scramble},  // a count beyond the grid reads the grid
      {0, true, Scramble, Scramble},           // tuning read from text leaves the count at 0
      {kGamutEntries, true, Zero, Same},       // all zero: no tuning
  };
  for (const auto& c : cases) {
    const auto record = GamutRecord(c.filled, c.count == 0 && c.tuning ? kGamutEntries : c.count);
    if (c.tuning) record->num_entries = c.count;
    const Lut3d lut = c.tuning ? GamutComposer::TuningTable(Body(*record))
                               : GamutComposer::MainTable(Body(*record));
    EXPECT_EQ(Outputs(lut), Expected(c.expected)) << c.count << " tuning " << c.tuning;
  }
}

TEST(GamutComposerTest, IdentityOnEitherSideLeavesTheOtherTable) {
  const Lut3d table = GamutComposer::MainTable(Body(*GamutRecord(Scramble)));
  EXPECT_EQ(Outputs(GamutComposer::Compose(table, Lut3d::Identity())), Expected(Scramble));
  EXPECT_EQ(Outputs(GamutComposer::Compose(Lut3d::Identity(), table)), Expected(Scramble));
}

// Tuning first, main second: gains and offsets compose exactly; a tuning that permutes grid
// points picks the main table's entries; a tuning between grid points interpolates the main.
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
    const char* name;
    GridFunction main, tuning, expected;
  } cases[] = {
      {"offsets after gains", offsets, gains, [&](const RgbWord& p) { return offsets(gains(p)); }},
      {"curve after a swap", curve, swap, [&](const RgbWord& p) { return curve(swap(p)); }},
      {"affine after halving", affine, halve, [&](const RgbWord& p) { return affine(halve(p)); }},
  };
  for (const auto& c : cases) {
    const Lut3d main = GamutComposer::MainTable(Body(*GamutRecord(c.main)));
    const Lut3d tuning = GamutComposer::TuningTable(Body(*GamutRecord(c.tuning)));
    EXPECT_EQ(Outputs(GamutComposer::Compose(main, tuning)), Expected(c.expected)) << c.name;
  }
}

}  // namespace
}  // namespace vexa::testing
