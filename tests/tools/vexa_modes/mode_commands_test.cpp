#include "tools/vexa_modes/mode_commands.h"

#include <gtest/gtest.h>

namespace vexa::tools {
namespace {

TEST(ModeCommandsTest, FindModeTakesTheFirstWithTheSameGamutGammaAndIntent) {
  const std::vector<ColorMode> modes = {{1, 1, 384, {}, "factory"},
                                        {1, 1, 1, {"PostBlendGC"}, "first"},
                                        {1, 1, 1, {}, "second"},
                                        {12, 1, 1, {}, "p3"}};
  const auto found = [&modes](WantedMode wanted) {
    const ColorMode* mode = FindMode(modes, wanted);
    return mode != nullptr ? mode->render_intent_name : "(none)";
  };
  EXPECT_EQ(found({1, 1, 1}), "first");
  EXPECT_EQ(found({12, 1, 1}), "p3");
  EXPECT_EQ(found({1, 1, 384}), "factory");
  EXPECT_EQ(found({1, 4, 1}), "(none)");
  EXPECT_EQ(found({12, 1, 384}), "(none)");
  EXPECT_EQ(found({1, 1, 0}), "(none)");
}

}  // namespace
}  // namespace vexa::tools
