// Detail-enhancement feature and quality words.
#ifndef VEXA_MODES_MODE_WORDS_H_
#define VEXA_MODES_MODE_WORDS_H_

#include <cstdint>
#include <string>

namespace vexa {

// DE feature bits.
constexpr uint32_t kDeFlagNoneBits = 0x0;
constexpr uint32_t kDeFlagSharpnessBits = 0x1;
constexpr uint32_t kDeFlagDeRingBits = 0x2;
constexpr uint32_t kDeFlagTransferCurveBits = 0x3C;
constexpr uint32_t kDeFlagUpscalingBits = 0x40;
constexpr uint32_t kDeFlagDeBlendBits = 0x80;
constexpr uint32_t kDeFlagAllBits = 0xFF;  // the eight low bits; not the low-pass blend
constexpr uint32_t kDeFlagLpfBlendBits = 0x100;

// The feature bits of a flag word; 0 for an unknown word.
uint32_t StringToFlag(std::string word);
// The word of a bit set's highest-priority member; "INVALID" when none matches. Lossy for
// combined flags.
std::string FlagToString(uint32_t flags);
// Quality level: 3 high, 2 medium, 1 low power, 0 unknown.
uint32_t StringToQuality(std::string word);
// Content type implied by the same word: 1 video, 2 graphics, 0 unknown ("LOW_POWER" is video).
uint32_t MapContentType(std::string word);

}  // namespace vexa

#endif  // VEXA_MODES_MODE_WORDS_H_
