// The parser in a temporary device tree: where Init finds its files, merging with and without the
// algorithm library, refused requests, mode matching, the gamma setters, and concurrent requests.
#include "parser/vexa_json_mode_parser.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <thread>
#include <tuple>

#include "algo/vexa_test_algo.h"
#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_igc.h"
#include "support/parser_e2e.h"

namespace vexa::testing {
namespace {

// Each directory's calibration file names its mode after the directory.
TEST_F(ParserE2eTest, CalibrationIsTakenFromTheFirstSearchDirectoryThatParses) {
  const std::string vendor = "/vendor/etc/display", oem = "/oem/etc", odm = "/odm/etc/display";
  const std::vector<std::tuple<Names, Names, Names>> cases = {
      // The directories with a file, those with an unparsable one; the modes.
      {{kDataDir, vendor, oem, odm}, {}, {"/data/vendor/display/2"}},
      {{vendor, oem, odm}, {}, {"/vendor/etc/display/2"}},
      {{oem, odm}, {vendor}, {"/oem/etc/2"}},
      {{odm}, {kDataDir}, {"/odm/etc/display/2"}},
      // Neither the factory directory nor /usr/data/display holds calibration files.
      {{"/mnt/vendor/persist/display", "/usr/data/display"}, {}, {}},
  };
  for (const auto& [present, unparsable, modes] : cases) {
    Device device;
    for (const auto& d : present) device.Write(CalibFile(d), ModesText(Mode("M", "P3", 2, d, "")));
    for (const auto& d : unparsable) device.Write(CalibFile(d), R"({"panelA": )");
    VexaJsonModeParser parser;
    ASSERT_EQ(parser.Init(kPanel), 0);
    EXPECT_EQ(ModesSummary(parser), modes);
  }
}

// Rules of a newer version than this device's are refused: nothing is merged, and the
// factory-floor mode becomes the colorimetric one.
TEST_F(ParserE2eTest, RulesOfANewerVersionAreRefused) {
  device_.WriteStandardPanel(false);
  device_.Write(RulesFile(kDataDir), RulesText(R"({"Version":2})"));
  VexaJsonModeParser parser;
  ASSERT_EQ(parser.Init(kPanel), 0);
  EXPECT_EQ(ModesSummary(parser), Names({"factory/1", "native/0", "twin-a/3", "twin-b/3",
                                         "vivid/2", "workflow/5"}));
  EXPECT_EQ(CountLines("E", "Init", "Error: incompatible versions of the vexa merge rules and "
                                    "device merge mode code."), 1u);
}

// The test algorithm library refuses a wrongly framed merge; the values merged are checked against
// the real library in its own test. A missing or unusable library is reported, and the merge still
// runs with gamut and PCC off.
TEST_F(ParserE2eTest, MergesThroughTheAlgorithmLibraryOrWithoutIt) {
  const char* algo = VEXA_TEST_ALGO_LIBRARY_PATH;
  const std::vector<std::tuple<const char*, const char*, const char*, std::string>> cases = {
      // The library is opened first: the parser's open by name then finds it loaded.
      {algo, nullptr, "E", ""},
      {nullptr, nullptr, "I", "Failed to load = libvexa-algo.so"},
      {VEXA_NO_ALGO_SYMBOL_LIBRARY_PATH, nullptr, "E",
       "Failed to retrieve = GetVexaAlgoInterface from libvexa-algo.so"},
      {algo, kTestAlgoNoInterface, "E", "Failed to get vexa algo intf from libvexa-algo.so"},
      {algo, kTestAlgoInitFails, "E", "Failed to initialize vexa algo, ret = -5"},
  };
  device_.WriteStandardPanel(true);
  for (const auto& [path, behaviour, kind, loader_line] : cases) {
    SCOPED_TRACE(loader_line);
    const bool merged = loader_line.empty();
    const ScopedEnv algo_behaviour(kTestAlgoBehaviourVariable, behaviour);
    void* library = path ? dlopen(path, RTLD_NOW | RTLD_LOCAL) : nullptr;
    log_.Clear();
    auto parser = std::make_unique<VexaJsonModeParser>();
    EXPECT_EQ(parser->Init(kPanel), 0);
    EXPECT_EQ(CountLines(kind, "LoadVexaAlgoLib", loader_line), merged ? 0u : 1u);
    EXPECT_EQ(CountLines("E", "Init", "gamut and pcc merge not supported for factory"), merged ? 0u : 1u);
    HwConfigOutputParams out{kHwConfigOutputParamsVersion, {}};
    RequestMode(*parser, kKivModeRenderIntent, ModeRequest(12, 1, 5, Names(9)), &out);
    ASSERT_EQ(PayloadNames(out), Names({"PostBlendDither", "PostBlendGC", "PostBlendGamut",
                                        "PostBlendIGC", "PostBlendPCC", "PostBlendPa",
                                        "PostBlendPaDither"}));
    EXPECT_EQ(RecordOf<DitherConfig>(out.payloads[0]).strength_r, 1u);  // from the left
    EXPECT_EQ(RecordOf<GamutConfig>(out.payloads[2]).enable, merged);
    EXPECT_EQ(RecordOf<PccConfig>(out.payloads[4]).enable, merged);
    parser.reset();
    if (library) dlclose(library);
    EXPECT_EQ(dlopen("libvexa-algo.so", RTLD_NOW | RTLD_NOLOAD), nullptr);  // the parser closed it
  }
}

// A second Init only renames the panel; DeInit refuses requests until Init pushes the modes
// again after the old ones. The debug modes list is written only while the property reads 2.
TEST_F(ParserE2eTest, ReInitAppendsModesAndDebugListFollowsTheProperty) {
  device_.WriteStandardPanel(false);
  const std::string debug_list = device_.root.File("data/vendor/display/vexa_debug_modes_list_panelA.json");
  for (const std::string level : {"1", "2"}) {
    const ScopedEnv property("VENDOR_DISPLAY_KIVLOGLEVEL", level.c_str());
    std::filesystem::remove(debug_list);
    VexaJsonModeParser parser;
    ASSERT_EQ(parser.Init(kPanel), 0);
    const Names once = ModesSummary(parser);
    ASSERT_EQ(once.size(), 6u);
    EXPECT_EQ(std::filesystem::exists(debug_list), level == "2") << level;
    EXPECT_EQ(parser.Init("other"), 0);
    EXPECT_EQ(ModesSummary(parser), once);
    EXPECT_EQ(parser.DeInit(), 0);
    ColorModeList list{kColorModeListVersion, {}};
    EXPECT_EQ(GetProperty(parser, kKivModesList, kColorModeListLen, &list), -22);
    ASSERT_EQ(parser.Init(kPanel), 0);
    Names twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(ModesSummary(parser), twice);
  }
}

// An initialised parser on the standard panel without rules.
class OpsTest : public ParserE2eTest {
 protected:
  void SetUp() override {
    device_.WriteStandardPanel(false);
    ASSERT_EQ(parser_.Init(kPanel), 0);
  }
  VexaJsonModeParser parser_;
};

TEST_F(OpsTest, RefusesEveryMalformedRequestWithItsMessage) {
  VexaJsonModeParser fresh;  // never initialised
  VexaJsonModeParser& p = parser_;
  PostBlendHwCaps caps{0, 256, 0, {}}, none{0, 0, 0, {}};
  ColorModeList list{kColorModeListVersion, {}}, list_v32{32, {}};
  HwConfigOutputParams out{kHwConfigOutputParamsVersion, {}};
  ModeRenderInputParams in = ModeRequest(1, 1, 2, Names(5));
  VexaKivPayload output{0, 32, 0, &out};
  char null_text[32], output_text[32];  // pointers as the library's "%pK" prints them
  std::snprintf(null_text, sizeof(null_text), "%pK", nullptr);
  std::snprintf(output_text, sizeof(output_text), "%pK", static_cast<void*>(&output));
  const std::string null = null_text, init0 = "init_done_ 0, actual version 24 exp version 24";
  const std::vector<std::tuple<const char*, std::string, std::function<int32_t()>>> refusals = {
      {"GetProperty", "Invalid params : " + init0, [&] { return GetProperty(fresh, 1, 32, &list); }},
      {"ProcessOps", std::string("Invalid params init_done_ 0 output ") + output_text,
       [&] { return fresh.ProcessOps(kKivModeRenderIntent, {0, 2912, 0, &in}, &output); }},
      {"SetProperty", "Invalid params : init_done_ 1, actual version 23 exp version 24",
       [&] { return p.SetProperty({23, 40, 7, &caps}); }},
      {"GetProperty", "Invalid params : p " + null, [&] { return p.GetProperty(nullptr); }},
      {"SetProperty", "Invalid prop 1, function " + null, [&] { return p.SetProperty({24, 32, 1, &list}); }},
      {"GetProperty", "Invalid prop 99, function " + null, [&] { return GetProperty(p, 99, 32, &list); }},
      {"ProcessOps", "Invalid ops 3",
       [&] { return p.ProcessOps(kKivGamutMerge, {0, 2912, 0, &in}, &output); }},
      {"ProcessOps", "Invalid params init_done_ 1 output " + null,
       [&] { return p.ProcessOps(kKivModeRenderIntent, {0, 2912, 0, &in}, nullptr); }},
      {"GetModesList", "len of Input params act 31 exp 32", [&] { return GetProperty(p, 1, 31, &list); }},
      {"VersionCheck", "Invalid version : exp version 96, actual version 32",
       [&] { return GetProperty(p, 1, 32, &list_v32); }},
      {"ProcessModeRenderIntent", "len of Input params exp 2911 act 2912 output exp 32 act 32",
       [&] { return p.ProcessOps(kKivModeRenderIntent, {0, 2911, 0, &in}, &output); }},
      {"VersionCheck", "Invalid params : p " + null,
       [&] { return p.ProcessOps(kKivModeRenderIntent, {0, 2912, 0, nullptr}, &output); }},
      {"GetPbDitheHwConfig", "len of Input params act 32 exp 32",
       [&] { return GetProperty(p, 12, 32, nullptr); }},
      {"SetPostBlendGammaConfig", "Invalid of num_of_entries 0",
       [&] { return p.SetProperty({24, 40, 7, &none}); }},
      {"SetPostBlendGamutConfig", "len of Input params act 41 exp 40",
       [&] { return p.SetProperty({24, 41, 6, &caps}); }},
  };
  for (const auto& [function, message, call] : refusals) {
    SCOPED_TRACE(message);
    log_.Clear();
    EXPECT_EQ(call(), -22);
    EXPECT_EQ(CountLines("E", function, message), 1u) << log_.Dump();
    EXPECT_EQ(log_.Errors().size(), 1u) << log_.Dump();
  }
}

// A mode matches on gamut, gamma, intent and the number of assets asked for, not their names;
// intent 0 ignores the assets, and the first of two alike wins. Render intent appends the mode's
// hardware payloads to the caller's and applies the mode, software assets append the rest. The
// dither configuration, when the applied mode has one, replaces the caller's payloads.
TEST_F(OpsTest, RequestsMatchModesByAssetCountAndRenderIntentAppliesThem) {
  const VexaKivOps render = kKivModeRenderIntent;
  const std::vector<std::tuple<VexaKivOps, ModeRenderInputParams, Names, uint32_t>> cases = {
      // The request, the payloads (none: no mode matches), the applied mode's dither strength.
      {kKivModeSwAssets, ModeRequest(1, 1, 2, Names(5)), {"PostBlendDE", "PostBlendHdrBlob"}, 0},
      {render, ModeRequest(1, 1, 2, {"PostBlendDE", "PostBlendDither", "PostBlendGC",
                                     "PostBlendHdrBlob", "PostBlendIGC"}), kVividHardware, 4},
      {render, ModeRequest(1, 1, 2, Names(4)), {}, 4},
      {render, ModeRequest(1, 1, 2, Names(6)), {}, 4},
      {render, ModeRequest(1, 1, 0, Names(5)), {"PostBlendPaDither"}, 0},
      {render, ModeRequest(1, 4, 0), {}, 0},
      {render, ModeRequest(12, 1, 3, Names(1)), {"PostBlendDither"}, 10},
      {render, ModeRequest(12, 1, 1, Names(3)), {"PostBlendDither", "PostBlendGamut", "PostBlendPCC"}, 1},
      {render, ModeRequest(12, 1, 384, Names(3)), {}, 1},  // the factory-floor mode was promoted
  };
  for (const auto& [op, r, payloads, dither_strength] : cases) {
    const std::string missing = "Cannot find mode (gamut " + std::to_string(r.gamut) + ", gamma " +
                                std::to_string(r.gamma) + ", intent " + std::to_string(r.intent) + ")";
    SCOPED_TRACE(missing + " with " + std::to_string(r.hw_assets.size()) + " assets");
    log_.Clear();
    HwConfigOutputParams out{kHwConfigOutputParamsVersion, {{kHwConfigPayloadSize, "x", {}, 0}}};
    EXPECT_EQ(RequestMode(parser_, op, r, &out), payloads.empty() ? -22 : 0);
    Names appended = payloads;
    appended.insert(appended.begin(), "x");
    EXPECT_EQ(PayloadNames(out), appended);
    EXPECT_EQ(CountLines("I", "ProcessModeRenderIntent", missing), payloads.empty() ? 1u : 0u);
    EXPECT_TRUE(log_.Errors().empty()) << log_.Dump();
    ASSERT_EQ(GetProperty(parser_, kKivPbDitherHwConfig, kHwConfigOutputParamsLen, &out), 0);
    ASSERT_EQ(PayloadNames(out), dither_strength ? Names({"PostBlendDither"}) : appended);
    if (dither_strength) {
      EXPECT_EQ(RecordOf<DitherConfig>(out.payloads[0]).strength_r, dither_strength);
    }
  }
}

std::pair<uint32_t, uint32_t> TableLengths() { return {HwAssetGC::size_, HwAssetIGC::size_}; }

// The class-wide gamma table lengths: set at once (a refused value changes nothing), kept for the
// object's next Init, not applied to published payloads; another object starts afresh.
TEST_F(OpsTest, GammaSettersBoundTheClassWideTableLengths) {
  using Lengths = std::pair<uint32_t, uint32_t>;
  const VexaKivProperty gc = kKivPostBlendGammaConfig, igc = kKivPostBlendInvGammaConfig;
  const std::vector<std::tuple<VexaKivProperty, uint32_t, int32_t, Lengths>> cases = {
      {gc, 1024, 0, {1024, 257}}, {gc, 1025, -22, {1024, 257}}, {gc, 1, 0, {1, 257}},
      {igc, 0, -22, {1, 257}}, {igc, 1024, 0, {1, 1024}}, {kKivPostBlendGamutConfig, 100000, 0, {1, 1024}},
  };
  for (const auto& [prop, entries, status, lengths] : cases) {
    EXPECT_EQ(SetCaps(parser_, prop, entries), status) << prop << " " << entries;
    EXPECT_EQ(TableLengths(), lengths) << prop << " " << entries;
  }
  HwConfigOutputParams out{kHwConfigOutputParamsVersion, {}};
  ASSERT_EQ(RequestMode(parser_, kKivModeRenderIntent, ModeRequest(1, 1, 2, Names(5)), &out), 0);
  ASSERT_EQ(PayloadNames(out), kVividHardware);
  EXPECT_EQ(RecordOf<GammaPostBlendConfig>(out.payloads[1]).lut_r.size(), 1024u);
  EXPECT_EQ(RecordOf<GammaPostBlendConfig>(out.payloads[2]).lut_b.size(), 257u);
  EXPECT_EQ(parser_.DeInit(), 0);
  HwAssetGC::size_ = HwAssetIGC::size_ = 7;
  ASSERT_EQ(parser_.Init(kPanel), 0);
  EXPECT_EQ(TableLengths(), Lengths(1, 1024));
  VexaJsonModeParser other;
  ASSERT_EQ(other.Init(kPanel), 0);
  EXPECT_EQ(TableLengths(), Lengths(1024, 257));
}

// Every public operation races on one object for a few seconds (VEXA_STRESS_SECONDS, default 2)
// while a second object cycles and resets the class-wide table lengths. Each Init's publication
// must be whole: a listing always holds a multiple of the panel's mode count (Init appends), a
// request fails whole or returns the mode's payloads, and the object still works afterwards.
using VexaJsonModeParserThreadsTest = ParserE2eTest;

double StressSeconds() {
  const char* text = std::getenv("VEXA_STRESS_SECONDS");
  const double seconds = text != nullptr ? std::atof(text) : 0.0;
  return seconds > 0 ? seconds : 2.0;
}

TEST_F(VexaJsonModeParserThreadsTest, EveryOperationRacesOnOneObject) {
  device_.WriteStandardPanel(true);
  log_.Clear();
  VexaJsonModeParser parser, other;
  ASSERT_EQ(parser.Init(kPanel), 0);
  const size_t modes_per_init = ModesSummary(parser).size();
  ASSERT_EQ(parser.DeInit(), 0);
  // Vivid's payloads: its hardware ones for render intent, its two software ones otherwise.
  const size_t payloads[] = {kVividHardware.size(), 2};
  std::atomic<int> bad{0};
  std::atomic<size_t> inits{0};
  const auto check = [&](bool good) { bad += good ? 0 : 1; };
  const auto ok_or_refused = [](int32_t status) { return status == 0 || status == -22; };
  const VexaKivProperty caps[] = {kKivPostBlendGammaConfig, kKivPostBlendInvGammaConfig,
                                  kKivPostBlendGamutConfig};
  const std::vector<std::function<void(int)>> jobs = {
      [&](int) {
        const bool up = parser.Init(kPanel) == 0;
        inits += up;
        check(up && parser.DeInit() == 0);
      },
      [&](int) {
        check(!other.Init(kPanel) && !SetCaps(other, kKivPostBlendInvGammaConfig, 64) && !other.DeInit());
      },
      [&](int i) {
        check(ok_or_refused(SetCaps(parser, caps[i % 3], i % 2 ? 512 : 1024)));
        check(parser.SetProperty({kVexaKivPayloadVersion, kPostBlendHwCapsLen, kKivModesList, nullptr}) ==
              -22);
      },
      [&](int) {
        ColorModeList list{kColorModeListVersion, {}};
        check(ok_or_refused(GetProperty(parser, kKivModesList, kColorModeListLen, &list)) &&
              list.modes.size() % modes_per_init == 0);
        HwConfigOutputParams dither{kHwConfigOutputParamsVersion, {}};
        check(ok_or_refused(GetProperty(parser, kKivPbDitherHwConfig, kHwConfigOutputParamsLen, &dither)) &&
              dither.payloads.size() <= 1);
        check(parser.GetProperty(nullptr) == -22);
      },
      [&](int i) {
        HwConfigOutputParams out{kHwConfigOutputParamsVersion, {}};
        const VexaKivOps op = i % 2 ? kKivModeRenderIntent : kKivModeSwAssets;
        const int32_t status = RequestMode(parser, op, ModeRequest(1, 1, 2, Names(5)), &out);
        check(ok_or_refused(status) && out.payloads.size() == (status == 0 ? payloads[op] : 0u));
        check(RequestMode(parser, kKivGamutMerge, ModeRequest(1, 1, 2), &out) == -22);
      },
  };
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(StressSeconds());
  std::vector<std::thread> threads;
  for (const auto& job : jobs) {
    threads.emplace_back([&job, deadline] {
      for (int i = 0; std::chrono::steady_clock::now() < deadline; ++i) job(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(bad.load(), 0) << log_.Dump().substr(0, 2000);
  EXPECT_GT(inits.load(), 0u);
  ASSERT_EQ(parser.Init(kPanel), 0);
  EXPECT_EQ(ModesSummary(parser).size(), modes_per_init * (inits.load() + 2));
}

}  // namespace
}  // namespace vexa::testing
