#include "formats/color_words.h"

#include "formats/keys.h"
#include "formats/word_table.h"

namespace vexa {
namespace {

// The first entry of each table is also the fallback for an unknown word.
constexpr WordEntry<GammaTransfer> kTransferWords[] = {
    {keys::kTransferSrgb, Transfer_sRGB},
    {keys::kTransfer2p2, Transfer_Gamma2_2},
    {keys::kTransferMax, Transfer_Max},
};

constexpr WordEntry<ColorPrimaries> kPrimariesWords[] = {
    {keys::kPrimariesSrgb, ColorPrimaries_BT709_5},
    {keys::kPrimariesP3, ColorPrimaries_DCIP3},
    {keys::kPrimariesMax, ColorPrimaries_Max},
};

constexpr WordEntry<DynamicRange> kRangeWords[] = {
    {keys::kRangeSdr, kSdr},
    {keys::kRangeHdr, kHdr},
};

template <typename Enum, size_t N>
Enum LookUp(const WordEntry<Enum> (&table)[N], const std::string& word) {
  return LookUpWord(table, word, table[0].value);
}

}  // namespace

GammaTransfer GetGammaTransfer(const std::string& word) { return LookUp(kTransferWords, word); }
ColorPrimaries GetColorPrimary(const std::string& word) { return LookUp(kPrimariesWords, word); }
DynamicRange GetDynamicRange(const std::string& word) { return LookUp(kRangeWords, word); }

std::string GammaTransferStr(GammaTransfer transfer) {
  if (transfer == Transfer_Max) return keys::kTransferMax;
  if (transfer == Transfer_Gamma2_2) return keys::kTransfer2p2;
  return keys::kTransferSrgb;
}

std::string ColorPrimaryStr(ColorPrimaries primaries) {
  if (primaries == ColorPrimaries_BT709_5) return keys::kPrimariesSrgb;
  if (primaries == ColorPrimaries_Max) return keys::kPrimariesMax;
  return keys::kPrimariesP3;
}

std::string DynamicRangeStr(DynamicRange range) {
  return range == kHdr ? keys::kRangeHdr : keys::kRangeSdr;
}

}  // namespace vexa
