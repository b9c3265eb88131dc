#include "formats/json_text.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// The old Reader and FastWriter are jsoncpp's deprecated classes, kept for their exact
// behaviour: strict mode as the files were always read, and the one-line form they were written in.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace vexa {

namespace {

// The position just past the closing quote of the string whose contents start at `pos`, or the
// text's size when it is not closed. Files carry long hex strings: memchr finds the candidate
// quotes, and a quote preceded by an odd run of backslashes is escaped.
size_t SkipStringContents(std::string_view text, size_t pos) {
  while (pos < text.size()) {
    const void* hit = std::memchr(text.data() + pos, '"', text.size() - pos);
    if (hit == nullptr) break;
    const size_t quote = static_cast<size_t>(static_cast<const char*>(hit) - text.data());
    size_t run_start = quote;
    while (run_start > pos && text[run_start - 1] == '\\') --run_start;
    if ((quote - run_start) % 2 == 0) return quote + 1;
    pos = quote + 1;
  }
  return text.size();
}

// The containers open and the deepest level seen so far.
struct Nesting {
  size_t depth = 0;
  size_t deepest = 0;

  void Open() { deepest = std::max(deepest, ++depth); }
  // False when the root container is closed (or the text is malformed): the reader stops there.
  bool Close() {
    if (depth <= 1) return false;
    --depth;
    return true;
  }
  // Anything but whitespace and brackets: a member one level down, or a scalar root, which holds
  // no nesting (false).
  bool Member() {
    if (depth == 0) return false;
    deepest = std::max(deepest, depth + 1);
    return true;
  }
};

// Takes the character at text[*pos] (a whole string when it opens one); false when the scan ends.
bool ScanCharacter(std::string_view text, size_t* pos, Nesting* nesting) {
  const char c = text[(*pos)++];
  switch (c) {
    case ' ':
    case '\t':
    case '\n':
    case '\r':
      return true;
    case '[':
    case '{':
      nesting->Open();
      return true;
    case ']':
    case '}':
      return nesting->Close();
    default:
      if (!nesting->Member()) return false;
      if (c == '"') *pos = SkipStringContents(text, *pos);
      return true;
  }
}

#if defined(__SSE2__)
// The lanes of `block` holding any of `chars`, as a bit mask.
template <typename... Chars>
inline unsigned LanesHolding(__m128i block, Chars... chars) {
  const __m128i hits = (... | _mm_cmpeq_epi8(block, _mm_set1_epi8(chars)));
  return static_cast<unsigned>(_mm_movemask_epi8(hits));
}

// The lanes inside strings, opening quotes included and closing ones not, for a block that
// starts inside a string (`carried` 0xFFFF) or outside (0).
inline unsigned StringLanes(unsigned quotes, unsigned carried) {
  unsigned inside = quotes ^ (quotes << 1);
  inside ^= inside << 2;
  inside ^= inside << 4;
  inside ^= inside << 8;
  return (inside ^ carried) & 0xFFFF;
}

// Takes the 16 characters at text[*pos] at once, `*in_string` telling whether they start inside
// a string (then no backslash precedes them). Strings are followed into the next block; one that
// fills a whole block, or holds a backslash (which may escape a quote), is left to
// SkipStringContents, the block ending at its opening quote. Between the brackets, the member
// characters of a stretch count once (string contents included: their opening quote counted at
// the same level). False when the scan ends.
bool ScanBlock(std::string_view text, size_t* pos, bool* in_string, Nesting* nesting) {
  const size_t start = *pos;
  const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + start));
  const unsigned quotes = LanesHolding(block, '"');
  if (*in_string && quotes == 0) {
    // A long string (the files carry hex text of megabytes): memchr finds its end faster.
    *pos = SkipStringContents(text, start);
    *in_string = false;
    return true;
  }
  const __m128i folded = _mm_or_si128(block, _mm_set1_epi8(0x20));  // '[' onto '{', ']' onto '}'
  const unsigned opens = LanesHolding(folded, '{');
  const unsigned closes = LanesHolding(folded, '}');
  const unsigned blanks = LanesHolding(block, ' ', '\t', '\n', '\r');
  if (!*in_string && (quotes | opens | closes) == 0) {  // members and blanks only
    *pos = start + 16;
    return blanks == 0xFFFF || nesting->Member();
  }
  const unsigned strings = StringLanes(quotes, *in_string ? 0xFFFF : 0);
  const unsigned escapes = LanesHolding(block, '\\') & strings;
  unsigned cut = 16;  // the first lane left to SkipStringContents
  if (escapes != 0) {
    const unsigned openings = quotes & strings & ((escapes & (0u - escapes)) * 2 - 1);
    cut = openings == 0 ? 0 : 31 - static_cast<unsigned>(__builtin_clz(openings));
  }
  const unsigned before_cut = (1u << cut) - 1;
  unsigned marks = (opens | closes) & ~strings & before_cut;
  unsigned members = ~(marks | blanks) & before_cut;
  for (; marks != 0; marks &= marks - 1) {
    const unsigned mark = marks & (0u - marks);
    if ((members & (mark - 1)) != 0 && !nesting->Member()) return false;
    members &= ~(mark - 1);
    if ((mark & opens) != 0) {
      nesting->Open();
    } else if (!nesting->Close()) {
      return false;
    }
  }
  if (members != 0 && !nesting->Member()) return false;
  if (cut == 16) {
    *pos = start + 16;
    *in_string = (strings & 0x8000) != 0;
    return true;
  }
  // The string holding the backslash: opened at the cut, or carried into the block.
  if ((quotes & (1u << cut)) != 0) {
    if (!nesting->Member()) return false;
    ++cut;
  }
  *pos = SkipStringContents(text, start + cut);
  *in_string = false;
  return true;
}
#endif

// The scan, 16 characters at a time while that many remain when kVectors is set.
template <bool kVectors>
size_t NestingDepth(std::string_view text) {
  Nesting nesting;
  size_t pos = 0;
#if defined(__SSE2__)
  if constexpr (kVectors) {
    bool in_string = false;
    while (text.size() - pos >= 16) {
      if (!ScanBlock(text, &pos, &in_string, &nesting)) return nesting.deepest;
    }
    if (in_string) pos = SkipStringContents(text, pos);
  }
#endif
  while (pos < text.size()) {
    if (!ScanCharacter(text, &pos, &nesting)) break;
  }
  return nesting.deepest;
}

}  // namespace

size_t JsonNestingDepth(std::string_view text) { return NestingDepth</*kVectors=*/true>(text); }

size_t JsonNestingDepthPortable(std::string_view text) {
  return NestingDepth</*kVectors=*/false>(text);
}

std::string JsonToCompactText(const Json::Value& value) {
  Json::FastWriter writer;
  return writer.write(value);
}

std::shared_ptr<std::string> jsonWriteString(const std::shared_ptr<Json::Value>& value) {
  if (!value) return std::make_shared<std::string>();
  return std::make_shared<std::string>(JsonToCompactText(*value));
}

bool PopulateJsonValue(std::string_view text, Json::Value& value) {
  if (JsonNestingDepth(text) > kMaxJsonNesting) return false;
  Json::Reader reader(Json::Features::strictMode());
  // The range form: the string form would first copy the whole text (megabytes) into the reader.
  return reader.parse(text.data(), text.data() + text.size(), value, /*collectComments=*/false);
}

}  // namespace vexa

#pragma GCC diagnostic pop
