#include "formats/decimal_list.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <tuple>
#include <vector>

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

// Every field of the text, `batch` at a time, into a buffer of exactly that text's size (so that
// reading past its end shows under the address sanitizer). Slots a batch leaves unread must keep
// what they held.
std::vector<uint32_t> ReadInBatches(const std::string& text, size_t batch) {
  const std::vector<char> bytes(text.begin(), text.end());
  DecimalListReader reader(std::string_view(bytes.data(), bytes.size()));
  constexpr uint32_t kUntouched = 0xDEADBEEF;
  std::vector<uint32_t> values;
  for (size_t read = batch; read == batch;) {
    const size_t at = values.size();
    values.resize(at + batch, kUntouched);
    read = reader.Next(values.data() + at, batch);
    for (size_t k = at + read; k < values.size(); ++k) EXPECT_EQ(values[k], kUntouched) << text;
    values.resize(at + read);
  }
  uint32_t after = kUntouched;
  EXPECT_FALSE(reader.Next(&after)) << text;
  return values;
}

// Batch reads take runs of short fields several at a time; one field per call is the reference.
// Field lengths around that limit, any byte replaced by one that breaks a run, the text cut at
// every length.
TEST(DecimalListTest, BatchReadsMatchFieldByFieldReads) {
  const std::string kLists[] = {
      "4095,7,12,345,0,9999,10,2048,1,22,333,4444,5,66,777,8888,0000,0001,900,80,7000,6,51,402,"
      "3333,44,555,6666,7,1234,43,2,3210,54321,1,2,3,4",
      "12345,1,1234567,22,12345678,333,0001234,4444,1,2,99999,5,1234,98765432,66,4321,0,7654321,8,"
      "10000,9,88,7,6,43210,55,5,4,3"};
  std::vector<std::string> texts;
  for (const std::string& list : kLists) {
    for (size_t length = 0; length <= list.size(); ++length) {
      texts.push_back(list.substr(0, length));
    }
    for (size_t at = 0; at < list.size(); ++at) {
      for (const char odd : {' ', '+', '-', 'x', ',', '7', '\0'}) {
        texts.push_back(list);
        texts.back()[at] = odd;
      }
    }
  }
  for (const std::string& text : texts) {
    const std::vector<uint32_t> expected = ReadInBatches(text, 1);
    for (size_t batch : {4, 7, 192}) EXPECT_EQ(ReadInBatches(text, batch), expected) << text;
  }
}

// A plain list is exactly `count` fields of one to nine digits joined by single commas: any other
// byte anywhere (whatever its place in a 16-byte block) refuses it, a digit keeps it plain.
TEST(DecimalListTest, PlainListsAreExactlyCountFieldsOfUpToNineDigits) {
  std::string list, long_list;  // 40 fields of 1 to 5 digits; 5,000 of 4 (over 255 blocks of 16)
  for (int i = 0; i < 40; ++i) list += (i == 0 ? "" : ",") + std::to_string(i * 2311 % 99999);
  for (int i = 0; i < 5000; ++i) long_list += (i == 0 ? "" : ",") + std::to_string(1000 + i);
  std::string nine = long_list, ten = long_list;  // one field far inside made 9 or 10 digits long
  nine.replace(nine.find(",3500,") + 1, 4, "123456789");
  ten.replace(ten.find(",3500,") + 1, 4, "1234567890");
  const std::tuple<std::string, size_t, bool> cases[] = {
      {list, 40, true},        {list, 39, false},        {list, 41, false},
      {"123456789", 1, true},  {"1234567890", 1, false}, {"", 0, false},
      {"7,,8", 3, false},      {",7", 2, false},         {"7,", 2, false},
      {list + ",4294967295", 41, false}, {long_list, 5000, true}, {long_list, 4999, false},
      {nine, 5000, true},      {ten, 5000, false}};
  for (const auto& [text, count, plain] : cases) EXPECT_EQ(IsPlainDecimalList(text, count), plain) << text;
  for (size_t at = 0; at < list.size(); ++at) {
    for (const char c : {' ', '+', '-', 'x', ',', '\0', '\x80', '7'}) {
      std::string mutated = list;
      mutated[at] = c;
      const std::vector<char> exact(mutated.begin(), mutated.end());  // the sanitizers see over-reads
      const bool plain = c == '7' ? list[at] != ',' : mutated == list;
      ASSERT_EQ(IsPlainDecimalList(std::string_view(exact.data(), exact.size()), 40), plain)
          << "'" << c << "' at " << at;
    }
  }
}

}  // namespace vexa
