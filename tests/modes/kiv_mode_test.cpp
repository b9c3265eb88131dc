#include "modes/kiv_mode.h"

#include <gtest/gtest.h>

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
#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::ParseReadable;

// A mode straight from a definition whose assets are readable JSON; `tree` outlives it.
std::shared_ptr<KivMode> FromDefinition(Json::Value& tree, uint32_t version = 0,
                                        std::shared_ptr<HwAssetsCommonData> common = nullptr) {
  auto def = std::make_shared<KivModeDef>();
  def->descr = std::make_shared<KivModeDescr>();
  def->assets = &tree;
  def->asset_version = version;
  return std::make_shared<KivMode>(def, std::move(common));
}

TEST(KivModeTest, MakesOneAssetOfTheKeysOwnClassPerKnownKey) {
  Json::Value tree = ParseReadable(R"({
      "PostBlendIGC": {"enable": false}, "PostBlendGC": {"enable": true, "lutR": [1], "lutG": [2], "lutB": [3]},
      "PostBlendPCC": {"enable": true}, "PostBlendGamut": {"enable": false},
      "PostBlendDither": {"enable": true, "strengthG": 4}, "PostBlendDE": {"enable": true, "sharp": 9},
      "PostBlendPa": {"hue": 3}, "PostBlendGameBlob": {"enable": true, "blob": "g"},
      "PostBlendPaDither": {"enable": true, "strength": 1}, "PostBlendHdrBlob": {"blob": "h"},
      "PostBlendMixerGc": {}, "PostBlendCWBDither": {}, "Applicability": {}, "postblendde": {}})");
  auto common = std::make_shared<HwAssetsCommonData>(Json::Value());
  testing::LogCapture log;
  auto mode = FromDefinition(tree, 2, common);
  const std::vector<std::pair<std::string, std::shared_ptr<HwAsset>>> getters = {
      {"PostBlendIGC", mode->GetIgc()},         {"PostBlendGC", mode->GetGc()},
      {"PostBlendPCC", mode->GetPcc()},         {"PostBlendGamut", mode->GetGamut()},
      {"PostBlendDither", mode->GetDither()},   {"PostBlendDE", mode->GetDe()},
      {"PostBlendPa", mode->GetPa()},           {"PostBlendGameBlob", mode->GetGameBlob()},
      {"PostBlendPaDither", mode->GetPaDither()}, {"PostBlendHdrBlob", mode->GetHdr()}};
  EXPECT_EQ(mode->assets().size(), getters.size());
  for (const auto& [key, asset] : getters) {
    ASSERT_TRUE(asset) << key;
    // The payload name comes from the asset's own class; its JSON shows it read its own section.
    EXPECT_EQ(asset->AsPayload()->name, key);
    std::shared_ptr<HwAsset> fresh = mode->MakeHwAsset(key);
    fresh->SetConfig(tree[key]);
    EXPECT_EQ(*asset->AsJV(), *fresh->AsJV()) << key;
    EXPECT_EQ(asset->asset_version(), 2u);
    EXPECT_EQ(asset->common_data(), common);
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  EXPECT_FALSE(mode->MakeHwAsset("PostBlendMixerGc"));

  std::vector<std::string> names;
  const auto payloads = mode->GetPayloads();
  for (const auto& payload : *payloads) names.push_back(payload->name);
  EXPECT_EQ(names, (std::vector<std::string>{"PostBlendDE", "PostBlendDither", "PostBlendGC",
                                             "PostBlendGameBlob", "PostBlendGamut", "PostBlendHdrBlob",
                                             "PostBlendIGC", "PostBlendPCC", "PostBlendPa",
                                             "PostBlendPaDither"}));
}

TEST(KivModeTest, SettersStoreWhatTheyAreGivenAndTheAssetsJsonIsCachedOnceFilled) {
  Json::Value tree = ParseReadable(R"({"PostBlendDE": {"enable": true, "sharp": 5}})");
  auto mode = FromDefinition(tree);
  EXPECT_FALSE(mode->GetGamut());
  auto dither = std::make_shared<HwAssetDither>(0, nullptr);
  mode->SetDither(dither);
  EXPECT_EQ(mode->GetDither(), dither);
  mode->SetDe(nullptr);  // kept as a null entry, which yields neither payload nor JSON
  EXPECT_EQ(mode->assets().count("PostBlendDE"), 1u);
  ASSERT_EQ(mode->GetPayloads()->size(), 1u);
  const Json::Value first = mode->GetHwAssetsJV();
  EXPECT_EQ(first, ParseReadable(R"({"PostBlendDither": {"enable": false}})"));
  mode->SetDe(std::make_shared<HwAssetDE>(0, nullptr));
  EXPECT_EQ(mode->GetHwAssetsJV(), first);

  // Without assets nothing is cached, so an asset added later shows.
  Json::Value empty_tree(Json::objectValue);
  auto empty = FromDefinition(empty_tree);
  EXPECT_TRUE(empty->GetHwAssetsJV().empty());
  EXPECT_TRUE(empty->GetPayloads()->empty());
  empty->SetGc(std::make_shared<HwAssetGC>(0, nullptr));
  EXPECT_EQ(empty->GetHwAssetsJV(), ParseReadable(R"({"PostBlendGC": {"enable": false}})"));
}

}  // namespace
}  // namespace vexa
