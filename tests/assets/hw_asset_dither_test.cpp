#include "assets/hw_asset_dither.h"

#include <gtest/gtest.h>

#include "assets/hw_asset_pa_dither.h"
#include "support/asset_json.h"

namespace vexa {
namespace {

using testing::LogCapture;
using testing::ParseJson;

TEST(HwAssetDitherTest, ModeWordMustMatchExactly) {
  const struct {
    const char* mode;  // null: member missing
    uint32_t value;
    bool info;
  } cases[] = {{"LUMA", 1, false}, {"INTERLEAVE", 0, false}, {"luma", 0, true}, {nullptr, 0, true}};
  for (const auto& c : cases) {
    LogCapture log(2);
    Json::Value section = ParseJson(R"({"enable":true})");
    if (c.mode) section["ditherMode"] = c.mode;
    HwAssetDither asset(0, nullptr);
    asset.SetConfig(section);
    EXPECT_EQ(asset.config().mode, c.value);
    EXPECT_EQ((*asset.AsJV())["ditherMode"].asString(), c.value ? "LUMA" : "INTERLEAVE");
    ASSERT_EQ(log.Lines().size(), c.info ? 1u : 0u) << log.Dump();
    EXPECT_TRUE(!c.info || testing::IsLogLine(log.Lines()[0], "I", "VexaJsonModeParser::HwAssetDither::SetConfig",
        std::string("Dither Mode (") + (c.mode ? c.mode : "") + ") is not LUMA or INTERLEAVE")) << log.Dump();
  }
  LogCapture quiet(1);  // an information line below level 2 stays silent
  HwAssetDither(0, nullptr).SetConfig(ParseJson(R"({"enable":true,"ditherMode":"x"})"));
  EXPECT_TRUE(quiet.Lines().empty()) << quiet.Dump();
}

TEST(HwAssetDitherTest, MatrixIsCutToSixteenEntries) {
  Json::Value section = ParseJson(R"({"enable":true,"matrix":[]})");
  for (uint32_t i = 0; i < 20; ++i) section["matrix"].append(100 + i);
  HwAssetDither dither(0, nullptr);
  HwAssetPADither pa_dither(0, nullptr);
  LogCapture log;
  dither.SetConfig(section);
  pa_dither.SetConfig(section);
  section["matrix"].resize(16);
  EXPECT_TRUE(dither.config().matrix_size == 16u && pa_dither.config().matrix_size == 16u);
  EXPECT_EQ(testing::Compact((*dither.AsJV())["matrix"]), testing::Compact(section["matrix"]));
  EXPECT_EQ(testing::Compact((*pa_dither.AsJV())["matrix"]), testing::Compact(section["matrix"]));
  EXPECT_EQ(log.Count("\"matrix\" has 20 entries"), 2u) << log.Dump();
}

TEST(HwAssetDitherTest, PayloadsFollowTheRecordLayouts) {
  HwAssetDither dither(0, nullptr);
  dither.SetConfig(ParseJson(R"({"enable":true,"ditherMode":"LUMA","strengthR":11,"strengthG":12,
      "strengthB":13,"temporalEnable":1,"matrix":[21,22]})"));
  HwAssetPADither pa_dither(0, nullptr);
  pa_dither.SetConfig(ParseJson(R"({"enable":true,"strength":5,"offsetEn":1,"matrix":[7,8,9]})"));
  const struct {
    std::shared_ptr<HwConfigPayload> payload;
    std::vector<uint32_t> words;  // from byte 8 on
  } cases[] = {
      // mode, strength g, r, b, temporal enable, matrix size, matrix
      {dither.AsPayload(), {1, 12, 11, 13, 1, 2, 21, 22, 0}},
      // mode (always 0), strength, offset enable, matrix size, matrix
      {pa_dither.AsPayload(), {0, 5, 1, 3, 7, 8, 9, 0}},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(static_cast<const bool*>(c.payload->config.get())[4]);
    for (size_t i = 0; i < c.words.size(); ++i) EXPECT_EQ(testing::RecordWord(*c.payload, 8 + 4 * i), c.words[i]);
  }
}

}  // namespace
}  // namespace vexa
