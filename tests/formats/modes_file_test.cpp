#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "assets/hw_asset_gc.h"
#include "formats/json_parser.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::LogCapture;
using Names = std::vector<std::string>;

TEST(ModesFileTest, ReadsModesInByteOrderWithTheSharedTablesAndTheFilesVersion) {
  Json::Value file = testing::ParseReadable(R"({"Version": 3, "Common": {"PostBlendGC": {"numEntries": 1024}},
    "panel": {"vivid": {"PostBlendGC": {"enable": true, "numEntries": 1024, "Predefined": "gc22"}},
              "Natural": {"PostBlendDE": {"enable": true, "sharp": "x"}, "PostBlendMixerGc": {}, "New": {}}}})");
  std::string gc = "0";
  for (uint32_t i = 1; i < 1024; ++i) gc += "," + std::to_string(4 * i);
  file["Common"]["PostBlendGC"]["Predefined"]["gc22"] = gc;
  LogCapture log;
  auto modes = json_parser::parse_modes(testing::CompactText(testing::EncodeModesFile(file, "panel")), "panel");
  ASSERT_TRUE(modes && modes->size() == 2);
  const KivMode& natural = *(*modes)[0];  // byte order: upper case first
  const KivMode& vivid = *(*modes)[1];
  EXPECT_EQ(natural.descr()->name + vivid.descr()->name, "Naturalvivid");
  EXPECT_TRUE(log.Contains("Parsed vivid"));
  // A refused section costs only its own block; sections that make no asset are skipped.
  EXPECT_EQ(log.Errors().size(), 1u) << log.Dump();
  EXPECT_TRUE(log.Contains("\"sharp\" in mode \"Natural\", section \"PostBlendDE\"")) << log.Dump();
  EXPECT_EQ(natural.assets().size(), 1u);
  // One set of shared tables per file, reaching the assets along with the file's version.
  EXPECT_EQ(vivid.common_data(), natural.common_data());
  EXPECT_EQ(vivid.GetGc()->asset_version(), 3u);
  EXPECT_EQ(vivid.GetGc()->config().lut_b.at(1023), 4092u);
}

// The modes kept ("(none)": no list at all) and the line that says why, for each kind of flaw.
TEST(ModesFileTest, AFlawVoidsTheFileOrDropsOnlyItsModeAndIsNamed) {
  const std::tuple<std::string, Names, std::string> cases[] = {  // text, modes kept, a line logged
      // Below version 3 the shared tables are never looked at.
      {R"({"Version": 2, "panel": {"m": {}}, "Common": 7})", {"m"}, "Modes file version 2 is not latest (3)"},
      {R"({"Version": 3, "panel": {"m": {}}, "Common": {"PostBlendGC": "7B"}})", {"(none)"},
       "unable to decode common data \"PostBlendGC\""},
      {R"({"Version": "3"})", {"(none)"}, "\"Version\""},
      {R"({"panel": []})", {"(none)"}, "\"panel\""},
      {R"({"Version": 3, "panel": {)", {"(none)"}, ""},
      {R"({"Version": 3, "Common": {"PostBlendGC": null}, "other": {"m": {}}})", {}, ""},
      {R"({"Version": 3, "panel": {"Bad": {"PostBlendGC": "7B22"}, "Good": {}}})", {"Good"},
       "Unable to populate decoded PostBlendGC asset into json value object in mode \"Bad\""},
      {R"({"Version": 3, "panel": {"Bad": {"PostBlendGC": {}}, "Good": {}}})", {"Good"},
       "\"PostBlendGC\" in mode \"Bad\": expected string of hex text"},
      {R"({"Version": 3, "panel": {"Bad": {"Applicability": {"RenderIntent": -1}}, "Good": {}}})", {"Good"},
       "\"RenderIntent\" in mode \"Bad\""},
  };
  for (const auto& [text, kept, line] : cases) {
    LogCapture log;
    auto modes = json_parser::parse_modes(text, "panel");
    Names names = modes ? Names{} : Names{"(none)"};
    for (const auto& mode : modes ? *modes : KivModeList{}) names.push_back(mode->descr()->name);
    EXPECT_EQ(names, kept) << text;
    EXPECT_LE(log.Errors().size(), 1u) << log.Dump();
    EXPECT_TRUE(line.empty() || log.Contains(line)) << text << "\n" << log.Dump();
  }
}

// The "Unknown member" lines logged while parsing `text`.
Names UnknownMemberLines(const std::string& text, uint32_t log_level) {
  LogCapture log(log_level);
  auto modes = json_parser::parse_modes(text, "panel");
  EXPECT_TRUE(modes && modes->size() == 1u) << text;
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  Names lines;
  for (const std::string& line : log.Lines()) {
    const size_t at = line.find("Unknown member");
    if (at != std::string::npos) lines.push_back(line.substr(at));
  }
  return lines;
}

// A member that the library does not know is named at the verbose level, with the known member a
// slip or two away; known members, sections that make no asset included, pass without a word.
TEST(ModesFileTest, AnUnknownModeMemberIsNamedWithTheNearestKnownName) {
  const std::tuple<std::string, std::string, std::string> cases[] = {  // member, value, suggestion
      {"Applicability", R"({"RenderIntent": 1})", ""}, {"WhitePoint", "6500", ""},
      {"MergeId", R"("a")", ""}, {"DynamicRange", R"("HDR")", ""}, {"PostBlendGamut", "{}", ""},
      {"PostBlendHdrBlob", "{}", ""}, {"PostBlendMixerGc", "{}", ""}, {"HwCapIgcDither", "{}", ""},
      {"Whitepoint", "{}", "WhitePoint"}, {"PostBlendGama", "{}", "PostBlendGamut"},
      {"PostBlendIgc", "{}", "PostBlendIGC"}, {"MergeIdx", "{}", "MergeId"},
      {"postblendgc", "{}", "-"}, {"Notes", "[]", "-"},  // "-": too far from every name
  };
  for (const auto& [member, value, suggestion] : cases) {
    const std::string readable = R"({"Version": 3, "panel": {"m": {")" + member + "\": " + value + "}}}";
    const std::string text = testing::CompactText(testing::EncodeModesFile(testing::ParseReadable(readable), "panel"));
    Names expected;
    if (!suggestion.empty()) {
      expected.push_back("Unknown member \"" + member + "\" in mode \"m\" ignored" +
                         (suggestion == "-" ? "" : " (did you mean \"" + suggestion + "\"?)"));
    }
    EXPECT_EQ(UnknownMemberLines(text, 2), expected) << member;
    EXPECT_EQ(UnknownMemberLines(text, 1), Names{}) << member;
  }
}

}  // namespace
}  // namespace vexa
