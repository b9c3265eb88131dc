#include "modes/mode_words.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

TEST(ModeWordsTest, FlagWordsGiveTheirBits) {
  const struct {
    const char* word;
    uint32_t bits;
  } cases[] = {
      {"NONE", 0x0},          {"SHARPNESS", 0x1},        {"UPSCALING", 0x40},
      {"TRANSFER_CURVE", 0x3C}, {"DE_RING", 0x2},        {"DE_BLEND", 0x80},
      {"DE_LPF_BLEND", 0x100}, {"ALL", 0xFF},            {"", 0},
      {"sharpness", 0},       {"SHARPNESS ", 0},         {"INVALID", 0},
  };
  for (const auto& c : cases) EXPECT_EQ(StringToFlag(c.word), c.bits) << c.word;
}

// A bit set is named by its highest-priority member: ALL, DE_BLEND, DE_LPF_BLEND, DE_RING,
// TRANSFER_CURVE (all four bits), UPSCALING, SHARPNESS; then NONE for 0, else INVALID.
TEST(ModeWordsTest, FlagToStringNamesTheHighestPriorityMember) {
  const struct {
    uint32_t bits;
    const char* word;
  } cases[] = {
      {0xFF, "ALL"},          {0x1FF, "ALL"},           {0x81, "DE_BLEND"},
      {0x180, "DE_BLEND"},    {0x103, "DE_LPF_BLEND"},  {0x100, "DE_LPF_BLEND"},
      {0x43, "DE_RING"},      {0x3E, "DE_RING"},        {0x3D, "TRANSFER_CURVE"},
      {0x7C, "TRANSFER_CURVE"}, {0x41, "UPSCALING"},    {0x1C, "INVALID"},
      {0x21, "SHARPNESS"},    {0x0, "NONE"},            {0x14, "INVALID"},
      {0x200, "INVALID"},     {0xFFFFFFFF, "ALL"},
  };
  for (const auto& c : cases) EXPECT_EQ(FlagToString(c.bits), c.word) << std::hex << c.bits;
  // Lossy on combinations: only the highest-priority member survives a round trip.
  EXPECT_EQ(StringToFlag(FlagToString(0x3C)), 0x3Cu);
  EXPECT_EQ(StringToFlag(FlagToString(0x41)), 0x40u);
}

TEST(ModeWordsTest, QualityWordsGiveLevelAndContentType) {
  const struct {
    const char* word;
    uint32_t quality;
    uint32_t content_type;
  } cases[] = {
      {"HIGH_QUALITY_VIDEO", 3, 1},   {"HIGH_QUALITY_GRAPHICS", 3, 2},
      {"MEDIUM_QUALITY_VIDEO", 2, 1}, {"MEDIUM_QUALITY_GRAPHICS", 2, 2},
      {"LOW_POWER", 1, 1},            {"low_power", 0, 0},
      {"", 0, 0},                     {"HIGH_QUALITY", 0, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StringToQuality(c.word), c.quality) << c.word;
    EXPECT_EQ(MapContentType(c.word), c.content_type) << c.word;
  }
}

}  // namespace
}  // namespace vexa
