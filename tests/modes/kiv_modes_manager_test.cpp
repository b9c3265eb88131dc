#include "modes/kiv_modes_manager.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "assets/hw_asset_de.h"
#include "formats/hex_coding.h"
#include "support/fixture_writer.h"
#include "support/log_capture.h"
#include "support/mode_fixtures.h"

namespace vexa {
namespace {

using testing::LogCapture;
using testing::ModeWithDescr;
using testing::ParseReadable;

std::vector<std::string> Names(const KivModeList& modes) {
  std::vector<std::string> names;
  for (const auto& mode : modes) names.push_back(mode->descr()->name);
  return names;
}

KivModeDescr Base(const std::string& name, int32_t intent = 258) {
  return KivModeDescr{name, ColorPrimaries_DCIP3, Transfer_Gamma2_2, intent, "", 6500, kSdr, ""};
}

TEST(KivModesManagerTest, ModesAreDuplicatesExactlyWhenTheirSixIdentityFieldsAgree) {
  const struct {
    void (*change)(KivModeDescr&);
    bool duplicate;
  } cases[] = {
      {[](KivModeDescr& d) { d.name = "other"; }, true},
      {[](KivModeDescr& d) { d.render_intent_name = "other"; }, true},
      {[](KivModeDescr& d) { d.color_primaries = ColorPrimaries_BT709_5; }, false},
      {[](KivModeDescr& d) { d.gamma_transfer = Transfer_sRGB; }, false},
      {[](KivModeDescr& d) { d.render_intent = 259; }, false},
      {[](KivModeDescr& d) { d.white_point = 6501; }, false},
      {[](KivModeDescr& d) { d.dynamic_range = kHdr; }, false},
      {[](KivModeDescr& d) { d.merge_id = "1"; }, false},
  };
  for (const auto& c : cases) {
    KivModeDescr other = Base("B");
    c.change(other);
    EXPECT_EQ(KivModesManager::KivModeDescrCompare(Base("A"), other), c.duplicate);
    KivModesManager manager("panel");
    manager.AddModeToList(ModeWithDescr(Base("A")), false);
    manager.AddModeToList(ModeWithDescr(other), false);
    EXPECT_EQ(manager.mode_list()->modes.size(), c.duplicate ? 1u : 2u);
    EXPECT_EQ(manager.mode_list()->modes[0]->descr()->name, "A");
  }
}

TEST(KivModesManagerTest, AReplacingAddRemovesTheEqualModeAndAppends) {
  KivModesManager manager("panel");
  LogCapture log;
  for (const auto& [name, intent] : std::vector<std::pair<std::string, int>>{{"A", 1}, {"B", 2}, {"C", 3}}) {
    manager.AddModeToList(ModeWithDescr(Base(name, intent)), true);
  }
  manager.AddModeToList(ModeWithDescr(Base("A2", 1)), true);
  EXPECT_EQ(Names(manager.mode_list()->modes), (std::vector<std::string>{"B", "C", "A2"}));
  EXPECT_EQ(log.Count("I VexaJsonModeParser::KivModesManager::AddModeToList():100 Added A2 to mode list"), 1u);
  EXPECT_EQ(log.Infos().size(), 4u);
}

TEST(KivModesManagerTest, EveryFactoryFloorModeBecomesColorimetric) {
  KivModesManager manager("panel");
  KivModeList modes = {ModeWithDescr(Base("f1", 384)), ModeWithDescr(Base("x")), ModeWithDescr(Base("f2", 384))};
  LogCapture log;
  EXPECT_TRUE(manager.SetFactoryFloorModeAsDefault(modes));
  EXPECT_EQ(modes[0]->descr()->render_intent + modes[2]->descr()->render_intent, 2);
  EXPECT_EQ(modes[1]->descr()->render_intent, 258);
  EXPECT_EQ(log.Lines(), (std::vector<std::string>{
                             "I VexaJsonModeParser::KivModesManager::SetFactoryFloorModeAsDefault():110 "
                             "Set factory f1 mode as colorimetric",
                             "I VexaJsonModeParser::KivModesManager::SetFactoryFloorModeAsDefault():110 "
                             "Set factory f2 mode as colorimetric"}));
  EXPECT_FALSE(manager.SetFactoryFloorModeAsDefault(modes));
  KivModeList none;
  EXPECT_FALSE(manager.SetFactoryFloorModeAsDefault(none));
}

TEST(KivModesManagerTest, TheModeListJsonHoldsDescriptorWordsAndHexEncodedAssets) {
  KivModesManager empty("p");
  EXPECT_EQ(*empty.GetModeListJV(), ParseReadable(R"({"p": null})"));

  KivModesManager manager("p");
  const KivModeDescr odd{"Odd", ColorPrimaries(7), GammaTransfer(0), -5, "", 0, DynamicRange(0), ""};
  const KivModeDescr max{"Max", ColorPrimaries_Max, Transfer_Max, 384, "factory", 4294967295u, kHdr, "m"};
  manager.AddModeToList(ModeWithDescr(odd), false);
  manager.AddModeToList(ModeWithDescr(max), false);
  auto vivid = testing::ParseReadableMode("Vivid", R"({"Applicability": {"ColorPrimaries": "sRGB",
      "GammaTransfer": "2p2"}, "PostBlendDE": {"enable": true, "sharp": 4}, "PostBlendHdrBlob": {"blob": "b"}})");
  manager.AddModeToList(vivid, false);
  std::shared_ptr<Json::Value> list = manager.GetModeListJV();

  Json::Value expected = ParseReadable(R"({"p": {
      "Odd": {"Applicability": {"ColorPrimaries": "P3", "GammaTransfer": "sRGB", "RenderIntent": -5,
                                "RenderIntentName": ""}, "MergeId": "", "DynamicRange": "SDR"},
      "Max": {"Applicability": {"ColorPrimaries": "ColorPrimaries_MAX", "GammaTransfer": "Transfer_MAX",
                                "RenderIntent": 384, "RenderIntentName": "factory"},
              "MergeId": "m", "DynamicRange": "HDR"},
      "Vivid": {"Applicability": {"ColorPrimaries": "sRGB", "GammaTransfer": "2p2", "RenderIntent": 0,
                                  "RenderIntentName": ""}, "MergeId": "", "DynamicRange": "SDR"}}})");
  expected["p"]["Odd"]["WhitePoint"] = 0u;  // unsigned, as written
  expected["p"]["Max"]["WhitePoint"] = 4294967295u;
  expected["p"]["Vivid"]["WhitePoint"] = 0u;
  // Assets travel as hex of their compact JSON text.
  const std::pair<const char*, std::string> assets[] = {
      {"PostBlendDE", testing::CompactText(*vivid->GetDe()->AsJV())},
      {"PostBlendHdrBlob", "{\"blob\":\"b\"}\n"}};
  for (const auto& [key, text] : assets) {
    std::string hex;
    EncodeData(text, hex);
    expected["p"]["Vivid"][key] = hex;
  }
  EXPECT_EQ(*list, expected) << list->toStyledString();
}

}  // namespace
}  // namespace vexa
