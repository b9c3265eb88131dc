#include "assets/hw_asset_de.h"

#include <gtest/gtest.h>

#include <tuple>

#include "support/asset_json.h"

namespace vexa {
namespace {

std::shared_ptr<HwAssetDE> ReadDE(const std::string& members) {
  auto asset = std::make_shared<HwAssetDE>(0, nullptr);
  asset->SetConfig(testing::ParseJson(R"({"enable":true,)" + members + "}"));
  return asset;
}

// The low-pass bit comes from the three filter keys together; the word written back names the
// highest-priority feature only.
TEST(HwAssetDETest, FlagsFollowLowPassKeysAndWriteBackByPriority) {
  const std::string lpf = R"(,"deLpfHigh":1,"deLpfMid":2,"deLpfLow":3)";
  const std::tuple<std::string, uint32_t, const char*> cases[] = {  // members, flags, word written back
      {R"("flags":"NONE")" + lpf, 0x100, "DE_LPF_BLEND"},
      {R"("flags":"NONE","deLpfHigh":1,"deLpfMid":2,"deLpfLow":null)", 0x0, "NONE"},
      {R"("flags":"SHARPNESS")" + lpf, 0x101, "DE_LPF_BLEND"},
      {R"("flags":"DE_BLEND")" + lpf, 0x180, "DE_BLEND"},
  };
  for (const auto& [members, flags, written] : cases) {
    const auto asset = ReadDE(members);
    EXPECT_TRUE(asset->config().flags == flags && (*asset->AsJV())["flags"] == written) << members;
  }
}

TEST(HwAssetDETest, PayloadHoldsWrappedThresholdsAndTheUnwrittenBlend) {
  const auto asset = ReadDE(R"("sharp":-3,"thrQuiet":65536,"thrDieout":2,"thrLow":3,"thrHigh":4,
      "clip":70000,"quality":"LOW_POWER","deBlend":9,"deLpfHigh":10,"deLpfMid":11,"deLpfLow":12)");
  EXPECT_TRUE(!asset->AsJV()->isMember("deBlend") && (*asset->AsJV())["clip"] == 4464u);
  EXPECT_EQ((*ReadDE(R"("quality":"ULTRA")")->AsJV())["quality"].asString(), "INVALID");
  const auto payload = asset->AsPayload();
  // From byte 8: fill marker, flags, sharp, the 16-bit thresholds two to a word (little-endian),
  // quality, content type, blend, the three low-pass strengths, reserved.
  const uint32_t words[] = {1, 0x100, static_cast<uint32_t>(-3), 2u << 16, 3 | 4u << 16, 4464, 1, 1, 9, 10, 11, 12, 0};
  for (size_t i = 0; i < std::size(words); ++i) EXPECT_EQ(testing::RecordWord(*payload, 8 + 4 * i), words[i]) << i;
}

}  // namespace
}  // namespace vexa
