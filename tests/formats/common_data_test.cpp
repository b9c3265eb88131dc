#include "formats/common_data.h"

#include <gtest/gtest.h>

#include "formats/json_text.h"
#include "support/log_capture.h"
#include "support/log_lines.h"

namespace vexa {
namespace {

using testing::LogCapture;
using Lut = std::vector<uint32_t>;

HwAssetsCommonData Build(const std::string& common_text) {
  Json::Value common;
  EXPECT_TRUE(PopulateJsonValue(common_text, common)) << common_text;
  return HwAssetsCommonData(common);
}

TEST(CommonDataTest, GammaTablesFromPredefinedAndCustom) {
  LogCapture log;
  HwAssetsCommonData data = Build(R"({
    "PostBlendIGC": {"numEntries": 3,
      "Predefined": {"a": "0,512,1023", "b": " 1, 2,3,99"},
      "Custom": {"a": {"lutR": "1,2,3", "lutG": "4,5,6", "lutB": "7,8,9"}}},
    "PostBlendGC": {"numEntries": 0, "Predefined": {"zero": "", "unused": "5,6"}}})");
  auto a = data.GetIgc("a");  // custom, read after predefined, replaces it
  ASSERT_NE(a, nullptr);
  EXPECT_EQ((std::vector<Lut>{a->lut_r, a->lut_g, a->lut_b}),
            (std::vector<Lut>{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}));
  auto b = data.GetIgc("b");  // one list for all channels; values beyond the count ignored
  ASSERT_NE(b, nullptr);
  EXPECT_EQ((std::vector<Lut>{b->lut_r, b->lut_g, b->lut_b}), std::vector<Lut>(3, Lut{1, 2, 3}));
  EXPECT_EQ(data.GetGc("b"), nullptr);  // the two kinds do not share tables
  for (const char* name : {"zero", "unused"}) {
    auto table = data.GetGc(name);
    ASSERT_NE(table, nullptr) << name;
    EXPECT_TRUE(table->lut_r.empty() && table->lut_g.empty() && table->lut_b.empty()) << name;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TEST(CommonDataTest, MalformedTablesAreNotStoredAndNamed) {
  const std::pair<const char*, const char*> cases[] = {  // members of "PostBlendGC", named part
      {R"("Predefined": {"t": "1,2"})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Predefined": {"t": "1,x,3"})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Predefined": {"t": "1,-2,3"})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Predefined": {"t": [1,2,3]})", R"("PostBlendGC"."Predefined"."t")"},
      {R"("Custom": {"t": {"lutR": "1,2,3", "lutG": "1,2,3"}})", R"("t"."lutB")"},
      {R"("Custom": {"t": {"lutR": "1,2,3", "lutG": 5, "lutB": "1,2,3"}})", R"("t"."lutG")"},
      {R"("Custom": {"t": "1,2,3"})", R"("PostBlendGC"."Custom"."t")"},
      {R"("Predefined": "1,2,3")", R"(Invalid member "Predefined")"},
      {R"("Custom": [])", R"(Invalid member "Custom")"},
      {R"("numEntries": "3", "Predefined": {"t": "1,2,3"})", R"(Invalid member "numEntries")"},
  };
  for (const auto& [members, named] : cases) {
    const std::string text =
        std::string(R"({"PostBlendGC": {"numEntries": 3, )") + members + "}}";
    LogCapture log;
    EXPECT_EQ(Build(text).GetGc("t"), nullptr) << text;
    EXPECT_EQ(log.Errors().size(), 1u) << text << "\n" << log.Dump();
    EXPECT_EQ(log.Count(named), 1u) << log.Dump();
  }
}

TEST(CommonDataTest, GamutTablesAreBoundedByTheRecord) {
  LogCapture log;
  auto small = Build(R"({"PostBlendGamut": {"numEntries": 2, "Predefined": "ignored",
                         "Custom": {"t": "10,20,30,40,50,60,70"}}})").GetGamut("t");
  ASSERT_NE(small, nullptr);
  EXPECT_EQ((Lut{small->len, small->enable, small->grid_mode, small->num_entries}),
            (Lut{kGamutConfigLen, 1, 1, 2}));
  const GamutEntry& second = small->entries[1];
  EXPECT_EQ((Lut{second.in_0, second.out_0, second.out_1, second.out_2}), (Lut{0, 40, 50, 60}));
  EXPECT_EQ(small->entries[2].out_0, 0u);
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();

  std::string list;
  for (size_t i = 0; i < 3 * kGamutEntries + 3; ++i) list += std::to_string(i % 1024) + ",";
  for (uint32_t count : {kGamutEntries, kGamutEntries + 1}) {
    LogCapture count_log;
    auto lut = Build(R"({"PostBlendGamut": {"numEntries": )" + std::to_string(count) +
                     R"(, "Custom": {"lut": ")" + list + "\"}}}")
                   .GetGamut("lut");
    const bool fits = count == kGamutEntries;
    ASSERT_EQ(lut != nullptr, fits) << count;
    if (fits) {
      EXPECT_EQ(lut->entries[kGamutEntries - 1].out_2, (3 * kGamutEntries - 1) % 1024);
    }
    EXPECT_EQ(count_log.Errors().size(), fits ? 0u : 1u) << count_log.Dump();
    const std::string refusal = R"("PostBlendGamut"."Custom"."lut": 4914 entries)";
    EXPECT_EQ(count_log.Count(refusal), fits ? 0u : 1u) << count_log.Dump();
  }
}

TEST(CommonDataTest, LookUpOfUnknownNameRemembersItAndLogsEachTime) {
  Json::Value with_section;
  ASSERT_TRUE(PopulateJsonValue(R"({"PostBlendIGC": {"numEntries": 1}})", with_section));
  const std::string where = "VexaJsonModeParser::HwAssetsCommonData::";
  for (const Json::Value& common : {Json::Value(), with_section}) {
    LogCapture log(2);
    HwAssetsCommonData data(common);
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(data.GetIgc("x"), nullptr);
      EXPECT_EQ(data.GetGc("x"), nullptr);
      EXPECT_EQ(data.GetGamut("x"), nullptr);
    }
    for (const auto& [function, table] : {std::pair("GetIgc", "IGC"), std::pair("GetGc", "GC"),
                                          std::pair("GetGamut", "3DLUT")}) {
      const std::string message = std::string("Common ") + table + " data x not found";
      EXPECT_EQ(testing::CountLogLines(log, "I", where + function, message), 2u) << log.Dump();
    }
    EXPECT_EQ(log.Lines().size(), 6u) << log.Dump();
    ASSERT_EQ(data.igc_tables().count("x"), 1u);
    EXPECT_EQ(data.igc_tables().at("x"), nullptr);
  }
  LogCapture quiet(1);
  EXPECT_EQ(Build("{}").GetIgc("x"), nullptr);
  EXPECT_TRUE(quiet.Lines().empty()) << quiet.Dump();
}

}  // namespace
}  // namespace vexa
