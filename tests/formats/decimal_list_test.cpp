#include "formats/decimal_list.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vexa {

TEST(DecimalListTest, ReadsExactlyCountNumbersOrFails) {
  const std::tuple<const char*, size_t, bool, std::vector<uint32_t>> cases[] = {
      // Blanks may lead, a field ends at its first non-digit, what follows the count is unread.
      {" 1,\t2,\n 3,junk", 3, true, {1, 2, 3}}, {"12abc,+7x", 2, true, {12, 7}},
      {"4294967295", 1, true, {4294967295u}}, {"4294967296", 1, false, {}},
      {"1,2", 3, false, {1, 2}}, {"1,,3", 3, false, {1}}, {"-5", 1, false, {}},
      {"00000000004294967295,+ 1", 1, true, {4294967295u}}, {"99999999999,1", 2, false, {}}, {"+ 1", 1, false, {}}};
  for (const auto& [text, count, ok, values] : cases) {
    std::vector<uint32_t> out = {99};
    EXPECT_EQ(ParseDecimalList(text, count, &out), ok) << text;
    EXPECT_EQ(out, values) << text;
  }
}

}  // namespace vexa
