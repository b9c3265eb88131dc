#include "formats/common_data.h"

#include <gtest/gtest.h>

#include "support/fixture_writer.h"
#include "support/log_capture.h"

namespace vexa {

// Common data whose 3D table "t" holds `count` entries.
static std::string Gamut(uint32_t count) {
  std::string list;
  for (size_t i = 0; i < 3 * count; ++i) list += std::to_string(i % 1024) + ",";
  return R"({"PostBlendGamut": {"numEntries": )" + std::to_string(count) +
         R"(, "Custom": {"t": ")" + list + "\"}}}";
}

TEST(CommonDataTest, BadTablesAreNotStoredAndNamed) {
  const std::pair<std::string, const char*> cases[] = {  // common data, named part
      {R"({"PostBlendGC": {"numEntries": 3, "Predefined": {"t": "1,x,3"}}})",
       R"("PostBlendGC"."Predefined"."t")"},
      {R"({"PostBlendGC": {"numEntries": 3, "Custom": {"t": {"lutR": "1,2,3", "lutG": "1,2,3"}}}})",
       R"("t"."lutB")"},
      {Gamut(kGamutEntries + 1), R"("PostBlendGamut"."Custom"."t": 4914 entries)"}};
  for (const auto& [text, named] : cases) {
    testing::LogCapture log(1);
    HwAssetsCommonData data(testing::ParseReadable(text));
    EXPECT_TRUE(data.GetGc("t") == nullptr && data.GetGamut("t") == nullptr) << text;
    EXPECT_EQ(log.Errors().size(), 1u) << log.Dump();
    EXPECT_EQ(log.Count(named), 1u) << log.Dump();
  }
  // The most the record holds.
  const auto full = HwAssetsCommonData(testing::ParseReadable(Gamut(kGamutEntries))).GetGamut("t");
  ASSERT_NE(full, nullptr);
  EXPECT_EQ(full->entries[kGamutEntries - 1].out_2, (3 * kGamutEntries - 1) % 1024);
}

// A line for engineers whose mode names a table the common data lacks.
TEST(CommonDataTest, LookUpOfAnUnknownNameIsLogged) {
  testing::LogCapture log(2);
  HwAssetsCommonData data{Json::Value()};
  EXPECT_TRUE(!data.GetIgc("x") && !data.GetGc("x") && !data.GetGamut("x"));
  for (const char* table : {"IGC", "GC", "3DLUT"}) {
    EXPECT_EQ(log.Count(std::string(" Common ") + table + " data x not found"), 1u) << log.Dump();
  }
}

}  // namespace vexa
