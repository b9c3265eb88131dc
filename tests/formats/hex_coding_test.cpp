#include "formats/hex_coding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <tuple>
#include <vector>

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
    ByteBuffer buffer;
    EXPECT_EQ(DecodeDataInto(text, &buffer), bytes) << text;
    out = "stale";
    EncodeData(bytes, out);
    EXPECT_TRUE(!encodes || out == text.asString()) << text << " encoded as " << out;
  }
}

// The vector path against the portable one: each kind of character (digits, letters of both cases,
// the neighbours of their ranges, bytes from 0x80 up) in each lane, at every length and alignment
// around the 32-character blocks. Every other character is '8', so no byte is zero.
TEST(HexCodingTest, VectorPathMatchesPortablePathInEveryLane) {
  const std::string kinds = "0579AFafdD/:@G`g \x01\x21\x80\xB0\xC1\xE6\xFF";
  for (size_t shift = 0; shift < 2 * kinds.size(); ++shift) {
    std::string buffer(96, '8');
    for (size_t i = shift % 2; i < buffer.size(); i += 2) {
      buffer[i] = kinds[(i + shift / 2) % kinds.size()];
    }
    for (size_t offset = 0; offset < 16; ++offset) {
      for (size_t length = 0; offset + length <= buffer.size(); ++length) {
        // Exactly sized, so that the sanitizers see any read past the end.
        const std::vector<char> exact(buffer.begin() + offset, buffer.begin() + offset + length);
        const std::string_view text(exact.data(), exact.size());
        std::string fast = "stale", portable;
        DecodeHexText(text, fast);
        DecodeHexTextPortable(text, portable);
        ASSERT_EQ(fast.size(), length % 2 == 0 && length >= 2 ? length / 2 : 0) << length;
        ASSERT_EQ(fast, portable) << "shift " << shift << ", offset " << offset << ", length "
                                  << length;
      }
    }
  }
}

// A zero byte, written as digits or as characters that are not hex digits, at each position of
// texts of each length around the blocks ends the result there.
TEST(HexCodingTest, ResultEndsAtTheFirstZeroByteAtAnyPosition) {
  ByteBuffer reused;  // grown as the texts lengthen, never cleared
  for (const char zero_digit : {'0', 'z', '\xB0'}) {
    for (size_t n = 1; n <= 50; ++n) {
      for (size_t at = 0; at < n; ++at) {
        std::string bytes(n, '\x11'), text, decoded;
        bytes[at] = '\0';
        EncodeData(bytes, text);
        std::replace(text.begin(), text.end(), '0', zero_digit);
        DecodeHexText(text, decoded);
        ASSERT_EQ(decoded, bytes.substr(0, at)) << n << " bytes, zero at " << at << " as "
                                                << zero_digit;
        ASSERT_EQ(DecodeDataInto(Json::Value(text), &reused), decoded) << n << " bytes, zero at " << at;
      }
    }
  }
}

}  // namespace vexa
