#include "modes/mode_words.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vexa {
namespace {

// Words match exactly, case and blanks included; an unknown word gives no bits.
TEST(ModeWordsTest, FlagWordsGiveTheirBits) {
  const std::pair<const char*, uint32_t> cases[] = {
      {"NONE", 0x0}, {"SHARPNESS", 0x1}, {"UPSCALING", 0x40}, {"TRANSFER_CURVE", 0x3C},
      {"DE_RING", 0x2}, {"DE_BLEND", 0x80}, {"DE_LPF_BLEND", 0x100}, {"ALL", 0xFF},
      {"sharpness", 0}, {"SHARPNESS ", 0}, {"INVALID", 0}};
  for (const auto& [word, bits] : cases) EXPECT_EQ(StringToFlag(word), bits) << word;
}

// A bit set is named by its highest-priority member: ALL, DE_BLEND, DE_LPF_BLEND, DE_RING,
// TRANSFER_CURVE (all four bits), UPSCALING, SHARPNESS; then NONE for 0, else INVALID. Each case
// sets a member with the next one below it, so that a wrong order shows.
TEST(ModeWordsTest, FlagToStringNamesTheHighestPriorityMember) {
  const std::pair<uint32_t, const char*> cases[] = {
      {0xFF, "ALL"}, {0x1FF, "ALL"}, {0x180, "DE_BLEND"}, {0x103, "DE_LPF_BLEND"},
      {0x3E, "DE_RING"}, {0x7C, "TRANSFER_CURVE"}, {0x41, "UPSCALING"}, {0x21, "SHARPNESS"},
      {0x0, "NONE"}, {0x1C, "INVALID"}, {0x200, "INVALID"}};
  for (const auto& [bits, word] : cases) EXPECT_EQ(FlagToString(bits), word) << std::hex << bits;
}

TEST(ModeWordsTest, QualityWordsGiveLevelAndContentType) {
  const std::tuple<const char*, uint32_t, uint32_t> cases[] = {  // word, quality, content type
      {"HIGH_QUALITY_VIDEO", 3, 1}, {"HIGH_QUALITY_GRAPHICS", 3, 2}, {"MEDIUM_QUALITY_VIDEO", 2, 1},
      {"MEDIUM_QUALITY_GRAPHICS", 2, 2}, {"LOW_POWER", 1, 1}, {"low_power", 0, 0},
      {"", 0, 0}, {"HIGH_QUALITY", 0, 0}};
  for (const auto& [word, quality, content_type] : cases) {
    EXPECT_EQ(StringToQuality(word), quality) << word;
    EXPECT_EQ(MapContentType(word), content_type) << word;
  }
}

}  // namespace
}  // namespace vexa
