// Tables of words and the values they stand for, looked up by exact, case-sensitive comparison
// in table order.
#ifndef VEXA_FORMATS_WORD_TABLE_H_
#define VEXA_FORMATS_WORD_TABLE_H_

#include <cstddef>
#include <string>

namespace vexa {

template <typename Value>
struct WordEntry {
  const char* word;
  Value value;
};

// The value of the first entry whose word is `word`; `fallback` when there is none.
template <typename Value, size_t N>
Value LookUpWord(const WordEntry<Value> (&table)[N], const std::string& word, Value fallback) {
  for (const WordEntry<Value>& entry : table) {
    if (word == entry.word) return entry.value;
  }
  return fallback;
}

}  // namespace vexa

#endif  // VEXA_FORMATS_WORD_TABLE_H_
