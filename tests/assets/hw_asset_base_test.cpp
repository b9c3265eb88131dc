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

namespace vexa {
namespace {

using namespace kiv_mode_merge_caps;
using testing::Compact;
using testing::LogCapture;
using testing::ParseJson;

// Each: a valid section, the section written back when off, and a member with a value of a
// type the member cannot take.
template <typename A, typename Op, const char* const (&kTexts)[4]>
struct Traits {
  using Asset = A;
  using MergeOp = Op;
  static constexpr const char* const (&kText)[4] = kTexts;
  static constexpr const char* kSample = kTexts[0];
};
constexpr char kOff[] = R"({"enable":false})";
constexpr const char* kDither[] = {R"({"enable":true,"ditherMode":"LUMA","strengthR":1,"strengthG":2,"strengthB":3,
    "temporalEnable":1,"matrix":[4,5,6]})", kOff, "matrix", R"([1,"x"])"};
constexpr const char* kPaDither[] = {R"({"enable":true,"strength":5,"offsetEn":1,"matrix":[9]})", kOff, "strength", R"("5")"};
constexpr const char* kDE[] = {R"({"enable":true,"flags":"DE_LPF_BLEND","sharp":-7,"thrQuiet":1,"thrDieout":2,
    "thrLow":3,"thrHigh":4,"clip":5,"deLpfHigh":6,"deLpfMid":7,"deLpfLow":8,"quality":"HIGH_QUALITY_GRAPHICS"})",
                               kOff, "sharp", "4294967295"};
constexpr const char* kHdr[] = {R"({"blob":"0A1B"})", R"({"blob":""})", "blob", "[]"};
constexpr const char* kGameBlob[] = {R"({"enable":true,"blob":"7B7D"})", kOff, "enable", "{}"};
constexpr const char* kIgc[] = {R"({"enable":true,"lutR":[1,2,3],"lutG":[4,5,6],"lutB":[7,8,9],"ditherStrength":2,
    "ditherEnable":true})", kOff, "lutG", R"([4,"5",6])"};
constexpr const char* kGc[] = {R"({"enable":true,"lutR":[1,2,3],"lutG":[4,5,6],"lutB":[7,8,9]})", kOff, "lutB", "[1,2,-3]"};

template <typename T>
class HwAssetBaseTest : public ::testing::Test {
 protected:
  // Gamma payloads hold the class-wide entry count: make it the samples' table length.
  void SetUp() override { HwAssetIGC::size_ = HwAssetGC::size_ = 3; }
  void TearDown() override { HwAssetIGC::size_ = HwAssetGC::size_ = 0; }

  static std::shared_ptr<typename T::Asset> Make(const char* json = nullptr) {
    auto asset = std::make_shared<typename T::Asset>(0u, nullptr);
    if (json != nullptr) asset->SetConfig(ParseJson(json));
    return asset;
  }
};
using AllAssets = ::testing::Types<
    Traits<HwAssetDither, KivPostBlendDitherMergeOp, kDither>, Traits<HwAssetPADither, KivPostBlendPaDitherMergeOp, kPaDither>,
    Traits<HwAssetDE, KivPostBlendDEMergeOp, kDE>, Traits<HwAssetHDR, KivPostBlendHdrBlobMergeOp, kHdr>,
    Traits<HwAssetGameBlob, KivPostBlendGameBlobMergeOp, kGameBlob>, Traits<HwAssetIGC, KivPostBlendIGCMergeOp, kIgc>,
    Traits<HwAssetGC, KivPostBlendGCMergeOp, kGc>>;
TYPED_TEST_SUITE(HwAssetBaseTest, AllAssets);

// A member of a type it cannot take refuses the section with one error line naming the member.
TYPED_TEST(HwAssetBaseTest, WritesBackWhatItReadsUntilSwitchedOffOrRefused) {
  const auto [sample, off, key, value] = TypeParam::kText;
  LogCapture log;
  EXPECT_EQ(Compact(*this->Make()->AsJV()), Compact(off));
  auto asset = this->Make(sample);
  EXPECT_EQ(Compact(*asset->AsJV()), Compact(sample));
  asset->SetConfig(ParseJson(R"({"enable":false})"));
  EXPECT_EQ(Compact(*asset->AsJV()), Compact(off));
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  Json::Value section = ParseJson(sample);
  section[key] = ParseJson(value);
  asset = this->Make(sample);
  asset->SetConfig(section);
  EXPECT_EQ(Compact(*asset->AsJV()), Compact(off));
  testing::ExpectOneLine(log, "E", "", std::string("Invalid member \"") + key + "\"");
}

TYPED_TEST(HwAssetBaseTest, PayloadIsACopyOfTheRecord) {
  using Asset = typename TypeParam::Asset;
  auto asset = this->Make(TypeParam::kSample);
  const std::shared_ptr<HwConfigPayload> payload = asset->AsPayload();
  ASSERT_TRUE(payload);
  EXPECT_TRUE(payload->size == 56u && payload->name == Asset::kPayloadName && payload->config_size == Asset::kRecordLen &&
              testing::RecordWord(*payload, 0) == Asset::kRecordLen);
  asset->SetIdentity();  // the payload already handed out stays as it was
  auto rebuilt = this->Make();
  rebuilt->SetConfig(*std::static_pointer_cast<typename Asset::RecordType>(payload->config));
  EXPECT_EQ(Compact(*rebuilt->AsJV()), Compact(TypeParam::kSample));
}

TYPED_TEST(HwAssetBaseTest, MergesByOperation) {
  using Asset = typename TypeParam::Asset;
  const auto sample = this->Make(TypeParam::kSample), blank = this->Make();
  const struct {
    uint32_t op;
    std::shared_ptr<Asset> left, right;
    const char* error;  // "": none
  } cases[] = {
      {1, sample, blank, ""}, {2, blank, sample, ""}, {9, sample, sample, ""},
      {1, nullptr, sample, "Merge Error: Source (left operand) is empty"},
      {2, sample, nullptr, "Merge Error: Source (right operand) is empty"},
  };
  for (const auto& c : cases) {
    LogCapture log;
    Asset merged(static_cast<typename TypeParam::MergeOp>(c.op), c.left, c.right);
    EXPECT_EQ(Compact(*merged.AsJV()), Compact(c.op != 9 && !*c.error ? TypeParam::kSample : TypeParam::kText[1])) << c.op;
    testing::ExpectOneLine(log, "E", std::string(Asset::kLogLabel), *c.error ? std::string(Asset::kClassName) + "(): " +
                           Asset::kMergeName + " " + c.error : "");
  }
}

// The two blobs depart from the shared contract: HDR never reads or writes "enable", and a
// switched-off game blob keeps its text.
TEST(HwAssetBlobTest, HdrIgnoresEnableAndGameBlobKeepsItsTextWhenOff) {
  LogCapture log;
  for (const char* section : {R"({"enable":false,"blob":"AB"})", R"({"enable":"on","blob":"AB"})"}) {
    HwAssetHDR hdr(0, nullptr);
    hdr.SetConfig(ParseJson(section));
    EXPECT_EQ(Compact(*hdr.AsJV()), Compact(R"({"blob":"AB"})")) << section;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  HwAssetGameBlob game(0, nullptr);
  game.SetConfig(ParseJson(R"({"enable":false,"blob":"7B7D"})"));
  EXPECT_EQ(Compact(*game.AsJV()), Compact(R"({"enable":false})"));
  const auto record = std::static_pointer_cast<GameConfig>(game.AsPayload()->config);
  EXPECT_TRUE(!record->enable && record->blob == "7B7D");
}

}  // namespace
}  // namespace vexa
