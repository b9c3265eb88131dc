#include "formats/json_access.h"

#include <gtest/gtest.h>

#include <tuple>

#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {

// Member "v" of {"v": <json>} read with one accessor: a refusal reads as the default, marks the
// unit refused and logs one error line naming the function, the member and what is being read.
TEST(JsonFieldReaderTest, ConvertsWhatJsoncppConvertsAndRefusesTheRest) {
  using Read = std::string (*)(JsonFieldReader&);
  const Read uint_read = [](JsonFieldReader& r) { return std::to_string(r.Uint("v")); };
  const Read bool_read = [](JsonFieldReader& r) { return std::to_string(r.Bool("v")); };
  const Read string_read = [](JsonFieldReader& r) { return r.String("v"); };
  const Read array_read = [](JsonFieldReader& r) { return std::to_string(r.Array("v").size()); };
  const Read object_read = [](JsonFieldReader& r) { return std::to_string(r.Object("v").size()); };
  const std::tuple<const char*, Read, std::string, bool> cases[] = {  // json, read, value, accepted
      {"null", uint_read, "0", true}, {"4294967295", uint_read, "4294967295", true},
      {"7.9", uint_read, "7", true}, {"4294967296", uint_read, "0", false},
      {"-1", uint_read, "0", false}, {R"("5")", uint_read, "0", false},
      {"2", bool_read, "1", true}, {R"("true")", bool_read, "0", false},
      {"5", string_read, "5", true}, {"[]", string_read, "", false},
      {"[1,2]", array_read, "2", true}, {R"({"a":1})", array_read, "0", false},
      {R"({"a":1})", object_read, "1", true}, {R"("x")", object_read, "0", false}};
  ScopedJsonContext file("file /x.json");
  for (const auto& [json, read, value, accepted] : cases) {
    testing::LogCapture log;
    const Json::Value object = testing::ParseReadable(std::string(R"({"v":)") + json + "}");
    JsonFieldReader reader(object, "VexaJsonModeParser::Test", "Parse");
    EXPECT_EQ(read(reader), value) << json;
    EXPECT_EQ(reader.ok(), accepted) << json;
    EXPECT_EQ(log.Errors().size(), accepted ? 0u : 1u) << json << "\n" << log.Dump();
    EXPECT_EQ(log.Count("E VexaJsonModeParser::Test::Parse():"), accepted ? 0u : 1u);
    EXPECT_EQ(log.Count(R"(Invalid member "v" in file /x.json: expected )"), accepted ? 0u : 1u);
  }
}

}  // namespace vexa
