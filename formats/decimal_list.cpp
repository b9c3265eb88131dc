#include "formats/decimal_list.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// Up to `count` fields one by one: how many were read. `at` becomes null once the last field is
// read or a bad one is met, which poisons the rest of the list.
[[gnu::always_inline]] inline size_t ReadFieldByField(const char*& at, const char* end,
                                                      uint32_t* values, size_t count) {
  for (size_t read = 0; read < count; ++read) {
    const FieldEnd field = ReadField(at, end, &values[read]);
    if (field == FieldEnd::kMore) continue;
    at = nullptr;
    return field == FieldEnd::kLast ? read + 1 : read;
  }
  return count;
}

#if defined(__SSE2__)
// Bit k set where at[k] is a comma, for the 32 bytes at `at`.
inline uint32_t CommaBits(const char* at) {
  const __m128i comma = _mm_set1_epi8(',');
  const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16));
  return static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(low, comma))) |
         static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(high, comma))) << 16;
}

inline int LoadWord(const char* at) {
  int word = 0;
  std::memcpy(&word, at, sizeof(word));
  return word;
}

// Four fields of one to four bare digits, each ended by its comma, read at once: how far `at`
// moves (past the fourth comma), or 0, with nothing read, when the fields are anything else and
// ReadField is to take them one by one. The 32 bytes at `at` and the three before it must be
// readable, and at[-1] must be the comma that ended the previous field.
[[gnu::always_inline]] inline size_t ReadFourShortFields(const char* at, uint32_t* values) {
  const uint64_t from_first = CommaBits(at);
  const uint64_t from_second = from_first & (from_first - 1);
  const uint64_t from_third = from_second & (from_second - 1);
  const uint64_t from_fourth = from_third & (from_third - 1);
  if (from_fourth == 0) return 0;
  const size_t first = static_cast<size_t>(__builtin_ctzll(from_first));
  const size_t second = static_cast<size_t>(__builtin_ctzll(from_second));
  const size_t third = static_cast<size_t>(__builtin_ctzll(from_third));
  const size_t fourth = static_cast<size_t>(__builtin_ctzll(from_fourth));
  // Each field one to four bytes long: its length less one below 4 (an empty field's wraps).
  const size_t lengths = (first - 1) | (second - first - 2) | (third - second - 2) |
                         (fourth - third - 2);
  if (lengths > 3) return 0;

  // Each field's last four bytes in a 32-bit lane, its final digit on top. The bytes up to the
  // lane's last comma belong to earlier fields and are cleared; the others must be digits.
  const __m128i tails = _mm_set_epi32(LoadWord(at + fourth - 4), LoadWord(at + third - 4),
                                      LoadWord(at + second - 4), LoadWord(at + first - 4));
  __m128i earlier = _mm_cmpeq_epi8(tails, _mm_set1_epi8(','));
  earlier = _mm_or_si128(earlier, _mm_srli_epi32(earlier, 8));
  earlier = _mm_or_si128(earlier, _mm_srli_epi32(earlier, 16));
  // Digits become their values; any other byte of a field becomes 10 or more.
  const __m128i digit_values = _mm_andnot_si128(earlier, _mm_xor_si128(tails, _mm_set1_epi8('0')));
  const __m128i nine = _mm_set1_epi8(9);
  if (_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_max_epu8(digit_values, nine), nine)) != 0xFFFF) return 0;

  // Digits widened to 16 bits and weighted 1000, 100, 10, 1: two partial sums per field, then
  // narrowed back (each below 10000) and added pairwise.
  const __m128i zero = _mm_setzero_si128();
  const __m128i weights = _mm_set_epi16(1, 10, 100, 1000, 1, 10, 100, 1000);
  const __m128i partial = _mm_packs_epi32(
      _mm_madd_epi16(_mm_unpacklo_epi8(digit_values, zero), weights),
      _mm_madd_epi16(_mm_unpackhi_epi8(digit_values, zero), weights));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(values), _mm_madd_epi16(partial, _mm_set1_epi16(1)));
  return fourth + 1;
}

// Where a batch read stopped: the next field, or null once the last field is read or a bad one
// is met; and how many fields it read.
struct BatchEnd {
  const char* at;
  size_t read;
};

// Groups of four short fields from `at` on while they last and the text has room around them,
// at most `count` fields. Kept out of line, where its loop has the registers to itself.
[[gnu::noinline]] BatchEnd ReadShortFieldGroups(const char* begin, const char* end, const char* at,
                                                uint32_t* values, size_t count) {
  if (at - begin < 3 || end - at < 32) return {at, 0};
  const char* const last = end - 32;
  uint32_t* out = values;
  for (size_t groups = count / 4; groups > 0 && at <= last; --groups) {
    const size_t advance = ReadFourShortFields(at, out);
    if (advance == 0) break;
    at += advance;
    out += 4;
  }
  return {at, static_cast<size_t>(out - values)};
}

// Fields read one by one after the group path declines, before it is tried again: a few, twice
// as many after each decline in a row, so that a list of other fields pays for few attempts.
constexpr size_t kFewestFieldsByField = 4;
constexpr size_t kMostFieldsByField = 64;

// A batch read that takes groups of short fields wherever it can.
[[gnu::noinline]] BatchEnd ReadInGroupsWherePossible(const char* begin, const char* end,
                                                     const char* at, uint32_t* values,
                                                     size_t count) {
  size_t read = 0;
  size_t by_field = kFewestFieldsByField;
  while (read < count) {
    if (count - read >= 4) {
      const BatchEnd groups = ReadShortFieldGroups(begin, end, at, values + read, count - read);
      at = groups.at;
      read += groups.read;
      if (read == count) break;
      if (groups.read > 0) by_field = kFewestFieldsByField;
    }
    read += ReadFieldByField(at, end, values + read, std::min(count - read, by_field));
    if (at == nullptr) break;
    by_field = std::min(2 * by_field, kMostFieldsByField);
  }
  return {at, read};
}
#endif

}  // namespace

bool DecimalListReader::Next(uint32_t* value) { return Next(value, 1) == 1; }

size_t DecimalListReader::Next(uint32_t* values, size_t count) {
  const size_t size = text_.size();
  if (pos_ > size) return 0;
  const char* const begin = text_.data();
  const char* const end = begin + size;
  const char* at = begin + pos_;
#if defined(__SSE2__)
  if (count >= 4) {
    const BatchEnd batch = ReadInGroupsWherePossible(begin, end, at, values, count);
    pos_ = batch.at == nullptr ? size + 1 : static_cast<size_t>(batch.at - begin);
    return batch.read;
  }
#endif
  const size_t read = ReadFieldByField(at, end, values, count);
  pos_ = at == nullptr ? size + 1 : static_cast<size_t>(at - begin);
  return read;
}

namespace {

// Nine digits never exceed 32 bits.
constexpr size_t kPlainFieldDigits = 9;

// Ends the field before the comma at `comma`; false when it is empty or too long.
inline bool EndPlainField(size_t comma, size_t* field_start, size_t* fields) {
  const size_t digits = comma - *field_start;
  if (digits == 0 || digits > kPlainFieldDigits) return false;
  *field_start = comma + 1;
  ++*fields;
  return true;
}

}  // namespace

bool IsPlainDecimalList(std::string_view text, size_t count) {
  const char* const chars = text.data();
  const size_t size = text.size();
  size_t fields = 0;
  size_t field_start = 0;
  size_t i = 0;
#if defined(__SSE2__)
  // 16 characters per step, fields checked by masks alone: every character a digit or a comma, no
  // comma next to another (or first), no run of ten digits; commas counted in byte lanes.
  unsigned previous_digits = 0;  // the digit lanes of the block before
  unsigned comma_before = 1;     // a comma just before the block: the start counts as one
  __m128i comma_lanes = _mm_setzero_si128();
  size_t blocks_in_lanes = 0;
  const auto count_lanes = [&] {
    const __m128i sums = _mm_sad_epu8(comma_lanes, _mm_setzero_si128());
    fields += static_cast<size_t>(_mm_cvtsi128_si32(sums)) +
              static_cast<size_t>(_mm_cvtsi128_si32(_mm_srli_si128(sums, 8)));
    comma_lanes = _mm_setzero_si128();
    blocks_in_lanes = 0;
  };
  for (; size - i >= 16; i += 16) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(chars + i));
    const __m128i is_comma = _mm_cmpeq_epi8(block, _mm_set1_epi8(','));
    const unsigned commas = static_cast<unsigned>(_mm_movemask_epi8(is_comma));
    const __m128i below_ten = _mm_cmplt_epi8(_mm_xor_si128(_mm_sub_epi8(block, _mm_set1_epi8('0')),
                                                           _mm_set1_epi8(static_cast<char>(0x80))),
                                             _mm_set1_epi8(static_cast<char>(0x80 + 10)));
    const unsigned digits = static_cast<unsigned>(_mm_movemask_epi8(below_ten));
    if ((commas | digits) != 0xFFFF || (commas & (commas << 1 | comma_before)) != 0) return false;
    // Ten digits in a row over this block and the one before: bit k of `eights` tells that lanes
    // k to k + 7 hold digits, bit k of `pairs` shifted by 8 that lanes k + 8 and k + 9 do.
    const uint32_t window = digits << 16 | previous_digits;
    const uint32_t pairs = window & window >> 1;
    const uint32_t fours = pairs & pairs >> 2;
    const uint32_t eights = fours & fours >> 4;
    if ((eights & pairs >> 8) != 0) return false;
    previous_digits = digits;
    comma_before = commas >> 15;
    if (commas != 0) field_start = i + 16 - static_cast<size_t>(__builtin_clz(commas << 16));
    comma_lanes = _mm_sub_epi8(comma_lanes, is_comma);  // 0xFF per comma: one more per lane
    if (++blocks_in_lanes == 255) count_lanes();
  }
  count_lanes();
  // The characters left continue the field that the last block ended in.
#endif
  for (; i < size; ++i) {
    if (chars[i] == ',') {
      if (!EndPlainField(i, &field_start, &fields)) return false;
    } else if (!IsDigit(chars[i])) {
      return false;
    }
  }
  return EndPlainField(size, &field_start, &fields) && fields == count;
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
