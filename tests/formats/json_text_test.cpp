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
  const std::pair<const char*, bool> cases[] = {
      {R"({"a":1})", true},        {"  [1,2]", true},
      {R"({"a":1} trailing)", true},  // text after the root is ignored
      {"{} {", true},              {R"({"a":1}})", true},
      {"1", false},                {R"("text")", false},  // the root must be a container
      {"", false},                 {"// comment\n{}", false},
      {R"({"a": /* c */ 1})", false}, {"[/* c */ 1]", false},
      {R"({"a":1,})", false},      {"[1,]", false},
      {"{'a':1}", false},
  };
  for (const auto& [text, parses] : cases) EXPECT_EQ(Parses(text), parses) << text;

  Json::Value value;
  ASSERT_TRUE(PopulateJsonValue(R"({"a":1,"b":true,"a":{"x":2}})", value));
  EXPECT_EQ(value.size(), 2u);  // a duplicate member keeps the last value
  EXPECT_EQ(value["a"]["x"].asInt(), 2);
}

// The reader throws (or aborts, built without exceptions) once a value stands deeper than 1000
// levels, so such text must be refused before it gets there, and nothing shallower refused.
TEST(JsonTextTest, NestingIsRefusedExactlyBeyondTheReadersLimit) {
  const std::pair<std::string, bool> cases[] = {
      {Nested(1000, ""), true},             {Nested(1000, " \n"), true},
      {Nested(999, "1"), true},             {Nested(999, "{}"), true},
      {Nested(999, R"("[[[[")"), true},     {Nested(999, R"("\"[")"), true},
      {NestedObjects(1000), true},          {Nested(998, R"({"a":{}})"), true},
      {"{}" + std::string(5000, '['), true},  // beyond the root: ignored
      {Nested(1000, "1"), false},           {Nested(999, R"({"a":1})"), false},
      {Nested(1001, ""), false},            {NestedObjects(1001), false},
      {Nested(100000, ""), false},          {std::string(100000, '{'), false},
  };
  for (const auto& [text, parses] : cases) {
    bool parsed = !parses;
    EXPECT_NO_THROW(parsed = Parses(text)) << text.size() << " bytes";
    EXPECT_EQ(parsed, parses) << text.size() << " bytes: " << text.substr(995, 20);
  }
}

TEST(JsonTextTest, WritesOneSortedLineEndingInNewline) {
  Json::Value value;
  ASSERT_TRUE(PopulateJsonValue(R"({ "b" : 1, "a" : [ true, "x\"y" ], "c": {} })", value));
  const std::string expected = "{\"a\":[true,\"x\\\"y\"],\"b\":1,\"c\":{}}\n";
  EXPECT_EQ(*jsonWriteString(std::make_shared<Json::Value>(value)), expected);
  EXPECT_EQ(*jsonWriteString(nullptr), "");
  Json::Value again;
  ASSERT_TRUE(PopulateJsonValue(expected, again));
  EXPECT_EQ(again, value);
}

}  // namespace
}  // namespace vexa
