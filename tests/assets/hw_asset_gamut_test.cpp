#include "assets/hw_asset_gamut.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/algo_double.h"
#include "support/asset_json.h"

namespace vexa {
namespace {

using testing::AlgoDouble;
using testing::ExpectOneLine;
using testing::LoadAt;
using testing::LogCapture;
using testing::ParseJson;
using MergeOp = kiv_mode_merge_caps::KivPostBlendGamutMergeOp;

constexpr uint32_t kEntries = 4913;
constexpr char kWhere[] = "VexaJsonModeParser::HwAssetGamut";
constexpr char kShared[] = R"({"enable":true,"numEntries":4913,"Predefined":"a"})";

uint32_t Level(uint32_t k) { return std::min(256 * k, 4095u); }  // of the 17 grid levels
// Output word `w` of entry `i` in the table made from `seed`: distinct across tables and entries.
uint32_t Out(uint32_t seed, uint32_t i, int w) { return seed * 100000 + i * 3 + w; }

// The table from `seed` as rows of three numbers, or as one text of all rows.
Json::Value Rows(uint32_t seed, uint32_t count, bool as_text = false) {
  Json::Value rows(Json::arrayValue);
  std::string text;
  for (uint32_t i = 0; i < count; ++i) {
    rows.append(std::to_string(Out(seed, i, 0)) + "," + std::to_string(Out(seed, i, 1)) + "," +
                std::to_string(Out(seed, i, 2)));
    text += (i == 0 ? "" : ",") + rows[i].asString();
  }
  return as_text ? Json::Value(text) : rows;
}

// An inline table from `seed` (or the shared table "a" for seed 0), with "Tuning" when given.
Json::Value Section(uint32_t seed, uint32_t count, const Json::Value& tuning = Json::Value()) {
  Json::Value json = ParseJson(seed == 0 ? kShared : R"({"enable":true})");
  if (seed != 0) json["mapFine"] = Rows(seed, count);
  if (!tuning.isNull()) json["Tuning"] = tuning;
  return json;
}

// Common data holding the 3D tables "a" (seed 3) and "b" (seed 4).
std::shared_ptr<HwAssetsCommonData> Tables() {
  Json::Value data;
  data["PostBlendGamut"]["numEntries"] = kEntries;
  data["PostBlendGamut"]["Custom"]["a"] = Rows(3, kEntries, true);
  data["PostBlendGamut"]["Custom"]["b"] = Rows(4, kEntries, true);
  return std::make_shared<HwAssetsCommonData>(data);
}

std::shared_ptr<HwAssetGamut> Read(uint32_t version, const Json::Value& json,
                                   std::shared_ptr<HwAssetsCommonData> tables = Tables()) {
  auto asset = std::make_shared<HwAssetGamut>(version, std::move(tables));
  asset->SetConfig(json);
  return asset;
}

// Entries [0, count) of raw record bytes from `entries` on hold the outputs of `seed`, the rest
// zero; with `grid` set, every entry's input point is its grid point, the first axis fastest.
void ExpectEntries(const void* entries, uint32_t seed, uint32_t count, bool grid = false) {
  for (uint32_t i = 0, e = 0; i < kEntries; ++i, e += 24) {
    ASSERT_TRUE(!grid || (LoadAt(entries, e) == Level(i % 17) && LoadAt(entries, e + 4) == Level(i / 17 % 17) &&
                          LoadAt(entries, e + 8) == Level(i / 289))) << "input point of entry " << i;
    for (int w = 0; w < 3; ++w) ASSERT_EQ(LoadAt(entries, e + 12 + 4 * w), i < count ? Out(seed, i, w) : 0u) << i;
  }
}

void ExpectDisabled(const GamutConfig& record) {
  EXPECT_TRUE(record.len == 117936 && !record.enable && record.reserved0 == 0 && record.reserved1 == 0 &&
              record.grid_mode == 1 && record.num_entries == 0) << record.grid_mode << " " << record.num_entries;
}

// Inline rows at any version, shared tables by name from version 3 ("Predefined" wins when both
// are given); "Tuning" as rows with an inline table, as one text of every row with a shared one.
TEST(HwAssetGamutTest, InlineAndSharedTablesWithTheirTuningForms) {
  EXPECT_EQ(*Read(0, Section(1, kEntries, Rows(2, 10)))->AsJV(), Section(1, kEntries));  // no "Tuning" written
  const std::string full = Rows(5, kEntries, true).asString();
  std::string spaced;  // blanks after the commas: not a plain list, read at once all the same
  for (char c : full) spaced += c == ',' ? std::string(", ") : std::string(1, c);
  const std::string huge = "4294967296" + full.substr(full.find(','));  // one field above 32 bits
  const struct {
    uint32_t version;
    Json::Value json;
    uint32_t seed, count, tuning_seed, tuning_count;  // main and tuning tables taken; count 0: refused
    std::string error;
  } cases[] = {
      {0, Section(1, 100, Rows(2, 100)), 1, 100, 2, 100, ""},
      {0, ParseJson(R"({"enable":true})"), 0, 0, 0, 0, "SetConfig(): No 3DLUT data found"},
      {0, Section(1, kEntries + 1), 0, 0, 0, 0, R"("mapFine" holds 4914 entries, more than the table's 4913)"},
      {0, Section(1, 1, ParseJson(R"(["1,2"])")), 0, 0, 0, 0, R"("Tuning" entry 0: "1,2" is not three decimal numbers)"},
      {3, ParseJson(kShared), 3, kEntries, 0, 0, ""},
      {4, ParseJson(R"({"enable":true,"numEntries":4913,"Custom":"b"})"), 4, kEntries, 0, 0, ""},
      {3, ParseJson(R"({"enable":true,"numEntries":4913,"Predefined":"zz","Custom":"b"})"), 0, 0, 0, 0,
       "SetConfig(): Failed to retrieve Gamut LUTs from common data"},
      {3, ParseJson(R"({"enable":true,"numEntries":4096,"Predefined":"a"})"), 0, 0, 0, 0,
       "SetConfig(): Unexpected number of gamut entries 4096, expecting 4913"},
      {2, ParseJson(kShared), 0, 0, 0, 0, "SetConfig(): No 3DLUT data found"},
      {3, Section(0, 0, full), 3, kEntries, 5, kEntries, ""},
      {3, Section(0, 0, full.substr(0, full.rfind(','))), 0, 0, 0, 0,
       R"("Tuning" holds fewer than 4913 entries of three decimal numbers, or a field that is not one)"},
      {3, Section(0, 0, Rows(5, kEntries + 1, true)), 0, 0, 0, 0, R"("Tuning" holds more than 4913 entries)"},
      {3, Section(0, 0, spaced), 3, kEntries, 5, kEntries, ""},
      {3, Section(0, 0, huge), 0, 0, 0, 0, R"("Tuning" holds fewer than 4913 entries of three decimal numbers)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Compact(c.json).substr(0, 100));
    LogCapture log;
    auto asset = Read(c.version, c.json);
    ExpectOneLine(log, "E", kWhere, c.error);
    if (c.count == 0) ExpectDisabled(asset->config());
    ExpectEntries(asset->config().entries, c.seed, c.count);
    EXPECT_TRUE(c.version < 3 || asset->tuning_config()->enable == (c.tuning_count != 0));  // shared form
    ExpectEntries(asset->tuning_config()->entries, c.tuning_seed, c.tuning_count);
  }
  auto record = std::make_unique<GamutConfig>();  // an entry count from any writer is bounded
  record->enable = true;
  record->num_entries = 0xFFFFFFFFu;
  auto asset = Read(0, Json::Value());
  asset->SetConfig(*record);
  EXPECT_EQ((*asset->AsJV())["mapFine"].size(), kEntries);
}

// A refused shared-form section switches the block off without touching the tables it held:
// neither the main entries nor the tuning record take anything of the refused one.
TEST(HwAssetGamutTest, RefusedSharedSectionKeepsTheEarlierTables) {
  const std::string full = Rows(5, kEntries, true).asString();
  Json::Value other = ParseJson(R"({"enable":true,"numEntries":4913,"Custom":"b"})");
  other["Tuning"] = full.substr(0, full.rfind(','));
  LogCapture log;
  auto asset = Read(3, Section(0, 0, full));
  asset->SetConfig(other);
  ExpectOneLine(log, "E", kWhere, R"("Tuning" holds fewer than 4913 entries)");
  ExpectDisabled(asset->config());
  ExpectEntries(asset->config().entries, 3, kEntries);
  ExpectEntries(asset->tuning_config()->entries, 5, kEntries);
}

// A failed call leaves the block off: the double's result is not used.
TEST(HwAssetGamutTest, MergeFramesEveryGridPointOfLeftMainAndRightTuning) {
  LogCapture log;
  auto left = Read(0, Section(1, 100, Rows(9, 100)));       // left tuning never used
  auto right = Read(3, Section(0, 0, Rows(5, kEntries, true)));  // right main "a" never used
  AlgoDouble algo;
  algo.set_check_framing(true);
  auto merged = std::make_shared<HwAssetGamut>(&algo, MergeOp::kMergeOperand, left, right);
  ASSERT_EQ(algo.calls().size(), 1u);
  ASSERT_TRUE(algo.framing_errors().empty()) << algo.framing_errors()[0];
  const unsigned char* in = algo.calls()[0].input.data();
  for (auto [at, count] : {std::pair{4u, 100u}, {4u + 117928, kEntries}}) {  // left body from 4, then right body
    EXPECT_TRUE(LoadAt(in, at) == 0 && LoadAt(in, at + 4) == 0 && LoadAt(in, at + 8) == 1 && LoadAt(in, at + 12) == count);
  }
  ExpectEntries(in + 20, 1, 100, true);
  ExpectEntries(in + 20 + 117928, 5, kEntries, true);
  // The double answers the left body with outputs left + 2 * right.
  EXPECT_TRUE(merged->config().enable && merged->config().num_entries == 100u && !merged->tuning_config()->enable);
  for (uint32_t i = 0; i < kEntries; ++i) {
    const GamutEntry& e = merged->config().entries[i];
    ASSERT_TRUE(e.in_2 == Level(i / 289) && e.out_1 == (i < 100 ? Out(1, i, 1) : 0) + 2 * Out(5, i, 1)) << i;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  algo.set_status(-1);
  ExpectDisabled(HwAssetGamut(&algo, MergeOp::kMergeOperand, left, right).config());
  ExpectOneLine(log, "E", kWhere, "Merge(): Failed to process kKivGamutMerge");
  HwAssetGamut untuned(&algo, MergeOp::kMergeOperand, left, Read(0, Section(7, 10)));
  ExpectEntries(algo.calls().at(2).input.data() + 20 + 117928, 0, 0, true);  // no "Tuning": a zero table
}

// Assets naming one shared table hold its block rather than a copy each, as does an operand taken
// whole; a write (the input points a merge fills into its left operand, identity) copies first
// and reaches neither the other holders nor the common table.
TEST(HwAssetGamutTest, SharedTableBlocksAreCopiedOnlyWhenWritten) {
  auto tables = Tables();
  auto a = Read(3, ParseJson(kShared), tables);
  auto b = Read(3, ParseJson(kShared), tables);
  const GamutConfig* table = tables->GetGamut("a").get();
  AlgoDouble algo;
  HwAssetGamut taken(&algo, MergeOp::kLeftOperand, a, nullptr);
  EXPECT_TRUE(&a->config() == table && &b->config() == table && &taken.config() == table);
  HwAssetGamut merged(&algo, MergeOp::kMergeOperand, a, Read(3, Section(0, 0, Rows(5, kEntries, true))));
  ASSERT_EQ(algo.calls().size(), 1u);
  ExpectEntries(a->config().entries, 3, kEntries, /*grid=*/true);
  b->SetIdentity();
  ExpectDisabled(b->config());
  for (const GamutConfig* held : {table, &taken.config()}) {
    EXPECT_TRUE(held->enable && held->num_entries == kEntries && held->entries[1].in_0 == 0);
    ExpectEntries(held->entries, 3, kEntries);
  }
}

}  // namespace
}  // namespace vexa
