#include "tools/vexa_modes/mode_table.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vexa::tools {
namespace {

TEST(ModeTableTest, PrintsOneAlignedRowPerModeInOrder) {
  std::ostringstream out;
  PrintModeTable(out, {{1, 1, 384, {"PostBlendGC", "PostBlendIGC"}, "factory"},
                       {12, 4, 2, {}, ""},
                       {-1, 255, 65535, {"PostBlendDE"}, "a long intent name"}});
  EXPECT_EQ(out.str(),
            "#  gamut  gamma  intent  intent name         hw assets\n"
            "0      1      1     384  factory             PostBlendGC, PostBlendIGC\n"
            "1     12      4       2  -                   -\n"
            "2     -1    255   65535  a long intent name  PostBlendDE\n");
  std::ostringstream empty;
  PrintModeTable(empty, {});
  EXPECT_EQ(empty.str(), "#  gamut  gamma  intent  intent name  hw assets\n");
}

}  // namespace
}  // namespace vexa::tools
