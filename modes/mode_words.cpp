#include "modes/mode_words.h"

#include "formats/keys.h"
#include "formats/word_table.h"

namespace vexa {
namespace {

using WordValue = WordEntry<uint32_t>;

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

}  // namespace

uint32_t StringToFlag(std::string word) { return LookUpWord(kFlagWords, word, 0u); }
uint32_t StringToQuality(std::string word) { return LookUpWord(kQualityWords, word, 0u); }
uint32_t MapContentType(std::string word) { return LookUpWord(kContentTypeWords, word, 0u); }

std::string FlagToString(uint32_t flags) {
  for (const WordValue& entry : kFlagPriority) {
    if ((flags & entry.value) == entry.value) return entry.word;
  }
  return flags == 0 ? keys::kDeFlagNone : keys::kInvalid;
}

}  // namespace vexa
