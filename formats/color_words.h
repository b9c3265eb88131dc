// Colour metadata words of the modes files and their values.
#ifndef VEXA_FORMATS_COLOR_WORDS_H_
#define VEXA_FORMATS_COLOR_WORDS_H_

#include <cstdint>
#include <string>

// The display platform's colour-metadata enumerations (only these values are used here).
enum GammaTransfer : uint32_t {
  Transfer_sRGB = 1,
  Transfer_Gamma2_2 = 4,
  Transfer_Max = 255,
};

enum ColorPrimaries : uint32_t {
  ColorPrimaries_BT709_5 = 1,  // sRGB
  ColorPrimaries_DCIP3 = 12,
  ColorPrimaries_Max = 255,
};

namespace vexa {

enum DynamicRange : uint32_t {
  kSdr = 1,
  kHdr = 2,
};

// Word to value; an unknown word gives the table's first value (1), silently.
GammaTransfer GetGammaTransfer(const std::string& word);
ColorPrimaries GetColorPrimary(const std::string& word);
DynamicRange GetDynamicRange(const std::string& word);

// Value to word. The fallbacks differ on purpose: an unknown transfer reads "sRGB", unknown
// primaries read "P3", an unknown range reads "SDR".
std::string GammaTransferStr(GammaTransfer transfer);
std::string ColorPrimaryStr(ColorPrimaries primaries);
std::string DynamicRangeStr(DynamicRange range);

}  // namespace vexa

#endif  // VEXA_FORMATS_COLOR_WORDS_H_
