#include "formats/decimal_list.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "decimal fields are read as little-endian words");

namespace vexa {
namespace {

inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

inline bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

// Blanks and an optional plus sign before a field's digits. A plus sign is accepted as the C
// library's conversion accepts it; a minus sign is not, as no negative number belongs in an
// unsigned table.
inline const char* SkipFieldPrefix(const char* at, const char* end) {
  while (at < end && IsBlank(*at)) ++at;
  if (at < end && *at == '+') ++at;
  return at;
}

// Up to seven digits at `at`, eight readable bytes there, parsed eight bytes at a time: the
// digit count and the value, or a count of 0 when the run is not shorter than eight digits.
// Byte k of the little-endian load is the text's k-th character.
[[gnu::always_inline]] inline unsigned ShortDigitRun(const char* at, uint32_t* number) {
  constexpr uint64_t kOnes = 0x0101010101010101ULL;
  uint64_t chunk = 0;
  std::memcpy(&chunk, at, sizeof(chunk));
  // Each byte less '0': a digit is then below 10, and adding 0x76 leaves its top bit clear. A
  // borrow or carry out of a non-digit only disturbs the bytes after it, which are not used.
  const uint64_t values = chunk - 0x30 * kOnes;
  const uint64_t other = (values | (values + 0x76 * kOnes)) & (0x80 * kOnes);
  if (other == 0) return 0;
  const unsigned count = static_cast<unsigned>(__builtin_ctzll(other)) / 8;
  if (count == 0) return 0;
  // The digits' values moved to the top bytes (the ones below read as leading zeros), then
  // combined pairwise: 8 one-digit lanes, 4 two-digit lanes, 2 four-digit lanes, one number.
  uint64_t lanes = values << (8 * (8 - count));
  lanes = (lanes * 10 + (lanes >> 8)) & 0x00FF00FF00FF00FFULL;
  lanes = (lanes * 100 + (lanes >> 16)) & 0x0000FFFF0000FFFFULL;
  lanes = lanes * 10000 + (lanes >> 32);
  *number = static_cast<uint32_t>(lanes & 0xFFFFFFFFULL);
  return count;
}

// The digits from `at` on, checked against 32 bits; null on overflow.
const char* LongDigitRun(const char* at, const char* end, uint32_t* number) {
  uint64_t wide = 0;
  for (; at < end && IsDigit(*at); ++at) {
    wide = wide * 10 + static_cast<uint64_t>(*at - '0');
    if (wide > std::numeric_limits<uint32_t>::max()) return nullptr;
  }
  *number = static_cast<uint32_t>(wide);
  return at;
}

enum class FieldEnd { kMore, kLast, kBad };

// One pass over the field at `at`: prefix, the digits, then on to the next comma; `at` ends past
// that comma. The common field is a few bare digits followed by a comma, read in one eight-byte
// step where the text allows.
[[gnu::always_inline]] inline FieldEnd ReadField(const char*& at, const char* end, uint32_t* value) {
  if (at == end || !IsDigit(*at)) {
    at = SkipFieldPrefix(at, end);
    if (at == end || !IsDigit(*at)) return FieldEnd::kBad;
  }
  uint32_t number = 0;
  const unsigned count = end - at >= 8 ? ShortDigitRun(at, &number) : 0;
  if (count > 0) {
    at += count;
  } else {
    at = LongDigitRun(at, end, &number);
    if (at == nullptr) return FieldEnd::kBad;
  }
  *value = number;
  if (at == end) return FieldEnd::kLast;
  // The rest of the field, up to its comma, is skipped.
  if (*at != ',') {
    const void* comma = std::memchr(at, ',', static_cast<size_t>(end - at));
    if (comma == nullptr) return FieldEnd::kLast;
    at = static_cast<const char*>(comma);
  }
  ++at;
  return FieldEnd::kMore;
}

}  // namespace

bool DecimalListReader::Next(uint32_t* value) { return Next(value, 1) == 1; }

size_t DecimalListReader::Next(uint32_t* values, size_t count) {
  const size_t size = text_.size();
  const char* const begin = text_.data();
  const char* const end = begin + size;
  size_t read = 0;
  if (pos_ > size) return read;
  const char* at = begin + pos_;
  for (; read < count; ++read) {
    const FieldEnd field = ReadField(at, end, &values[read]);
    if (field == FieldEnd::kMore) continue;
    // The last field, or a bad one, which poisons the rest of the list.
    pos_ = size + 1;
    return field == FieldEnd::kLast ? read + 1 : read;
  }
  pos_ = static_cast<size_t>(at - begin);
  return read;
}

bool ParseDecimalList(std::string_view text, size_t count, std::vector<uint32_t>* out) {
  // Every number takes at least two characters but the last: a huge count cannot over-allocate.
  out->resize(std::min(count, text.size() / 2 + 1));
  DecimalListReader reader(text);
  const size_t read = reader.Next(out->data(), out->size());
  out->resize(read);
  return read == count;
}

}  // namespace vexa
