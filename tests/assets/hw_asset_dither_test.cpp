#include "assets/hw_asset_dither.h"

#include <gtest/gtest.h>

#include "assets/hw_asset_pa_dither.h"
#include "support/asset_json.h"

namespace vexa {
namespace {

using testing::LogCapture;
using testing::ParseJson;

// Anything but the exact word LUMA, a missing member included, is INTERLEAVE with an info line.
TEST(HwAssetDitherTest, ModeWordMustMatchExactly) {
  for (const char* mode : {R"("LUMA")", R"("luma")", "null"}) {
    LogCapture log(2);
    HwAssetDither asset(0, nullptr);
    asset.SetConfig(ParseJson(std::string(R"({"enable":true,"ditherMode":)") + mode + "}"));
    const bool luma = mode[1] == 'L';
    EXPECT_TRUE(asset.config().mode == (luma ? 1u : 0u) && (*asset.AsJV())["ditherMode"] == (luma ? "LUMA" : "INTERLEAVE"));
    testing::ExpectOneLine(log, "I", "VexaJsonModeParser::HwAssetDither", luma ? "" :
        std::string("SetConfig(): Dither Mode (") + (*mode == 'n' ? "" : "luma") + ") is not LUMA or INTERLEAVE");
  }
}

// Both dithers cut the matrix to 16 entries, and their payloads follow their own layouts.
TEST(HwAssetDitherTest, MatrixIsCutToSixteenEntriesAndPayloadsFollowTheLayouts) {
  Json::Value section = ParseJson(R"({"enable":true,"ditherMode":"LUMA","strengthR":11,"strengthG":12,
      "strengthB":13,"temporalEnable":1,"strength":5,"offsetEn":1,"matrix":[]})");
  for (uint32_t i = 0; i < 20; ++i) section["matrix"].append(100 + i);
  HwAssetDither dither(0, nullptr);
  HwAssetPADither pa_dither(0, nullptr);
  LogCapture log;
  dither.SetConfig(section);
  pa_dither.SetConfig(section);
  EXPECT_EQ(log.Count("\"matrix\" has 20 entries"), 2u) << log.Dump();
  section["matrix"].resize(16);
  EXPECT_EQ(testing::Compact((*dither.AsJV())["matrix"]), testing::Compact(section["matrix"]));
  EXPECT_EQ(testing::Compact((*pa_dither.AsJV())["matrix"]), testing::Compact(section["matrix"]));
  const std::pair<std::shared_ptr<HwConfigPayload>, std::vector<uint32_t>> cases[] = {  // words from byte 8
      {dither.AsPayload(), {1, 12, 11, 13, 1, 16, 100, 101}},  // mode, strength g, r, b, temporal, matrix size
      {pa_dither.AsPayload(), {0, 5, 1, 16, 100, 101}},        // mode (always 0), strength, offset, matrix size
  };
  for (const auto& [payload, words] : cases) {
    EXPECT_TRUE(static_cast<const bool*>(payload->config.get())[4]);
    for (size_t i = 0; i < words.size(); ++i) EXPECT_EQ(testing::RecordWord(*payload, 8 + 4 * i), words[i]) << i;
  }
}

}  // namespace
}  // namespace vexa
