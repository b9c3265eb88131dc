#include "formats/json_text.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

std::string Nested(size_t levels, const std::string& inside) {
  return std::string(levels, '[') + inside + std::string(levels, ']');
}

// `levels` objects, each the member "a" of the one outside it.
std::string NestedObjects(size_t levels) {
  std::string text = "{}";
  for (size_t i = 1; i < levels; ++i) text = "{\"a\":" + text + "}";
  return text;
}

bool Parses(const std::string& text) {
  Json::Value value;
  return PopulateJsonValue(text, value);
}

TEST(JsonTextTest, ParsesStrictlyAsTheOldReader) {
  const struct {
    const char* text;
    bool parses;
  } cases[] = {
      {R"({"a":1})", true},
      {"[1,2]", true},
      {"  {}", true},
      {R"({"a":1} trailing text)", true},  // text after the root is ignored
      {"{} {", true},
      {R"({"a":1}})", true},
      {"1", false},  // the root must be an array or an object
      {R"("text")", false},
      {"", false},
      {"// comment\n{}", false},
      {R"({"a": /* comment */ 1})", false},
      {"[/* comment */ 1]", false},
      {R"({"a":1,})", false},
      {"[1,]", false},
      {"{'a':1}", false},
  };
  for (const auto& c : cases) EXPECT_EQ(Parses(c.text), c.parses) << c.text;
}

TEST(JsonTextTest, DuplicateMemberKeepsTheLastValue) {
  Json::Value value;
  ASSERT_TRUE(PopulateJsonValue(R"({"a":1,"b":true,"a":{"x":2}})", value));
  EXPECT_EQ(value.size(), 2u);
  EXPECT_EQ(value["a"]["x"].asInt(), 2);
}

// The reader throws (or aborts, built without exceptions) once a value stands deeper than 1000
// levels, so such text must be refused before it gets there, and nothing shallower refused.
TEST(JsonTextTest, NestingIsRefusedExactlyBeyondTheReadersLimit) {
  const struct {
    std::string text;
    bool parses;
  } cases[] = {
      {Nested(1000, ""), true},
      {Nested(1000, " \n"), true},
      {Nested(999, "1"), true},
      {Nested(999, "{}"), true},
      {Nested(999, R"("[[[[")"), true},  // brackets inside strings do not nest
      {Nested(999, R"("\"[")"), true},
      {NestedObjects(1000), true},
      {Nested(998, R"({"a":{}})"), true},
      {"{}" + std::string(5000, '['), true},  // beyond the root: ignored
      {"[" + Nested(1000, "") + "]", false},
      {Nested(1000, "1"), false},
      {Nested(999, R"({"a":1})"), false},
      {Nested(999, R"({"a":{}})"), false},
      {NestedObjects(1001), false},
      {Nested(1001, ""), false},
      {Nested(100000, ""), false},
      {std::string(100000, '['), false},
      {std::string(100000, '{'), false},
  };
  for (const auto& c : cases) {
    bool parsed = !c.parses;
    EXPECT_NO_THROW(parsed = Parses(c.text)) << c.text.substr(0, 40);
    EXPECT_EQ(parsed, c.parses) << c.text.size() << " bytes: " << c.text.substr(995, 20);
  }
}

TEST(JsonTextTest, WritesOneSortedLineEndingInNewline) {
  Json::Value value;
  ASSERT_TRUE(PopulateJsonValue(R"({ "b" : 1, "a" : [ true, "x\"y" ], "c": {} })", value));
  const std::string expected = "{\"a\":[true,\"x\\\"y\"],\"b\":1,\"c\":{}}\n";
  EXPECT_EQ(JsonToCompactText(value), expected);
  EXPECT_EQ(*jsonWriteString(std::make_shared<Json::Value>(value)), expected);
  EXPECT_EQ(*jsonWriteString(nullptr), "");

  Json::Value again;
  ASSERT_TRUE(PopulateJsonValue(expected, again));
  EXPECT_EQ(again, value);
}

}  // namespace
}  // namespace vexa
