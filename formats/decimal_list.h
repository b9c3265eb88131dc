// Comma-separated lists of unsigned decimal numbers, as the shared tables, the inline gamut
// tables and the six-zone curves hold them. Each field may begin with blanks and a '+', must then
// begin with a digit, and ends at its first non-digit (the rest of the field, up to the comma, is
// skipped). A '-' sign, an empty field or a number above 32 bits is malformed.
#ifndef VEXA_FORMATS_DECIMAL_LIST_H_
#define VEXA_FORMATS_DECIMAL_LIST_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vexa {

class DecimalListReader {
 public:
  explicit DecimalListReader(std::string_view text) : text_(text) {}

  // The next field's number. False when the list is used up, or the field holds no decimal
  // number or one above 32 bits (the reader then stays failed).
  bool Next(uint32_t* value);
  // The next `count` fields' numbers into values[0], values[1], ...: how many were read, fewer
  // than `count` when the list ends or a field is malformed (as Next would fail there).
  size_t Next(uint32_t* values, size_t count);

  bool exhausted() const { return pos_ > text_.size(); }

 private:
  std::string_view text_;
  size_t pos_ = 0;  // start of the next field; past the end once the last field is read
};

// Exactly `count` numbers from the front of `text` into `out` (replaced); values after them are
// ignored. False when the text holds fewer numbers or a malformed field among the first `count`.
bool ParseDecimalList(std::string_view text, size_t count, std::vector<uint32_t>* out);

// True when `text` is exactly `count` fields of one to nine digits joined by single commas and
// nothing else: a list that the reader takes whole and that cannot overflow, checked without
// converting it.
bool IsPlainDecimalList(std::string_view text, size_t count);

}  // namespace vexa

#endif  // VEXA_FORMATS_DECIMAL_LIST_H_
