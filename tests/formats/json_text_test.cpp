#include "formats/json_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

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

// A run of backslashes before a quote across the block edges: after an even run the quote closes
// the string and "[[1]]" counts; an odd run escapes it.
TEST(JsonTextTest, NestingDepthOfEscapesAcrossBlockEdges) {
  for (size_t pad = 0; pad < 40; ++pad) {
    for (size_t run = 0; run < 6; ++run) {
      const std::string text = "[\"" + std::string(pad, 'x') + std::string(run, '\\') + "\"[[1]]\"";
      EXPECT_EQ(JsonNestingDepth(text), run % 2 == 0 ? 4u : 2u) << text;
    }
  }
}

// The vector scan against the portable one: JSONTestSuite's files at every block alignment,
// brackets and quotes in every lane after blanks or a member (at the root and inside it), and
// random texts of JSON's structural characters.
TEST(JsonTextTest, NestingDepthVectorScanMatchesPortableScan) {
  std::vector<std::string> texts;
  const std::string suite = VEXA_SOURCE_DIR "/tests/data/json_test_suite";
  for (const auto& entry : std::filesystem::directory_iterator(suite)) {
    std::ifstream in(entry.path(), std::ios::binary);
    const std::string file(std::istreambuf_iterator<char>(in), {});
    for (size_t pad = 0; pad < 16; ++pad) texts.push_back(std::string(pad, ' ') + file);
  }
  ASSERT_GT(texts.size(), 16 * 300u);
  for (const std::string prefix : {"", "["}) {
    for (size_t lane = 0; lane < 48; ++lane) {
      for (const char mark : {'[', '{', ']', '}', '"'}) {
        texts.push_back(prefix + std::string(lane, ' ') + mark + " [1]]");
        texts.push_back(prefix + std::string(lane, '1') + mark + " [1]]");
      }
    }
  }
  const std::string alphabet = "[[[{{]}\"\\ \n\t\r1,:\x80";
  std::mt19937 random(7);
  for (std::string text; texts.size() < 25000; texts.push_back(text)) {
    text.resize(random() % 80);
    for (char& c : text) c = alphabet[random() % alphabet.size()];
  }
  for (const std::string& text : texts) {
    const std::vector<char> exact(text.begin(), text.end());  // the sanitizers see reads past it
    const std::string_view view(exact.data(), exact.size());
    ASSERT_EQ(JsonNestingDepth(view), JsonNestingDepthPortable(view)) << text;
  }
}

}  // namespace vexa
