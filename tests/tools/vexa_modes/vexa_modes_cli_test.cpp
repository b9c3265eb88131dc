// End-to-end tests of the vexa-modes binary over a private copy of the example device tree; the
// SVG figures and the XHTML report it writes are checked with expat, then by content.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <sstream>

#include "support/temp_dir.h"
#include "support/xml_document.h"
#include "tools/vexa_modes/exit_codes.h"
#include "tools/vexa_modes/svg_line_chart.h"
#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

namespace fs = std::filesystem;
using vexa::testing::XmlDocument;
using vexa::testing::XmlElement;

const std::string kPanel = VEXA_EXAMPLE_PANEL;

struct ProcessResult {
  int exit_code = -1;  // -1 when the tool could not be started or did not exit normally
  std::string out, err;
};

std::string Describe(const ProcessResult& r) {
  return "exit " + std::to_string(r.exit_code) + "\nstdout:\n" + r.out.substr(0, 2000) +
         "\nstderr:\n" + r.err;
}

std::vector<std::string> Words(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string w; in >> w;) words.push_back(w);
  return words;
}

// The tool runs the real library, found where it looks by default (lib/ beside bin/, as in the
// build tree), over the copy of the example tree below dir_, which the library writes into.
class VexaModesCliTest : public ::testing::Test {
 protected:
  void SetUp() override { fs::copy(VEXA_EXAMPLE_DEVICE_ROOT, root_, fs::copy_options::recursive); }

  // Runs the tool with `args` (shell words) to completion.
  ProcessResult Tool(const std::string& args) const {
    const std::string command = std::string(VEXA_MODES_TOOL) + " " + args + " 2>" + dir_.File("err");
    ProcessResult result;
    FILE* out = popen(command.c_str(), "r");
    if (out == nullptr) return result;
    char buf[4096];
    for (size_t n; (n = std::fread(buf, 1, sizeof(buf), out)) > 0;) result.out.append(buf, n);
    const int status = pclose(out);
    if (WIFEXITED(status)) result.exit_code = WEXITSTATUS(status);
    result.err = dir_.Get("err");
    return result;
  }
  std::string TreeArgs() const { return "--root " + root_ + " --panel " + kPanel; }
  ProcessResult Run(const std::string& args) const { return Tool(TreeArgs() + " " + args); }
  // The file parsed; a failure when it is not well-formed XML.
  XmlDocument Parse(const std::string& relative) const {
    XmlDocument doc(dir_.Get(relative));
    EXPECT_EQ(doc.error(), "") << relative;
    return doc;
  }

  vexa::testing::TempDir dir_;
  const std::string root_ = dir_.File("device");
};

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
      {"--root " + root_ + " lint", kExitBadArguments, "", "vexa-modes: --panel is required for lint\n",
       true},
      {"--panel p", kExitBadArguments, "", "subcommand"},
      {"--panel p --log-level 3 list", kExitBadArguments, "", "--log-level"},
      {"--panel p --root /no/such/device/tree list", kExitBadArguments, "", "--root"},
      {"--panel p show --gamut sRGB --gamma 1 --intent 1", kExitBadArguments, "", "--gamut"},
      {tree + "plot --gamut 1 -o " + dir_.File("p"), kExitBadArguments, "", "--gamut requires --gamma"},
      {"lint /no/such/file.json", kExitBadArguments, "", "/no/such/file.json"},
      {"--library /no/such/libvexa.so --panel p list", kExitLibraryNotLoadable, "",
       "cannot load the library"},
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

TEST_F(VexaModesCliTest, PlotDrawsThePayloadsOfEachModeOneFilePerModeOrPerFigure) {
  ProcessResult r = Run("plot -o " + dir_.File("modes"));
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  ASSERT_EQ(Words(r.out).size(), 7u) << r.out;
  for (const std::string& file : Words(r.out))
    EXPECT_EQ(Parse(fs::relative(file, dir_.path()).string()).All("svg").size(), 5u) << file;
  // The merged sRGB mode: GC, IGC and two gamut figures nested in one file.
  EXPECT_EQ(Parse("modes/standard-g1-t1-i1.svg").All("polyline").size(), 3u + 3u + 7u * 3u);

  r = Run("plot --per-figure --gamut 1 --gamma 1 --intent 1 -o " + dir_.File("figures"));
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  EXPECT_EQ(Words(r.out).size(), 4u) << r.out;
  const XmlDocument gc = Parse("figures/standard-g1-t1-i1-gc.svg");
  ASSERT_EQ(gc.All("polyline").size(), 3u);
  EXPECT_EQ(gc.All("line", "class", "identity").size(), 1u);
  // The sRGB encoding of entry 184 of 1024 (0.18 linear) is 472 of 1023.
  const std::vector<std::string> red = Words(gc.All("polyline", "data-label", "red")[0]->Attribute("points"));
  ASSERT_EQ(red.size(), 1024u);
  const SvgLineChart scale("", "", "", 1023, 1023);
  EXPECT_EQ(red[184], Format("%.2f,%.2f", scale.PixelX(184), scale.PixelY(472)));
  const XmlDocument ramps = Parse("figures/standard-g1-t1-i1-gamut-ramps.svg");
  EXPECT_EQ(ramps.All("g", "class", "line-chart").size(), 7u);
  EXPECT_EQ(ramps.All("polyline").size(), 21u);
  const XmlDocument shift = Parse("figures/standard-g1-t1-i1-gamut-shift.svg");
  size_t cells = 0;
  for (const auto* rect : shift.All("rect")) cells += shift.Parent(*rect)->Attribute("class") == "tile";
  EXPECT_EQ(cells, 17u * 17u * 17u);
  EXPECT_EQ(shift.All("g", "class", "tile").size(), 17u);
}

// The text of each cell of the table's rows.
std::vector<std::vector<std::string>> Rows(const XmlDocument& page, const std::string& table_class) {
  std::vector<std::vector<std::string>> rows;
  const auto& all = page.elements();
  for (size_t i = 0; i < all.size(); ++i) {
    const XmlElement* table = all[i].name == "tr" ? page.Parent(all[i]) : nullptr;
    if (table == nullptr || table->Attribute("class") != table_class) continue;
    rows.emplace_back();
    for (size_t j = i + 1; j < all.size() && all[j].parent == static_cast<int>(i); ++j)
      rows.back().push_back(all[j].text);
  }
  return rows;
}

TEST_F(VexaModesCliTest, ReportIsOneWellFormedPageOfModesRulesFindingsAndFigures) {
  ProcessResult r = Run("report -o " + dir_.File("report.html"));
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  XmlDocument page = Parse("report.html");
  const auto modes = Rows(page, "modes");
  ASSERT_EQ(modes.size(), 8u);
  EXPECT_EQ(modes[1], (std::vector<std::string>{"0", "1", "1", "384", "factory",
                                                "PostBlendGC, PostBlendGamut, PostBlendIGC, PostBlendPCC"}));
  const auto merged = Rows(page, "merged");
  ASSERT_EQ(merged.size(), 4u);
  EXPECT_EQ(merged[2][0], "reading_factory");
  EXPECT_EQ(merged[3], (std::vector<std::string>{
                           "srgb_factory", "factory_floor", "srgb",
                           "gamut 1, gamma 1, intent 1 \"standard\"", "yes",
                           "PostBlendGamutMergeOp: LEFT_OPERAND, PostBlendGCMergeOp: RIGHT_OPERAND, "
                           "PostBlendIGCMergeOp: RIGHT_OPERAND, PostBlendPCCMergeOp: LEFT_OPERAND, "
                           "PostBlendDitherMergeOp: RIGHT_OPERAND, PostBlendDEMergeOp: RIGHT_OPERAND"}));
  EXPECT_EQ(page.All("p", "class", "no-findings").size(), 1u);
  EXPECT_EQ(page.All("h3").size(), 7u);
  EXPECT_EQ(page.All("svg").size(), 7u * 4u);  // every example mode has GC, IGC and a full gamut

  fs::remove(root_ + "/vendor/etc/display/vexa_merge_rules_" + kPanel + ".json");
  r = Run("report");
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  page = XmlDocument(r.out);
  EXPECT_EQ(page.error(), "");
  EXPECT_EQ(Rows(page, "merged").size(), 0u);
  EXPECT_NE(r.out.find("<p>No merge-rules file for this panel.</p>"), std::string::npos);
}

}  // namespace
}  // namespace vexa::tools
