#include "bench/bench_device_tree.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "bench/bench_workload.h"
#include "parser/vexa_json_mode_parser.h"
#include "support/log_capture.h"
#include "support/temp_dir.h"

namespace vexa::bench {
namespace {

using vexa::testing::LogCapture;
using vexa::testing::ScopedEnv;
using vexa::testing::TempDir;

std::vector<ColorMode> PublishedModes(VexaKivInterface& parser) {
  ColorModeList list{kColorModeListVersion, {}};
  VexaKivPayload payload{kVexaKivPayloadVersion, kColorModeListLen, kKivModesList, &list};
  EXPECT_EQ(parser.GetProperty(&payload), 0);
  return list.modes;
}

// The tree loads as a device's would: the factory modes, then the calibration modes, the odd ones
// replaced (and so moved last) by their merge with the factory mode of their colour space; every
// calibration mode with all eight assets, a merged one also with the identity PA dither of its
// unnamed merge; no error but the absent colour-algorithm library's.
TEST(BenchDeviceTreeTest, InitPublishesEveryModeAndMergesTheOddCalibrationModes) {
  TempDir dir;
  std::string error;
  ASSERT_TRUE(BenchDeviceTree(6).Write(dir.path(), &error)) << error;
  ScopedEnv root("VEXA_SYSROOT", dir.path().c_str());
  LogCapture log(0);
  VexaJsonModeParser parser;
  parser.Init(kBenchPanel);

  const std::vector<ColorMode> modes = PublishedModes(parser);
  std::vector<int32_t> intents;
  for (const ColorMode& mode : modes) intents.push_back(mode.intent);
  EXPECT_EQ(intents, (std::vector<int32_t>{384, 385, 386, 387, 1, 3, 5, 2, 4, 6}));
  std::vector<std::string> assets = {"PostBlendGC", "PostBlendGamut", "PostBlendIGC", "PostBlendPCC"};
  EXPECT_EQ(modes[0].hw_assets, assets);
  assets.insert(assets.begin(), {"PostBlendDE", "PostBlendDither"});
  assets.insert(assets.begin() + 3, "PostBlendGameBlob");
  assets.push_back("PostBlendPa");
  for (size_t i = kFactoryModes; i < modes.size(); ++i) {
    if (i == kFactoryModes + 3) assets.push_back("PostBlendPaDither");
    EXPECT_EQ(modes[i].hw_assets, assets) << i;
  }
  EXPECT_EQ(log.Errors().size(), 1u) << log.Dump();
  EXPECT_TRUE(log.Contains("gamut and pcc merge not supported for factory")) << log.Dump();
}

// The workload holds what Init decodes: the three "Common" tables and every asset section, of
// which the even calibration modes' gamut sections carry a tuning table.
TEST(BenchDeviceTreeTest, WorkloadCollectsEverySectionDecoded) {
  std::string error;
  const std::unique_ptr<BenchWorkload> workload = BenchWorkload::Create(6, &error);
  ASSERT_TRUE(workload) << error;
  const auto& decoded = workload->decoded_sections();
  ASSERT_EQ(decoded.size(), 4 * kFactoryModes + 3 + 8 * 6);  // factory sections, tables, calibration
  const size_t tuned = std::count_if(decoded.begin(), decoded.end(), [](const std::string& text) {
    return text.find("\"Tuning\":\"") != std::string::npos;
  });
  EXPECT_EQ(tuned, 3u);
  EXPECT_EQ(decoded.front().front(), '{');
  EXPECT_GT(workload->file_bytes(), 4 * 4913 * 3 * 2u);  // the factory's inline tables alone
}

}  // namespace
}  // namespace vexa::bench
