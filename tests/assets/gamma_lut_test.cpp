// The inverse-gamma and gamma assets: inline tables, shared tables by name, payloads of the
// class-wide entry count.
#include "assets/gamma_lut.h"

#include <gtest/gtest.h>

#include <tuple>

#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_igc.h"
#include "support/asset_json.h"

namespace vexa {
namespace {

using testing::Compact;
using testing::LogCapture;
using testing::Numbers;
using testing::ParseJson;
using Entries = std::vector<uint32_t>;

constexpr char kSample[] = R"({"enable":true,"lutR":[1,2,3],"lutG":[4,5,6],"lutB":[7,8,9]})";

// A refused section leaves the asset as it was.
TEST(GammaLutTest, InlineTablesNeedEqualSizesOfOneTo1024) {
  const std::tuple<uint32_t, uint32_t, const char*> cases[] = {  // red and green size, blue size, error
      {1024, 1024, ""},
      {1025, 1025, "SetConfig(): Invalid number of entries 1025"},
      {0, 0, "SetConfig(): Invalid number of entries 0"},
      {3, 4, "SetConfig(): Lut size in Json does not match"}};
  for (const auto& [size, blue_size, error] : cases) {
    Json::Value section = ParseJson(R"({"enable":true})");
    section["lutR"] = section["lutG"] = Numbers(size, 0);
    section["lutB"] = Numbers(blue_size, 0);
    HwAssetGC asset(0, nullptr);
    asset.SetConfig(ParseJson(kSample));
    LogCapture log;
    asset.SetConfig(section);
    EXPECT_EQ(Compact(*asset.AsJV()), *error ? Compact(kSample) : Compact(section));
    testing::ExpectOneLine(log, "E", "VexaJsonModeParser::HwAssetGC", error);
  }
}

// The first entry of each channel, or nothing when the block ended up off. In the common data
// ("c" unless `with_common` is off), GC tables have 1024 entries and IGC tables 3: "p" counts
// from 0 in every channel, "c" from 1, 2 and 3 in red, green and blue.
template <typename Asset>
Entries FirstEntries(const std::string& members, bool with_common) {
  Json::Value common;
  for (auto [section, count] : {std::pair{"PostBlendGC", 1024u}, {"PostBlendIGC", 3u}}) {
    common[section]["numEntries"] = count;
    common[section]["Predefined"]["p"] = Numbers(count, 0, true);
    for (auto [channel, first] : {std::pair{"lutR", 1u}, {"lutG", 2u}, {"lutB", 3u}}) {
      common[section]["Custom"]["c"][channel] = Numbers(count, first, true);
    }
  }
  Asset asset(3, with_common ? std::make_shared<HwAssetsCommonData>(common) : nullptr);
  asset.SetConfig(ParseJson(R"({"enable":true,)" + members + "}"));
  const GammaPostBlendConfig& record = asset.config();
  if (!record.enable) return {};
  return {record.lut_r.at(0), record.lut_g.at(0), record.lut_b.at(0)};
}

TEST(GammaLutTest, SharedTablesByNamePredefinedFirst) {
  const std::tuple<bool, bool, const char*, Entries, const char*> cases[] = {
      // GC (else IGC), with common data, members, first entries, error
      {true, true, R"("numEntries":1024,"Predefined":"p","Custom":"c")", {0, 0, 0}, ""},
      {true, true, R"("numEntries":1024,"Custom":"c")", {1, 2, 3}, ""},
      {true, true, R"("numEntries":1024,"Predefined":"x","Custom":"c")", {},
       "Failed to retrieve GC LUTs from common data"},
      {true, true, R"("numEntries":1023,"Predefined":"p")", {},
       "Unexpected number of entries 1023, expecting 1024"},
      {false, true, R"("numEntries":1023,"Predefined":"p")", {0, 0, 0}, ""},  // IGC takes the shared count
      {false, false, R"("Predefined":"p")", {}, "Failed to retrieve IGC LUTs from common data"},
  };
  for (const auto& [gc, common, members, firsts, error] : cases) {
    LogCapture log;
    EXPECT_EQ((gc ? FirstEntries<HwAssetGC> : FirstEntries<HwAssetIGC>)(members, common), firsts) << members;
    testing::ExpectOneLine(log, "E", "", error);
  }
}

// Entries past a table's end repeat its last entry (zeros for an empty table); the count is the
// class-wide one when the payload is made, at most what the block takes. Switching off keeps the
// tables (not the IGC dither) for a later merge to take.
TEST(GammaLutTest, PayloadHoldsTheClassWideEntryCountAndIdentityKeepsTables) {
  struct Reset {
    ~Reset() { HwAssetIGC::size_ = HwAssetGC::size_ = 0; }
  } reset;
  auto filled = std::make_shared<HwAssetIGC>(0, nullptr);
  Json::Value sample = ParseJson(kSample);
  sample["ditherStrength"] = 5;
  filled->SetConfig(sample);
  const HwAssetGC empty(0, nullptr);
  Entries capped = {4, 5};
  capped.resize(kMaxGammaEntries, 6);
  const std::tuple<uint32_t, const HwAsset*, Entries> cases[] = {  // count, asset, green table
      {2, filled.get(), {4, 5}},
      {6, filled.get(), {4, 5, 6, 6, 6, 6}},
      {3, &empty, {0, 0, 0}},
      {5000, filled.get(), capped}};
  for (const auto& [size, asset, lut_g] : cases) {
    HwAssetIGC::size_ = HwAssetGC::size_ = size;
    const auto record = std::static_pointer_cast<GammaPostBlendConfig>(asset->AsPayload()->config);
    EXPECT_EQ(record->lut_g, lut_g) << size;
    EXPECT_TRUE(record->lut_r.size() == lut_g.size() && record->lut_b.size() == lut_g.size()) << size;
  }
  filled->SetIdentity();
  const HwAssetIGC taken(kiv_mode_merge_caps::KivPostBlendIGCMergeOp::kLeftOperand, filled, nullptr);
  EXPECT_TRUE(taken.config().lut_b == (Entries{7, 8, 9}) && !taken.config().enable);
  EXPECT_EQ(taken.config().dither_strength, 0u);
}

}  // namespace
}  // namespace vexa
