// Lint over copies of the example device tree, each with one fault, and over single files.
#include "tools/lint/linter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "support/temp_dir.h"
#include "tools/lint/lint_output.h"
#include "tools/modes_files/modes_file_packer.h"
#include "tools/vexa_modes/lint_command.h"

namespace vexa::lint {
namespace {

namespace fs = std::filesystem;

const std::string kPanel = VEXA_EXAMPLE_PANEL;
const std::string kRules = "/vendor/etc/display/vexa_merge_rules_" + kPanel + ".json";
const std::string kCalib = "/vendor/etc/display/vexa_calib_data_" + kPanel + ".json";

std::string Describe(const std::vector<Diagnostic>& diagnostics) {
  std::ostringstream text;
  WriteLintText(diagnostics, text);
  return text.str();
}

// Members to set, each by its path from the file's root; a null value removes the member, and
// an empty path stands for the whole file, replaced by the value's text.
using Edits = std::vector<std::pair<std::vector<std::string>, Json::Value>>;

// Sets `value` at path[i...] below `node`, decoding and re-encoding the hex sections on the way.
void SetAt(Json::Value& node, const std::vector<std::string>& path, size_t i, const Json::Value& value) {
  if (node.isString()) {
    std::string text;
    DecodeData(node, text);
    Json::Value section;
    ASSERT_TRUE(PopulateJsonValue(text, section)) << path[i - 1];
    SetAt(section, path, i, value);
    node = tools::HexOfJson(section);
  } else if (i + 1 < path.size()) {
    SetAt(node[path[i]], path, i + 1, value);
  } else if (value.isNull()) {
    node.removeMember(path[i]);
  } else {
    node[path[i]] = value;
  }
}

// A private copy of the example tree, whose files a test edits.
class TreeCopy {
 public:
  TreeCopy() { fs::copy(VEXA_EXAMPLE_DEVICE_ROOT, dir_.path(), fs::copy_options::recursive); }

  std::string root() const { return dir_.path(); }
  std::string HostPath(const std::string& device_path) const { return dir_.path() + device_path; }

  void Edit(const std::string& device_path, const Edits& edits) {
    Json::Value root;
    ASSERT_TRUE(PopulateJsonValue(dir_.Get(device_path), root)) << device_path;
    for (const auto& [path, value] : edits) {
      if (path.empty()) return dir_.Put(device_path, value.asString());
      SetAt(root, path, 0, value);
    }
    dir_.Put(device_path, JsonToCompactText(root));
  }

 private:
  vexa::testing::TempDir dir_;
};

std::vector<Diagnostic> LintTree(const TreeCopy& tree) { return LintDeviceTree({tree.root(), kPanel, {}}); }

// "severity|check|mode|section|member|consequence"
std::string Key(const Diagnostic& d) {
  return std::string(SeverityWord(d.severity)) + "|" + d.check + "|" + d.mode + "|" + d.section + "|" +
         d.member + "|" + d.consequence;
}

std::vector<Diagnostic> Problems(const std::vector<Diagnostic>& all) {
  std::vector<Diagnostic> problems;
  for (const Diagnostic& d : all) {
    if (d.severity != Severity::kNote) problems.push_back(d);
  }
  return problems;
}

TEST(LintTest, ExampleTreeIsCleanAndItsMergedModesReplaceTheirCalibrationModes) {
  TreeCopy tree;
  const std::vector<Diagnostic> diagnostics = LintTree(tree);
  EXPECT_TRUE(Problems(diagnostics).empty()) << Describe(diagnostics);
  EXPECT_EQ(LintExitStatus(diagnostics), 0);
  // The rules are written so that the merged modes take the place of three calibration modes.
  size_t replaced = 0;
  for (const Diagnostic& d : diagnostics) {
    if (d.check == "mode-duplicate" && d.file == kCalib) ++replaced;
  }
  EXPECT_EQ(replaced, 3u) << Describe(diagnostics);
}

TEST(LintTest, EachFaultGivesOneDiagnosticNamingItsPlaceAndConsequence) {
  const std::string& P = kPanel;
  const struct {
    std::string file;
    Edits edits;
    std::string expected;  // the Key of the first problem
    std::string message;   // a part of its message
    int exit_status;
    size_t problems = 1;  // warnings and errors in all: a fault may cost more than one thing
  } cases[] = {
      {kCalib, {{{P, "vivid", "PostBlendDE", "enable"}, "yes"}},
       "error|wrong-type|vivid|PostBlendDE|enable|asset at identity", "expected boolean", 2},
      {kCalib, {{{P, "hdr", "PostBlendGC"}, "zz"}},
       "error|section-undecodable|hdr|PostBlendGC||mode dropped", "PostBlendGC", 2},
      {kCalib, {{{P, "hdr", "WhitePoint"}, "6500"}}, "error|wrong-type|hdr||WhitePoint|mode dropped",
       "found string", 2},
      {kCalib, {{{P, "vivid", "PostBlendGama"}, tools::HexOfJson(Json::objectValue)}},
       "warning|unknown-member|vivid||PostBlendGama|member ignored",
       "(did you mean \"PostBlendGamut\"?)", 1},
      {kCalib, {{{P, "hdr", "PostBlendGC", "Predefined"}, "srbg"}},
       "error|common-table-missing|hdr|PostBlendGC|srbg|asset at identity", "no table \"srbg\"", 2},
      {kCalib, {{{P, "vivid", "PostBlendGC", "Predefined"}, "srgb"}},
       "warning|common-table-unused||Common|PostBlendGC.gamma22|table loaded and never used",
       "\"gamma22\"", 1},
      {kCalib,
       {{{P, "vivid", "Applicability", "ColorPrimaries"}, "sRGB"},
        {{P, "vivid", "Applicability", "GammaTransfer"}, "sRGB"},
        {{P, "vivid", "Applicability", "RenderIntent"}, 384}},
       "warning|mode-duplicate|vivid|||mode dropped: \"factory_floor\" is published instead",
       "factory mode \"factory_floor\"", 1},
      // Answers the requests of "display_p3" with as many assets, at another white point.
      {kCalib,
       {{{P, "vivid", "Applicability", "GammaTransfer"}, "sRGB"},
        {{P, "vivid", "Applicability", "RenderIntent"}, 1},
        {{P, "vivid", "WhitePoint"}, 6000},
        {{P, "vivid", "PostBlendDE"}, Json::nullValue}},
       "warning|mode-shadowed|vivid|||mode never selected", "answered first by mode \"display_p3\"", 1},
      {kRules, {{{P, "MergedModes", "game_factory", "Applicability", "RenderIntent"}, 40}},
       "error|rule-operand-missing|game_factory|||rule skipped: merged mode not made",
       "no calibration mode has", 2},
      // Without merging the factory mode becomes colorimetric and displaces "srgb".
      {kRules, {{{P, "ModeMerge", "PostBlendPCCMergeOp", "Version"}, 3}},
       "error|merge-versions||ModeMerge|PostBlendPCCMergeOp|merging off: no merged mode is made",
       "is version 3; the device supports 2", 2, 2},
      {kRules, {{{}, "{\"a\": "}}, "error|file-not-json||||file ignored", "not a JSON object or array", 2, 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expected);
    TreeCopy tree;
    tree.Edit(c.file, c.edits);
    const std::vector<Diagnostic> diagnostics = LintTree(tree);
    EXPECT_EQ(LintExitStatus(diagnostics), c.exit_status) << Describe(diagnostics);
    const std::vector<Diagnostic> problems = Problems(diagnostics);
    ASSERT_EQ(problems.size(), c.problems) << Describe(diagnostics);
    const Diagnostic& d = problems.front();
    EXPECT_EQ(Key(d), c.expected);
    EXPECT_EQ(d.file, c.file);
    EXPECT_NE(d.message.find(c.message), std::string::npos) << d.message;
  }
}

TEST(LintTest, SingleFilesAreReadAloneWithThePanelFromTheirNames) {
  TreeCopy tree;
  tree.Edit(kCalib, {{{kPanel, "hdr", "WhitePoint"}, "6500"}});
  const std::string unnamed = tree.HostPath("/modes.json");
  fs::copy_file(tree.HostPath(kCalib), unnamed);
  const struct {
    std::string file;
    std::string check;  // of the one problem, or empty for none
    int exit_status;
  } cases[] = {
      {tree.HostPath(kCalib), "wrong-type", 2}, {tree.HostPath(kRules), "", 0}, {unnamed, "file-name", 2}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    const std::vector<Diagnostic> diagnostics = LintFiles({"", "", {c.file}});
    const std::vector<Diagnostic> problems = Problems(diagnostics);
    EXPECT_EQ(LintExitStatus(diagnostics), c.exit_status) << Describe(diagnostics);
    ASSERT_EQ(problems.size(), c.check.empty() ? 0u : 1u) << Describe(diagnostics);
    if (c.check.empty()) continue;
    EXPECT_EQ(problems.front().check, c.check);
    EXPECT_EQ(problems.front().file, c.file);
  }
}

TEST(LintTest, JsonOutputParsesBackToTheSameDiagnostics) {
  TreeCopy tree;
  tree.Edit(kRules, {{{kPanel, "ModeMerge", "Version"}, 9}});
  const std::vector<Diagnostic> expected = LintTree(tree);
  std::ostringstream out;
  EXPECT_EQ(vexa::tools::RunLint({tree.root(), kPanel, {}}, vexa::tools::LintFormat::kJson, out), 2);

  Json::Value root;
  ASSERT_TRUE(PopulateJsonValue(out.str(), root)) << out.str();
  ASSERT_EQ(root["diagnostics"].size(), expected.size());
  EXPECT_EQ(root["errors"].asInt(), 1);
  EXPECT_EQ(root["warnings"].asInt(), 1);
  for (Json::ArrayIndex i = 0; i < expected.size(); ++i) {
    std::string fields;
    for (const char* key :
         {"severity", "check", "mode", "section", "member", "consequence", "file", "message"})
      fields += (fields.empty() ? "" : "|") + root["diagnostics"][i][key].asString();
    EXPECT_EQ(fields, Key(expected[i]) + "|" + expected[i].file + "|" + expected[i].message);
  }
  EXPECT_EQ(expected.front().member, "Version");
}

}  // namespace
}  // namespace vexa::lint
