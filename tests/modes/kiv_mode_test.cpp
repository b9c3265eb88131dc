#include "modes/kiv_mode.h"

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
#include "support/fixture_writer.h"
#include "support/log_capture.h"
#include "support/payload_spy.h"

namespace vexa {
namespace {

using testing::ParseReadable;

struct Built {
  std::shared_ptr<KivModeDef> def;
  std::shared_ptr<KivMode> mode;
};

// A mode straight from a definition whose assets are readable JSON (already decoded).
Built FromDefinition(const std::string& assets, uint32_t version = 0,
                     std::shared_ptr<HwAssetsCommonData> common = nullptr) {
  static std::vector<std::unique_ptr<Json::Value>> trees;  // outlive the definitions
  trees.push_back(std::make_unique<Json::Value>(ParseReadable(assets)));
  auto def = std::make_shared<KivModeDef>();
  def->descr = std::make_shared<KivModeDescr>();
  def->descr->name = "m";
  def->assets = trees.back().get();
  def->asset_version = version;
  return {def, std::make_shared<KivMode>(def, std::move(common))};
}

// Every asset key with the getter that returns its asset.
const std::vector<std::pair<std::string, std::function<std::shared_ptr<HwAsset>(const KivMode&)>>>&
Getters() {
  static const std::vector<std::pair<std::string, std::function<std::shared_ptr<HwAsset>(const KivMode&)>>> kGetters = {
      {"PostBlendIGC", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetIgc()); }},
      {"PostBlendGC", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetGc()); }},
      {"PostBlendPCC", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetPcc()); }},
      {"PostBlendGamut", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetGamut()); }},
      {"PostBlendDither", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetDither()); }},
      {"PostBlendDE", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetDe()); }},
      {"PostBlendPa", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetPa()); }},
      {"PostBlendGameBlob", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetGameBlob()); }},
      {"PostBlendPaDither", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetPaDither()); }},
      {"PostBlendHdrBlob", [](const KivMode& m) { return std::shared_ptr<HwAsset>(m.GetHdr()); }},
  };
  return kGetters;
}

constexpr char kAllTenAssets[] = R"({
    "PostBlendIGC": {"enable": false}, "PostBlendGC": {"enable": false},
    "PostBlendPCC": {"enable": true, "R": {"r": 1.0}}, "PostBlendGamut": {"enable": false},
    "PostBlendDither": {"enable": true, "strengthG": 4}, "PostBlendDE": {"enable": true, "sharp": 9},
    "PostBlendPa": {"hue": 3}, "PostBlendGameBlob": {"enable": true, "blob": "g"},
    "PostBlendPaDither": {"enable": true, "strength": 1}, "PostBlendHdrBlob": {"blob": "h"},
    "PostBlendMixerGc": {"enable": true}, "PostBlendCWBDither": {"enable": true},
    "HwCapIgcDither": {"enable": true}, "Applicability": {"RenderIntent": 1}, "postblendde": {}})";

TEST(KivModeTest, MakesOneAssetOfTheKeysOwnClassPerKnownKey) {
  testing::LogCapture log;
  Built built = FromDefinition(kAllTenAssets);
  const KivMode& mode = *built.mode;
  EXPECT_EQ(mode.assets().size(), 10u);
  for (const auto& [key, get] : Getters()) {
    SCOPED_TRACE(key);
    std::shared_ptr<HwAsset> asset = get(mode);
    ASSERT_TRUE(asset);
    EXPECT_EQ(asset, mode.assets().at(key));
    // The payload name comes from the asset's own class, so it tells which class was made.
    ASSERT_TRUE(asset->AsPayload());
    EXPECT_EQ(asset->AsPayload()->name, key);
    // Each asset read its own section.
    std::shared_ptr<HwAsset> fresh = mode.MakeHwAsset(key);
    ASSERT_TRUE(fresh);
    fresh->SetConfig((*built.def->assets)[key]);
    EXPECT_EQ(*asset->AsJV(), *fresh->AsJV());
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TEST(KivModeTest, IgnoresKeysThatMakeNoAssetAndKeepsTheDefinitionsDescriptor) {
  auto common = std::make_shared<HwAssetsCommonData>(Json::Value());
  Built built = FromDefinition(
      R"({"PostBlendIGC": {"enable": false}, "PostBlendMixerGc": {"enable": true}, "Unknown": 1})", 3,
      common);
  const KivMode& mode = *built.mode;
  ASSERT_EQ(mode.assets().size(), 1u);
  ASSERT_TRUE(mode.GetIgc());
  EXPECT_EQ(mode.descr(), built.def->descr);  // shared, not copied
  EXPECT_EQ(mode.asset_version(), 3u);
  EXPECT_EQ(mode.GetIgc()->asset_version(), 3u);
  EXPECT_EQ(mode.GetIgc()->common_data(), common);
  for (const auto& [key, get] : Getters()) {
    if (key != "PostBlendIGC") {
      EXPECT_FALSE(get(mode)) << key;
    }
  }
  EXPECT_EQ(mode.MakeHwAsset("PostBlendMixerGc"), nullptr);
  EXPECT_EQ(mode.MakeHwAsset("postblendigc"), nullptr);
}

TEST(KivModeTest, SettersInsertOrReplaceAndStoreNullAsGiven) {
  Built built = FromDefinition(R"({"PostBlendGC": {"enable": false}})");
  KivMode& mode = *built.mode;
  auto gc = std::make_shared<HwAssetGC>(0, nullptr);
  auto dither = std::make_shared<HwAssetDither>(0, nullptr);
  mode.SetGc(gc);
  mode.SetDither(dither);
  EXPECT_EQ(mode.GetGc(), gc);
  EXPECT_EQ(mode.GetDither(), dither);
  mode.SetGc(nullptr);
  EXPECT_EQ(mode.assets().count("PostBlendGC"), 1u);
  EXPECT_FALSE(mode.GetGc());
  // A null entry contributes no payload and no JSON.
  auto payloads = mode.GetPayloads();
  ASSERT_EQ(payloads->size(), 1u);
  EXPECT_EQ((*payloads)[0]->name, "PostBlendDither");
  EXPECT_FALSE(mode.GetHwAssetsJV().isMember("PostBlendGC"));
}

TEST(KivModeTest, PayloadsFollowByteWiseKeyOrder) {
  Built built = FromDefinition(kAllTenAssets);
  auto payloads = built.mode->GetPayloads();
  std::vector<std::string> names;
  for (const auto& payload : *payloads) names.push_back(payload->name);
  EXPECT_EQ(names, (std::vector<std::string>{
                       "PostBlendDE", "PostBlendDither", "PostBlendGC", "PostBlendGameBlob",
                       "PostBlendGamut", "PostBlendHdrBlob", "PostBlendIGC", "PostBlendPCC",
                       "PostBlendPa", "PostBlendPaDither"}));
  EXPECT_TRUE(FromDefinition("{}").mode->GetPayloads()->empty());
}

TEST(KivModeTest, PayloadExportRunsTwiceWhenItYieldsAndTheSecondResultIsKept) {
  auto yielding = std::make_shared<testing::PayloadSpyCounter>();
  auto silent = std::make_shared<testing::PayloadSpyCounter>();
  Built built = FromDefinition("{}");
  KivMode& mode = *built.mode;
  mode.SetIgc(testing::MakePayloadSpy(true, yielding));
  auto payloads = mode.GetPayloads();
  EXPECT_EQ(yielding->calls, 2);
  ASSERT_EQ(payloads->size(), 1u);
  EXPECT_EQ((*payloads)[0]->config_size, 2u);

  mode.SetIgc(testing::MakePayloadSpy(false, silent));
  EXPECT_TRUE(mode.GetPayloads()->empty());
  EXPECT_EQ(silent->calls, 1);
}

TEST(KivModeTest, AssetsJsonIsComputedOnceThenCached) {
  Built built = FromDefinition(R"({"PostBlendDE": {"enable": true, "sharp": 5}, "PostBlendIGC": {"enable": false}})");
  KivMode& mode = *built.mode;
  const Json::Value first = mode.GetHwAssetsJV();
  EXPECT_EQ(first.getMemberNames(), (std::vector<std::string>{"PostBlendDE", "PostBlendIGC"}));
  EXPECT_EQ(first["PostBlendDE"], *mode.GetDe()->AsJV());
  EXPECT_EQ(first["PostBlendIGC"], ParseReadable(R"({"enable": false})"));

  mode.SetIgc(nullptr);
  mode.SetGc(std::make_shared<HwAssetGC>(0, nullptr));
  EXPECT_EQ(mode.GetHwAssetsJV(), first);
  EXPECT_EQ(&mode.GetHwAssetsJV(), &mode.GetHwAssetsJV());

  // Without assets nothing is cached, so an asset added later shows.
  Built empty = FromDefinition("{}");
  EXPECT_TRUE(empty.mode->GetHwAssetsJV().empty());
  empty.mode->SetDe(std::make_shared<HwAssetDE>(0, nullptr));
  EXPECT_EQ(empty.mode->GetHwAssetsJV(), ParseReadable(R"({"PostBlendDE": {"enable": false}})"));
}

}  // namespace
}  // namespace vexa
