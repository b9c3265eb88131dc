#include "formats/hex_coding.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

std::string Decode(const std::string& text) {
  std::string out = "stale";
  DecodeData(Json::Value(text), out);
  return out;
}

std::string Encode(const std::string& bytes) {
  std::string out = "stale";
  EncodeData(bytes, out);
  return out;
}

TEST(HexCodingTest, EncodesPairwiseSecondByteFirst) {
  EXPECT_EQ(Encode(""), "");
  EXPECT_EQ(Encode("\xAB"), "AB");
  EXPECT_EQ(Encode(std::string("\x00\xFF", 2)), "FF00");
  EXPECT_EQ(Encode("\x12\x34"), "3412");
  EXPECT_EQ(Encode("\x01\x02\x03"), "010302");
  EXPECT_EQ(Encode(std::string("\x00\x00\x01", 3)), "000100");  // zero bytes are encoded too
  EXPECT_EQ(Encode("\xFE\x01\x02\x03\x04"), "FE02010403");
}

TEST(HexCodingTest, DecodeToleratesBadInputAndStopsAtZeroByte) {
  const struct {
    const char* text;
    std::string bytes;
  } cases[] = {
      {"ABC", ""},         // odd length
      {"A", ""},           // too short
      {"00FF", "\xFF"},    // 0xFF 0x00, cut at the zero byte
      {"ff00", ""},        // 0x00 0xFF: starts with a zero byte
      {"zz41", "A"},       // non-hex counts as 0: 0x41 0x00
      {"3412", "\x12\x34"},
      {"010302", "\x01\x02\x03"},
      {"aBcD", "\xCD\xAB"},    // either case
      {"G1g1", "\x01\x01"},    // only the bad nibble counts as 0
      {"0000", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(Decode(c.text), c.bytes) << c.text;
  std::string out = "stale";
  DecodeData(Json::Value(42), out);
  EXPECT_EQ(out, "");
  DecodeData(Json::Value(), out);
  EXPECT_EQ(out, "");
  out = "stale";
  DecodeData(Json::Value(Json::arrayValue), out);
  EXPECT_EQ(out, "");
}

TEST(HexCodingTest, RoundTripsTextWithoutZeroBytes) {
  for (const std::string& text : {std::string("{}"), std::string("{\"enable\":true}"),
                                  std::string("x"), std::string(1001, '\x7f')}) {
    EXPECT_EQ(Decode(Encode(text)), text);
  }
  // Every byte value but zero, at every length parity.
  uint32_t state = 12345;
  for (size_t length = 1; length < 64; ++length) {
    std::string text(length, '\0');
    for (char& c : text) {
      state = state * 1103515245u + 12345u;
      c = static_cast<char>(1 + (state >> 16) % 255);
    }
    EXPECT_EQ(Decode(Encode(text)), text) << length;
  }
}

}  // namespace
}  // namespace vexa
