#include "formats/decimal_list.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

TEST(DecimalListTest, ReadsExactlyCountNumbersOrFails) {
  const struct {
    const char* text;
    size_t count;
    bool ok;
    std::vector<uint32_t> values;
  } cases[] = {
      {" 1,\t2,\n 3", 3, true, {1, 2, 3}},  // leading blanks
      {"12abc,7x,0", 3, true, {12, 7, 0}},  // a field ends at its first non-digit
      {"1.9,2 3", 2, true, {1, 2}},         {"+5,6", 2, true, {5, 6}},
      {"4294967295", 1, true, {4294967295u}},
      {"1,2,3,4,junk", 3, true, {1, 2, 3}},  // what follows the count is not read
      {"", 0, true, {}},                    {"1,2", 3, false, {1, 2}},
      {"1,,3", 3, false, {1}},              {"1, ,3", 3, false, {1}},
      {"1,2,", 3, false, {1, 2}},           {"-5", 1, false, {}},
      {"+ 5", 1, false, {}},                {"a1", 1, false, {}},
      {"4294967296", 1, false, {}},         {"", 1, false, {}},
  };
  for (const auto& c : cases) {
    std::vector<uint32_t> out = {99};
    EXPECT_EQ(ParseDecimalList(c.text, c.count, &out), c.ok) << c.text;
    EXPECT_EQ(out, c.values) << c.text;
  }
}

}  // namespace
}  // namespace vexa
