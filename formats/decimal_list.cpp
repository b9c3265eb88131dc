#include "formats/decimal_list.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace vexa {
namespace {

inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

inline bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

}  // namespace

// One pass over the field: blanks, an optional plus sign, the digits, then on to the next comma.
bool DecimalListReader::Next(uint32_t* value) {
  if (pos_ > text_.size()) return false;
  const char* at = text_.data() + pos_;
  const char* const end = text_.data() + text_.size();
  // Fail for good: a bad field poisons the rest of the list.
  pos_ = text_.size() + 1;
  while (at < end && IsBlank(*at)) ++at;
  // A plus sign is accepted as the C library's conversion accepts it; a minus sign is not, as
  // no negative number belongs in an unsigned table.
  if (at < end && *at == '+') ++at;
  if (at == end || !IsDigit(*at)) return false;
  uint64_t number = 0;
  for (; at < end && IsDigit(*at); ++at) {
    number = number * 10 + static_cast<uint64_t>(*at - '0');
    if (number > std::numeric_limits<uint32_t>::max()) return false;
  }
  *value = static_cast<uint32_t>(number);
  // The rest of the field, up to its comma, is skipped.
  if (at < end && *at != ',') {
    const void* comma = std::memchr(at, ',', static_cast<size_t>(end - at));
    at = comma == nullptr ? end : static_cast<const char*>(comma);
  }
  pos_ = at == end ? text_.size() + 1 : static_cast<size_t>(at - text_.data()) + 1;
  return true;
}

bool ParseDecimalList(std::string_view text, size_t count, std::vector<uint32_t>* out) {
  out->clear();
  // Every number takes at least two characters but the last: a huge count cannot over-allocate.
  out->reserve(std::min(count, text.size() / 2 + 1));
  DecimalListReader reader(text);
  for (size_t i = 0; i < count; ++i) {
    uint32_t value = 0;
    if (!reader.Next(&value)) return false;
    out->push_back(value);
  }
  return true;
}

}  // namespace vexa
