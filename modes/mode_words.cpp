#include "modes/mode_words.h"

#include "formats/keys.h"

namespace vexa {
namespace {

struct WordValue {
  const char* word;
  uint32_t value;
};

constexpr WordValue kFlagWords[] = {
    {keys::kDeFlagNone, kDeFlagNoneBits},
    {keys::kDeFlagSharpness, kDeFlagSharpnessBits},
    {keys::kDeFlagUpscaling, kDeFlagUpscalingBits},
    {keys::kDeFlagTransferCurve, kDeFlagTransferCurveBits},
    {keys::kDeFlagDeRing, kDeFlagDeRingBits},
    {keys::kDeFlagDeBlend, kDeFlagDeBlendBits},
    {keys::kDeFlagDeLpfBlend, kDeFlagLpfBlendBits},
    {keys::kDeFlagAll, kDeFlagAllBits},
};

constexpr WordValue kQualityWords[] = {
    {keys::kDeQualityHighVideo, 3},
    {keys::kDeQualityHighGraphics, 3},
    {keys::kDeQualityMediumVideo, 2},
    {keys::kDeQualityMediumGraphics, 2},
    {keys::kDeQualityLowPower, 1},
};

constexpr WordValue kContentTypeWords[] = {
    {keys::kDeQualityHighVideo, 1},
    {keys::kDeQualityHighGraphics, 2},
    {keys::kDeQualityMediumVideo, 1},
    {keys::kDeQualityMediumGraphics, 2},
    {keys::kDeQualityLowPower, 1},
};

// Reverse priority: the first row whose bits are all set names the word.
constexpr WordValue kFlagPriority[] = {
    {keys::kDeFlagAll, kDeFlagAllBits},
    {keys::kDeFlagDeBlend, kDeFlagDeBlendBits},
    {keys::kDeFlagDeLpfBlend, kDeFlagLpfBlendBits},
    {keys::kDeFlagDeRing, kDeFlagDeRingBits},
    {keys::kDeFlagTransferCurve, kDeFlagTransferCurveBits},
    {keys::kDeFlagUpscaling, kDeFlagUpscalingBits},
    {keys::kDeFlagSharpness, kDeFlagSharpnessBits},
};

template <size_t N>
uint32_t LookUp(const WordValue (&table)[N], const std::string& word) {
  for (const WordValue& entry : table) {
    if (word == entry.word) return entry.value;
  }
  return 0;
}

}  // namespace

uint32_t StringToFlag(std::string word) { return LookUp(kFlagWords, word); }
uint32_t StringToQuality(std::string word) { return LookUp(kQualityWords, word); }
uint32_t MapContentType(std::string word) { return LookUp(kContentTypeWords, word); }

std::string FlagToString(uint32_t flags) {
  for (const WordValue& entry : kFlagPriority) {
    if ((flags & entry.value) == entry.value) return entry.word;
  }
  return flags == 0 ? keys::kDeFlagNone : keys::kInvalid;
}

}  // namespace vexa
