#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "assets/hw_asset_de.h"
#include "assets/hw_asset_gamut.h"
#include "assets/hw_asset_gc.h"
#include "formats/hex_coding.h"
#include "formats/json_parser.h"
#include "modes/kiv_mode.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::EncodeModesFile;
using testing::LogCapture;
using testing::ParseReadable;

std::string Hex(const std::string& text) {
  std::string hex;
  EncodeData(text, hex);
  return hex;
}

std::string Deep(size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

std::vector<std::string> Names(const std::shared_ptr<std::vector<std::shared_ptr<KivMode>>>& modes) {
  std::vector<std::string> names;
  for (const auto& mode : *modes) names.push_back(mode->descr()->name);
  return names;
}

TEST(ModesFileTest, ReadsModesInByteOrderWithTheirDescriptorsAndSharedTables) {
  Json::Value file = ParseReadable(R"({"Version": 3,
    "Common": {"PostBlendGC": {"numEntries": 1024, "Predefined": {}},
               "PostBlendGamut": {"numEntries": 4913, "Custom": {}}},
    "panel": {
      "vivid": {"Applicability": {"RenderIntent": 258, "GammaTransfer": "2p2", "ColorPrimaries": "P3",
                                  "RenderIntentName": "vivid"},
                "WhitePoint": 7000, "MergeId": "v", "DynamicRange": "HDR",
                "PostBlendGC": {"enable": true, "numEntries": 1024, "Predefined": "gc22"},
                "PostBlendGamut": {"enable": true, "numEntries": 4913, "Custom": "p3"}},
      "Natural": {"PostBlendDE": {"enable": true, "sharp": -3}, "PostBlendMixerGc": {}, "New": {}}}})");
  std::string gc = "0", gamut = "0";
  for (uint32_t i = 1; i < 1024; ++i) gc += "," + std::to_string(4 * i);
  for (uint32_t i = 1; i < 3 * 4913; ++i) gamut += "," + std::to_string(i);
  file["Common"]["PostBlendGC"]["Predefined"]["gc22"] = gc;
  file["Common"]["PostBlendGamut"]["Custom"]["p3"] = gamut;
  LogCapture log;
  auto modes = json_parser::parse_modes(testing::CompactText(EncodeModesFile(file, "panel")), "panel");
  ASSERT_TRUE(modes);
  ASSERT_EQ(Names(modes), (std::vector<std::string>{"Natural", "vivid"}));
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  EXPECT_TRUE(log.Contains("Parsed vivid"));
  EXPECT_FALSE(log.Contains("is not latest"));

  const KivMode& natural = *(*modes)[0];
  const KivMode& vivid = *(*modes)[1];
  const KivModeDescr& d = *vivid.descr();
  EXPECT_EQ(d.render_intent_name + "|" + d.merge_id, "vivid|v");
  EXPECT_EQ(d.render_intent, 258);
  EXPECT_EQ(d.gamma_transfer, Transfer_Gamma2_2);
  EXPECT_EQ(d.color_primaries, ColorPrimaries_DCIP3);
  EXPECT_EQ(d.white_point, 7000u);
  EXPECT_EQ(d.dynamic_range, kHdr);
  EXPECT_EQ(vivid.asset_version(), 3u);
  ASSERT_TRUE(vivid.common_data());
  EXPECT_EQ(vivid.common_data(), natural.common_data());  // one set of tables per file
  EXPECT_EQ(vivid.GetGc()->config().lut_b.at(1023), 4092u);
  EXPECT_EQ(vivid.GetGamut()->config().entries[4912].out_2, 3u * 4913 - 1);
  // Missing descriptor members take the defaults; sections that make no asset are skipped.
  const KivModeDescr& n = *natural.descr();
  EXPECT_EQ(n.render_intent + n.white_point + n.merge_id.size() + n.render_intent_name.size(), 0u);
  EXPECT_EQ(n.gamma_transfer, Transfer_sRGB);
  EXPECT_EQ(n.color_primaries, ColorPrimaries_BT709_5);
  EXPECT_EQ(n.dynamic_range, kSdr);
  EXPECT_EQ(natural.assets().size(), 1u);
  EXPECT_EQ(natural.GetDe()->config().sharp, -3);
}

TEST(ModesFileTest, OldVersionsWarnAndNeverLookAtTheSharedTables) {
  for (int version : {-1, 2, 3}) {  // -1: no "Version" member
    Json::Value file = ParseReadable(R"({"panel": {"m": {}}, "Common": {"PostBlendGC": "not hex"}})");
    if (version >= 0) file["Version"] = version;
    LogCapture log;
    auto modes = json_parser::parse_modes(testing::CompactText(file), "panel");
    const int logged = version < 0 ? 0 : version;
    EXPECT_EQ(log.Contains("Modes file version " + std::to_string(logged) + " is not latest (3)"), version < 3);
    // A table that does not decode voids a version-3 file, and is ignored below 3.
    EXPECT_EQ(modes == nullptr, version == 3);
    EXPECT_EQ(log.Contains("unable to decode common data \"PostBlendGC\""), version == 3) << log.Dump();
  }
}

TEST(ModesFileTest, AnUnusableFileGivesNoListAndAFileWithoutModesAnEmptyOne) {
  const struct {
    std::string text;
    bool has_list;
  } cases[] = {
      {R"({"Version": 3, "panel": {)", false},
      {R"({"panel": )" + Deep(1000) + "}", false},
      {"[{}]", false},
      {R"({"Version": "3"})", false},
      {R"({"panel": []})", false},
      {R"({"Version": 3, "Common": "00"})", false},
      {R"({"Version": 3, "Common": {"PostBlendGC": {}}})", false},
      {R"({"Version": 3, "Common": {"PostBlendGC": ")" + Hex(Deep(1001)) + R"("}})", false},
      {R"({"Version": 3, "Common": {"PostBlendGC": null}})", true},
      {R"({"Version": 3, "panel": {}, "other": {"m": {}}})", true},
  };
  for (const auto& c : cases) {
    LogCapture log;
    auto modes = json_parser::parse_modes(c.text, "panel");
    EXPECT_EQ(modes ? static_cast<int>(modes->size()) : -1, c.has_list ? 0 : -1) << c.text;
  }
}

TEST(ModesFileTest, ABadModeIsDroppedWithAnErrorNamingItWhileTheOthersLoad) {
  const struct {
    const char* member;
    Json::Value value;
    const char* error;
  } cases[] = {
      {"PostBlendGC", "7B22", "Unable to populate decoded PostBlendGC asset into json value object in mode \"Bad\""},
      {"Comment", Json::Value(), "Unable to populate decoded Comment asset"},
      {"PostBlendDE", Hex(Deep(1001)), "Unable to populate decoded PostBlendDE asset"},
      {"PostBlendGC", Json::Value(Json::objectValue), "\"PostBlendGC\" in mode \"Bad\": expected string of hex text"},
      {"WhitePoint", "D65", "\"WhitePoint\" in mode \"Bad\""},
      {"MergeId", Json::Value(Json::arrayValue), "\"MergeId\""},
      {"Applicability", "P3", "\"Applicability\""},
      {"Applicability", ParseReadable(R"({"RenderIntent": -1})"), "\"RenderIntent\""},
  };
  for (const auto& c : cases) {
    Json::Value file = EncodeModesFile(
        ParseReadable(R"({"Version": 3, "panel": {"Bad": {"PostBlendDE": {"enable": true}}, "Good": {}}})"),
        "panel");
    file["panel"]["Bad"][c.member] = c.value;
    LogCapture log;
    auto modes = json_parser::parse_modes(testing::CompactText(file), "panel");
    ASSERT_TRUE(modes);
    EXPECT_EQ(Names(modes), std::vector<std::string>{"Good"}) << c.error;
    ASSERT_EQ(log.Errors().size(), 1u) << log.Dump();
    EXPECT_NE(log.Errors()[0].find(c.error), std::string::npos) << log.Dump();
    EXPECT_TRUE(log.Contains("unable to instantiate KivMode for Bad"));
  }
}

TEST(ModesFileTest, SectionsAreDecodedInPlaceAndAssetErrorsNameModeAndSection) {
  Json::Value file = EncodeModesFile(ParseReadable(R"({"panel": {"m": {
      "WhitePoint": 6500, "PostBlendDE": {"enable": true, "sharp": "x"}, "PostBlendMixerGc": [1]}}})"),
                                     "panel");
  Json::Value& mode_value = file["panel"]["m"];
  uint32_t version = 2;
  LogCapture log;
  auto mode = json_parser::parse_mode(mode_value, "m", "", version, nullptr);
  ASSERT_TRUE(mode);
  EXPECT_EQ(mode_value, ParseReadable(R"({"WhitePoint": 6500, "PostBlendMixerGc": [1],
                                          "PostBlendDE": {"enable": true, "sharp": "x"}})"));
  EXPECT_EQ(mode->asset_version(), 2u);
  EXPECT_FALSE(mode->GetDe()->config().enable);  // a refused section costs only its own block
  ASSERT_EQ(log.Errors().size(), 1u) << log.Dump();
  EXPECT_NE(log.Errors()[0].find("\"sharp\" in mode \"m\", section \"PostBlendDE\""), std::string::npos);
}

}  // namespace
}  // namespace vexa
