#include "formats/color_words.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

TEST(ColorWordsTest, WordsMapExactlyAndFallBackToTheFirstValue) {
  const struct {
    const char* word;
    uint32_t transfer, primaries, range;
  } cases[] = {
      {"sRGB", 1, 1, 1},           {"2p2", 4, 1, 1},  {"Transfer_MAX", 255, 1, 1},
      {"P3", 1, 12, 1},            {"ColorPrimaries_MAX", 1, 255, 1},
      {"SDR", 1, 1, 1},            {"HDR", 1, 1, 2},  {"p3", 1, 1, 1},
      {"srgb", 1, 1, 1},           {"hdr", 1, 1, 1},  {"", 1, 1, 1},
      {"sRGB ", 1, 1, 1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GetGammaTransfer(c.word), c.transfer) << c.word;
    EXPECT_EQ(GetColorPrimary(c.word), c.primaries) << c.word;
    EXPECT_EQ(GetDynamicRange(c.word), c.range) << c.word;
  }
}

// The unknown-value fallbacks differ on purpose: transfer "sRGB", primaries "P3", range "SDR".
TEST(ColorWordsTest, ValuesMapBackWithAsymmetricFallbacks) {
  const struct {
    uint32_t value;
    const char* transfer;
    const char* primaries;
    const char* range;
  } cases[] = {
      {0, "sRGB", "P3", "SDR"},  {1, "sRGB", "sRGB", "SDR"},
      {2, "sRGB", "P3", "HDR"},  {4, "2p2", "P3", "SDR"},
      {7, "sRGB", "P3", "SDR"},  {12, "sRGB", "P3", "SDR"},
      {255, "Transfer_MAX", "ColorPrimaries_MAX", "SDR"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GammaTransferStr(static_cast<GammaTransfer>(c.value)), c.transfer) << c.value;
    EXPECT_EQ(ColorPrimaryStr(static_cast<ColorPrimaries>(c.value)), c.primaries) << c.value;
    EXPECT_EQ(DynamicRangeStr(static_cast<DynamicRange>(c.value)), c.range) << c.value;
  }
}

}  // namespace
}  // namespace vexa
