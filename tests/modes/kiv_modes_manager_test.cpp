#include "modes/kiv_modes_manager.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "assets/hw_asset_de.h"
#include "formats/hex_coding.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"
#include "support/mode_fixtures.h"

namespace vexa {
namespace {

using testing::Descr;
using testing::LogCapture;
using testing::ModeWithDescr;
using testing::ParseReadable;

std::vector<std::string> Names(const KivModeList& modes) {
  std::vector<std::string> names;
  for (const auto& mode : modes) names.push_back(mode->descr()->name);
  return names;
}

KivModeDescr Base(const std::string& name) {
  return Descr(name, ColorPrimaries_DCIP3, Transfer_Gamma2_2, 258, 6500, kSdr, "");
}

TEST(KivModesManagerTest, DescriptorsAreEqualExactlyWhenTheSixIdentityFieldsAre) {
  const struct {
    const char* what;
    std::function<void(KivModeDescr&)> change;
    bool equal;
  } cases[] = {
      {"nothing", [](KivModeDescr&) {}, true},
      {"name", [](KivModeDescr& d) { d.name = "other"; }, true},
      {"render intent name", [](KivModeDescr& d) { d.render_intent_name = "other"; }, true},
      {"primaries", [](KivModeDescr& d) { d.color_primaries = ColorPrimaries_BT709_5; }, false},
      {"transfer", [](KivModeDescr& d) { d.gamma_transfer = Transfer_sRGB; }, false},
      {"intent", [](KivModeDescr& d) { d.render_intent = 259; }, false},
      {"white point", [](KivModeDescr& d) { d.white_point = 6501; }, false},
      {"dynamic range", [](KivModeDescr& d) { d.dynamic_range = kHdr; }, false},
      {"merge id", [](KivModeDescr& d) { d.merge_id = "1"; }, false},
      {"merge id prefix", [](KivModeDescr& d) { d.merge_id = std::string("\0", 1); }, false},
  };
  for (const auto& c : cases) {
    KivModeDescr a = Base("a");
    KivModeDescr b = Base("b");
    c.change(b);
    EXPECT_EQ(KivModesManager::KivModeDescrCompare(a, b), c.equal) << c.what;
    EXPECT_EQ(KivModesManager::KivModeDescrCompare(b, a), c.equal) << c.what;
  }
}

TEST(KivModesManagerTest, AddingKeepsTheFirstOfEqualModesOrMovesTheReplacementToTheEnd) {
  auto with_intent = [](const std::string& name, int32_t intent, const std::string& merge_id = "") {
    KivModeDescr d = Base(name);
    d.render_intent = intent;
    d.merge_id = merge_id;
    return ModeWithDescr(d);
  };
  const struct {
    const char* what;
    std::vector<std::pair<std::shared_ptr<KivMode>, bool>> adds;
    std::vector<std::string> expected;
  } cases[] = {
      {"equal without replace keeps the first",
       {{with_intent("A", 1), false}, {with_intent("A2", 1), false}}, {"A"}},
      {"equal with replace keeps the second",
       {{with_intent("A", 1), false}, {with_intent("A2", 1), true}}, {"A2"}},
      {"replacement moves to the end",
       {{with_intent("A", 1), true}, {with_intent("B", 2), true}, {with_intent("C", 3), true},
        {with_intent("A2", 1), true}},
       {"B", "C", "A2"}},
      {"merge ids '' and '1' differ",
       {{with_intent("A", 1, ""), false}, {with_intent("A1", 1, "1"), false}}, {"A", "A1"}},
      {"same name, other identity: both kept",
       {{with_intent("A", 1), false}, {with_intent("A", 2), false}}, {"A", "A"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    LogCapture log;
    KivModesManager manager("panel");
    for (const auto& [mode, replace] : c.adds) manager.AddModeToList(mode, replace);
    EXPECT_EQ(Names(manager.mode_list()->modes), c.expected);
    EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  }
}

TEST(KivModesManagerTest, AddingLogsUnderItsFixedLineAndDropsSilently) {
  KivModesManager manager("panel");
  {
    LogCapture log;
    manager.AddModeToList(ModeWithDescr(Base("Vivid")), false);
    manager.AddModeToList(ModeWithDescr(Base("Copy")), false);
    EXPECT_EQ(log.Lines(), std::vector<std::string>{"I VexaJsonModeParser::KivModesManager::"
                                                    "AddModeToList():100 Added Vivid to mode list"});
  }
  LogCapture quiet(1);
  manager.AddModeToList(ModeWithDescr(Base("Again")), true);
  EXPECT_EQ(Names(manager.mode_list()->modes), std::vector<std::string>{"Again"});
  EXPECT_TRUE(quiet.Lines().empty());
}

TEST(KivModesManagerTest, EveryFactoryFloorModeBecomesColorimetric) {
  KivModesManager manager("panel");
  KivModeList modes = {ModeWithDescr(Base("f1")), ModeWithDescr(Base("x")), ModeWithDescr(Base("f2"))};
  modes[0]->descr()->render_intent = 384;
  modes[2]->descr()->render_intent = 384;
  LogCapture log;
  EXPECT_TRUE(manager.SetFactoryFloorModeAsDefault(modes));
  EXPECT_EQ(modes[0]->descr()->render_intent, 1);
  EXPECT_EQ(modes[1]->descr()->render_intent, 258);
  EXPECT_EQ(modes[2]->descr()->render_intent, 1);
  EXPECT_EQ(log.Lines(),
            (std::vector<std::string>{
                "I VexaJsonModeParser::KivModesManager::SetFactoryFloorModeAsDefault():110 Set factory f1 mode as colorimetric",
                "I VexaJsonModeParser::KivModesManager::SetFactoryFloorModeAsDefault():110 Set factory f2 mode as colorimetric"}));

  EXPECT_FALSE(manager.SetFactoryFloorModeAsDefault(modes));  // none left
  EXPECT_EQ(modes[1]->descr()->render_intent, 258);
  KivModeList none;
  EXPECT_FALSE(manager.SetFactoryFloorModeAsDefault(none));
}

std::string DecodeHex(const Json::Value& hex) {
  std::string text;
  DecodeData(hex, text);
  return text;
}

TEST(KivModesManagerTest, ModeListJsonHasTheDescriptorWordsAndHexEncodedAssets) {
  KivModesManager manager("panelX");
  KivModeDescr odd = Descr("Odd", static_cast<ColorPrimaries>(7), static_cast<GammaTransfer>(0), -5, 0,
                           static_cast<DynamicRange>(0), "");
  KivModeDescr max = Descr("Max", ColorPrimaries_Max, Transfer_Max, 384, 4294967295u, kHdr, "m");
  max.render_intent_name = "factory";
  manager.AddModeToList(ModeWithDescr(odd), false);
  manager.AddModeToList(ModeWithDescr(max), false);
  std::shared_ptr<KivMode> vivid = testing::ParseReadableMode("Vivid", R"({
      "Applicability": {"RenderIntent": 258, "ColorPrimaries": "sRGB", "GammaTransfer": "2p2"},
      "DynamicRange": "SDR", "WhitePoint": 6500,
      "PostBlendDE": {"enable": true, "sharp": 4}, "PostBlendHdrBlob": {"blob": "b"}})");
  ASSERT_TRUE(vivid);
  manager.AddModeToList(vivid, false);

  std::shared_ptr<Json::Value> list = manager.GetModeListJV();
  ASSERT_TRUE(list);
  Json::Value expected = ParseReadable(R"({"panelX": {
      "Odd": {"Applicability": {"ColorPrimaries": "P3", "GammaTransfer": "sRGB", "RenderIntent": -5,
                                "RenderIntentName": ""},
              "WhitePoint": 0, "MergeId": "", "DynamicRange": "SDR"},
      "Max": {"Applicability": {"ColorPrimaries": "ColorPrimaries_MAX", "GammaTransfer": "Transfer_MAX",
                                "RenderIntent": 384, "RenderIntentName": "factory"},
              "WhitePoint": 4294967295, "MergeId": "m", "DynamicRange": "HDR"},
      "Vivid": {"Applicability": {"ColorPrimaries": "sRGB", "GammaTransfer": "2p2", "RenderIntent": 258,
                                  "RenderIntentName": ""},
                "WhitePoint": 6500, "MergeId": "", "DynamicRange": "SDR",
                "PostBlendDE": "", "PostBlendHdrBlob": ""}}})");
  // The assets travel as hex of their compact JSON text.
  const Json::Value& got_vivid = (*list)["panelX"]["Vivid"];
  ASSERT_TRUE(got_vivid["PostBlendDE"].isString());
  EXPECT_EQ(DecodeHex(got_vivid["PostBlendDE"]), testing::CompactText(*vivid->GetDe()->AsJV()));
  EXPECT_EQ(DecodeHex(got_vivid["PostBlendHdrBlob"]), "{\"blob\":\"b\"}\n");
  // White points are written as unsigned numbers, which the reader gives back as signed ones.
  for (const char* mode : {"Odd", "Max", "Vivid"}) {
    expected["panelX"][mode]["WhitePoint"] = expected["panelX"][mode]["WhitePoint"].asUInt();
  }
  expected["panelX"]["Vivid"]["PostBlendDE"] = got_vivid["PostBlendDE"];
  expected["panelX"]["Vivid"]["PostBlendHdrBlob"] = got_vivid["PostBlendHdrBlob"];
  EXPECT_EQ(*list, expected) << list->toStyledString();
  EXPECT_TRUE((*list)["panelX"]["Odd"]["Applicability"]["RenderIntent"].isInt());
  EXPECT_TRUE((*list)["panelX"]["Max"]["WhitePoint"].isUInt());
}

TEST(KivModesManagerTest, ModeListJsonOfAnEmptyListAndOfTwoModesOfOneName) {
  KivModesManager empty("p");
  EXPECT_EQ(*empty.GetModeListJV(), ParseReadable(R"({"p": null})"));

  KivModesManager manager("p");
  KivModeDescr first = Base("Same");
  first.merge_id = "1";
  KivModeDescr second = Base("Same");
  second.merge_id = "2";
  second.white_point = 5000;
  manager.AddModeToList(ModeWithDescr(first), false);
  manager.AddModeToList(ModeWithDescr(second), false);
  std::shared_ptr<Json::Value> list = manager.GetModeListJV();
  const Json::Value& same = (*list)["p"]["Same"];
  EXPECT_EQ(same["MergeId"], "2");
  EXPECT_EQ(same["WhitePoint"], Json::Value(5000u));
}

}  // namespace
}  // namespace vexa
