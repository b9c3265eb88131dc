#include "formats/decimal_list.h"

#include <algorithm>
#include <charconv>

namespace vexa {
namespace {

inline bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

}  // namespace

bool DecimalListReader::Next(uint32_t* value) {
  if (pos_ > text_.size()) return false;
  size_t comma = text_.find(',', pos_);
  const size_t field_end = (comma == std::string_view::npos) ? text_.size() : comma;
  size_t start = pos_;
  while (start < field_end && IsBlank(text_[start])) ++start;
  // Fail for good: a bad field poisons the rest of the list.
  pos_ = text_.size() + 1;
  // A plus sign is accepted as the C library's conversion accepts it; a minus sign is not, as
  // no negative number belongs in an unsigned table.
  if (start < field_end && text_[start] == '+') ++start;
  if (start == field_end) return false;
  const char* first = text_.data() + start;
  const char* last = text_.data() + field_end;
  auto [ptr, ec] = std::from_chars(first, last, *value, 10);
  if (ec != std::errc() || ptr == first) return false;
  pos_ = (comma == std::string_view::npos) ? text_.size() + 1 : comma + 1;
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
