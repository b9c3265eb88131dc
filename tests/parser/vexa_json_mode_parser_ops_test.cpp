// Requests to the parser library, loaded with dlopen: envelope and record checks, the mode
// matching rule, the current mode and the dither rule, and the post-blend setters.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/parser_e2e.h"

namespace vexa::testing {
namespace {

const std::string kNull = PointerText(nullptr);

struct Refusal {
  const char* name;
  std::function<int32_t(VexaKivInterface&)> call;
  const char* function;
  std::string message;
};

// The standard panel without merge rules, plus two modes alike in gamut, gamma, intent and
// asset count (they differ in white point only).
class OpsTest : public ParserE2eTest {
 protected:
  void SetUp() override {
    WriteStandardPanel(device_, /*with_rules=*/false);
    TestMode twin_a{"sRGB", "2p2", 3, "twin-a", 6500, "", "SDR", {}};
    TestMode twin_b{"sRGB", "2p2", 3, "twin-b", 5000, "", "SDR", {}};
    twin_a.assets["PostBlendDither"] = DitherJson(10, 0, 0);
    twin_b.assets["PostBlendDither"] = DitherJson(20, 0, 0);
    WriteModes(CalibFile(kDataDir), {{"Native", NativeMode()},
                                     {"TwinA", twin_a},
                                     {"TwinB", twin_b},
                                     {"Vivid", VividMode()},
                                     {"Workflow", WorkflowMode()}});
    parser_ = InitParser();
    ASSERT_NE(parser_, nullptr);
    log_.Clear();
  }
  void TearDown() override {
    parser_.reset();
    ParserE2eTest::TearDown();
  }

  // Every refusal returns -22 and writes exactly one error line, the expected one.
  void ExpectRefusals(VexaKivInterface& parser, const std::vector<Refusal>& refusals) {
    for (const Refusal& r : refusals) {
      SCOPED_TRACE(r.name);
      log_.Clear();
      EXPECT_EQ(r.call(parser), -22);
      EXPECT_EQ(CountLines("E", r.function, r.message), 1u) << log_.Dump();
      EXPECT_EQ(log_.Errors().size(), 1u) << log_.Dump();
    }
  }

  std::unique_ptr<VexaKivInterface> parser_;
};

const std::vector<std::string> kVividAssets = {"PostBlendDE",       "PostBlendDither",
                                               "PostBlendGC",       "PostBlendGameBlob",
                                               "PostBlendHdrBlob", "PostBlendIGC"};
const std::vector<std::string> kVividHardware = {"PostBlendDither", "PostBlendGC", "PostBlendIGC"};

HwConfigPayload Sentinel() { return HwConfigPayload{kHwConfigPayloadSize, "sentinel", nullptr, 0}; }

int32_t SetWith(VexaKivInterface& parser, uint32_t version, uint32_t len, uint32_t prop,
                void* record) {
  return parser.SetProperty(VexaKivPayload{version, len, prop, record});
}

int32_t GetWith(VexaKivInterface& parser, uint32_t version, uint32_t len, uint32_t prop,
                void* record) {
  VexaKivPayload payload{version, len, prop, record};
  return parser.GetProperty(&payload);
}

int32_t OpWith(VexaKivInterface& parser, VexaKivOps op, uint32_t in_len, void* in,
               uint32_t out_len, void* out) {
  VexaKivPayload output{0, out_len, 0, out};
  return parser.ProcessOps(op, VexaKivPayload{0, in_len, 0, in}, &output);
}

TEST_F(OpsTest, RefusesEveryMalformedRequestWithItsMessage) {
  PostBlendHwCaps caps = Caps(256);
  PostBlendHwCaps none = Caps(0);
  PostBlendHwCaps too_many = Caps(1025);
  ColorModeList list{kColorModeListVersion, {}};
  ColorModeList list_v32{32, {}};
  HwConfigOutputParams out = EmptyOutput();
  HwConfigOutputParams out_v0{0, {}};
  HwConfigOutputParams out_v96{96, {}};
  ModeRenderInputParams request = ModeRequest(1, 1, 2, kVividAssets);
  ModeRenderInputParams request_v1 = request;
  request_v1.version = 1;
  const uint32_t v = kVexaKivPayloadVersion;
  const std::vector<Refusal> refusals = {
      {"set version", [&](auto& p) { return SetWith(p, 23, 40, 7, &caps); }, "SetProperty",
       "Invalid params : init_done_ 1, actual version 23 exp version 24"},
      {"get version", [&](auto& p) { return GetWith(p, 0, 32, 1, &list); }, "GetProperty",
       "Invalid params : init_done_ 1, actual version 0 exp version 24"},
      {"set get-only 1", [&](auto& p) { return SetWith(p, v, 32, 1, &list); }, "SetProperty",
       "Invalid prop 1, function " + kNull},
      {"set get-only 12", [&](auto& p) { return SetWith(p, v, 32, 12, &out); }, "SetProperty",
       "Invalid prop 12, function " + kNull},
      {"set unknown 0", [&](auto& p) { return SetWith(p, v, 40, 0, &caps); }, "SetProperty",
       "Invalid prop 0, function " + kNull},
      {"get set-only 6", [&](auto& p) { return GetWith(p, v, 40, 6, &caps); }, "GetProperty",
       "Invalid prop 6, function " + kNull},
      {"get set-only 8", [&](auto& p) { return GetWith(p, v, 40, 8, &caps); }, "GetProperty",
       "Invalid prop 8, function " + kNull},
      {"get unknown 99", [&](auto& p) { return GetWith(p, v, 32, 99, &list); }, "GetProperty",
       "Invalid prop 99, function " + kNull},
      {"get null envelope", [&](auto& p) { return p.GetProperty(nullptr); }, "GetProperty",
       "Invalid params : p " + kNull},
      {"op 2", [&](auto& p) { return OpWith(p, kKivPccMerge, 2912, &request, 32, &out); },
       "ProcessOps", "Invalid ops 2"},
      {"op 3", [&](auto& p) { return OpWith(p, kKivGamutMerge, 2912, &request, 32, &out); },
       "ProcessOps", "Invalid ops 3"},
      {"op 9", [&](auto& p) { return OpWith(p, VexaKivOps(9), 2912, &request, 32, &out); },
       "ProcessOps", "Invalid ops 9"},
      {"null output",
       [&](auto& p) {
         return p.ProcessOps(kKivModeRenderIntent, VexaKivPayload{0, 2912, 0, &request}, nullptr);
       },
       "ProcessOps", "Invalid params init_done_ 1 output " + kNull},
      {"modes len", [&](auto& p) { return GetWith(p, v, 31, 1, &list); }, "GetModesList",
       "len of Input params act 31 exp 32"},
      {"modes null", [&](auto& p) { return GetWith(p, v, 32, 1, nullptr); }, "GetModesList",
       "len of Input params act 32 exp 32"},
      {"modes version", [&](auto& p) { return GetWith(p, v, 32, 1, &list_v32); }, "VersionCheck",
       "Invalid version : exp version 96, actual version 32"},
      {"render input len",
       [&](auto& p) { return OpWith(p, kKivModeRenderIntent, 2911, &request, 32, &out); },
       "ProcessModeRenderIntent", "len of Input params exp 2911 act 2912 output exp 32 act 32"},
      {"render output len",
       [&](auto& p) { return OpWith(p, kKivModeRenderIntent, 2912, &request, 33, &out); },
       "ProcessModeRenderIntent", "len of Input params exp 2912 act 2912 output exp 33 act 32"},
      {"render null input",
       [&](auto& p) { return OpWith(p, kKivModeRenderIntent, 2912, nullptr, 32, &out); },
       "VersionCheck", "Invalid params : p " + kNull},
      {"render input version",
       [&](auto& p) { return OpWith(p, kKivModeRenderIntent, 2912, &request_v1, 32, &out); },
       "VersionCheck", "Invalid version : exp version 2912, actual version 1"},
      {"render null output",
       [&](auto& p) { return OpWith(p, kKivModeRenderIntent, 2912, &request, 32, nullptr); },
       "VersionCheck", "Invalid params : p " + kNull},
      {"render output version",
       [&](auto& p) { return OpWith(p, kKivModeRenderIntent, 2912, &request, 32, &out_v0); },
       "VersionCheck", "Invalid version : exp version 32, actual version 0"},
      {"sw input len",
       [&](auto& p) { return OpWith(p, kKivModeSwAssets, 0, &request, 32, &out); },
       "ProcessModeSwAssets", "len of Input params exp 0 act 2912 output exp 32 act 32"},
      {"dither len", [&](auto& p) { return GetWith(p, v, 0, 12, &out); }, "GetPbDitheHwConfig",
       "len of Input params act 0 exp 32"},
      {"dither null", [&](auto& p) { return GetWith(p, v, 32, 12, nullptr); },
       "GetPbDitheHwConfig", "len of Input params act 32 exp 32"},
      {"dither version", [&](auto& p) { return GetWith(p, v, 32, 12, &out_v96); }, "VersionCheck",
       "Invalid version : exp version 32, actual version 96"},
      {"gamma len", [&](auto& p) { return SetWith(p, v, 39, 7, &caps); }, "SetPostBlendGammaConfig",
       "len of Input params act 39 exp 40"},
      {"gamma null", [&](auto& p) { return SetWith(p, v, 40, 7, nullptr); },
       "SetPostBlendGammaConfig", "len of Input params act 40 exp 40"},
      {"gamma 0 entries", [&](auto& p) { return SetWith(p, v, 40, 7, &none); },
       "SetPostBlendGammaConfig", "Invalid of num_of_entries 0"},
      {"gamma 1025 entries", [&](auto& p) { return SetWith(p, v, 40, 7, &too_many); },
       "SetPostBlendGammaConfig", "Invalid of num_of_entries 1025"},
      {"inverse gamma 0 entries", [&](auto& p) { return SetWith(p, v, 40, 8, &none); },
       "SetPostBlendInvGammaConfig", "Invalid of num_of_entries 0"},
      {"inverse gamma len", [&](auto& p) { return SetWith(p, v, 80, 8, &caps); },
       "SetPostBlendInvGammaConfig", "len of Input params act 80 exp 40"},
      {"gamut len", [&](auto& p) { return SetWith(p, v, 41, 6, &caps); },
       "SetPostBlendGamutConfig", "len of Input params act 41 exp 40"},
  };
  ExpectRefusals(*parser_, refusals);
  // Nothing was changed by the refused requests.
  EXPECT_TRUE(out.payloads.empty());
  EXPECT_TRUE(list.modes.empty());
}

TEST_F(OpsTest, RefusesEveryRequestWhileNotInitialised) {
  std::unique_ptr<VexaKivInterface> fresh = library_->NewParser();
  ASSERT_EQ(parser_->DeInit(), 0);
  PostBlendHwCaps caps = Caps(256);
  ColorModeList list{kColorModeListVersion, {}};
  ModeRenderInputParams request = ModeRequest(1, 1, 2, kVividAssets);
  HwConfigOutputParams out = EmptyOutput();
  VexaKivPayload output{0, kHwConfigOutputParamsLen, 0, &out};
  const uint32_t v = kVexaKivPayloadVersion;
  const std::vector<Refusal> refusals = {
      {"set", [&](auto& p) { return SetWith(p, v, 40, 7, &caps); }, "SetProperty",
       "Invalid params : init_done_ 0, actual version 24 exp version 24"},
      {"get", [&](auto& p) { return GetWith(p, v, 32, 1, &list); }, "GetProperty",
       "Invalid params : init_done_ 0, actual version 24 exp version 24"},
      {"op",
       [&](auto& p) {
         return p.ProcessOps(kKivModeRenderIntent, VexaKivPayload{0, 2912, 0, &request}, &output);
       },
       "ProcessOps", "Invalid params init_done_ 0 output " + PointerText(&output)},
  };
  for (VexaKivInterface* parser : {fresh.get(), parser_.get()}) {
    ExpectRefusals(*parser, refusals);
  }
  EXPECT_TRUE(list.modes.empty());
  EXPECT_TRUE(out.payloads.empty());
}

TEST_F(OpsTest, ModeMatchingComparesAssetCountsOnlyAndIgnoresAssetsForIntentZero) {
  struct Case {
    const char* name;
    ModeRenderInputParams request;
    std::vector<std::string> payloads;  // empty: no mode matches
    uint32_t dither_strength_r;        // of the chosen mode's dither payload, 0 when none
  };
  const std::vector<std::string> six_others = {"a", "b", "c", "d", "e", "f"};
  const std::vector<std::string> five(kVividAssets.begin(), kVividAssets.end() - 1);
  const std::vector<Case> cases = {
      {"exact names", ModeRequest(1, 1, 2, kVividAssets), kVividHardware, 4},
      {"other names, same count", ModeRequest(1, 1, 2, six_others), kVividHardware, 4},
      {"one name fewer", ModeRequest(1, 1, 2, five), {}, 0},
      {"one name more", ModeRequest(1, 1, 2, {"a", "b", "c", "d", "e", "f", "g"}), {}, 0},
      {"intent 0, no names", ModeRequest(1, 1, 0, {}), {"PostBlendPaDither"}, 0},
      {"intent 0, any names", ModeRequest(1, 1, 0, kVividAssets), {"PostBlendPaDither"}, 0},
      {"intent 0, no such gamma", ModeRequest(1, 4, 0, {}), {}, 0},
      {"first of two alike", ModeRequest(1, 4, 3, {"x"}), {"PostBlendDither"}, 10},
      {"promoted factory mode", ModeRequest(12, 1, 1, {"x", "y", "z"}),
       {"PostBlendDither", "PostBlendGamut", "PostBlendPCC"}, 1},
      {"factory-floor intent is gone", ModeRequest(12, 1, 384, {"x", "y", "z"}), {}, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    log_.Clear();
    HwConfigOutputParams out = EmptyOutput();
    const int32_t status = RequestMode(*parser_, kKivModeRenderIntent, c.request, &out);
    if (c.payloads.empty()) {
      EXPECT_EQ(status, -22);
      const std::string wanted = "Cannot find mode (gamut " + std::to_string(c.request.gamut) +
                                 ", gamma " + std::to_string(c.request.gamma) + ", intent " +
                                 std::to_string(c.request.intent) + ")";
      EXPECT_EQ(CountLines("I", "ProcessModeRenderIntent", wanted), 1u) << log_.Dump();
      EXPECT_TRUE(out.payloads.empty());
      continue;
    }
    ASSERT_EQ(status, 0);
    EXPECT_EQ(PayloadNames(out), c.payloads);
    for (const HwConfigPayload& payload : out.payloads) {
      if (payload.name == "PostBlendDither") {
        EXPECT_EQ(RecordOf<DitherConfig>(payload).strength_r, c.dither_strength_r);
      }
    }
    EXPECT_TRUE(log_.Errors().empty()) << log_.Dump();
  }
}

TEST_F(OpsTest, RenderIntentAppendsHardwarePayloadsAndSoftwareAssetsTheRest) {
  HwConfigOutputParams out = EmptyOutput();
  out.payloads.push_back(Sentinel());
  const ModeRenderInputParams vivid = ModeRequest(1, 1, 2, kVividAssets);
  ASSERT_EQ(RequestMode(*parser_, kKivModeRenderIntent, vivid, &out), 0);
  ASSERT_EQ(RequestMode(*parser_, kKivModeRenderIntent, vivid, &out), 0);
  std::vector<std::string> twice = {"sentinel"};
  twice.insert(twice.end(), kVividHardware.begin(), kVividHardware.end());
  twice.insert(twice.end(), kVividHardware.begin(), kVividHardware.end());
  EXPECT_EQ(PayloadNames(out), twice);
  // Copies share the published record.
  EXPECT_EQ(out.payloads[1].config, out.payloads[4].config);
  EXPECT_EQ(out.payloads[1].size, kHwConfigPayloadSize);
  EXPECT_EQ(out.payloads[1].config_size, kDitherConfigLen);
  EXPECT_EQ(CountLines("I", "ProcessModeRenderIntent", "Totally 7 hw assets in output"), 1u);

  HwConfigOutputParams software = EmptyOutput();
  ASSERT_EQ(RequestMode(*parser_, kKivModeSwAssets, vivid, &software), 0);
  EXPECT_EQ(PayloadNames(software),
            (std::vector<std::string>{"PostBlendDE", "PostBlendGameBlob", "PostBlendHdrBlob"}));
  EXPECT_EQ(RecordOf<GameConfig>(software.payloads[1]).blob, "game-data");
  EXPECT_EQ(RecordOf<HdrConfig>(software.payloads[2]).blob, "hdr-data");

  // A mode without software assets gives nothing, successfully.
  HwConfigOutputParams none = EmptyOutput();
  EXPECT_EQ(RequestMode(*parser_, kKivModeSwAssets, ModeRequest(1, 1, 0, {}), &none), 0);
  EXPECT_TRUE(none.payloads.empty());
}

TEST_F(OpsTest, DitherConfigFollowsTheModeLastAppliedByRenderIntent) {
  // Each step applies a request (or none) and then asks for the dither configuration.
  struct Step {
    const char* name;
    VexaKivOps op;
    ModeRenderInputParams request;
    int32_t request_status;
    uint32_t dither_strength_r;  // 0: the output is left untouched
  };
  const std::vector<Step> steps = {
      {"software assets do not apply a mode", kKivModeSwAssets, ModeRequest(1, 1, 2, kVividAssets),
       0, 0},
      {"vivid", kKivModeRenderIntent, ModeRequest(1, 1, 2, kVividAssets), 0, 4},
      {"a failed request keeps vivid", kKivModeRenderIntent, ModeRequest(1, 1, 2, {}), -22, 4},
      {"native has only a PA dither", kKivModeRenderIntent, ModeRequest(1, 1, 0, {}), 0, 0},
      {"factory", kKivModeRenderIntent, ModeRequest(12, 1, 1, {"x", "y", "z"}), 0, 1},
  };
  HwConfigOutputParams before = EmptyOutput();
  before.payloads.push_back(Sentinel());
  ASSERT_EQ(GetDitherConfig(*parser_, &before), 0);
  EXPECT_EQ(PayloadNames(before), std::vector<std::string>{"sentinel"});
  EXPECT_EQ(CountLines("I", "GetPbDitheHwConfig", "curr_mode_ is not set, no color mode is applied"),
            1u);
  for (const Step& step : steps) {
    SCOPED_TRACE(step.name);
    HwConfigOutputParams ignored = EmptyOutput();
    EXPECT_EQ(RequestMode(*parser_, step.op, step.request, &ignored), step.request_status);
    HwConfigOutputParams out = EmptyOutput();
    out.payloads.push_back(Sentinel());
    ASSERT_EQ(GetDitherConfig(*parser_, &out), 0);
    if (step.dither_strength_r == 0) {
      EXPECT_EQ(PayloadNames(out), std::vector<std::string>{"sentinel"});
      continue;
    }
    ASSERT_EQ(PayloadNames(out), std::vector<std::string>{"PostBlendDither"});
    EXPECT_EQ(RecordOf<DitherConfig>(out.payloads[0]).strength_r, step.dither_strength_r);
  }
}

TEST_F(OpsTest, ModesListIsAppendedToTheCallersList) {
  ColorModeList list{kColorModeListVersion, {ColorMode{7, 7, 7, {}, "caller's"}}};
  ASSERT_EQ(GetModes(*parser_, &list), 0);
  ASSERT_EQ(list.modes.size(), 7u);
  EXPECT_EQ(list.modes[0].render_intent_name, "caller's");
  const ColorMode& vivid = list.modes[5];
  EXPECT_EQ(vivid.render_intent_name, "vivid");
  EXPECT_EQ(vivid.hw_assets, kVividAssets);
  EXPECT_EQ(std::make_tuple(vivid.gamut, vivid.gamma, vivid.intent), std::make_tuple(1, 1, 2));
}

TEST_F(OpsTest, GammaSettersBoundTheirTablesAndLeavePublishedPayloadsAlone) {
  struct Case {
    VexaKivProperty prop;
    uint32_t entries;
    int32_t status;
  };
  const std::vector<Case> cases = {
      {kKivPostBlendGammaConfig, 1, 0},       {kKivPostBlendGammaConfig, 1024, 0},
      {kKivPostBlendGammaConfig, 1025, -22},  {kKivPostBlendInvGammaConfig, 0, -22},
      {kKivPostBlendInvGammaConfig, 1, 0},    {kKivPostBlendInvGammaConfig, 1024, 0},
      {kKivPostBlendInvGammaConfig, 2000, -22}, {kKivPostBlendGamutConfig, 0, 0},
      {kKivPostBlendGamutConfig, 100000, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SetCaps(*parser_, c.prop, Caps(c.entries, 3)), c.status)
        << "prop " << c.prop << " entries " << c.entries;
  }
  // The payloads were made at Init with 1024 gamma and 257 inverse-gamma entries per channel.
  HwConfigOutputParams out = EmptyOutput();
  ASSERT_EQ(RequestMode(*parser_, kKivModeRenderIntent, ModeRequest(1, 1, 2, kVividAssets), &out), 0);
  ASSERT_EQ(PayloadNames(out), kVividHardware);
  EXPECT_EQ(RecordOf<GammaPostBlendConfig>(out.payloads[1]).lut_r.size(), 1024u);
  EXPECT_EQ(RecordOf<GammaPostBlendConfig>(out.payloads[2]).lut_b.size(), 257u);
}

}  // namespace
}  // namespace vexa::testing
