#include "tools/vexa_modes/mode_commands.h"

#include <gtest/gtest.h>

namespace vexa::tools {
namespace {

TEST(ModeCommandsTest, FindModeTakesTheFirstWithTheSameGamutGammaAndIntent) {
  const std::vector<ColorMode> modes = {
      {1, 1, 384, {}, "factory"},
      {1, 1, 1, {"PostBlendGC"}, "first"},
      {1, 1, 1, {"PostBlendGC", "PostBlendIGC"}, "second"},
      {12, 1, 1, {}, "p3"},
  };
  const struct {
    WantedMode wanted;
    const char* found;  // intent name, or null for no match
  } cases[] = {
      {{1, 1, 1}, "first"}, {{12, 1, 1}, "p3"}, {{1, 1, 384}, "factory"},
      {{1, 4, 1}, nullptr}, {{12, 1, 384}, nullptr}, {{1, 1, 0}, nullptr},
  };
  for (const auto& c : cases) {
    const ColorMode* mode = FindMode(modes, c.wanted);
    if (c.found == nullptr) {
      EXPECT_EQ(mode, nullptr) << c.wanted.gamut << "/" << c.wanted.gamma << "/" << c.wanted.intent;
    } else {
      ASSERT_NE(mode, nullptr) << c.found;
      EXPECT_EQ(mode->render_intent_name, c.found);
    }
  }
}

TEST(ModeCommandsTest, DefaultLibraryLiesInTheLibDirectoryBesideBin) {
  EXPECT_EQ(DefaultLibraryPath("/opt/vexa/bin/vexa-modes"), "/opt/vexa/lib/libvexa-json-mode-parser.so");
  EXPECT_EQ(DefaultLibraryPath("/b/build/bin/vexa-modes"), "/b/build/lib/libvexa-json-mode-parser.so");
}

}  // namespace
}  // namespace vexa::tools
