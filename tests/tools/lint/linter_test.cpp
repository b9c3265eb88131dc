// Lint over copies of the example device tree, each with one fault, and over single files.
#include "tools/lint/linter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <sstream>

#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "support/fixture_writer.h"
#include "support/temp_dir.h"
#include "tools/lint/lint_output.h"
#include "tools/vexa_modes/lint_command.h"

namespace vexa::lint {
namespace {

namespace fs = std::filesystem;

const std::string kPanel = VEXA_EXAMPLE_PANEL;
const std::string kRules = "/vendor/etc/display/vexa_merge_rules_" + kPanel + ".json";
const std::string kCalib = "/vendor/etc/display/vexa_calib_data_" + kPanel + ".json";
const std::string kFactory = "/mnt/vendor/persist/display/factory_calib_data_" + kPanel + ".json";

std::string Describe(const std::vector<Diagnostic>& diagnostics) {
  std::ostringstream text;
  WriteLintText(diagnostics, text);
  return text.str();
}

// A private copy of the example tree whose files a test edits as JSON.
class TreeCopy {
 public:
  TreeCopy() { fs::copy(VEXA_EXAMPLE_DEVICE_ROOT, dir_.path(), fs::copy_options::recursive); }

  std::string root() const { return dir_.path(); }
  std::string HostPath(const std::string& device_path) const { return dir_.path() + device_path; }

  void EditFile(const std::string& device_path, const std::function<void(Json::Value&)>& edit) {
    Json::Value root;
    ASSERT_TRUE(PopulateJsonValue(dir_.Get(device_path), root)) << device_path;
    edit(root);
    dir_.Put(device_path, JsonToCompactText(root));
  }
  // Edits the decoded JSON of one asset section of a calibration mode.
  void EditCalibSection(const std::string& mode, const std::string& key,
                        const std::function<void(Json::Value&)>& edit) {
    EditFile(kCalib, [&](Json::Value& root) {
      Json::Value& hex = root[kPanel][mode][key];
      std::string text;
      DecodeData(hex, text);
      Json::Value section;
      ASSERT_TRUE(PopulateJsonValue(text, section)) << mode << " " << key;
      edit(section);
      EncodeData(JsonToCompactText(section), text);
      hex = text;
    });
  }
  void Put(const std::string& device_path, const std::string& bytes) { dir_.Put(device_path, bytes); }

 private:
  vexa::testing::TempDir dir_;
};

std::vector<Diagnostic> LintTree(const TreeCopy& tree) {
  LintOptions options;
  options.root = tree.root();
  options.panel = kPanel;
  return LintDeviceTree(options);
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

struct FaultCase {
  const char* name;
  std::function<void(TreeCopy&)> fault;
  Diagnostic expected;  // `message` holds a part of the expected message
  int exit_status;
  size_t problems = 1;  // warnings and errors in all: a fault may cost more than one thing
};

TEST(LintTest, EachFaultGivesOneDiagnosticNamingItsPlaceAndConsequence) {
  using S = Severity;
  const FaultCase cases[] = {
      {"section member of the wrong type",
       [](TreeCopy& t) { t.EditCalibSection("vivid", "PostBlendDE", [](Json::Value& s) { s["enable"] = "yes"; }); },
       {S::kError, "wrong-type", kCalib, "vivid", "PostBlendDE", "enable", "expected boolean", "asset at identity"}, 2},
      {"section that is not hex of JSON",
       [](TreeCopy& t) { t.EditFile(kCalib, [](Json::Value& r) { r[kPanel]["hdr"]["PostBlendGC"] = "zz"; }); },
       {S::kError, "section-undecodable", kCalib, "hdr", "PostBlendGC", "", "PostBlendGC", "mode dropped"}, 2},
      {"descriptor member of the wrong type",
       [](TreeCopy& t) { t.EditFile(kCalib, [](Json::Value& r) { r[kPanel]["hdr"]["WhitePoint"] = "6500"; }); },
       {S::kError, "wrong-type", kCalib, "hdr", "", "WhitePoint", "found string", "mode dropped"}, 2},
      {"asset section with a misspelt name",
       [](TreeCopy& t) { t.EditFile(kCalib, [](Json::Value& r) { r[kPanel]["vivid"]["PostBlendGama"] = r[kPanel]["vivid"]["PostBlendDE"]; }); },
       {S::kWarning, "unknown-member", kCalib, "vivid", "", "PostBlendGama", "(did you mean \"PostBlendGamut\"?)", "member ignored"}, 1},
      {"gamma table name that no table has",
       [](TreeCopy& t) { t.EditCalibSection("hdr", "PostBlendGC", [](Json::Value& s) { s["Predefined"] = "srbg"; }); },
       {S::kError, "common-table-missing", kCalib, "hdr", "PostBlendGC", "srbg", "no table \"srbg\"", "asset at identity"}, 2},
      {"shared table that no mode uses",
       [](TreeCopy& t) { t.EditFile(kCalib, [](Json::Value& r) {
           std::string text;
           DecodeData(r["Common"]["PostBlendGC"], text);
           Json::Value gc;
           PopulateJsonValue(text, gc);
           gc["Predefined"]["spare"] = gc["Predefined"]["srgb"];
           EncodeData(JsonToCompactText(gc), text);
           r["Common"]["PostBlendGC"] = text; }); },
       {S::kWarning, "common-table-unused", kCalib, "", "Common", "PostBlendGC.spare", "\"spare\"", "table loaded and never used"}, 1},
      {"calibration mode equal to the factory mode",
       [](TreeCopy& t) { t.EditFile(kCalib, [](Json::Value& r) { r[kPanel]["vivid"]["Applicability"] = r[kPanel]["srgb"]["Applicability"]; r[kPanel]["vivid"]["Applicability"]["RenderIntent"] = 384; }); },
       {S::kWarning, "mode-duplicate", kCalib, "vivid", "", "", "factory mode \"factory_floor\"", "mode dropped: \"factory_floor\" is published instead"}, 1},
      {"mode that an earlier mode answers for",
       [](TreeCopy& t) { t.EditFile(kCalib, [](Json::Value& r) { r[kPanel]["vivid"]["Applicability"]["GammaTransfer"] = "sRGB"; r[kPanel]["vivid"]["Applicability"]["RenderIntent"] = 1; r[kPanel]["vivid"]["WhitePoint"] = 6000; r[kPanel]["vivid"]["PostBlendDither"] = r[kPanel]["display_p3"]["PostBlendDither"]; r[kPanel]["vivid"].removeMember("PostBlendDE"); r[kPanel]["vivid"].removeMember("PostBlendPaDither"); }); },
       {S::kWarning, "mode-shadowed", kCalib, "vivid", "", "", "answered first by mode \"display_p3\"", "mode never selected"}, 1},
      {"rule whose calibration operand is missing",
       [](TreeCopy& t) { t.EditFile(kRules, [](Json::Value& r) { r[kPanel]["MergedModes"]["game_factory"]["Applicability"]["RenderIntent"] = 40; }); },
       {S::kError, "rule-operand-missing", kRules, "game_factory", "", "", "no calibration mode has", "rule skipped: merged mode not made"}, 2},
      {"rules written for newer merging code",
       [](TreeCopy& t) { t.EditFile(kRules, [](Json::Value& r) { r[kPanel]["ModeMerge"]["PostBlendPCCMergeOp"]["Version"] = 3; }); },
       {S::kError, "merge-versions", kRules, "", "ModeMerge", "PostBlendPCCMergeOp", "is version 3; the device supports 2", "merging off: no merged mode is made"}, 2,
       2},  // without merging the factory mode becomes colorimetric and displaces "srgb"
      {"rules file that is not JSON",
       [](TreeCopy& t) { t.Put(kRules, "{\"a\": "); },
       {S::kError, "file-not-json", kRules, "", "", "", "not a JSON object or array", "file ignored"}, 2,
       2},
  };
  for (const FaultCase& c : cases) {
    SCOPED_TRACE(c.name);
    TreeCopy tree;
    c.fault(tree);
    const std::vector<Diagnostic> diagnostics = LintTree(tree);
    EXPECT_EQ(LintExitStatus(diagnostics), c.exit_status) << Describe(diagnostics);
    const std::vector<Diagnostic> problems = Problems(diagnostics);
    ASSERT_EQ(problems.size(), c.problems) << Describe(diagnostics);
    const Diagnostic& e = c.expected;
    const Diagnostic& d = problems.front();
    EXPECT_EQ(d.severity, e.severity);
    EXPECT_EQ(d.check, e.check);
    EXPECT_EQ(d.file, e.file);
    EXPECT_EQ(d.mode, e.mode);
    EXPECT_EQ(d.section, e.section);
    EXPECT_EQ(d.member, e.member);
    EXPECT_NE(d.message.find(e.message), std::string::npos) << d.message;
    EXPECT_EQ(d.consequence, e.consequence);
  }
}

TEST(LintTest, SingleFilesAreReadAloneWithThePanelFromTheirNames) {
  TreeCopy tree;
  tree.EditFile(kCalib, [](Json::Value& r) { r[kPanel]["hdr"]["WhitePoint"] = "6500"; });
  vexa::testing::TempDir dir;
  const std::string calib = dir.File("vexa_calib_data_" + kPanel + ".json");
  const std::string rules = dir.File("vexa_merge_rules_" + kPanel + ".json");
  const std::string unnamed = dir.File("modes.json");
  fs::copy_file(tree.HostPath(kCalib), calib);
  fs::copy_file(tree.HostPath(kRules), rules);
  fs::copy_file(tree.HostPath(kCalib), unnamed);

  const struct {
    std::string file;
    std::string check;  // of the one problem, or empty for none
    int exit_status;
  } cases[] = {{calib, "wrong-type", 2}, {rules, "", 0}, {unnamed, "file-name", 2}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    LintOptions options;
    options.files = {c.file};
    const std::vector<Diagnostic> diagnostics = LintFiles(options);
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
  tree.EditFile(kRules, [](Json::Value& r) {
    r[kPanel]["ModeMerge"]["Version"] = 9;
  });
  LintOptions options;
  options.root = tree.root();
  options.panel = kPanel;
  const std::vector<Diagnostic> expected = LintDeviceTree(options);
  std::ostringstream out;
  EXPECT_EQ(vexa::tools::RunLint(options, vexa::tools::LintFormat::kJson, out), 2);

  Json::Value root;
  ASSERT_TRUE(PopulateJsonValue(out.str(), root)) << out.str();
  ASSERT_EQ(root["diagnostics"].size(), expected.size());
  EXPECT_EQ(root["errors"].asInt(), 1);
  EXPECT_EQ(root["warnings"].asInt(), 1);
  for (Json::ArrayIndex i = 0; i < expected.size(); ++i) {
    const Json::Value& item = root["diagnostics"][i];
    const Diagnostic& d = expected[i];
    EXPECT_EQ(item["severity"].asString(), SeverityWord(d.severity));
    const std::pair<const char*, const std::string*> fields[] = {
        {"check", &d.check},     {"file", &d.file},       {"mode", &d.mode},
        {"section", &d.section}, {"member", &d.member},   {"message", &d.message},
        {"consequence", &d.consequence}};
    for (const auto& [key, value] : fields) EXPECT_EQ(item[key].asString(), *value) << key;
  }
  EXPECT_EQ(expected.front().member, "Version");
}

}  // namespace
}  // namespace vexa::lint
