// What every asset shares, run over each asset class: write-back, identity, payload copy, merge
// by operation and refusal of wrong member types.
#include "assets/hw_asset_base.h"

#include <gtest/gtest.h>

#include "assets/hw_asset_de.h"
#include "assets/hw_asset_dither.h"
#include "assets/hw_asset_game_blob.h"
#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_hdr.h"
#include "assets/hw_asset_igc.h"
#include "assets/hw_asset_pa_dither.h"
#include "support/asset_json.h"
#include "support/log_capture.h"

namespace vexa {
namespace {

using namespace kiv_mode_merge_caps;
using testing::Compact;
using testing::CompactText;
using testing::LogCapture;
using testing::ParseJson;

template <typename A, typename Op>
struct Traits {
  using Asset = A;
  using MergeOp = Op;
  static constexpr const char* kOff = R"({"enable":false})";
};
// Each: a valid section, and members with a value of a type the member cannot take.
struct Dither : Traits<HwAssetDither, KivPostBlendDitherMergeOp> {
  static constexpr const char* kSample = R"({"enable":true,"ditherMode":"LUMA","strengthR":1,
      "strengthG":2,"strengthB":3,"temporalEnable":1,"matrix":[4,5,6]})";
  static constexpr const char* kBad[][2] = {{"enable", R"("yes")"}, {"temporalEnable", "-1"}, {"matrix", R"([1,"x"])"}};
};
struct PaDither : Traits<HwAssetPADither, KivPostBlendPaDitherMergeOp> {
  static constexpr const char* kSample = R"({"enable":true,"strength":5,"offsetEn":1,"matrix":[9]})";
  static constexpr const char* kBad[][2] = {{"strength", R"("5")"}, {"matrix", "7"}};
};
struct DE : Traits<HwAssetDE, KivPostBlendDEMergeOp> {
  static constexpr const char* kSample = R"({"enable":true,"flags":"DE_LPF_BLEND","sharp":-7,
      "thrQuiet":1,"thrDieout":2,"thrLow":3,"thrHigh":4,"clip":5,"deLpfHigh":6,"deLpfMid":7,
      "deLpfLow":8,"quality":"HIGH_QUALITY_GRAPHICS"})";
  static constexpr const char* kBad[][2] = {{"flags", "{}"}, {"sharp", "4294967295"}, {"deBlend", R"("1")"}};
};
struct Hdr : Traits<HwAssetHDR, KivPostBlendHdrBlobMergeOp> {
  static constexpr const char* kSample = R"({"blob":"0A1B"})";
  static constexpr const char* kOff = R"({"blob":""})";
  static constexpr const char* kBad[][2] = {{"blob", "[]"}};
};
struct GameBlob : Traits<HwAssetGameBlob, KivPostBlendGameBlobMergeOp> {
  static constexpr const char* kSample = R"({"enable":true,"blob":"7B7D"})";
  static constexpr const char* kBad[][2] = {{"enable", "{}"}, {"blob", "{}"}};
};
struct Igc : Traits<HwAssetIGC, KivPostBlendIGCMergeOp> {
  static constexpr const char* kSample = R"({"enable":true,"lutR":[1,2,3],"lutG":[4,5,6],
      "lutB":[7,8,9],"ditherStrength":2,"ditherEnable":true})";
  static constexpr const char* kBad[][2] = {{"lutR", R"("1,2,3")"}, {"lutG", R"([4,"5",6])"}, {"ditherEnable", "[]"}};
};
struct Gc : Traits<HwAssetGC, KivPostBlendGCMergeOp> {
  static constexpr const char* kSample = R"({"enable":true,"lutR":[1,2,3],"lutG":[4,5,6],"lutB":[7,8,9]})";
  static constexpr const char* kBad[][2] = {{"lutB", "[1,2,-3]"}};
};

template <typename T>
class HwAssetBaseTest : public ::testing::Test {
 protected:
  using Record = typename T::Asset::RecordType;
  // Gamma payloads hold the class-wide entry count: make it the samples' table length.
  void SetUp() override { HwAssetIGC::size_ = HwAssetGC::size_ = 3; }
  void TearDown() override { HwAssetIGC::size_ = HwAssetGC::size_ = 0; }

  static std::shared_ptr<typename T::Asset> Make(const char* json = nullptr) {
    auto asset = std::make_shared<typename T::Asset>(0u, nullptr);
    if (json != nullptr) asset->SetConfig(ParseJson(json));
    return asset;
  }
  // The JSON of an asset rebuilt from a payload's record.
  static std::string PayloadJson(const HwConfigPayload& payload) {
    auto rebuilt = Make();
    rebuilt->SetConfig(*std::static_pointer_cast<Record>(payload.config));
    return Compact(*rebuilt->AsJV());
  }
};
using AllAssets = ::testing::Types<Dither, PaDither, DE, Hdr, GameBlob, Igc, Gc>;
TYPED_TEST_SUITE(HwAssetBaseTest, AllAssets);

TYPED_TEST(HwAssetBaseTest, WritesBackWhatItReadsUntilSwitchedOff) {
  LogCapture log;
  EXPECT_EQ(Compact(*this->Make()->AsJV()), CompactText(TypeParam::kOff));
  auto asset = this->Make(TypeParam::kSample);
  EXPECT_EQ(Compact(*asset->AsJV()), CompactText(TypeParam::kSample));
  asset->SetConfig(ParseJson(R"({"enable":false})"));
  EXPECT_EQ(Compact(*asset->AsJV()), CompactText(TypeParam::kOff));
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TYPED_TEST(HwAssetBaseTest, PayloadIsACopyOfTheRecord) {
  using Asset = typename TypeParam::Asset;
  auto asset = this->Make(TypeParam::kSample);
  const std::shared_ptr<HwConfigPayload> payload = asset->AsPayload();
  ASSERT_TRUE(payload);
  EXPECT_EQ(payload->size, 56u);
  EXPECT_EQ(payload->name, Asset::kPayloadName);
  EXPECT_EQ(payload->config_size, Asset::kRecordLen);
  EXPECT_EQ(testing::RecordWord(*payload, 0), Asset::kRecordLen);
  const Json::Value sample = ParseJson(TypeParam::kSample);
  EXPECT_EQ(std::static_pointer_cast<typename TestFixture::Record>(payload->config)->enable,
            sample.get("enable", false).asBool());
  EXPECT_EQ(this->PayloadJson(*payload), Compact(sample));
  asset->SetIdentity();
  EXPECT_EQ(this->PayloadJson(*payload), Compact(sample));
}

TYPED_TEST(HwAssetBaseTest, MergesByOperation) {
  using Asset = typename TypeParam::Asset;
  enum Operand { kNull, kBlank, kSample };
  const struct {
    uint32_t op;
    Operand left, right;
    bool gives_sample;
    const char* error;
  } cases[] = {
      {1, kSample, kBlank, true, nullptr}, {2, kBlank, kSample, true, nullptr},
      {0, kSample, kSample, false, nullptr}, {9, kSample, kSample, false, nullptr},
      {1, kNull, kSample, false, "Merge Error: Source (left operand) is empty"},
      {2, kSample, kNull, false, "Merge Error: Source (right operand) is empty"},
  };
  auto operand = [this](Operand which) {
    return which == kNull ? nullptr : this->Make(which == kSample ? TypeParam::kSample : nullptr);
  };
  for (const auto& c : cases) {
    LogCapture log;
    Asset merged(static_cast<typename TypeParam::MergeOp>(c.op), operand(c.left), operand(c.right));
    EXPECT_EQ(Compact(*merged.AsJV()), CompactText(c.gives_sample ? TypeParam::kSample : TypeParam::kOff));
    ASSERT_EQ(log.Errors().size(), c.error == nullptr ? 0u : 1u) << "op " << c.op << log.Dump();
    if (c.error == nullptr) continue;
    EXPECT_TRUE(testing::IsLogLine(log.Errors()[0], "E", std::string(Asset::kLogLabel) + "::" + Asset::kClassName,
                                   std::string(Asset::kMergeName) + " " + c.error)) << log.Dump();
  }
}

TYPED_TEST(HwAssetBaseTest, RefusesWrongMemberTypes) {
  for (const auto& [key, value] : TypeParam::kBad) {
    Json::Value section = ParseJson(TypeParam::kSample);
    section[key] = ParseJson(std::string("[") + value + "]")[0];
    auto asset = this->Make(TypeParam::kSample);
    LogCapture log;
    asset->SetConfig(section);
    EXPECT_EQ(Compact(*asset->AsJV()), CompactText(TypeParam::kOff)) << key << " " << value;
    EXPECT_EQ(log.Errors().size(), 1u) << log.Dump();
    EXPECT_TRUE(log.Contains(std::string("Invalid member \"") + key + "\"")) << log.Dump();
  }
}

// The two blobs depart from the shared contract: HDR never reads or writes "enable", and a
// switched-off game blob keeps its text.
TEST(HwAssetBlobTest, HdrIgnoresEnableAndGameBlobKeepsItsTextWhenOff) {
  LogCapture log;
  for (const char* section : {R"({"enable":false,"blob":"AB"})", R"({"enable":"on","blob":"AB"})"}) {
    HwAssetHDR hdr(0, nullptr);
    hdr.SetConfig(ParseJson(section));
    EXPECT_EQ(Compact(*hdr.AsJV()), CompactText(R"({"blob":"AB"})")) << section;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  HwAssetGameBlob game(0, nullptr);
  game.SetConfig(ParseJson(R"({"enable":false,"blob":"7B7D"})"));
  EXPECT_EQ(Compact(*game.AsJV()), CompactText(R"({"enable":false})"));
  const auto record = std::static_pointer_cast<GameConfig>(game.AsPayload()->config);
  EXPECT_FALSE(record->enable);
  EXPECT_EQ(record->blob, "7B7D");
}

}  // namespace
}  // namespace vexa
