#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "assets/hw_asset_de.h"
#include "assets/hw_asset_dither.h"
#include "assets/hw_asset_game_blob.h"
#include "assets/hw_asset_gamut.h"
#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_hdr.h"
#include "assets/hw_asset_igc.h"
#include "assets/hw_asset_pa.h"
#include "assets/hw_asset_pa_dither.h"
#include "assets/hw_asset_pcc.h"
#include "formats/hex_coding.h"
#include "formats/json_parser.h"
#include "modes/kiv_mode.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::EncodeModesFile;
using testing::LogCapture;
using testing::ModesFileText;
using testing::ParseReadable;

constexpr char kPanel[] = "panel";

// "first, first+step, ..." with `count` values.
std::string NumberList(uint32_t count, uint32_t first, uint32_t step) {
  std::string text;
  for (uint32_t i = 0; i < count; ++i) {
    if (i > 0) text += ",";
    text += std::to_string(first + i * step);
  }
  return text;
}

std::vector<std::string> Names(const std::vector<std::shared_ptr<KivMode>>& modes) {
  std::vector<std::string> names;
  for (const auto& mode : modes) names.push_back(mode->descr()->name);
  return names;
}

// A version-3 file: shared GC, IGC and gamut tables, and modes using every asset kind.
Json::Value WholeFile() {
  Json::Value file = ParseReadable(R"({
    "Version": 3,
    "Common": {
      "PostBlendGC": {"numEntries": 1024, "Predefined": {}},
      "PostBlendIGC": {"numEntries": 257, "Custom": {"igcA": {}}},
      "PostBlendGamut": {"numEntries": 4913, "Custom": {}}
    },
    "panel": {
      "Vivid": {
        "Applicability": {"RenderIntent": 258, "GammaTransfer": "2p2", "ColorPrimaries": "P3",
                          "RenderIntentName": "vivid"},
        "WhitePoint": 7000, "MergeId": "v", "DynamicRange": "HDR",
        "PostBlendGC": {"enable": true, "numEntries": 1024, "Predefined": "gc22"},
        "PostBlendIGC": {"enable": true, "numEntries": 257, "Custom": "igcA",
                         "ditherEnable": true, "ditherStrength": 3},
        "PostBlendGamut": {"enable": true, "numEntries": 4913, "Custom": "p3"},
        "PostBlendPCC": {"enable": true, "R": {"r": 0.9}, "G": {"g": 1.0}, "B": {"b": 0.8, "c": 0.25}},
        "PostBlendPa": {"hue": 12, "sat": 0.5}
      },
      "Natural": {
        "Applicability": {"RenderIntent": 0, "GammaTransfer": "sRGB", "ColorPrimaries": "sRGB"},
        "PostBlendDE": {"enable": true, "flags": "SHARPNESS", "sharp": -3, "clip": 70000},
        "PostBlendDither": {"enable": true, "ditherMode": "LUMA", "strengthR": 2, "matrix": [1, 2, 3]},
        "PostBlendPaDither": {"enable": true, "strength": 5, "matrix": [4]},
        "PostBlendHdrBlob": {"blob": "hdr-text"},
        "PostBlendGameBlob": {"enable": true, "blob": "game-text"},
        "PostBlendMixerGc": {"enable": true},
        "SomethingNew": {"enable": true}
      }
    }})");
  file["Common"]["PostBlendGC"]["Predefined"]["gc22"] = NumberList(1024, 0, 4);
  Json::Value& igc = file["Common"]["PostBlendIGC"]["Custom"]["igcA"];
  igc["lutR"] = NumberList(257, 0, 16);
  igc["lutG"] = NumberList(257, 1, 16);
  igc["lutB"] = NumberList(257, 2, 16);
  file["Common"]["PostBlendGamut"]["Custom"]["p3"] = NumberList(3 * 4913, 0, 1);
  return file;
}

TEST(ModesFileTest, ReadsAWholeFileWithSharedTablesAndEveryAssetKind) {
  LogCapture log;
  auto modes = json_parser::parse_modes(ModesFileText(WholeFile(), kPanel), kPanel);
  ASSERT_TRUE(modes);
  ASSERT_EQ(Names(*modes), (std::vector<std::string>{"Natural", "Vivid"}));
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  EXPECT_FALSE(log.Contains("is not latest")) << log.Dump();
  EXPECT_TRUE(log.Contains("Parsed Natural"));
  EXPECT_TRUE(log.Contains("Parsed Vivid"));

  const KivMode& natural = *(*modes)[0];
  const KivMode& vivid = *(*modes)[1];
  const KivModeDescr& d = *vivid.descr();
  EXPECT_EQ(d.render_intent, 258);
  EXPECT_EQ(d.gamma_transfer, Transfer_Gamma2_2);
  EXPECT_EQ(d.color_primaries, ColorPrimaries_DCIP3);
  EXPECT_EQ(d.render_intent_name, "vivid");
  EXPECT_EQ(d.white_point, 7000u);
  EXPECT_EQ(d.merge_id, "v");
  EXPECT_EQ(d.dynamic_range, kHdr);
  EXPECT_EQ(vivid.asset_version(), 3u);
  ASSERT_TRUE(vivid.common_data());
  EXPECT_EQ(vivid.common_data(), natural.common_data());  // one table set per file

  // Shared tables reached the assets that name them.
  ASSERT_TRUE(vivid.GetGc());
  EXPECT_TRUE(vivid.GetGc()->config().enable);
  ASSERT_EQ(vivid.GetGc()->config().lut_r.size(), 1024u);
  EXPECT_EQ(vivid.GetGc()->config().lut_b[1023], 4092u);
  ASSERT_TRUE(vivid.GetIgc());
  ASSERT_EQ(vivid.GetIgc()->config().lut_g.size(), 257u);
  EXPECT_EQ(vivid.GetIgc()->config().lut_g[2], 33u);
  EXPECT_EQ(vivid.GetIgc()->config().dither_strength, 3u);
  ASSERT_TRUE(vivid.GetGamut());
  EXPECT_TRUE(vivid.GetGamut()->config().enable);
  EXPECT_EQ(vivid.GetGamut()->config().num_entries, 4913u);
  EXPECT_EQ(vivid.GetGamut()->config().entries[4912].out_2, 3u * 4913 - 1);
  ASSERT_TRUE(vivid.GetPcc());
  EXPECT_DOUBLE_EQ(vivid.GetPcc()->config().coeffs.blue.c, 0.25);
  ASSERT_TRUE(vivid.GetPa());
  EXPECT_EQ(vivid.GetPa()->config().global.hue, 12);
  EXPECT_EQ(vivid.assets().size(), 5u);

  ASSERT_TRUE(natural.GetDe());
  EXPECT_EQ(natural.GetDe()->config().sharp, -3);
  EXPECT_EQ(natural.GetDe()->config().clip, 70000 % 65536);
  ASSERT_TRUE(natural.GetDither());
  EXPECT_EQ(natural.GetDither()->config().mode, 1u);
  EXPECT_EQ(natural.GetDither()->config().matrix_size, 3u);
  ASSERT_TRUE(natural.GetPaDither());
  EXPECT_EQ(natural.GetPaDither()->config().strength, 5u);
  ASSERT_TRUE(natural.GetHdr());
  EXPECT_EQ(natural.GetHdr()->config().blob, "hdr-text");
  ASSERT_TRUE(natural.GetGameBlob());
  EXPECT_EQ(natural.GetGameBlob()->config().blob, "game-text");
  // The mixer GC section and the unknown section make no asset.
  EXPECT_EQ(natural.assets().size(), 5u);
  EXPECT_EQ(natural.assets().count("PostBlendMixerGc"), 0u);
}

TEST(ModesFileTest, ModesComeOutInAscendingByteOrderOfTheirNames) {
  auto modes = json_parser::parse_modes(
      ModesFileText(R"({"Version": 3, "panel": {"b": {}, "B": {}, "a": {}, "_": {}, "A": {}, "10": {}, "9": {}}})",
                    kPanel),
      kPanel);
  ASSERT_TRUE(modes);
  EXPECT_EQ(Names(*modes), (std::vector<std::string>{"10", "9", "A", "B", "_", "a", "b"}));
}

TEST(ModesFileTest, AModeWithoutDescriptorMembersTakesTheDefaults) {
  auto modes = json_parser::parse_modes(ModesFileText(R"({"Version": 3, "panel": {"m": {}}})", kPanel),
                                        kPanel);
  ASSERT_TRUE(modes);
  ASSERT_EQ(modes->size(), 1u);
  const KivModeDescr& d = *(*modes)[0]->descr();
  EXPECT_EQ(d.name, "m");
  EXPECT_EQ(d.render_intent, 0);
  EXPECT_EQ(d.gamma_transfer, Transfer_sRGB);
  EXPECT_EQ(d.color_primaries, ColorPrimaries_BT709_5);
  EXPECT_EQ(d.dynamic_range, kSdr);
  EXPECT_EQ(d.white_point, 0u);
  EXPECT_EQ(d.merge_id, "");
  EXPECT_EQ(d.render_intent_name, "");
  EXPECT_TRUE((*modes)[0]->assets().empty());
}

TEST(ModesFileTest, OldVersionsWarnAndIgnoreTheSharedTables) {
  const struct {
    const char* version;  // member text, empty for none
    bool warns;
    int logged;
  } cases[] = {{"", true, 0}, {R"("Version": 2,)", true, 2}, {R"("Version": 3,)", false, 3}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.version);
    // A shared table that does not decode voids a version-3 file but is never looked at below 3.
    Json::Value file = EncodeModesFile(
        ParseReadable(std::string("{") + c.version + R"("panel": {"m": {}}})"), kPanel);
    file["Common"]["PostBlendGC"] = "not hex";
    LogCapture log;
    auto modes = json_parser::parse_modes(testing::CompactText(file), kPanel);
    const std::string warning = "Modes file version " + std::to_string(c.logged) + " is not latest (3)";
    EXPECT_EQ(log.Contains(warning), c.warns) << log.Dump();
    if (c.warns) {
      ASSERT_TRUE(modes);
      EXPECT_EQ(modes->size(), 1u);
      EXPECT_FALSE((*modes)[0]->common_data());
      EXPECT_TRUE(log.Errors().empty()) << log.Dump();
    } else {
      EXPECT_FALSE(modes);
      EXPECT_TRUE(log.Contains("unable to decode common data \"PostBlendGC\"")) << log.Dump();
    }
  }
}

std::string DeepJson(size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

std::string HexOfText(const std::string& text) {
  std::string hex;
  EncodeData(text, hex);
  return hex;
}

TEST(ModesFileTest, AFileThatCannotBeUsedGivesNoModesAtAll) {
  const Json::Value good_mode = ParseReadable(R"({"PostBlendDE": {"enable": true}})");
  const struct {
    const char* what;
    std::function<std::string()> text;
  } cases[] = {
      {"not JSON", [] { return std::string(R"({"Version": 3, "panel": {)"); }},
      {"empty", [] { return std::string(); }},
      {"nested too deep", [] { return R"({"panel": )" + DeepJson(1000) + "}"; }},
      {"root is an array", [] { return std::string("[{}]"); }},
      {"Version is a string", [] { return std::string(R"({"Version": "3", "panel": {}})"); }},
      {"Version is negative", [] { return std::string(R"({"Version": -3, "panel": {}})"); }},
      {"panel is an array", [] { return std::string(R"({"Version": 3, "panel": []})"); }},
      {"Common is a string", [] { return std::string(R"({"Version": 3, "Common": "00", "panel": {}})"); }},
      {"a shared table is not hex of JSON", [] {
         return std::string(R"({"Version": 3, "Common": {"PostBlendGC": "7B7B"}, "panel": {}})");
       }},
      {"a shared table is an object", [] {
         return std::string(R"({"Version": 3, "Common": {"PostBlendGC": {}}, "panel": {}})");
       }},
      {"a shared table is nested too deep", [] {
         return R"({"Version": 3, "Common": {"PostBlendGC": ")" + HexOfText(DeepJson(1001)) +
                R"("}, "panel": {}})";
       }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    LogCapture log;
    EXPECT_FALSE(json_parser::parse_modes(c.text(), kPanel));
  }
}

TEST(ModesFileTest, WithoutModesForThePanelTheListIsEmptyNotNull) {
  for (const char* text : {R"({"Version": 3})", R"({"Version": 3, "panel": {}})",
                           R"({"Version": 3, "panel": null, "other": {"m": {}}})"}) {
    SCOPED_TRACE(text);
    auto modes = json_parser::parse_modes(text, kPanel);
    ASSERT_TRUE(modes);
    EXPECT_TRUE(modes->empty());
  }
}

TEST(ModesFileTest, ABadModeIsDroppedWithAnErrorNamingItWhileTheOthersLoad) {
  const struct {
    const char* what;
    std::function<void(Json::Value&)> spoil;  // applied to the encoded "Bad" mode
    const char* error;
  } cases[] = {
      {"section not hex of JSON", [](Json::Value& m) { m["PostBlendGC"] = "7B22"; },
       "Unable to populate decoded PostBlendGC asset into json value object in mode \"Bad\""},
      {"section empty", [](Json::Value& m) { m["PostBlendGC"] = ""; },
       "Unable to populate decoded PostBlendGC asset"},
      {"section null", [](Json::Value& m) { m["PostBlendGC"] = Json::Value(); },
       "Unable to populate decoded PostBlendGC asset"},
      {"unknown member not hex", [](Json::Value& m) { m["Comment"] = "hello"; },
       "Unable to populate decoded Comment asset"},
      {"section nested too deep", [](Json::Value& m) { m["PostBlendDE"] = HexOfText(DeepJson(1001)); },
       "Unable to populate decoded PostBlendDE asset"},
      {"section is an object", [](Json::Value& m) { m["PostBlendGC"] = ParseReadable(R"({"enable": true})"); },
       "\"PostBlendGC\" in mode \"Bad\": expected string of hex text, found object"},
      {"section is a number", [](Json::Value& m) { m["PostBlendDE"] = 7; }, "\"PostBlendDE\""},
      {"WhitePoint is a string", [](Json::Value& m) { m["WhitePoint"] = "D65"; }, "\"WhitePoint\""},
      {"MergeId is an array", [](Json::Value& m) { m["MergeId"] = Json::Value(Json::arrayValue); }, "\"MergeId\""},
      {"DynamicRange is an object", [](Json::Value& m) { m["DynamicRange"] = Json::Value(Json::objectValue); },
       "\"DynamicRange\""},
      {"Applicability is a string", [](Json::Value& m) { m["Applicability"] = "P3"; }, "\"Applicability\""},
      {"RenderIntent is negative", [](Json::Value& m) { m["Applicability"]["RenderIntent"] = -1; },
       "\"RenderIntent\""},
      {"GammaTransfer is an object", [](Json::Value& m) { m["Applicability"]["GammaTransfer"] = Json::Value(Json::objectValue); },
       "\"GammaTransfer\""},
      {"RenderIntentName is an array", [](Json::Value& m) { m["Applicability"]["RenderIntentName"] = Json::Value(Json::arrayValue); },
       "\"RenderIntentName\""},
      {"the mode is an array", [](Json::Value& m) { m = Json::Value(Json::arrayValue); }, "mode \"Bad\""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Json::Value file = EncodeModesFile(ParseReadable(R"({"Version": 3, "panel": {
        "Bad": {"PostBlendDE": {"enable": true}}, "Good": {"PostBlendDE": {"enable": true}}}})"),
                                       kPanel);
    c.spoil(file[kPanel]["Bad"]);
    LogCapture log;
    auto modes = json_parser::parse_modes(testing::CompactText(file), kPanel);
    ASSERT_TRUE(modes);
    EXPECT_EQ(Names(*modes), std::vector<std::string>{"Good"});
    ASSERT_EQ(log.Errors().size(), 1u) << log.Dump();
    EXPECT_NE(log.Errors()[0].find(c.error), std::string::npos) << log.Dump();
    EXPECT_TRUE(log.Contains("unable to instantiate KivMode for Bad")) << log.Dump();
  }
}

TEST(ModesFileTest, AssetErrorLinesNameTheModeAndTheSection) {
  LogCapture log;
  auto modes = json_parser::parse_modes(
      ModesFileText(R"({"Version": 3, "panel": {"Vivid": {"PostBlendDE": {"enable": true, "sharp": "x"}}}})",
                    kPanel),
      kPanel);
  ASSERT_TRUE(modes);
  ASSERT_EQ(modes->size(), 1u);  // a refused section costs only its own block
  ASSERT_TRUE((*modes)[0]->GetDe());
  EXPECT_FALSE((*modes)[0]->GetDe()->config().enable);
  ASSERT_EQ(log.Errors().size(), 1u) << log.Dump();
  EXPECT_NE(log.Errors()[0].find("\"sharp\" in mode \"Vivid\", section \"PostBlendDE\""),
            std::string::npos)
      << log.Dump();
}

TEST(ModesFileTest, ParseModeLeavesTheParsedSectionsInTheModeTree) {
  Json::Value file = EncodeModesFile(ParseReadable(R"({"panel": {"m": {
      "WhitePoint": 6500, "PostBlendDE": {"enable": true, "sharp": 2}, "PostBlendMixerGc": [1, 2]}}})"),
                                     kPanel);
  Json::Value& mode_value = file[kPanel]["m"];
  ASSERT_TRUE(mode_value["PostBlendDE"].isString());
  uint32_t version = 2;
  auto mode = json_parser::parse_mode(mode_value, "m", "ignored", version, nullptr);
  ASSERT_TRUE(mode);
  EXPECT_EQ(mode_value["PostBlendDE"], ParseReadable(R"({"enable": true, "sharp": 2})"));
  EXPECT_EQ(mode_value["PostBlendMixerGc"], ParseReadable("[1, 2]"));
  EXPECT_EQ(mode_value["WhitePoint"], 6500);
  EXPECT_EQ(mode->asset_version(), 2u);
  EXPECT_EQ(mode->GetDe()->config().sharp, 2);
}

}  // namespace
}  // namespace vexa
