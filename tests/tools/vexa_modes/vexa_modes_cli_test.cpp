// End-to-end tests of the vexa-modes binary over a copy of the example device tree.
#include <filesystem>

#include "support/tool_process.h"
#include "tools/vexa_modes/exit_codes.h"

namespace vexa::tools {
namespace {

namespace fs = std::filesystem;
using vexa::testing::Describe;
using vexa::testing::ProcessResult;
using VexaModesCliTest = vexa::testing::ExampleTreeToolTest;

const std::string kPanel = VEXA_EXAMPLE_PANEL;

TEST_F(VexaModesCliTest, EachCommandLineExitsWithTheCodeOfItsOutcomeAndSaysWhy) {
  const std::string tree = TreeArgs() + " ";
  const std::string calib = root_ + "/vendor/etc/display/vexa_calib_data_" + kPanel + ".json";
  const std::string rules = root_ + "/vendor/etc/display/vexa_merge_rules_" + kPanel + ".json";
  const std::string broken = dir_.File("vexa_merge_rules_" + kPanel + ".json");
  dir_.Put("vexa_merge_rules_" + kPanel + ".json", "[");  // read by the device, but not usable
  const std::string no_dir = dir_.File("no/such/dir/report.html");
  const struct {
    std::string args;
    int exit_code;
    std::string out, err;  // parts of standard output (empty: none at all) and standard error
    bool whole_err = false;
  } cases[] = {
      {"list", kExitBadArguments, "", "vexa-modes: --panel is required for list\n", true},
      {"report", kExitBadArguments, "", "vexa-modes: --panel is required for report\n", true},
      {"--root " + root_ + " lint", kExitBadArguments, "", "vexa-modes: --panel is required for lint\n", true},
      {"--panel p", kExitBadArguments, "", "subcommand"},
      {"--panel p --log-level 3 list", kExitBadArguments, "", "--log-level"},
      {"--panel p --root /no/such/device/tree list", kExitBadArguments, "", "--root"},
      {"--panel p show --gamut sRGB --gamma 1 --intent 1", kExitBadArguments, "", "--gamut"},
      {tree + "plot --gamut 1 -o " + dir_.File("p"), kExitBadArguments, "", "--gamut requires --gamma"},
      {"lint /no/such/file.json", kExitBadArguments, "", "/no/such/file.json"},
      {"--library /no/such/libvexa.so --panel p list", kExitLibraryNotLoadable, "", "cannot load the library"},
      // Loads, but is not the parser.
      {"--library libm.so.6 --panel p list", kExitLibraryNotLoadable, "",
       "no GetVexaKivInterface in the library"},
      {tree + "show --gamut 1 --gamma 1 --intent 99", kExitNoSuchMode, "",
       "has no mode with gamut 1, gamma 1, intent 99"},
      {tree + "plot --gamut 1 --gamma 1 --intent 99 -o " + dir_.File("p"), kExitNoSuchMode, "",
       "vexa-modes: panel " + kPanel + " has no mode with gamut 1, gamma 1, intent 99 (the list "
       "command shows the published modes)\n"},
      {tree + "report -o " + no_dir, kExitFileRefused, "", "vexa-modes: cannot write " + no_dir + "\n"},
      // lint exits with the worst severity it found and needs a panel only for a tree.
      {tree + "lint", kExitOk, "0 errors, 0 warnings", ""},
      {tree + "lint --format json", kExitOk, "\"errors\" : 0", ""},
      {"lint " + calib + " " + rules, kExitOk, "0 errors, 0 warnings", ""},
      {"lint " + broken, 2, "error [file-not-json] " + broken, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args);
    const ProcessResult r = Tool(c.args);
    EXPECT_EQ(r.exit_code, c.exit_code) << Describe(r);
    EXPECT_EQ(r.out.empty(), c.out.empty()) << Describe(r);
    EXPECT_NE(r.out.find(c.out), std::string::npos) << Describe(r);
    if (c.whole_err) {
      EXPECT_EQ(r.err, c.err);
    } else {
      EXPECT_NE(r.err.find(c.err), std::string::npos) << Describe(r);
    }
  }
}

TEST_F(VexaModesCliTest, ListPrintsTheModesOfTheTreeBelowRootLoggingAtTheGivenLevel) {
  const ProcessResult r = Run("--log-level 0 list");
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  EXPECT_EQ(r.err.find("VKR I "), std::string::npos) << r.err;
  EXPECT_NE(Run("--log-level 2 list").err.find("VKR I "), std::string::npos);
  // Factory modes first, then the calibration modes no rule replaced, then the merged modes (which
  // replace the calibration modes they refine), rules in name order.
  const std::string merged_assets =
      "PostBlendDE, PostBlendDither, PostBlendGC, PostBlendGameBlob, PostBlendGamut, "
      "PostBlendIGC, PostBlendPCC, PostBlendPa, PostBlendPaDither\n";
  EXPECT_EQ(r.out, "Panel " + kPanel + ": 7 modes\n" +
                       "#  gamut  gamma  intent  intent name  hw assets\n"
                       "0      1      1     384  factory      PostBlendGC, PostBlendGamut, "
                       "PostBlendIGC, PostBlendPCC\n"
                       "1     12      1       1  display_p3   PostBlendDither, PostBlendGC, "
                       "PostBlendGamut, PostBlendIGC, PostBlendPCC\n"
                       "2     12      1       3  hdr          PostBlendGC, PostBlendGamut, "
                       "PostBlendHdrBlob, PostBlendIGC\n"
                       "3     12      4       2  vivid        PostBlendDE, PostBlendGC, "
                       "PostBlendGamut, PostBlendIGC, PostBlendPCC, PostBlendPaDither\n"
                       "4      1      1       4  game         " + merged_assets +
                       "5      1      1       5  reading      " + merged_assets +
                       "6      1      1       1  standard     " + merged_assets);
  EXPECT_TRUE(fs::exists(root_ + "/data/vendor/display/vexa_mode_merge_version.json"));
}

TEST_F(VexaModesCliTest, ShowDecodesTheHardwareAndSoftwarePayloadsOfOneMode) {
  const struct {
    const char* mode;
    std::vector<std::string> hardware;  // substrings before the software part
    std::string software;               // the software part, whole
  } cases[] = {
      // The merged sRGB mode; its rule takes no game blob, so it has a disabled one.
      {"--gamut 1 --gamma 1 --intent 1",
       {"intent name \"standard\"\nHardware assets (7):\n",
        "lut_r: 1024 entries, first 0, middle 753, last 1023",
        "lut_g: 257 entries, first 0, middle 876, last 4095",
        "matrix (16): 0 8 2 10 12 4 14 6 3 11 1 9 15 7 13 5"},
       "Software assets (2):\n  PostBlendDE (config_size 60)\n"
       "    enable 1, fill_marker 1, flags 0x1, sharp 16\n"
       "    thr_quiet 8, thr_dieout 400, thr_low 16, thr_high 64, clip 512\n"
       "    quality 3, content_type 2, de_blend 0, de_lpf high 0 mid 0 low 0\n"
       "  PostBlendGameBlob (config_size 32)\n    enable 0, blob 0 bytes: \"\"\n"},
      // Gamut and PCC merged by libvexa-algo.so beside the library: the factory tables after the
      // reading mode's tuning (softer saturation, warmer white); white and grey stay neutral in
      // the table, and the PCC keeps the factory's white balance times the warm gains.
      {"--gamut 1 --gamma 1 --intent 5",
       {"intent name \"reading\"\nHardware assets (7):\n",
        "enable 1, grid_mode 1, num_entries 4913",
        "red     entry   16 grid (16, 0, 0): in (4095,   0,   0) out (3529, 196, 179)",
        "grey    entry 2456 grid ( 8, 8, 8): in (2048,2048,2048) out (2048,2048,2048)",
        "green c 0, r 0, g 0.91348, b 0, rr 0"},
       "Software assets (2):\n  PostBlendDE (config_size 60)\n"
       "    enable 0, fill_marker 0, flags 0x0, sharp 0\n"
       "    thr_quiet 0, thr_dieout 0, thr_low 0, thr_high 0, clip 0\n"
       "    quality 0, content_type 0, de_blend 0, de_lpf high 0 mid 0 low 0\n"
       "  PostBlendGameBlob (config_size 32)\n    enable 0, blob 0 bytes: \"\"\n"},
      {"--gamut 12 --gamma 1 --intent 3",
       {"Hardware assets (3):\n",
        "red     entry   16 grid (16, 0, 0): in (   0,   0,   0) out (4095,   0,   0)"},
       "Software assets (1):\n  PostBlendHdrBlob (config_size 32)\n    enable 0, blob 60 bytes: "
       "\"hdr10;max_luminance=800;min_luminance=0.0005;tone_map=bt2390\"\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.mode);
    const ProcessResult r = Run(std::string("show ") + c.mode);
    ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
    const size_t split = r.out.find("Software assets (");
    ASSERT_NE(split, std::string::npos) << r.out;
    EXPECT_EQ(r.out.substr(split), c.software);
    for (const std::string& text : c.hardware)
      EXPECT_NE(r.out.substr(0, split).find(text), std::string::npos) << text << "\n" << r.out;
  }
}

}  // namespace
}  // namespace vexa::tools
