// The inverse-gamma and gamma assets: inline tables, shared tables by name, payloads of the
// class-wide entry count.
#include "assets/gamma_lut.h"

#include <gtest/gtest.h>

#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_igc.h"
#include "support/asset_json.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using testing::Compact;
using testing::CompactText;
using testing::LogCapture;
using testing::ParseJson;
using Entries = std::vector<uint32_t>;

constexpr char kSample[] = R"({"enable":true,"lutR":[1,2,3],"lutG":[4,5,6],"lutB":[7,8,9]})";

std::string Section(Json::ArrayIndex r, Json::ArrayIndex g, Json::ArrayIndex b) {
  Json::Value section = ParseJson(R"({"enable":true,"lutR":[],"lutG":[],"lutB":[]})");
  for (auto [key, count] : {std::pair{"lutR", r}, {"lutG", g}, {"lutB", b}}) {
    for (Json::ArrayIndex i = 0; i < count; ++i) section[key].append(i);
  }
  return Compact(section);
}

TEST(GammaLutTest, InlineTablesNeedEqualSizesOfOneTo1024) {
  const struct {
    std::string section;
    const char* error;  // null: accepted
  } cases[] = {
      {Section(1024, 1024, 1024), nullptr}, {Section(1025, 1025, 1025), "Invalid number of entries 1025"},
      {Section(0, 0, 0), "Invalid number of entries 0"}, {Section(3, 3, 4), "Lut size in Json does not match"},
  };
  for (const auto& c : cases) {
    HwAssetGC asset(0, nullptr);
    asset.SetConfig(ParseJson(kSample));
    LogCapture log;
    asset.SetConfig(ParseJson(c.section));
    // A refused table leaves the asset as it was.
    EXPECT_EQ(Compact(*asset.AsJV()), CompactText(c.error ? kSample : c.section.c_str()));
    ASSERT_EQ(log.Errors().size(), c.error ? 1u : 0u) << log.Dump();
    if (c.error == nullptr) continue;
    EXPECT_TRUE(testing::IsLogLine(log.Errors()[0], "E", "VexaJsonModeParser::HwAssetGC::SetConfig", c.error));
  }
}

std::string NumberList(uint32_t count, uint32_t first) {
  std::string text;
  for (uint32_t i = 0; i < count; ++i) text += (i ? "," : "") + std::to_string(first + i);
  return text;
}

// GC tables of 1024 entries, IGC tables of 3: "p" counts from 0 in every channel, "c" from 1, 2
// and 3 in red, green and blue.
std::shared_ptr<HwAssetsCommonData> Common() {
  Json::Value common;
  for (auto [section, count] : {std::pair{"PostBlendGC", 1024u}, {"PostBlendIGC", 3u}}) {
    common[section]["numEntries"] = count;
    common[section]["Predefined"]["p"] = NumberList(count, 0);
    for (auto [channel, first] : {std::pair{"lutR", 1u}, {"lutG", 2u}, {"lutB", 3u}}) {
      common[section]["Custom"]["c"][channel] = NumberList(count, first);
    }
  }
  return std::make_shared<HwAssetsCommonData>(common);
}

// The first entry of each channel, or nothing when the block ended up off.
template <typename Asset>
Entries FirstEntries(const std::string& members, std::shared_ptr<HwAssetsCommonData> common) {
  Asset asset(3, std::move(common));
  asset.SetConfig(ParseJson(R"({"enable":true,)" + members + "}"));
  const GammaPostBlendConfig& record = asset.config();
  if (!record.enable) return {};
  return {record.lut_r.at(0), record.lut_g.at(0), record.lut_b.at(0)};
}

TEST(GammaLutTest, SharedTablesByNamePredefinedFirst) {
  const auto common = Common();
  const char* kGcFailed = "Failed to retrieve GC LUTs from common data";
  const struct {
    bool gc, with_common;
    const char* members;
    Entries firsts;
    const char* error;
  } cases[] = {
      {true, true, R"("numEntries":1024,"Predefined":"p","Custom":"c")", {0, 0, 0}, nullptr},
      {true, true, R"("numEntries":1024,"Custom":"c")", {1, 2, 3}, nullptr},
      {true, true, R"("numEntries":1024,"Predefined":"x","Custom":"c")", {}, kGcFailed},
      {true, false, R"("numEntries":1024,"Predefined":"p")", {}, kGcFailed},
      {true, true, R"("numEntries":1023,"Predefined":"p")", {}, "Unexpected number of entries 1023, expecting 1024"},
      {false, true, R"("numEntries":1023,"Predefined":"p")", {0, 0, 0}, nullptr},
      {false, true, R"("Predefined":"x","Custom":"c")", {}, "Failed to retrieve IGC LUTs from common data"},
      {false, true, R"("Predefined":["p"])", {}, "Invalid member \"Predefined\""},
  };
  for (const auto& c : cases) {
    LogCapture log;
    const auto used = c.with_common ? common : nullptr;
    EXPECT_EQ(c.gc ? FirstEntries<HwAssetGC>(c.members, used) : FirstEntries<HwAssetIGC>(c.members, used),
              c.firsts) << c.members;
    ASSERT_EQ(log.Errors().size(), c.error ? 1u : 0u) << log.Dump();
    EXPECT_TRUE(c.error == nullptr || log.Contains(c.error)) << log.Dump();
  }
  HwAssetIGC igc(3, common);  // a shared table is written back inline
  igc.SetConfig(ParseJson(R"({"enable":true,"Custom":"c","ditherStrength":4,"ditherEnable":true})"));
  EXPECT_EQ(Compact(*igc.AsJV()), CompactText(R"({"enable":true,"lutR":[1,2,3],"lutG":[2,3,4],
      "lutB":[3,4,5],"ditherStrength":4,"ditherEnable":true})"));
}

Entries Padded(Entries head, size_t size) {
  head.resize(size, head.back());
  return head;
}

// Entries past a table's end repeat its last entry (zeros for an empty table); the count is the
// class-wide one when the payload is made, at most what the block takes.
TEST(GammaLutTest, PayloadHoldsTheClassWideEntryCount) {
  struct Reset {
    ~Reset() { HwAssetIGC::size_ = HwAssetGC::size_ = 0; }
  } reset;
  HwAssetIGC filled(0, nullptr);
  filled.SetConfig(ParseJson(kSample));
  const HwAssetGC empty(0, nullptr);
  const struct {
    uint32_t size;
    const HwAsset* asset;
    Entries lut_g;
  } cases[] = {
      {2, &filled, {4, 5}}, {6, &filled, {4, 5, 6, 6, 6, 6}}, {0, &filled, {}}, {3, &empty, {0, 0, 0}},
      {256, &filled, Padded({4, 5, 6}, 256)}, {5000, &filled, Padded({4, 5, 6}, kMaxGammaEntries)},
  };
  for (const auto& c : cases) {
    HwAssetIGC::size_ = HwAssetGC::size_ = c.size;
    const auto record = std::static_pointer_cast<GammaPostBlendConfig>(c.asset->AsPayload()->config);
    EXPECT_EQ(record->lut_g, c.lut_g) << "size " << c.size;
    EXPECT_EQ(record->lut_r.size(), c.lut_g.size());
    EXPECT_EQ(record->lut_b.size(), c.lut_g.size());
  }
}

// Switching off keeps the tables (not the IGC dither) for a later merge to take.
TEST(GammaLutTest, IdentityKeepsTablesForLaterMerges) {
  auto igc = std::make_shared<HwAssetIGC>(0, nullptr);
  igc->SetConfig(ParseJson(R"({"enable":true,"lutR":[1],"lutG":[2],"lutB":[3],"ditherStrength":5})"));
  igc->SetIdentity();
  EXPECT_EQ(igc->config().dither_strength, 0u);
  const HwAssetIGC taken(kiv_mode_merge_caps::KivPostBlendIGCMergeOp::kLeftOperand, igc, nullptr);
  EXPECT_EQ(taken.config().lut_b, Entries{3});
  EXPECT_FALSE(taken.config().enable);
}

}  // namespace
}  // namespace vexa
