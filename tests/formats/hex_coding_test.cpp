#include "formats/hex_coding.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vexa {

// Decoding tolerates bad text (non-hex digits count as 0) and stops at the first zero byte.
TEST(HexCodingTest, PairsAreWrittenSecondByteFirstAndBadTextIsTolerated) {
  const std::tuple<Json::Value, std::string, bool> cases[] = {  // text, bytes, encodes back
      {"", "", true}, {"3412", "\x12\x34", true}, {"FE02010403", "\xFE\x01\x02\x03\x04", true},
      {"aBcD", "\xCD\xAB", false}, {"ABC", "", false}, {42, "", false}, {"00FF", "\xFF", false},
      {"ff00", "", false}, {"zz41", "A", false}, {"G1g1", "\x01\x01", false}};
  for (const auto& [text, bytes, encodes] : cases) {
    std::string out = "stale";
    DecodeData(text, out);
    EXPECT_EQ(out, bytes) << text;
    out = "stale";
    EncodeData(bytes, out);
    EXPECT_TRUE(!encodes || out == text.asString()) << text << " encoded as " << out;
  }
}

}  // namespace vexa
