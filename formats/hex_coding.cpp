#include "formats/hex_coding.h"

#include <cstdint>
#include <cstring>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "hex pairs are looked up as little-endian words");

namespace vexa {
namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

inline void PutByte(unsigned char byte, char* out) {
  out[0] = kHexDigits[byte >> 4];
  out[1] = kHexDigits[byte & 0xF];
}

inline unsigned Nibble(unsigned c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return 0;  // any other character counts as 0
}

// The byte of every pair of characters, indexed by the pair read as a little-endian 16-bit word
// (the first character in the low byte): one look-up per decoded byte. Built on first use (64 KiB).
class PairTable {
 public:
  PairTable() {
    for (unsigned first = 0; first < 256; ++first) {
      for (unsigned second = 0; second < 256; ++second) {
        bytes_[second << 8 | first] = static_cast<char>(Nibble(first) << 4 | Nibble(second));
      }
    }
  }
  char Byte(const char* in) const {
    uint16_t pair = 0;
    std::memcpy(&pair, in, sizeof(pair));
    return bytes_[pair];
  }
  // Four characters: the byte of their first pair and the byte of their second pair.
  void Bytes(const char* in, char* first, char* second) const {
    uint32_t quad = 0;
    std::memcpy(&quad, in, sizeof(quad));
    *first = bytes_[quad & 0xFFFF];
    *second = bytes_[quad >> 16];
  }

 private:
  char bytes_[256 * 256];
};

const PairTable& Pairs() {
  static const PairTable* const kTable = new PairTable();
  return *kTable;
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
  const PairTable& pairs = Pairs();
  const char* in = text.data();
  char* out = bytes.data();
  size_t i = 0;
  if (n % 2 == 1) {
    out[0] = pairs.Byte(in);
    in += 2;
    i = 1;
  }
  for (; i + 1 < n; i += 2, in += 4) pairs.Bytes(in, &out[i + 1], &out[i]);
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
