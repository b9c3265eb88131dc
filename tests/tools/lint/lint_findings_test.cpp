// What a recorded library line becomes: its consequence follows the unit being read, progress
// lines vanish. Lines of modes and sections, and explaining lines, are checked end to end in
// linter_test.cpp.
#include "tools/lint/log_diagnostics.h"

#include <gtest/gtest.h>

#include "tools/lint/panel_checks.h"
#include "support/fixture_writer.h"

namespace vexa::lint {
namespace {

JsonContextFrame Frame(JsonScope scope, const char* name) { return {scope, name, ""}; }

LoggedLine Line(int priority, const std::string& text, std::vector<JsonContextFrame> frames) {
  LoggedLine line;
  line.priority = priority;
  EXPECT_TRUE(tools::LibraryLogTap::SplitLine(text, &line)) << text;
  line.frames = std::move(frames);
  return line;
}

TEST(LintLogTest, ALineCostsWhatItsUnitCosts) {
  const JsonContextFrame file = Frame(JsonScope::kFile, "/f.json");
  const JsonContextFrame rule = Frame(JsonScope::kRule, "r");
  const JsonContextFrame table = Frame(JsonScope::kTable, "PostBlendIGC");
  const int E = ANDROID_LOG_ERROR, I = ANDROID_LOG_INFO;
  const struct {
    std::vector<LoggedLine> lines;
    std::vector<std::string> expected;  // "check|mode|section|member|consequence" per diagnostic
  } cases[] = {
      {{Line(E, "L::F():9 Invalid member \"ModeNameInputLeft\" x", {file, rule})},
       {"wrong-type|r||ModeNameInputLeft|rule dropped"}},
      {{Line(E, "L::F():9 Invalid member \"numEntries\" x", {file, table})},
       {"wrong-type||Common|numEntries|every table of this \"Common\" group not stored"}},
      {{Line(E, "L::F():9 Invalid member \"Version\" x", {file})}, {"wrong-type|||Version|file ignored"}},
      {{Line(I, "L::F():9 Parsed m", {file}), Line(E, "L::F():9 out of memory", {file})},
       {"library-error||||"}},
  };
  for (const auto& c : cases) {
    std::vector<std::string> got;
    for (const Diagnostic& d : DiagnosticsFromLog(c.lines)) {
      EXPECT_EQ(d.file, "/f.json");
      got.push_back(d.check + "|" + d.mode + "|" + d.section + "|" + d.member + "|" + d.consequence);
    }
    EXPECT_EQ(got, c.expected) << c.lines.back().message;
  }
}

TEST(LintShadowTest, AnIntentZeroModeIsShadowedWhateverItsAssetsButOthersNeedEqualCounts) {
  KivModeDescr descr;
  descr.color_primaries = static_cast<ColorPrimaries>(1);
  descr.gamma_transfer = static_cast<GammaTransfer>(1);
  const std::string one = R"({"PostBlendDE": {"enable": true}})";
  const std::string two = R"({"PostBlendDE": {"enable": true}, "PostBlendDither": {"enable": true}})";
  KivModeList modes;
  for (const auto& [name, intent, assets] :
       {std::tuple{"a0", 0, two}, {"b0", 0, one}, {"a1", 1, two}, {"b1", 1, one}, {"c1", 1, one}}) {
    descr.name = name;
    descr.render_intent = intent;
    descr.white_point = static_cast<uint32_t>(modes.size());  // distinct identities
    modes.push_back(vexa::testing::MakeMode(descr, assets));
  }
  std::vector<Diagnostic> found;
  CheckShadowedModes(modes, ModeOrigins(), &found);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].mode, "b0");
  EXPECT_NE(found[0].message.find("mode \"a0\""), std::string::npos) << found[0].message;
  EXPECT_EQ(found[1].mode, "c1");
  EXPECT_NE(found[1].message.find("mode \"b1\""), std::string::npos) << found[1].message;
}

}  // namespace
}  // namespace vexa::lint
