#include "formats/json_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace vexa {

static std::string Nested(size_t levels, const std::string& inside) {
  return std::string(levels, '[') + inside + std::string(levels, ']');
}

// The reader is strict (no comments, no trailing commas, a container at the root), and it throws
// (or aborts, built without exceptions) once a value stands deeper than 1000 levels, so such
// text must be refused before it gets there, and nothing shallower refused.
TEST(JsonTextTest, ParsesStrictlyAndRefusesNestingBeyondTheReadersLimit) {
  const std::pair<std::string, bool> cases[] = {
      {R"({"a":1} trailing)", true}, {"{}" + std::string(5000, '['), true}, {"1", false},
      {"// c\n{}", false}, {"[/* c */ 1]", false}, {"[1,]", false}, {"{'a':1}", false},
      {Nested(1000, ""), true}, {Nested(999, "1"), true}, {Nested(999, R"("\"[")"), true},
      {Nested(998, R"({"a":{}})"), true}, {Nested(1001, ""), false}, {Nested(1000, "1"), false},
      {Nested(999, R"({"a":1})"), false}, {std::string(100000, '{'), false},
      // An even run of backslashes leaves the next quote closing the string, an odd run escapes it.
      {Nested(999, R"("x\\",[1])"), false}, {Nested(999, R"("\\\"[",1)"), true}};
  for (const auto& [text, parses] : cases) {
    Json::Value value;
    bool parsed = !parses;
    EXPECT_NO_THROW(parsed = PopulateJsonValue(text, value)) << text.size() << " bytes";
    EXPECT_EQ(parsed, parses) << text.size() << " bytes: " << text.substr(0, 20);
  }
}

// Brackets and quotes in each lane of the 16-character blocks, after blanks or after a member,
// at the root and inside it: the nesting the reader would see.
TEST(JsonTextTest, NestingDepthOfMarksInEveryLane) {
  for (const std::string prefix : {"", "["}) {
    for (const char filler : {' ', '1'}) {
      for (size_t lane = 0; lane < 48; ++lane) {
        for (const char mark : {'[', '{', ']', '}', '"'}) {
          const std::string text = prefix + std::string(lane, filler) + mark + " [1]]";
          const bool member_first = lane > 0 && filler == '1';
          size_t expected = 0;
          if (prefix.empty()) {
            expected = member_first ? 0 : (mark == '[' || mark == '{') ? 3 : 0;
          } else {
            expected = (mark == '[' || mark == '{') ? 4 : (member_first || mark == '"') ? 2 : 1;
          }
          EXPECT_EQ(JsonNestingDepth(text), expected) << text;
        }
      }
    }
  }
}

// A run of backslashes before a quote, placed across the block edges: an even run leaves the
// quote closing the string, so "[[1]]" after it counts; an odd run escapes it.
TEST(JsonTextTest, NestingDepthOfEscapesAcrossBlockEdges) {
  for (size_t pad = 0; pad < 40; ++pad) {
    for (size_t run = 0; run < 6; ++run) {
      const std::string text = "[\"" + std::string(pad, 'x') + std::string(run, '\\') + "\"[[1]]\"]";
      EXPECT_EQ(JsonNestingDepth(text), run % 2 == 0 ? 4u : 2u) << text;
    }
  }
}

// The vector scan against the portable one over JSONTestSuite's files at every block alignment
// and over random texts of JSON's structural characters.
TEST(JsonTextTest, NestingDepthVectorScanMatchesPortableScan) {
  std::vector<std::string> texts;
  for (const auto& entry : std::filesystem::directory_iterator(VEXA_SOURCE_DIR "/tests/data/json_test_suite")) {
    std::ifstream in(entry.path(), std::ios::binary);
    const std::string file(std::istreambuf_iterator<char>(in), {});
    for (size_t pad = 0; pad < 16; ++pad) texts.push_back(std::string(pad, ' ') + file);
  }
  ASSERT_GT(texts.size(), 16 * 300u);
  const std::string alphabet = "[[[{{]}\"\\ \n\t\r1,:\x80";
  std::mt19937 random(7);
  for (int i = 0; i < 20000; ++i) {
    std::string text(random() % 80, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    texts.push_back(text);
  }
  for (const std::string& text : texts) ASSERT_EQ(JsonNestingDepth(text), JsonNestingDepthPortable(text)) << text;
}

}  // namespace vexa
