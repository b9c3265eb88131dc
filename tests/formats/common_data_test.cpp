#include "formats/common_data.h"

#include <gtest/gtest.h>

#include "formats/json_text.h"
#include "support/log_capture.h"
#include "support/log_lines.h"

namespace vexa {
namespace {

using testing::CountLogLines;
using testing::LogCapture;

constexpr char kWhere[] = "VexaJsonModeParser::HwAssetsCommonData::";

HwAssetsCommonData Build(const std::string& common_text) {
  Json::Value common;
  EXPECT_TRUE(PopulateJsonValue(common_text, common)) << common_text;
  return HwAssetsCommonData(common);
}

std::string Numbers(size_t count) {
  std::string text;
  for (size_t i = 0; i < count; ++i) text += (i ? "," : "") + std::to_string(i % 1024);
  return text;
}

using Lut = std::vector<uint32_t>;

TEST(CommonDataTest, GammaTablesFromPredefinedAndCustom) {
  LogCapture log;
  HwAssetsCommonData data = Build(R"({
    "PostBlendIGC": {"numEntries": 3,
      "Predefined": {"a": "0,512,1023", "b": " 1, 2,3,99"},
      "Custom": {"a": {"lutR": "1,2,3", "lutG": "4,5,6", "lutB": "7,8,9"}}},
    "PostBlendGC": {"numEntries": 0, "Predefined": {"zero": "", "unused": "5,6"}}})");
  auto a = data.GetIgc("a");  // custom, read after predefined, replaces it
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->lut_r, (Lut{1, 2, 3}));
  EXPECT_EQ(a->lut_g, (Lut{4, 5, 6}));
  EXPECT_EQ(a->lut_b, (Lut{7, 8, 9}));
  auto b = data.GetIgc("b");  // one list for all channels, values beyond the count ignored
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->lut_r, (Lut{1, 2, 3}));
  EXPECT_EQ(b->lut_g, b->lut_r);
  EXPECT_EQ(b->lut_b, b->lut_r);
  EXPECT_EQ(data.GetGc("b"), nullptr);  // the two kinds do not share tables
  for (const char* name : {"zero", "unused"}) {
    auto table = data.GetGc(name);
    ASSERT_NE(table, nullptr) << name;
    EXPECT_TRUE(table->lut_r.empty() && table->lut_g.empty() && table->lut_b.empty()) << name;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TEST(CommonDataTest, MalformedListsAreNotStoredAndNamed) {
  const struct {
    const char* list;
    const char* member;  // where the error line points
  } cases[] = {
      {R"("Predefined": {"t": "1,2"})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Predefined": {"t": "1,x,3"})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Predefined": {"t": "1,,3"})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Predefined": {"t": "1,-2,3"})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Predefined": {"t": "1,2,4294967296"})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Predefined": {"t": [1,2,3]})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Custom": {"t": {"lutR": "1,2,3", "lutG": "1,2,3"}})",
       R"("PostBlendGC"."Custom"."t"."lutB")"},
      {R"("Custom": {"t": {"lutR": "1,2,3", "lutG": 5, "lutB": "1,2,3"}})",
       R"("PostBlendGC"."Custom"."t"."lutG")"},
      {R"("Custom": {"t": "1,2,3"})", R"("PostBlendGC"."Custom"."t")"},
      {R"("Predefined": "1,2,3")", R"(Invalid member "Predefined")"},
      {R"("Custom": [])", R"(Invalid member "Custom")"},
      {R"("numEntries": "3", "Predefined": {"t": "1,2,3"})", R"(Invalid member "numEntries")"},
  };
  for (const auto& c : cases) {
    const std::string text = std::string(R"({"PostBlendGC": {"numEntries": 3, )") + c.list + "}}";
    LogCapture log;
    HwAssetsCommonData data = Build(text);
    EXPECT_EQ(data.GetGc("t"), nullptr) << text;
    ASSERT_EQ(log.Errors().size(), 1u) << text << "\n" << log.Dump();
    EXPECT_NE(log.Errors()[0].find(c.member), std::string::npos) << log.Errors()[0];
  }
}

TEST(CommonDataTest, GamutTablesAreBoundedByTheRecord) {
  const std::string full = Numbers(3 * kGamutEntries);
  LogCapture log;
  HwAssetsCommonData data = Build(R"({"PostBlendGamut": {"numEntries": 2,
      "Predefined": "ignored", "Custom": {"small": "10,20,30,40,50,60,70"}}})");
  auto small = data.GetGamut("small");
  ASSERT_NE(small, nullptr);
  EXPECT_EQ(small->len, kGamutConfigLen);
  EXPECT_TRUE(small->enable);
  EXPECT_EQ(small->grid_mode, 1u);
  EXPECT_EQ(small->num_entries, 2u);
  const GamutEntry& second = small->entries[1];
  EXPECT_EQ((Lut{second.in_0, second.out_0, second.out_1, second.out_2}), (Lut{0, 40, 50, 60}));
  EXPECT_EQ(small->entries[2].out_0, 0u);
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();

  for (uint32_t count : {kGamutEntries, kGamutEntries + 1}) {
    const std::string text = R"({"PostBlendGamut": {"numEntries": )" + std::to_string(count) +
                             R"(, "Custom": {"lut": ")" + full + ",1,2,3\"}}}";
    LogCapture count_log;
    HwAssetsCommonData counted = Build(text);
    auto lut = counted.GetGamut("lut");
    if (count == kGamutEntries) {
      ASSERT_NE(lut, nullptr);
      EXPECT_EQ(lut->num_entries, kGamutEntries);
      EXPECT_EQ(lut->entries[kGamutEntries - 1].out_2, (3 * kGamutEntries - 1) % 1024);
      EXPECT_TRUE(count_log.Errors().empty()) << count_log.Dump();
    } else {
      EXPECT_EQ(lut, nullptr);
      EXPECT_EQ(count_log.Errors().size(), 1u) << count_log.Dump();
      EXPECT_TRUE(count_log.Contains(R"("PostBlendGamut"."Custom"."lut": 4914 entries)"))
          << count_log.Dump();
    }
  }
}

TEST(CommonDataTest, LookUpOfUnknownNameRemembersItAndLogsEachTime) {
  Json::Value with_section;
  ASSERT_TRUE(PopulateJsonValue(R"({"PostBlendIGC": {"numEntries": 1}})", with_section));
  for (const Json::Value& common : {Json::Value(), with_section}) {
    LogCapture log(2);
    HwAssetsCommonData data(common);
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(data.GetIgc("x"), nullptr);
      EXPECT_EQ(data.GetGc("x"), nullptr);
      EXPECT_EQ(data.GetGamut("x"), nullptr);
    }
    const std::string where = kWhere;
    EXPECT_EQ(CountLogLines(log, 'I', where + "GetIgc", "Common IGC data x not found"), 2u);
    EXPECT_EQ(CountLogLines(log, 'I', where + "GetGc", "Common GC data x not found"), 2u);
    EXPECT_EQ(CountLogLines(log, 'I', where + "GetGamut", "Common 3DLUT data x not found"), 2u);
    EXPECT_EQ(log.Lines().size(), 6u) << log.Dump();
    ASSERT_EQ(data.igc_tables().count("x"), 1u);
    EXPECT_EQ(data.igc_tables().at("x"), nullptr);
  }
  LogCapture quiet(1);
  HwAssetsCommonData data = Build("{}");
  EXPECT_EQ(data.GetIgc("x"), nullptr);
  EXPECT_TRUE(quiet.Lines().empty()) << quiet.Dump();
}

}  // namespace
}  // namespace vexa
