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

// Each case reads member "v" of {"v": <json>} (or of {} when json is null) with one accessor. A
// missing member reads as the default; a refusal also reads as the default, marks the unit
// refused and logs one error line naming the member.
TEST(JsonFieldReaderTest, ConvertsWhatJsoncppConvertsAndRefusesTheRest) {
  using Read = std::string (*)(JsonFieldReader&);
  const Read uint_read = [](JsonFieldReader& r) { return std::to_string(r.Uint("v")); };
  const Read int_read = [](JsonFieldReader& r) { return std::to_string(r.Int("v")); };
  const Read double_read = [](JsonFieldReader& r) { return std::to_string(r.Double("v")); };
  const Read bool_read = [](JsonFieldReader& r) { return std::to_string(r.Bool("v")); };
  const Read string_read = [](JsonFieldReader& r) { return r.String("v"); };
  const Read array_read = [](JsonFieldReader& r) { return std::to_string(r.Array("v").size()); };
  const Read object_read = [](JsonFieldReader& r) { return std::to_string(r.Object("v").size()); };
  const struct {
    const char* json;
    Read read;
    bool accepted;
    std::string value;
  } cases[] = {
      {nullptr, uint_read, true, "0"},         {"null", uint_read, true, "0"},
      {nullptr, string_read, true, ""},        {nullptr, object_read, true, "0"},
      {"4294967295", uint_read, true, "4294967295"},
      {"7.9", uint_read, true, "7"},           {"true", uint_read, true, "1"},
      {"-1", uint_read, false, "0"},           {"4294967296", uint_read, false, "0"},
      {"1e300", uint_read, false, "0"},        {"-0.5", uint_read, false, "0"},
      {R"("5")", uint_read, false, "0"},       {"{}", uint_read, false, "0"},
      {"2147483648", int_read, false, "0"},    {"-1e300", int_read, false, "0"},
      {R"("1.5")", double_read, false, std::to_string(0.0)},
      {"2", bool_read, true, "1"},             {R"("true")", bool_read, false, "0"},
      {"5", string_read, true, "5"},           {"[]", string_read, false, ""},
      {"[1,2]", array_read, true, "2"},        {R"({"a":1})", array_read, false, "0"},
      {R"({"a":1})", object_read, true, "1"},  {R"("x")", object_read, false, "0"},
  };
  for (const auto& c : cases) {
    const std::string text = c.json ? std::string(R"({"v":)") + c.json + "}" : "{}";
    LogCapture log;
    const Json::Value object = Parse(text);
    JsonFieldReader reader(object, kLabel);
    EXPECT_EQ(c.read(reader), c.value) << text;
    EXPECT_EQ(reader.ok(), c.accepted) << text;
    EXPECT_EQ(log.Errors().size(), c.accepted ? 0u : 1u) << text << "\n" << log.Dump();
    EXPECT_EQ(log.Count(R"(Invalid member "v")"), c.accepted ? 0u : 1u) << log.Dump();
  }
}

TEST(JsonFieldReaderTest, ErrorLineNamesFunctionMemberAndContext) {
  LogCapture log;
  const Json::Value object = Parse(R"({"thr":-3})");
  ScopedJsonContext file("file /x/modes.json");
  {
    ScopedJsonContext mode("mode \"Vivid\"");
    JsonFieldReader(object, kLabel).Uint("thr");
  }
  JsonFieldReader(object, kLabel, "Parse").Uint("thr");
  const std::string found = ": expected unsigned integer, found integer out of range";
  const std::vector<std::string> lines = log.Lines();
  ASSERT_EQ(lines.size(), 2u) << log.Dump();
  EXPECT_TRUE(IsLogLine(lines[0], "E", std::string(kLabel) + "::SetConfig",
                        R"(Invalid member "thr" in file /x/modes.json, mode "Vivid")" + found))
      << lines[0];
  EXPECT_TRUE(IsLogLine(lines[1], "E", std::string(kLabel) + "::Parse",
                        R"(Invalid member "thr" in file /x/modes.json)" + found))
      << lines[1];
}

TEST(JsonFieldReaderTest, NonObjectsNeverAbort) {
  LogCapture log;
  const Json::Value array = Parse(R"(["v"])");
  JsonFieldReader reader(array, kLabel);
  EXPECT_FALSE(reader.ok());
  EXPECT_EQ(reader.Uint("v"), 0u);
  EXPECT_EQ(log.Errors().size(), 1u) << log.Dump();
  for (const Json::Value& value : {Json::Value(3), Json::Value("v"), Json::Value(), array}) {
    EXPECT_EQ(FindMember(value, "v"), nullptr);
    EXPECT_FALSE(HasMember(value, "v"));
    EXPECT_TRUE(MemberNames(value).empty());
  }
  const Json::Value object = Parse(R"({"b":null,"a":1})");
  EXPECT_EQ(MemberNames(object), (std::vector<std::string>{"a", "b"}));
  EXPECT_NE(FindMember(object, "b"), nullptr);
  EXPECT_FALSE(HasMember(object, "b"));
  // Array elements are checked one by one; an index past the end reads as the default.
  const Json::Value list = Parse(R"(["1", 2])");
  JsonFieldReader elements(object, kLabel);
  EXPECT_EQ(elements.ElementUint(list, 1, "m"), 2u);
  EXPECT_EQ(elements.ElementUint(list, 9, "m"), 0u);
  EXPECT_TRUE(elements.ok());
  EXPECT_EQ(elements.ElementUint(list, 0, "m"), 0u);
  EXPECT_FALSE(elements.ok());
}

}  // namespace
}  // namespace vexa
