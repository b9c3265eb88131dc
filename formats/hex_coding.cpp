#include "formats/hex_coding.h"

#include <cstring>

namespace vexa {
namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

inline void PutByte(unsigned char byte, char* out) {
  out[0] = kHexDigits[byte >> 4];
  out[1] = kHexDigits[byte & 0xF];
}

// The value of every character as a hex digit; any other character counts as 0.
struct NibbleTable {
  unsigned char value[256] = {};
  constexpr NibbleTable() {
    for (int c = '0'; c <= '9'; ++c) value[c] = static_cast<unsigned char>(c - '0');
    for (int c = 'A'; c <= 'F'; ++c) value[c] = static_cast<unsigned char>(c - 'A' + 10);
    for (int c = 'a'; c <= 'f'; ++c) value[c] = static_cast<unsigned char>(c - 'a' + 10);
  }
};
constexpr NibbleTable kNibbles;

inline char GetByte(const char* in) {
  const auto* digits = reinterpret_cast<const unsigned char*>(in);
  return static_cast<char>((kNibbles.value[digits[0]] << 4) | kNibbles.value[digits[1]]);
}

}  // namespace

void EncodeData(const std::string& input, std::string& output) {
  const size_t n = input.size();
  output.assign(2 * n, '\0');
  const auto* in = reinterpret_cast<const unsigned char*>(input.data());
  char* out = output.data();
  size_t i = 0;
  if (n % 2 == 1) {
    PutByte(in[0], out);
    out += 2;
    i = 1;
  }
  for (; i + 1 < n; i += 2, out += 4) {
    PutByte(in[i + 1], out);
    PutByte(in[i], out + 2);
  }
}

void DecodeHexText(std::string_view text, std::string& output) {
  output.clear();
  const size_t length = text.size();
  if (length < 2 || length % 2 != 0) return;
  const size_t n = length / 2;
  std::string bytes(n, '\0');
  const char* in = text.data();
  size_t i = 0;
  if (n % 2 == 1) {
    bytes[0] = GetByte(in);
    in += 2;
    i = 1;
  }
  for (; i + 1 < n; i += 2, in += 4) {
    bytes[i + 1] = GetByte(in);
    bytes[i] = GetByte(in + 2);
  }
  // The decoded documents are JSON text: the result ends at its first zero byte.
  const void* zero = std::memchr(bytes.data(), '\0', n);
  if (zero != nullptr) bytes.resize(static_cast<size_t>(static_cast<const char*>(zero) - bytes.data()));
  output = std::move(bytes);
}

void DecodeData(const Json::Value& value, std::string& output) {
  if (!value.isString()) {
    output.clear();
    return;
  }
  const char* begin = nullptr;
  const char* end = nullptr;
  if (!value.getString(&begin, &end) || begin == nullptr) {
    output.clear();
    return;
  }
  DecodeHexText(std::string_view(begin, static_cast<size_t>(end - begin)), output);
}

}  // namespace vexa
