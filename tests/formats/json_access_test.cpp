#include "formats/json_access.h"

#include <gtest/gtest.h>

#include "formats/json_text.h"
#include "support/log_capture.h"
#include "support/log_lines.h"

namespace vexa {
namespace {

using testing::IsLogLine;
using testing::LogCapture;

constexpr char kLabel[] = "VexaJsonModeParser::Test";

Json::Value Parse(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << text;
  return value;
}

TEST(JsonFieldReaderTest, MissingOrNullMembersReadAsDefaults) {
  for (const char* text : {"{}", R"({"v":null})"}) {
    LogCapture log;
    const Json::Value object = Parse(text);
    JsonFieldReader reader(object, kLabel);
    EXPECT_FALSE(reader.Has("v"));
    EXPECT_EQ(reader.Uint("v"), 0u);
    EXPECT_EQ(reader.Int("v"), 0);
    EXPECT_EQ(reader.Double("v"), 0.0);
    EXPECT_EQ(reader.Float("v"), 0.0f);
    EXPECT_FALSE(reader.Bool("v"));
    EXPECT_EQ(reader.String("v"), "");
    EXPECT_TRUE(reader.Array("v").isNull());
    EXPECT_TRUE(reader.Object("v").isNull());
    EXPECT_TRUE(reader.ok());
    EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  }
}

// Each case reads member "v" of {"v": <json>} with one accessor; a refusal reads as the default,
// marks the unit refused and logs one error line naming the member.
TEST(JsonFieldReaderTest, ConvertsWhatJsoncppConvertsAndRefusesTheRest) {
  using Read = std::string (*)(JsonFieldReader&);
  const Read uint_read = [](JsonFieldReader& r) { return std::to_string(r.Uint("v")); };
  const Read int_read = [](JsonFieldReader& r) { return std::to_string(r.Int("v")); };
  const Read double_read = [](JsonFieldReader& r) { return std::to_string(r.Double("v")); };
  const Read bool_read = [](JsonFieldReader& r) { return std::string(r.Bool("v") ? "1" : "0"); };
  const Read string_read = [](JsonFieldReader& r) { return r.String("v"); };
  const Read array_read = [](JsonFieldReader& r) { return std::to_string(r.Array("v").size()); };
  const Read object_read = [](JsonFieldReader& r) { return std::to_string(r.Object("v").size()); };
  const struct {
    const char* json;
    Read read;
    bool accepted;
    std::string value;
  } cases[] = {
      {"4294967295", uint_read, true, "4294967295"},
      {"7.9", uint_read, true, "7"},
      {"true", uint_read, true, "1"},
      {"-1", uint_read, false, "0"},
      {"4294967296", uint_read, false, "0"},
      {"1e300", uint_read, false, "0"},
      {"-0.5", uint_read, false, "0"},
      {R"("5")", uint_read, false, "0"},
      {"[5]", uint_read, false, "0"},
      {"{}", uint_read, false, "0"},
      {"-2147483648", int_read, true, "-2147483648"},
      {"2147483648", int_read, false, "0"},
      {"-1e300", int_read, false, "0"},
      {"1e300", double_read, true, std::to_string(1e300)},
      {R"("1.5")", double_read, false, std::to_string(0.0)},
      {"2", bool_read, true, "1"},
      {R"("true")", bool_read, false, "0"},
      {"5", string_read, true, "5"},
      {"[]", string_read, false, ""},
      {"[1,2]", array_read, true, "2"},
      {R"({"a":1})", array_read, false, "0"},
      {R"({"a":1})", object_read, true, "1"},
      {"[1]", object_read, false, "0"},
      {R"("x")", object_read, false, "0"},
  };
  for (const auto& c : cases) {
    const std::string text = std::string(R"({"v":)") + c.json + "}";
    LogCapture log;
    const Json::Value object = Parse(text);
    JsonFieldReader reader(object, kLabel);
    EXPECT_EQ(c.read(reader), c.value) << text;
    EXPECT_EQ(reader.ok(), c.accepted) << text;
    const std::vector<std::string> errors = log.Errors();
    ASSERT_EQ(errors.size(), c.accepted ? 0u : 1u) << text << "\n" << log.Dump();
    if (!c.accepted) {
      EXPECT_NE(errors[0].find("Invalid member \"v\""), std::string::npos) << errors[0];
    }
  }
}

TEST(JsonFieldReaderTest, ErrorLineNamesFunctionMemberAndContext) {
  LogCapture log;
  const Json::Value object = Parse(R"({"thr":-3})");
  ScopedJsonContext file("file /x/modes.json");
  {
    ScopedJsonContext mode("mode \"Vivid\"");
    JsonFieldReader reader(object, kLabel);
    reader.Uint("thr");
    JsonFieldReader named(object, kLabel, "Parse");
    named.Uint("thr");
  }
  JsonFieldReader outer(object, kLabel, "Outer");
  outer.Uint("thr");
  const std::vector<std::string> lines = log.Lines();
  ASSERT_EQ(lines.size(), 3u) << log.Dump();
  const std::string expected = R"(: expected unsigned integer, found integer out of range)";
  const std::string inner_text =
      R"(Invalid member "thr" in file /x/modes.json, mode "Vivid")" + expected;
  EXPECT_TRUE(IsLogLine(lines[0], 'E', std::string(kLabel) + "::SetConfig", inner_text))
      << lines[0];
  EXPECT_TRUE(IsLogLine(lines[1], 'E', std::string(kLabel) + "::Parse", inner_text)) << lines[1];
  EXPECT_TRUE(IsLogLine(lines[2], 'E', std::string(kLabel) + "::Outer",
                        R"(Invalid member "thr" in file /x/modes.json)" + expected))
      << lines[2];
  EXPECT_EQ(JsonContextSuffix(), " in file /x/modes.json");
}

TEST(JsonFieldReaderTest, NonObjectsNeverAbort) {
  for (const char* text : {"[1,2]", R"(["v"])"}) {
    LogCapture log;
    const Json::Value array = Parse(text);
    JsonFieldReader reader(array, kLabel);
    EXPECT_FALSE(reader.ok());
    EXPECT_EQ(reader.Uint("v"), 0u);
    EXPECT_FALSE(reader.Has("v"));
    EXPECT_EQ(log.Errors().size(), 1u) << log.Dump();
  }
  for (const Json::Value& value : {Json::Value(3), Json::Value("v"), Json::Value(true),
                                   Json::Value(), Json::Value(Json::arrayValue)}) {
    EXPECT_EQ(FindMember(value, "v"), nullptr);
    EXPECT_FALSE(HasMember(value, "v"));
    EXPECT_TRUE(MemberNames(value).empty());
  }
  const Json::Value object = Parse(R"({"b":null,"a":1})");
  EXPECT_EQ(MemberNames(object), (std::vector<std::string>{"a", "b"}));
  EXPECT_NE(FindMember(object, "b"), nullptr);
  EXPECT_FALSE(HasMember(object, "b"));
  EXPECT_TRUE(HasMember(object, "a"));
}

TEST(JsonFieldReaderTest, ArrayElementsAreCheckedOneByOne) {
  LogCapture log;
  const Json::Value object = Parse(R"({"m":["1", 2, "s"]})");
  JsonFieldReader reader(object, kLabel);
  const Json::Value& array = reader.Array("m");
  EXPECT_EQ(reader.ElementUint(array, 1, "m"), 2u);
  EXPECT_EQ(reader.ElementString(array, 2, "m"), "s");
  EXPECT_EQ(reader.ElementUint(array, 9, "m"), 0u);  // past the end: default, not a refusal
  EXPECT_EQ(reader.ElementUint(object, 0, "m"), 0u);
  EXPECT_TRUE(reader.ok()) << log.Dump();
  EXPECT_EQ(reader.ElementUint(array, 0, "m"), 0u);
  EXPECT_FALSE(reader.ok());
  ASSERT_EQ(log.Errors().size(), 1u) << log.Dump();
  EXPECT_NE(log.Errors()[0].find(R"(Invalid member "m")"), std::string::npos);
}

}  // namespace
}  // namespace vexa
