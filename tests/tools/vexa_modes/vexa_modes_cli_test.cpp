// End-to-end tests of the vexa-modes binary over a copy of the example device tree.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <regex>
#include <sstream>

#include "support/process_runner.h"
#include "support/temp_dir.h"
#include "tools/vexa_modes/exit_codes.h"

namespace vexa::tools {
namespace {

namespace fs = std::filesystem;
using vexa::testing::ProcessResult;
using vexa::testing::RunProcess;

const std::string kPanel = VEXA_EXAMPLE_PANEL;

ProcessResult Tool(std::vector<std::string> args) {
  args.insert(args.begin(), VEXA_MODES_TOOL);
  return RunProcess(args);
}

std::string Describe(const ProcessResult& r) {
  return "exit " + std::to_string(r.exit_code) + "\nstdout:\n" + r.out + "\nstderr:\n" + r.err;
}

TEST(VexaModesCliTest, RejectsBadArgumentsWithExitCodeTwo) {
  const struct {
    std::vector<std::string> args;
    const char* message;
  } cases[] = {
      {{}, "required"},
      {{"--panel", "p"}, "subcommand"},
      {{"list"}, "--panel is required"},
      {{"--panel", "p", "--log-level", "3", "list"}, "--log-level"},
      {{"--panel", "p", "--root", "/no/such/device/tree", "list"}, "--root"},
      {{"--panel", "p", "show", "--gamut", "1", "--gamma", "1"}, "--intent is required"},
      {{"--panel", "p", "show", "--gamut", "sRGB", "--gamma", "1", "--intent", "1"}, "--gamut"},
  };
  for (const auto& c : cases) {
    const ProcessResult r = Tool(c.args);
    EXPECT_EQ(r.exit_code, kExitBadArguments) << Describe(r);
    EXPECT_NE(r.err.find(c.message), std::string::npos) << Describe(r);
    EXPECT_EQ(r.out, "");
  }
  EXPECT_EQ(Tool({"--help"}).exit_code, kExitOk);
}

TEST(VexaModesCliTest, LibraryThatCannotBeLoadedIsExitCodeFour) {
  const struct {
    std::string library;
    const char* message;
  } cases[] = {
      {"/no/such/libvexa-json-mode-parser.so", "cannot load the library"},
      {std::string(VEXA_SOURCE_DIR) + "/examples/panel/panel.json", "cannot load the library"},
      {"libm.so.6", "no GetVexaKivInterface in the library"},  // loads, but is not the parser
  };
  for (const auto& c : cases) {
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"list"},
          {"show", "--gamut", "1", "--gamma", "1", "--intent", "1"}}) {
      std::vector<std::string> args = {"--library", c.library, "--panel", kPanel};
      args.insert(args.end(), command.begin(), command.end());
      const ProcessResult r = Tool(args);
      EXPECT_EQ(r.exit_code, kExitLibraryNotLoadable) << Describe(r);
      EXPECT_NE(r.err.find(c.message), std::string::npos) << Describe(r);
    }
  }
}

// The rest runs the real library, found where the tool looks by default (lib/ beside bin/, as
// in the build tree), over a private copy of the example tree, which the library writes into.
class VexaModesLibraryTest : public ::testing::Test {
 protected:
  void SetUp() override { fs::copy(VEXA_EXAMPLE_DEVICE_ROOT, root_, fs::copy_options::recursive); }

  ProcessResult Run(std::vector<std::string> args, const fs::path& root = {}) const {
    const std::string root_dir = (root.empty() ? root_ : root).string();
    args.insert(args.begin(), {"--root", root_dir, "--panel", kPanel});
    return Tool(args);
  }

  vexa::testing::TempDir dir_;
  const fs::path root_ = dir_.path();
};

// Each table row as "gamut gamma intent name | assets".
std::vector<std::string> TableRows(const std::string& out) {
  static const std::regex kRow(R"(^\d+\s+(-?\d+)\s+(-?\d+)\s+(-?\d+)\s+(\S+)\s+(.*)$)");
  std::vector<std::string> rows;
  std::istringstream lines(out);
  std::smatch m;
  for (std::string line; std::getline(lines, line);) {
    if (std::regex_match(line, m, kRow))
      rows.push_back(m.str(1) + " " + m.str(2) + " " + m.str(3) + " " + m.str(4) + " | " +
                     m.str(5));
  }
  return rows;
}

TEST_F(VexaModesLibraryTest, ListPrintsTheFactoryCalibrationAndMergedModes) {
  const ProcessResult r = Run({"list"});
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  EXPECT_NE(r.out.find("Panel " + kPanel + ": 6 modes\n"), std::string::npos) << r.out;
  // Factory modes first, then the calibration modes no rule replaced, then the merged modes (which
  // replace the calibration modes they refine), rules in name order.
  const std::vector<std::string> expected = {"1 1 384 factory", "12 1 1 display_p3",
                                             "12 1 3 hdr",      "12 4 2 vivid",
                                             "1 1 4 game",      "1 1 1 standard"};
  const std::vector<std::string> rows = TableRows(r.out);
  ASSERT_EQ(rows.size(), expected.size()) << r.out;
  for (size_t i = 0; i < rows.size(); ++i)
    EXPECT_EQ(rows[i].substr(0, rows[i].find(" | ")), expected[i]) << r.out;
  EXPECT_EQ(rows[0], "1 1 384 factory | PostBlendGC, PostBlendGamut, PostBlendIGC, PostBlendPCC");
  for (const char* asset : {"PostBlendDE,", "PostBlendDither,", "PostBlendGC,", "PostBlendGamut,",
                            "PostBlendIGC,", "PostBlendPCC,"}) {
    EXPECT_NE(rows[5].find(asset), std::string::npos) << asset;
  }
}

TEST_F(VexaModesLibraryTest, ShowDecodesAModesPayloadsOrReportsThatThereIsNone) {
  const struct {
    std::array<int, 3> mode;  // gamut, gamma, intent
    int exit_code;
    std::vector<std::string> hardware, software;  // substrings of each part of the output
  } cases[] = {
      // The merged sRGB mode: factory gamut and PCC, calibration gamma, dither and DE.
      {{1, 1, 1},
       kExitOk,
       {"  PostBlendGamut (config_size 117936)", "enable 1, grid_mode 1, num_entries 4913",
        "white   entry 4912 grid (16,16,16): in (   0,   0,   0) out (4095,4095,4095)",
        "  PostBlendGC (config_size 88)", "lut_r: 1024 entries, first 0, middle", "last 1023",
        "lut_g: 257 entries, first 0, middle", "last 4095", "dither_enable 1, dither_strength 4",
        "  PostBlendPCC (config_size 280)", "red   c 0, r 1, g 0", "mode 1 (luma)",
        "matrix (16): 0 8 2 10 12 4 14 6 3 11 1 9 15 7 13 5"},
       // The rule takes no game blob, so the merged mode has a disabled one.
       {"Software assets (2):", "  PostBlendDE (config_size 60)", "flags 0x1, sharp 16",
        "quality 3, content_type 2", "  PostBlendGameBlob (config_size 32)\n    enable 0"}},
      // The factory-floor mode: inline tables of a version-2 file.
      {{1, 1, 384},
       kExitOk,
       {"Hardware assets (4):", "lut_b: 257 entries, first 0", "lut_r: 1024 entries, first 0",
        "num_entries 4913"},
       {"Software assets (0):"}},
      {{12, 1, 3},
       kExitOk,
       {"red     entry   16 grid (16, 0, 0): in (   0,   0,   0) out (4095,   0,   0)"},
       {"  PostBlendHdrBlob (config_size 32)", "blob 60 bytes: \"hdr10;max_luminance=800;"}},
      {{1, 1, 99}, kExitNoSuchMode, {}, {}},
      {{12, 4, 1}, kExitNoSuchMode, {}, {}},
  };
  for (const auto& c : cases) {
    const auto [gamut, gamma, intent] = c.mode;
    SCOPED_TRACE(std::to_string(gamut) + "/" + std::to_string(gamma) + "/" +
                 std::to_string(intent));
    const ProcessResult r = Run({"show", "--gamut", std::to_string(gamut), "--gamma",
                                 std::to_string(gamma), "--intent", std::to_string(intent)});
    ASSERT_EQ(r.exit_code, c.exit_code) << Describe(r);
    if (c.exit_code == kExitNoSuchMode) {
      EXPECT_NE(r.err.find("has no mode with gamut " + std::to_string(gamut)), std::string::npos)
          << r.err;
      continue;
    }
    const size_t split = r.out.find("Software assets (");
    ASSERT_NE(split, std::string::npos) << r.out;
    const std::string hardware = r.out.substr(0, split), software = r.out.substr(split);
    for (const std::string& text : c.hardware)
      EXPECT_NE(hardware.find(text), std::string::npos) << text << "\n" << r.out;
    for (const std::string& text : c.software)
      EXPECT_NE(software.find(text), std::string::npos) << text << "\n" << r.out;
    for (const char* name : {"PostBlendDE ", "PostBlendHdrBlob ", "PostBlendGameBlob "}) {
      EXPECT_EQ(hardware.find(name), std::string::npos) << name << " is a software asset";
    }
  }
}

TEST_F(VexaModesLibraryTest, LogLevelAndRootReachTheLibrary) {
  const ProcessResult quiet = Run({"--log-level", "0", "list"});
  const ProcessResult verbose = Run({"--log-level", "2", "list"});
  ASSERT_EQ(quiet.exit_code, kExitOk) << Describe(quiet);
  EXPECT_EQ(quiet.err.find("VKR I "), std::string::npos) << quiet.err;
  EXPECT_NE(verbose.err.find("VKR I "), std::string::npos) << verbose.err;
  EXPECT_TRUE(fs::exists(root_ / "data/vendor/display/vexa_mode_merge_version.json"))
      << "written below --root";
  const fs::path empty = root_ / "empty";
  fs::create_directories(empty);
  const ProcessResult r = Run({"list"}, empty);
  EXPECT_EQ(r.exit_code, kExitOk) << Describe(r);
  EXPECT_NE(r.out.find(": 0 modes\n"), std::string::npos) << r.out;
}

}  // namespace
}  // namespace vexa::tools
