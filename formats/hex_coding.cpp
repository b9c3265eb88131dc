#include "formats/hex_coding.h"

#include <cstring>

namespace vexa {
namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

inline void PutByte(unsigned char byte, char* out) {
  out[0] = kHexDigits[byte >> 4];
  out[1] = kHexDigits[byte & 0xF];
}

inline unsigned Nibble(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
  return 0;
}

inline char GetByte(const char* in) { return static_cast<char>((Nibble(in[0]) << 4) | Nibble(in[1])); }

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
  bytes.resize(std::strlen(bytes.c_str()));
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
