// The parser object linked in: what depends on the library-wide log level and on the class-wide
// gamma table lengths, and requests from several threads at once.
#include "parser/vexa_json_mode_parser.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_igc.h"
#include "support/parser_e2e.h"

namespace vexa::testing {
namespace {

const std::vector<std::string> kVividAssets = {"PostBlendDE",       "PostBlendDither",
                                               "PostBlendGC",       "PostBlendGameBlob",
                                               "PostBlendHdrBlob", "PostBlendIGC"};

TEST(VexaJsonModeParserTest, InformationLinesFollowTheLogLevelAndErrorsAlwaysPrint) {
  struct Line {
    const char* text;
    uint32_t level;  // lowest level that prints it; 0 for errors
  };
  const std::vector<Line> lines = {
      {"VexaJsonModeParser created", 1},
      {"Invalid major_version 2 minor_version 1", 2},
      {"panel: panelA", 2},
      {"Failed to load = libvexa-algo.so", 1},
      {"gamut and pcc merge not supported for factory", 0},
      {"curr_mode_ is not set, no color mode is applied", 1},
      {"Cannot find mode (gamut 9, gamma 9, intent 9)", 2},
      {"Invalid ops 3", 0},
  };
  DeviceTree device;
  WriteStandardPanel(device, /*with_rules=*/true);
  for (uint32_t level : {0u, 1u, 2u}) {
    SCOPED_TRACE(level);
    LogCapture log(level);
    std::unique_ptr<VexaKivInterface> parser(GetVexaKivInterface(2, 0));
    EXPECT_EQ(GetVexaKivInterface(2, 1), nullptr);
    ASSERT_EQ(parser->Init(kPanel), 0);
    HwConfigOutputParams out = EmptyOutput();
    EXPECT_EQ(GetDitherConfig(*parser, &out), 0);
    EXPECT_EQ(RequestMode(*parser, kKivModeRenderIntent, ModeRequest(9, 9, 9, {}), &out), -22);
    EXPECT_EQ(RequestMode(*parser, kKivGamutMerge, ModeRequest(9, 9, 9, {}), &out), -22);
    for (const Line& line : lines) {
      EXPECT_EQ(log.Contains(line.text), level >= line.level) << line.text;
    }
  }
}

TEST(VexaJsonModeParserTest, GammaTableLengthsComeFromTheSettersAndInit) {
  DeviceTree device;
  LogCapture log(0);
  WriteStandardPanel(device, /*with_rules=*/false);
  VexaJsonModeParser parser;
  HwAssetGC::size_ = 7;
  HwAssetIGC::size_ = 7;
  ASSERT_EQ(parser.Init(kPanel), 0);
  EXPECT_EQ(HwAssetGC::size_.load(), 1024u);
  EXPECT_EQ(HwAssetIGC::size_.load(), 257u);

  // Set at once while initialised; a refused value changes nothing.
  EXPECT_EQ(SetCaps(parser, kKivPostBlendGammaConfig, Caps(300)), 0);
  EXPECT_EQ(SetCaps(parser, kKivPostBlendInvGammaConfig, Caps(100)), 0);
  EXPECT_EQ(SetCaps(parser, kKivPostBlendGammaConfig, Caps(0)), -22);
  EXPECT_EQ(SetCaps(parser, kKivPostBlendInvGammaConfig, Caps(1025)), -22);
  EXPECT_EQ(SetCaps(parser, kKivPostBlendGamutConfig, Caps(33)), 0);
  EXPECT_EQ(HwAssetGC::size_.load(), 300u);
  EXPECT_EQ(HwAssetIGC::size_.load(), 100u);

  // The next Init uses the kept values, and its modes are built with them.
  EXPECT_EQ(parser.DeInit(), 0);
  HwAssetGC::size_ = 7;
  HwAssetIGC::size_ = 7;
  ASSERT_EQ(parser.Init(kPanel), 0);
  EXPECT_EQ(HwAssetGC::size_.load(), 300u);
  EXPECT_EQ(HwAssetIGC::size_.load(), 100u);
  ColorModeList list{kColorModeListVersion, {}};
  ASSERT_EQ(GetModes(parser, &list), 0);
  EXPECT_EQ(list.modes.size(), 8u);

  // Another object starts from the defaults again.
  VexaJsonModeParser other;
  ASSERT_EQ(other.Init(kPanel), 0);
  EXPECT_EQ(HwAssetGC::size_.load(), 1024u);
  EXPECT_EQ(HwAssetIGC::size_.load(), 257u);
}

// Init/DeInit cycles race with every request on one object while a second object resets the
// class-wide table lengths. The mutex must make each Init's publication whole: a listing always
// holds a multiple of the panel's mode count, a request either fails whole or returns the
// mode's complete payload set.
TEST(VexaJsonModeParserThreadsTest, ConcurrentRequestsSeeWholeModeLists) {
  DeviceTree device;
  LogCapture log(0);
  WriteStandardPanel(device, /*with_rules=*/false);
  constexpr size_t kModesPerInit = 4;
  constexpr int kCycles = 25;
  constexpr int kRequests = 300;
  VexaJsonModeParser parser;
  VexaJsonModeParser other;
  std::atomic<int> bad_lists{0}, bad_payloads{0}, bad_statuses{0}, served{0};

  std::vector<std::thread> threads;
  threads.emplace_back([&] {
    for (int i = 0; i < kCycles; ++i) {
      if (parser.Init(kPanel) != 0 || parser.DeInit() != 0) ++bad_statuses;
    }
  });
  threads.emplace_back([&] {
    for (int i = 0; i < kRequests; ++i) {
      ColorModeList list{kColorModeListVersion, {}};
      const int32_t status = GetModes(parser, &list);
      if (status == 0 && list.modes.size() % kModesPerInit != 0) ++bad_lists;
      if (status != 0 && status != -22) ++bad_statuses;
    }
  });
  threads.emplace_back([&] {
    for (int i = 0; i < kRequests; ++i) {
      HwConfigOutputParams out = EmptyOutput();
      const int32_t status =
          RequestMode(parser, kKivModeRenderIntent, ModeRequest(1, 1, 2, kVividAssets), &out);
      if (status == 0) {
        ++served;
        if (out.payloads.size() != 3) ++bad_payloads;
      } else if (status != -22 || !out.payloads.empty()) {
        ++bad_statuses;
      }
      HwConfigOutputParams dither = EmptyOutput();
      const int32_t dither_status = GetDitherConfig(parser, &dither);
      if (dither_status != 0 && dither_status != -22) ++bad_statuses;
      if (dither.payloads.size() > 1) ++bad_payloads;
    }
  });
  threads.emplace_back([&] {
    for (int i = 0; i < kRequests; ++i) {
      const int32_t status = SetCaps(parser, kKivPostBlendGammaConfig, Caps(i % 2 ? 512 : 1024));
      if (status != 0 && status != -22) ++bad_statuses;
    }
  });
  threads.emplace_back([&] {
    for (int i = 0; i < kCycles; ++i) {
      if (other.Init(kPanel) != 0) ++bad_statuses;
      if (SetCaps(other, kKivPostBlendInvGammaConfig, Caps(64)) != 0) ++bad_statuses;
      if (other.DeInit() != 0) ++bad_statuses;
    }
  });
  for (std::thread& thread : threads) thread.join();

  EXPECT_EQ(bad_lists.load(), 0);
  EXPECT_EQ(bad_payloads.load(), 0);
  EXPECT_EQ(bad_statuses.load(), 0);
  ASSERT_EQ(parser.Init(kPanel), 0);
  ColorModeList list{kColorModeListVersion, {}};
  ASSERT_EQ(GetModes(parser, &list), 0);
  EXPECT_EQ(list.modes.size(), kModesPerInit * (kCycles + 1));
  // Not an assertion on timing: only on what was served.
  RecordProperty("served_render_intents", served.load());
}

}  // namespace
}  // namespace vexa::testing
