// End-to-end tests of the vexa-modes binary over a copy of the example device tree.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/temp_dir.h"
#include "support/tool_process.h"
#include "tools/vexa_modes/exit_codes.h"

namespace vexa::tools {
namespace {

namespace fs = std::filesystem;

const std::string kPanel = VEXA_EXAMPLE_PANEL;

using vexa::testing::Describe;
using vexa::testing::ProcessResult;

// Runs the tool with `args` (shell words) to completion.
ProcessResult Tool(const std::string& args) {
  return vexa::testing::RunCommand(std::string(VEXA_MODES_TOOL) + " " + args);
}

// The tool runs the real library, found where it looks by default (lib/ beside bin/, as in the
// build tree), over a private copy of the example tree, which the library writes into.
class VexaModesCliTest : public ::testing::Test {
 protected:
  void SetUp() override { fs::copy(VEXA_EXAMPLE_DEVICE_ROOT, root_, fs::copy_options::recursive); }

  ProcessResult Run(const std::string& args, const fs::path& root) const {
    return Tool("--root " + root.string() + " --panel " + kPanel + " " + args);
  }

  vexa::testing::TempDir dir_;
  const fs::path root_ = dir_.path();
};

TEST_F(VexaModesCliTest, RefusesWhatItCannotRunWithTheExitCodeOfTheFailure) {
  const struct {
    std::string args;
    int exit_code;
    const char* message;
  } cases[] = {
      {"list", kExitBadArguments, "--panel is required"},
      {"--panel p", kExitBadArguments, "subcommand"},
      {"--panel p --log-level 3 list", kExitBadArguments, "--log-level"},
      {"--panel p --root /no/such/device/tree list", kExitBadArguments, "--root"},
      {"--panel p show --gamut sRGB --gamma 1 --intent 1", kExitBadArguments, "--gamut"},
      {"--library /no/such/libvexa.so --panel p list", kExitLibraryNotLoadable,
       "cannot load the library"},
      // Loads, but is not the parser.
      {"--library libm.so.6 --panel p list", kExitLibraryNotLoadable,
       "no GetVexaKivInterface in the library"},
      {"--root " + root_.string() + " --panel " + kPanel + " show --gamut 1 --gamma 1 --intent 99",
       kExitNoSuchMode, "has no mode with gamut 1, gamma 1, intent 99"},
  };
  for (const auto& c : cases) {
    const ProcessResult r = Tool(c.args);
    EXPECT_EQ(r.exit_code, c.exit_code) << Describe(r);
    EXPECT_NE(r.err.find(c.message), std::string::npos) << Describe(r);
    EXPECT_EQ(r.out, "");
  }
}

TEST_F(VexaModesCliTest, ListPrintsTheModesOfTheTreeBelowRootLoggingAtTheGivenLevel) {
  const ProcessResult r = Run("--log-level 0 list", root_);
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  EXPECT_EQ(r.err.find("VKR I "), std::string::npos) << r.err;
  EXPECT_NE(Run("--log-level 2 list", root_).err.find("VKR I "), std::string::npos);
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
  EXPECT_TRUE(fs::exists(root_ / "data/vendor/display/vexa_mode_merge_version.json"));
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
    const ProcessResult r = Run(std::string("show ") + c.mode, root_);
    ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
    const size_t split = r.out.find("Software assets (");
    ASSERT_NE(split, std::string::npos) << r.out;
    EXPECT_EQ(r.out.substr(split), c.software);
    for (const std::string& text : c.hardware)
      EXPECT_NE(r.out.substr(0, split).find(text), std::string::npos) << text << "\n" << r.out;
  }
}

TEST_F(VexaModesCliTest, LintExitsWithTheWorstSeverityAndNeedsAPanelOnlyForATree) {
  const std::string calib = (root_ / "vendor/etc/display/vexa_calib_data_").string() + kPanel + ".json";
  const std::string rules = (root_ / "vendor/etc/display/vexa_merge_rules_").string() + kPanel + ".json";
  const struct {
    std::string args;
    int exit_code;
    const char* out;  // part of standard output
  } cases[] = {
      {"--root " + root_.string() + " --panel " + kPanel + " lint", 0, "0 errors, 0 warnings"},
      {"--root " + root_.string() + " --panel " + kPanel + " lint --format json", 0,
       "\"errors\" : 0"},
      {"lint " + calib + " " + rules, 0, "0 errors, 0 warnings"},
      {"--root " + root_.string() + " lint", kExitBadArguments, ""},
      {"lint /no/such/file.json", kExitBadArguments, ""},
  };
  for (const auto& c : cases) {
    const ProcessResult r = Tool(c.args);
    EXPECT_EQ(r.exit_code, c.exit_code) << c.args << "\n" << Describe(r);
    EXPECT_NE(r.out.find(c.out), std::string::npos) << Describe(r);
  }
  // A file that the device reads but cannot use: an error, exit 2.
  std::ofstream(rules) << "[";
  const ProcessResult broken = Tool("lint " + rules);
  EXPECT_EQ(broken.exit_code, 2) << Describe(broken);
  EXPECT_NE(broken.out.find("error [file-not-json] " + rules), std::string::npos) << broken.out;
}

}  // namespace
}  // namespace vexa::tools
