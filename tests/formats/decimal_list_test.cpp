#include "formats/decimal_list.h"

#include <gtest/gtest.h>

#include <string>
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

// Long lists go through the word-at-a-time path: every digit count, with what may follow a
// number inside a field, in the middle of a list and within its last eight characters.
TEST(DecimalListTest, LongListsMatchTheirNumbersAtEveryDigitCount) {
  const char* const kTails[] = {"", "x", " ", ":", "\xff"};
  std::vector<uint32_t> expected;
  std::string text;
  for (const char* tail : kTails) {
    for (uint32_t value : {7u, 71u, 712u, 7123u, 71234u, 712345u, 7123456u, 71234567u, 712345678u,
                           2828489493u, 4294967295u}) {
      for (const std::string& field : {std::to_string(value), "00" + std::to_string(value)}) {
        if (!text.empty()) text += ',';
        text += field + tail;
        expected.push_back(value);
      }
    }
  }
  std::vector<uint32_t> out;
  EXPECT_TRUE(ParseDecimalList(text, expected.size(), &out)) << text;
  EXPECT_EQ(out, expected);

  DecimalListReader reader(text);
  std::vector<uint32_t> one_by_one(expected.size() + 1);
  for (size_t i = 0; i < expected.size(); ++i) ASSERT_TRUE(reader.Next(&one_by_one[i])) << i;
  one_by_one.pop_back();
  EXPECT_EQ(one_by_one, expected);
  EXPECT_FALSE(reader.Next(&one_by_one[0]));
  EXPECT_TRUE(reader.exhausted());
}

TEST(DecimalListTest, BatchReadStopsAtTheFirstBadField) {
  const std::tuple<const char*, size_t> cases[] = {
      {"11111111,22,4294967296,33333333,44", 2}, {"1,22,333,,4444,55555,666666", 3},
      {"123456,1234567,-12345678,9", 2}, {"1234567", 1}, {"", 0}};
  for (const auto& [text, good] : cases) {
    DecimalListReader reader(text);
    uint32_t values[8] = {};
    EXPECT_EQ(reader.Next(values, 8), good) << text;
    EXPECT_EQ(reader.Next(values, 1), 0u) << text;
  }
}

}  // namespace vexa
