#include "formats/json_text.h"

#include <gtest/gtest.h>

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

}  // namespace vexa
