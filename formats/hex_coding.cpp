#include "formats/hex_coding.h"

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// The same bytes computed character by character: for the few bytes around the vector blocks,
// so that targets with vectors never build the table.
class DirectPairs {
 public:
  static char Byte(const char* in) {
    return static_cast<char>(Nibble(static_cast<unsigned char>(in[0])) << 4 |
                             Nibble(static_cast<unsigned char>(in[1])));
  }
  static void Bytes(const char* in, char* first, char* second) {
    *first = Byte(in);
    *second = Byte(in + 2);
  }
};

#if defined(__SSE2__)
// Lanes whose byte lies in [low, low + count). Shifting the range to start at -128 turns the
// unsigned test into one signed compare.
inline __m128i InRange(__m128i chars, char low, int count) {
  const __m128i shifted = _mm_sub_epi8(chars, _mm_set1_epi8(static_cast<char>(low ^ 0x80)));
  return _mm_cmplt_epi8(shifted, _mm_set1_epi8(static_cast<char>(count - 128)));
}

// The nibble values of 16 characters: digits and letters of either case, anything else 0. The
// low four bits of a digit are its value; those of a letter are its value less 9.
inline __m128i Nibbles(__m128i chars) {
  const __m128i digit = InRange(chars, '0', 10);
  const __m128i letter = InRange(_mm_or_si128(chars, _mm_set1_epi8(0x20)), 'a', 6);
  const __m128i value = _mm_add_epi8(_mm_and_si128(chars, _mm_set1_epi8(0x0F)),
                                     _mm_and_si128(letter, _mm_set1_epi8(9)));
  return _mm_and_si128(_mm_or_si128(digit, letter), value);
}

// The bytes of 16 characters, one in each 16-bit lane: the lane holds the first nibble n0 in its
// low byte and the second n1 in its high byte, and its product with 0x1001 holds n0 << 4 | n1
// in bits 8 to 15.
inline __m128i LaneBytes(const char* in) {
  const __m128i nibbles = Nibbles(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)));
  return _mm_srli_epi16(_mm_mullo_epi16(nibbles, _mm_set1_epi16(0x1001)), 8);
}

// Decodes 32 characters into 16 bytes at `out`, swapping the bytes of every pair into their
// pairwise order; the count of those bytes before the first zero byte.
inline size_t DecodeBlock(const char* in, char* out) {
  const __m128i pairs = _mm_packus_epi16(LaneBytes(in), LaneBytes(in + 16));
  const __m128i bytes = _mm_or_si128(_mm_slli_epi16(pairs, 8), _mm_srli_epi16(pairs, 8));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
  const unsigned zeros =
      static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128())));
  return zeros == 0 ? 16 : static_cast<size_t>(__builtin_ctz(zeros));
}
#endif

// Decodes `text` (an even length of at least 2) into its text.size() / 2 bytes at `out`, with
// 16-byte vector blocks after an odd leading byte when kVectors is set, and `pairs` for the bytes
// outside them. The decoded documents are JSON text: the result ends at its first zero byte,
// whose offset is returned.
template <bool kVectors, class Pairs>
size_t DecodeHexInto(std::string_view text, char* out, const Pairs& pairs) {
  const size_t n = text.size() / 2;
  const char* in = text.data();
  size_t done = 0;
  if (n % 2 == 1) {
    out[0] = pairs.Byte(in);
    if (out[0] == '\0') return 0;
    done = 1;
  }
#if defined(__SSE2__)
  if constexpr (kVectors) {
    for (; done + 16 <= n; done += 16) {
      const size_t kept = DecodeBlock(in + 2 * done, out + done);
      if (kept < 16) return done + kept;
    }
  }
#endif
  const size_t checked = done;  // bytes known to hold no zero
  for (; done + 1 < n; done += 2) pairs.Bytes(in + 2 * done, &out[done + 1], &out[done]);
  const void* zero = std::memchr(out + checked, '\0', n - checked);
  return zero == nullptr ? n : static_cast<size_t>(static_cast<const char*>(zero) - out);
}

bool DecodableLength(std::string_view text) { return text.size() >= 2 && text.size() % 2 == 0; }

template <bool kVectors, class Pairs>
void DecodeHex(std::string_view text, std::string& output, const Pairs& pairs) {
  output.clear();
  if (!DecodableLength(text)) return;
  output.resize(text.size() / 2);
  output.resize(DecodeHexInto<kVectors>(text, output.data(), pairs));
}

// Vector blocks where the target has them; the bytes around them then never need the table.
#if defined(__SSE2__)
constexpr bool kVectorDecode = true;
DirectPairs DecodePairs() { return DirectPairs(); }
#else
constexpr bool kVectorDecode = false;
const PairTable& DecodePairs() { return Pairs(); }
#endif

// The hex text of a JSON string value; false for any other value.
bool HexTextOf(const Json::Value& value, std::string_view* text) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (!value.isString() || !value.getString(&begin, &end) || begin == nullptr) return false;
  *text = std::string_view(begin, static_cast<size_t>(end - begin));
  return true;
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
  DecodeHex<kVectorDecode>(text, output, DecodePairs());
}

void DecodeHexTextPortable(std::string_view text, std::string& output) {
  DecodeHex</*kVectors=*/false>(text, output, Pairs());
}

void DecodeData(const Json::Value& value, std::string& output) {
  std::string_view text;
  if (!HexTextOf(value, &text)) {
    output.clear();
    return;
  }
  DecodeHexText(text, output);
}

std::string_view DecodeDataInto(const Json::Value& value, ByteBuffer* buffer) {
  std::string_view text;
  buffer->size = 0;
  if (!HexTextOf(value, &text) || !DecodableLength(text) || !buffer->Reserve(text.size() / 2)) {
    return std::string_view();
  }
  buffer->size = DecodeHexInto<kVectorDecode>(text, buffer->data.get(), DecodePairs());
  return buffer->view();
}

}  // namespace vexa
