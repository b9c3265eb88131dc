#include "assets/hw_asset_gamut.h"

#include <gtest/gtest.h>

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
constexpr uint32_t kLevels[17] = {0, 256, 512, 768, 1024, 1280, 1536, 1792, 2048, 2304, 2560, 2816, 3072, 3328,
                                  3584, 3840, 4095};
constexpr char kWhere[] = "VexaJsonModeParser::HwAssetGamut";
constexpr char kShared[] = R"({"enable":true,"numEntries":4913,"Predefined":"a"})";

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

// With common data holding the 3D tables "a" (seed 3) and "b" (seed 4).
std::shared_ptr<HwAssetGamut> Read(uint32_t version, const Json::Value& json, bool common = false) {
  Json::Value data;
  data["PostBlendGamut"]["numEntries"] = kEntries;
  data["PostBlendGamut"]["Custom"]["a"] = Rows(3, kEntries, true);
  data["PostBlendGamut"]["Custom"]["b"] = Rows(4, kEntries, true);
  auto asset = std::make_shared<HwAssetGamut>(version, common ? std::make_shared<HwAssetsCommonData>(data) : nullptr);
  asset->SetConfig(json);
  return asset;
}

// Entries [0, count) of raw record bytes from `entries` on hold the outputs of `seed`, the rest
// zero; with `grid` set, every entry's input point is its grid point, the first axis fastest.
void ExpectEntries(const void* entries, uint32_t seed, uint32_t count, bool grid = false) {
  for (uint32_t i = 0; i < kEntries; ++i) {
    const size_t e = 24 * i;
    ASSERT_TRUE(!grid || (LoadAt(entries, e) == kLevels[i % 17] && LoadAt(entries, e + 4) == kLevels[i / 17 % 17] &&
                          LoadAt(entries, e + 8) == kLevels[i / 289])) << "input point of entry " << i;
    for (int w = 0; w < 3; ++w) ASSERT_EQ(LoadAt(entries, e + 12 + 4 * w), i < count ? Out(seed, i, w) : 0u) << i;
  }
}

void ExpectDisabled(const GamutConfig& record) {
  EXPECT_TRUE(record.len == 117936 && !record.enable && record.reserved0 == 0 && record.reserved1 == 0 &&
              record.grid_mode == 1 && record.num_entries == 0) << record.grid_mode << " " << record.num_entries;
}

// An inline table is written back without "Tuning"; a refused section disables the block and
// keeps its entries and the tuning table.
TEST(HwAssetGamutTest, InlineSectionWritesBackOrIsRefused) {
  LogCapture log;
  auto asset = Read(0, Section(1, kEntries, Rows(2, 10)));
  EXPECT_EQ(*asset->AsJV(), Section(1, kEntries));
  ExpectEntries(static_cast<const char*>(asset->AsPayload()->config.get()) + 24, 1, kEntries);
  auto record = std::make_unique<GamutConfig>();  // an entry count from any writer is bounded
  record->enable = true;
  record->num_entries = 0xFFFFFFFFu;
  asset->SetConfig(*record);
  EXPECT_EQ((*asset->AsJV())["mapFine"].size(), kEntries);
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
  const struct {
    const char* key;  // replaced in {"enable":true,"mapFine":["1,2,3"]}; null removes "mapFine"
    Json::Value value;
    std::string error;
  } cases[] = {
      {nullptr, Json::Value(), "SetConfig(): No 3DLUT data found"},
      {"mapFine", Rows(5, kEntries + 1), R"("mapFine" holds 4914 entries, more than the table's 4913)"},
      {"mapFine", ParseJson(R"(["1,2"])"), R"("mapFine" entry 0: "1,2" is not three decimal numbers)"},
      {"mapFine", ParseJson(R"(["1,2,3",{}])"), R"(Invalid member "mapFine": expected array of strings, found object)"},
      {"Tuning", ParseJson(R"(["x"])"), R"("Tuning" entry 0: "x" is not three decimal numbers)"},
  };
  for (const auto& c : cases) {
    asset = Read(0, Section(1, 100, Rows(2, 100)));
    Json::Value json = ParseJson(R"({"enable":true,"mapFine":["1,2,3"]})");
    if (c.key == nullptr) json.removeMember("mapFine");
    if (c.key != nullptr) json[c.key] = c.value;
    LogCapture refused;
    asset->SetConfig(json);
    ExpectOneLine(refused, "E", kWhere, c.error);
    ExpectDisabled(asset->config());
    ExpectEntries(asset->config().entries, 1, 100);
    ExpectEntries(asset->tuning_config().entries, 2, 100);
  }
}

TEST(HwAssetGamutTest, SharedTableAndTuningFromVersionThree) {
  const std::string not_found = "SetConfig(): Failed to retrieve Gamut LUTs from common data";
  const std::string full = Rows(5, kEntries, true).asString();
  const struct {
    uint32_t version;
    bool common;
    Json::Value json;
    uint32_t seed;  // of the main table taken; 0: refused
    std::string error;
  } cases[] = {
      {3, true, ParseJson(kShared), 3, ""},
      {4, true, ParseJson(R"({"enable":true,"numEntries":4913,"Custom":"b"})"), 4, ""},
      {3, true, ParseJson(R"({"enable":true,"numEntries":4913,"Predefined":"zz","Custom":"b"})"), 0, not_found},
      {3, false, ParseJson(kShared), 0, not_found},
      {3, true, ParseJson(R"({"enable":true,"numEntries":4096,"Predefined":"a"})"), 0,
       "SetConfig(): Unexpected number of gamut entries 4096, expecting 4913"},
      {2, true, ParseJson(kShared), 0, "SetConfig(): No 3DLUT data found"},
      {3, true, Section(0, 0, full), 3, ""},
      {3, true, Section(0, 0, full.substr(0, full.rfind(','))), 0,
       R"("Tuning" holds fewer than 4913 entries of three decimal numbers, or a field that is not one)"},
      {3, true, Section(0, 0, Rows(5, kEntries + 1, true)), 0, R"("Tuning" holds more than 4913 entries)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Compact(c.json).substr(0, 100));
    LogCapture log;
    auto asset = Read(c.version, c.json, c.common);
    ExpectOneLine(log, "E", kWhere, c.error);
    const bool tuned = c.seed != 0 && c.json.isMember("Tuning");
    EXPECT_EQ(asset->tuning_config().enable, tuned);
    ExpectEntries(asset->tuning_config().entries, 5, tuned ? kEntries : 0);
    if (c.seed == 0) ExpectDisabled(asset->config());
    ExpectEntries(asset->config().entries, c.seed, c.seed == 0 ? 0 : kEntries);
  }
}

TEST(HwAssetGamutTest, MergeFramesEveryGridPointOfLeftMainAndRightTuning) {
  LogCapture log;
  auto left = Read(0, Section(1, 100, Rows(9, 100)));           // left tuning never used
  auto right = Read(3, Section(0, 0, Rows(5, kEntries, true)), true);  // right main "a" never used
  AlgoDouble algo;
  algo.set_check_framing(true);
  auto merged = std::make_shared<HwAssetGamut>(&algo, MergeOp::kMergeOperand, left, right);
  ASSERT_EQ(algo.calls().size(), 1u);
  ASSERT_TRUE(algo.framing_errors().empty()) << algo.framing_errors()[0];
  const unsigned char* in = algo.calls()[0].input.data();
  const uint32_t headers[][2] = {{4, 0}, {8, 0}, {12, 1}, {16, 100},  // left body from 4, then right body
                                 {4 + 117928, 0}, {8 + 117928, 0}, {12 + 117928, 1}, {16 + 117928, kEntries}};
  for (const auto& h : headers) EXPECT_EQ(LoadAt(in, h[0]), h[1]) << h[0];
  ExpectEntries(in + 20, 1, 100, true);
  ExpectEntries(in + 20 + 117928, 5, kEntries, true);

  // The double answers the left body with outputs left + 2 * right.
  EXPECT_TRUE(merged->config().enable && merged->config().num_entries == 100u);
  for (uint32_t i = 0; i < kEntries; ++i) {
    const GamutEntry& e = merged->config().entries[i];
    ASSERT_TRUE(e.in_2 == kLevels[i / 289] && e.out_1 == (i < 100 ? Out(1, i, 1) : 0) + 2 * Out(5, i, 1)) << i;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();

  // A right operand read without "Tuning" merges against a zero table.
  HwAssetGamut untuned(&algo, MergeOp::kMergeOperand, left, Read(0, Section(7, 10)));
  ASSERT_EQ(algo.calls().size(), 2u);
  ExpectEntries(algo.calls()[1].input.data() + 20 + 117928, 0, 0, true);
}

TEST(HwAssetGamutTest, MergeWithoutOperandOrLibraryOrWithAFailedCallIsIdentity) {
  const struct {
    MergeOp op;
    bool left, algo;
    int32_t status;
    std::string error;
  } cases[] = {
      {MergeOp::kMergeOperand, false, true, 0, "HwAssetGamut(): Gamut Merge Error: Source (either left or right "
                                               "operand) is empty or vexa_algo_intf is nullptr"},
      {MergeOp::kMergeOperand, true, false, 0, "HwAssetGamut(): Gamut Merge Error: Source (either left or right "
                                               "operand) is empty or vexa_algo_intf is nullptr"},
      {MergeOp::kMergeOperand, true, true, -1, "Merge(): Failed to process kKivGamutMerge"},
      {MergeOp::kRightOperand, true, true, 0, ""},  // the right main table, never its tuning
  };
  for (const auto& c : cases) {
    AlgoDouble algo;
    algo.set_status(c.status);  // the double still writes its result
    LogCapture log;
    HwAssetGamut merged(c.algo ? &algo : nullptr, c.op, c.left ? Read(0, Section(1, kEntries, Rows(2, 10))) : nullptr,
                        Read(3, Section(0, 0, Rows(5, kEntries, true)), true));
    ExpectOneLine(log, "E", kWhere, c.error);
    EXPECT_FALSE(merged.tuning_config().enable) << "a merge never copies the tuning table";
    ExpectEntries(merged.tuning_config().entries, 0, 0);
    if (!c.error.empty()) ExpectDisabled(merged.config());
    ExpectEntries(merged.config().entries, c.error.empty() ? 3 : 0, c.error.empty() ? kEntries : 0);
  }
}

}  // namespace
}  // namespace vexa
