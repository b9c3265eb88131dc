#include "formats/color_words.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

// Unknown words fall back to the first value; unknown values fall back asymmetrically
// ("sRGB" transfer, "P3" primaries, "SDR" range).
TEST(ColorWordsTest, WordsAndFallbacksBothWays) {
  EXPECT_EQ(GetGammaTransfer("2p2"), Transfer_Gamma2_2);
  EXPECT_EQ(GetGammaTransfer("2P2"), Transfer_sRGB);
  EXPECT_EQ(GetColorPrimary("P3"), ColorPrimaries_DCIP3);
  EXPECT_EQ(GetColorPrimary("p3"), ColorPrimaries_BT709_5);
  EXPECT_EQ(GetDynamicRange("HDR"), kHdr);
  EXPECT_EQ(GetDynamicRange(""), kSdr);
  EXPECT_EQ(GammaTransferStr(static_cast<GammaTransfer>(0)), "sRGB");
  EXPECT_EQ(GammaTransferStr(Transfer_Max), "Transfer_MAX");
  EXPECT_EQ(ColorPrimaryStr(static_cast<ColorPrimaries>(7)), "P3");
  EXPECT_EQ(ColorPrimaryStr(ColorPrimaries_Max), "ColorPrimaries_MAX");
  EXPECT_EQ(DynamicRangeStr(static_cast<DynamicRange>(0)), "SDR");
}

}  // namespace
}  // namespace vexa
