#include "assets/hw_asset_gamut.h"

#include <gtest/gtest.h>

#include <string>

#include "formats/json_text.h"
#include "support/algo_double.h"
#include "support/log_capture.h"
#include "support/asset_json.h"
#include "support/log_lines.h"

namespace vexa {
namespace {

using testing::AlgoDouble;
using testing::LoadAt;
using testing::LogCapture;
using testing::ParseJson;
using MergeOp = kiv_mode_merge_caps::KivPostBlendGamutMergeOp;

constexpr uint32_t kEntries = 4913;
constexpr uint32_t kLevels[17] = {0,    256,  512,  768,  1024, 1280, 1536, 1792, 2048,
                                  2304, 2560, 2816, 3072, 3328, 3584, 3840, 4095};
constexpr char kShared[] = R"({"enable":true,"numEntries":4913,"Predefined":"a"})";

// Output word `w` of entry `i` in the table made from `seed`: distinct across tables and entries.
uint32_t Out(uint32_t seed, uint32_t i, int w) { return seed * 100000 + i * 3 + w; }

std::string Row(uint32_t seed, uint32_t i) {
  return std::to_string(Out(seed, i, 0)) + "," + std::to_string(Out(seed, i, 1)) + "," +
         std::to_string(Out(seed, i, 2));
}

Json::Value Rows(uint32_t seed, uint32_t count) {
  Json::Value rows(Json::arrayValue);
  for (uint32_t i = 0; i < count; ++i) rows.append(Row(seed, i));
  return rows;
}

std::string Stream(uint32_t seed, uint32_t count) {
  std::string text;
  for (uint32_t i = 0; i < count; ++i) text += (i == 0 ? "" : ",") + Row(seed, i);
  return text;
}

Json::Value Inline(uint32_t seed, uint32_t count, const Json::Value& tuning = Json::Value()) {
  Json::Value json(Json::objectValue);
  json["enable"] = true;
  json["mapFine"] = Rows(seed, count);
  if (!tuning.isNull()) json["Tuning"] = tuning;
  return json;
}

Json::Value Shared(const Json::Value& tuning) {
  Json::Value json = ParseJson(kShared);
  json["Tuning"] = tuning;
  return json;
}

// Common data with the 3D tables "a" (seed 3) and "b" (seed 4).
std::shared_ptr<HwAssetsCommonData> Common() {
  Json::Value common(Json::objectValue);
  common["PostBlendGamut"]["numEntries"] = kEntries;
  common["PostBlendGamut"]["Custom"]["a"] = Stream(3, kEntries);
  common["PostBlendGamut"]["Custom"]["b"] = Stream(4, kEntries);
  return std::make_shared<HwAssetsCommonData>(common);
}

std::shared_ptr<HwAssetGamut> Read(uint32_t version, const Json::Value& json, bool common = false) {
  auto asset = std::make_shared<HwAssetGamut>(version, common ? Common() : nullptr);
  asset->SetConfig(json);
  return asset;
}

// Entries [0, count) of a record's raw bytes from `entries` on hold the outputs of `seed`,
// the rest zero; with `grid` set, every entry's input point is its grid point.
void ExpectEntries(const unsigned char* entries, uint32_t seed, uint32_t count, bool grid) {
  for (uint32_t i = 0; i < kEntries; ++i) {
    const unsigned char* e = entries + 24 * i;
    if (grid) {
      ASSERT_TRUE(LoadAt<uint32_t>(e, 0) == kLevels[i % 17] && LoadAt<uint32_t>(e, 4) == kLevels[i / 17 % 17] &&
                  LoadAt<uint32_t>(e, 8) == kLevels[i / 289])
          << "input point of entry " << i;
    }
    for (int w = 0; w < 3; ++w) {
      ASSERT_EQ(LoadAt<uint32_t>(e, 12 + 4 * w), i < count ? Out(seed, i, w) : 0u) << i << " " << w;
    }
  }
}
void ExpectEntries(const GamutConfig& record, uint32_t seed, uint32_t count) {
  ExpectEntries(reinterpret_cast<const unsigned char*>(record.entries), seed, count, false);
}

void ExpectDisabled(const GamutConfig& record) {
  EXPECT_TRUE(record.len == 117936 && !record.enable && record.reserved0 == 0 && record.reserved1 == 0 &&
              record.grid_mode == 1 && record.num_entries == 0)
      << record.enable << " " << record.grid_mode << " " << record.num_entries;
}

// No error line, one that is exactly `error` ("<function>(): <message>"), or one that contains it.
void ExpectError(const LogCapture& log, const std::string& error) {
  const auto errors = log.Errors();
  ASSERT_EQ(errors.size(), error.empty() ? 0u : 1u) << log.Dump();
  if (error.empty()) return;
  const size_t split = error.find("(): ");
  if (split != std::string::npos) {
    EXPECT_TRUE(testing::IsLogLine(errors[0], "E", "VexaJsonModeParser::HwAssetGamut::" + error.substr(0, split),
                                   error.substr(split + 4)))
        << errors[0];
  } else {
    EXPECT_NE(errors[0].find(error), std::string::npos) << errors[0];
  }
}

TEST(HwAssetGamutTest, GridInputPointsVaryTheFirstAxisFastest) {
  for (uint32_t k = 0; k < 17; ++k) EXPECT_EQ(HwAssetGamut::GridLevel(k), kLevels[k]) << k;
  auto record = std::make_unique<GamutConfig>();
  record->entries[4912].out_2 = 77;
  HwAssetGamut::FillRgbInEntries(record.get());
  HwAssetGamut::FillRgbInEntries(nullptr);
  const uint32_t points[][4] = {{0, 0, 0, 0},       {1, 256, 0, 0},     {16, 4095, 0, 0},
                                {17, 0, 256, 0},    {289, 0, 0, 256},   {290, 256, 0, 256},
                                {4624, 0, 0, 4095}, {4912, 4095, 4095, 4095}};
  for (const auto& p : points) {
    const GamutEntry& e = record->entries[p[0]];
    EXPECT_TRUE(e.in_0 == p[1] && e.in_1 == p[2] && e.in_2 == p[3]) << p[0];
  }
  EXPECT_EQ(record->entries[4912].out_2, 77u);
}

TEST(HwAssetGamutTest, InlineTableRoundTripsThroughJson) {
  LogCapture log;
  const Json::Value json = Inline(1, kEntries);
  auto asset = Read(0, Inline(1, kEntries, Rows(2, 10)));
  EXPECT_TRUE(asset->config().enable);
  EXPECT_EQ(asset->config().num_entries, kEntries);
  EXPECT_EQ(asset->config().grid_mode, 1u);
  ExpectEntries(asset->config(), 1, kEntries);
  ExpectEntries(asset->tuning_config(), 2, 10);
  EXPECT_EQ(*asset->AsJV(), json) << "no \"Tuning\" is written back";

  // Blanks before a number are skipped, a number ends at its first non-digit, extra fields are
  // ignored; the table is written back in the plain form. Without "Tuning" the tuning stays.
  asset->SetConfig(ParseJson(R"({"enable":true,"mapFine":[" 1, 2,\t3","12abc,4 5,6","7,8,9,10"]})"));
  EXPECT_EQ(*asset->AsJV(), ParseJson(R"({"enable":true,"mapFine":["1,2,3","12,4,6","7,8,9"]})"));
  ExpectEntries(asset->tuning_config(), 2, 10);
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TEST(HwAssetGamutTest, RefusedInlineSectionDisablesAndKeepsEntriesAndTuning) {
  const struct {
    const char* key;  // replaced in {"enable":true,"mapFine":["1,2,3"]}; null removes "mapFine"
    Json::Value value;
    std::string error;  // empty: no error line
  } cases[] = {
      {"enable", false, ""},
      {nullptr, Json::Value(), "SetConfig(): No 3DLUT data found"},
      {"mapFine", Rows(5, kEntries + 1), R"("mapFine" holds 4914 entries, more than the table's 4913)"},
      {"mapFine", ParseJson(R"(["1,2"])"), R"("mapFine" entry 0: "1,2" is not three decimal numbers)"},
      {"mapFine", ParseJson(R"(["1,2,3","a,2,3"])"), R"("mapFine" entry 1: "a,2,3" is not)"},
      {"mapFine", ParseJson(R"(["-1,2,3"])"), R"("mapFine" entry 0: "-1,2,3" is not)"},
      {"mapFine", ParseJson(R"(["4294967296,0,0"])"), R"("mapFine" entry 0: "4294967296,0,0" is not)"},
      {"mapFine", ParseJson(R"(["1,2,3",{}])"), R"(Invalid member "mapFine": expected array of strings, found object)"},
      {"mapFine", "1,2,3", R"(Invalid member "mapFine": expected array, found string)"},
      {"Tuning", "1,2,3", R"(Invalid member "Tuning": expected array, found string)"},
      {"Tuning", Rows(5, kEntries + 1), R"("Tuning" holds 4914 entries, more than the table's 4913)"},
      {"Tuning", ParseJson(R"(["x"])"), R"("Tuning" entry 0: "x" is not three decimal numbers)"},
      {"enable", "yes", R"(Invalid member "enable": expected boolean, found string)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.error);
    auto asset = Read(0, Inline(1, 100, Rows(2, 100)));
    Json::Value json = ParseJson(R"({"enable":true,"mapFine":["1,2,3"]})");
    if (c.key == nullptr) {
      json.removeMember("mapFine");
    } else {
      json[c.key] = c.value;
    }
    LogCapture log;
    asset->SetConfig(json);
    ExpectError(log, c.error);
    ExpectDisabled(asset->config());
    ExpectEntries(asset->config(), 1, 100);
    ExpectEntries(asset->tuning_config(), 2, 100);
    EXPECT_EQ(JsonToCompactText(*asset->AsJV()), "{\"enable\":false}\n");
  }
}

TEST(HwAssetGamutTest, SharedTableAndTuningFromVersionThree) {
  const std::string full = Stream(5, kEntries);
  std::string bad_field = full;
  bad_field[bad_field.find(',', 1000) + 1] = 'x';
  const std::string not_found = "SetConfig(): Failed to retrieve Gamut LUTs from common data";
  const struct {
    uint32_t version;
    bool common;
    Json::Value json;
    uint32_t seed;  // of the main table taken; 0: refused
    std::string error;
  } cases[] = {
      {3, true, ParseJson(kShared), 3, ""},
      {4, true, ParseJson(R"({"enable":true,"numEntries":4913,"Custom":"b"})"), 4, ""},
      {3, true, ParseJson(R"({"enable":true,"numEntries":4913,"Predefined":"a","Custom":"b"})"), 3, ""},
      {3, true, ParseJson(R"({"enable":true,"numEntries":4913,"Predefined":"zz","Custom":"b"})"), 0, not_found},
      {3, true, ParseJson(R"({"enable":true,"numEntries":4913})"), 0, not_found},
      {3, false, ParseJson(kShared), 0, not_found},
      {3, true, ParseJson(R"({"enable":true,"numEntries":4096,"Predefined":"a"})"), 0,
       "SetConfig(): Unexpected number of gamut entries 4096, expecting 4913"},
      {3, true, ParseJson(R"({"enable":true,"Predefined":"a"})"), 0,
       "SetConfig(): Unexpected number of gamut entries 0, expecting 4913"},
      {3, true, ParseJson(R"({"enable":true,"numEntries":"4913","Predefined":"a"})"), 0,
       R"(Invalid member "numEntries": expected unsigned integer, found string)"},
      {3, true, ParseJson(R"({"enable":true,"numEntries":4913,"Predefined":["a"]})"), 0,
       R"(Invalid member "Predefined": expected string, found array)"},
      {2, true, ParseJson(kShared), 0, "SetConfig(): No 3DLUT data found"},
      {3, true, Shared(full), 3, ""},
      {3, true, Shared(full.substr(0, full.rfind(','))), 0,
       R"("Tuning" holds fewer than 4913 entries of three decimal numbers, or a field that is not one)"},
      {3, true, Shared(bad_field), 0, R"("Tuning" holds fewer than 4913 entries)"},
      {3, true, Shared(Stream(5, kEntries + 1)), 0, R"("Tuning" holds more than 4913 entries)"},
      {3, true, Shared(Rows(5, 3)), 0, R"(Invalid member "Tuning": expected string, found array)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(JsonToCompactText(c.json).substr(0, 100));
    LogCapture log;
    auto asset = Read(c.version, c.json, c.common);
    ExpectError(log, c.error);
    const GamutConfig& tuning = asset->tuning_config();
    const bool tuned = c.seed != 0 && c.json.isMember("Tuning");
    EXPECT_EQ(tuning.enable, tuned);
    EXPECT_EQ(tuning.num_entries, tuned ? kEntries : 0);
    ExpectEntries(tuning, 5, tuned ? kEntries : 0);
    if (c.seed == 0) {
      ExpectDisabled(asset->config());
      continue;
    }
    EXPECT_TRUE(asset->config().enable);
    EXPECT_EQ(asset->config().num_entries, kEntries);
    ExpectEntries(asset->config(), c.seed, kEntries);
  }
}

TEST(HwAssetGamutTest, PayloadIsACopyAtTheRecordOffsets) {
  auto asset = Read(3, ParseJson(kShared), true);
  auto payload = asset->AsPayload();
  ASSERT_TRUE(payload);
  EXPECT_EQ(payload->size, 56u);
  EXPECT_EQ(payload->name, "PostBlendGamut");
  EXPECT_EQ(payload->config_size, 117936u);
  const auto* bytes = static_cast<const unsigned char*>(payload->config.get());
  const uint32_t words[][2] = {{0, 117936}, {8, 0}, {12, 0}, {16, 1}, {20, kEntries}};  // offset, value
  for (const auto& w : words) EXPECT_EQ(LoadAt<uint32_t>(bytes, w[0]), w[1]) << w[0];
  EXPECT_EQ(bytes[4], 1);
  ExpectEntries(bytes + 24, 3, kEntries, false);

  asset->SetIdentity();
  EXPECT_EQ(bytes[4], 1) << "a payload already handed out must not follow the asset";
  const auto identity_payload = asset->AsPayload();
  const auto* identity = static_cast<const unsigned char*>(identity_payload->config.get());
  EXPECT_TRUE(identity[4] == 0 && LoadAt<uint32_t>(identity, 16) == 1 && LoadAt<uint32_t>(identity, 20) == 0);
  ExpectEntries(identity + 24, 3, kEntries, false);  // identity keeps the entries
}

TEST(HwAssetGamutTest, MergeFramesEveryGridPointOfLeftMainAndRightTuning) {
  LogCapture log;
  auto left = Read(0, Inline(1, 100, Rows(9, 100)));  // left tuning never used
  auto right = Read(3, Shared(Stream(5, kEntries)), true);  // right main "a" never used
  AlgoDouble algo;
  algo.set_check_framing(true);

  auto merged = std::make_shared<HwAssetGamut>(&algo, MergeOp::kMergeOperand, left, right);

  ASSERT_EQ(algo.calls().size(), 1u);
  ASSERT_TRUE(algo.framing_errors().empty()) << algo.framing_errors()[0];
  const testing::AlgoCall& call = algo.calls()[0];
  EXPECT_TRUE(call.op == kKivGamutMerge && call.input_len == 235860 && call.output_len == 117932);
  const unsigned char* in = call.input.data();
  const uint32_t headers[][2] = {{0, 235860}, {4, 0}, {8, 0}, {12, 1}, {16, 100},  // left body from 4
                                 {4 + 117928, 0}, {8 + 117928, 0}, {12 + 117928, 1}, {16 + 117928, kEntries}};
  for (const auto& h : headers) EXPECT_EQ(LoadAt<uint32_t>(in, h[0]), h[1]) << h[0];
  ExpectEntries(in + 20, 1, 100, true);
  ExpectEntries(in + 20 + 117928, 5, kEntries, true);
  EXPECT_EQ(left->config().entries[1].in_0, 256u) << "input points are written into the operands";
  EXPECT_EQ(right->tuning_config().entries[289].in_2, 256u);

  // The double answers the left body with outputs left + 2 * right.
  EXPECT_TRUE(merged->config().enable);
  EXPECT_EQ(merged->config().num_entries, 100u);
  for (uint32_t i = 0; i < kEntries; ++i) {
    const GamutEntry& e = merged->config().entries[i];
    ASSERT_EQ(e.in_2, kLevels[i / 289]) << i;
    ASSERT_EQ(e.out_1, (i < 100 ? Out(1, i, 1) : 0) + 2 * Out(5, i, 1)) << i;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();

  // A right operand read without "Tuning" merges against a zero table.
  auto untuned = std::make_shared<HwAssetGamut>(&algo, MergeOp::kMergeOperand, left, Read(0, Inline(7, 10)));
  ASSERT_EQ(algo.calls().size(), 2u);
  ExpectEntries(algo.calls()[1].input.data() + 20 + 117928, 0, 0, true);
}

TEST(HwAssetGamutTest, MergeConstructorByOperation) {
  const std::string missing = "HwAssetGamut(): Gamut Merge Error: Source (either left or "
                              "right operand) is empty or vexa_algo_intf is nullptr";
  const struct {
    MergeOp op;
    bool left, right, algo;
    int32_t status;
    uint32_t seed;  // of the resulting main table; 0: identity
    std::string error;
  } cases[] = {
      {MergeOp::kMergeOperand, false, true, true, 0, 0, missing},
      {MergeOp::kMergeOperand, true, false, true, 0, 0, missing},
      {MergeOp::kMergeOperand, true, true, false, 0, 0, missing},
      {MergeOp::kMergeOperand, true, true, true, -1, 0, "Merge(): Failed to process kKivGamutMerge"},
      {MergeOp::kLeftOperand, true, true, true, 0, 1, ""},
      {MergeOp::kRightOperand, true, true, true, 0, 3, ""},
      {MergeOp::kLeftOperand, false, true, true, 0, 0,
       "HwAssetGamut(): Gamut Merge Error: Source (left operand) is empty"},
      {MergeOp::kRightOperand, true, false, true, 0, 0,
       "HwAssetGamut(): Gamut Merge Error: Source (right operand) is empty"},
      {MergeOp::kIdentity, true, true, true, 0, 0, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.error.empty() ? std::to_string(static_cast<int>(c.op)) : c.error);
    AlgoDouble algo;
    algo.set_status(c.status);  // the double still writes its result
    auto left = c.left ? Read(0, Inline(1, kEntries, Rows(2, 10))) : nullptr;
    auto right = c.right ? Read(3, Shared(Stream(5, kEntries)), true) : nullptr;
    LogCapture log;
    auto merged = std::make_shared<HwAssetGamut>(c.algo ? &algo : nullptr, c.op, left, right);
    ExpectError(log, c.error);
    EXPECT_EQ(algo.calls().size(), c.status != 0 ? 1u : 0u);
    EXPECT_FALSE(merged->tuning_config().enable) << "a merge never copies the tuning table";
    ExpectEntries(merged->tuning_config(), 0, 0);
    if (c.seed == 0) {
      ExpectDisabled(merged->config());
      ExpectEntries(merged->config(), 0, 0);  // a failed merge does not take the output
      continue;
    }
    EXPECT_TRUE(merged->config().enable);
    ExpectEntries(merged->config(), c.seed, kEntries);
  }
}

TEST(HwAssetGamutTest, EntryCountsFromAnyWriterAreBoundedByTheTable) {
  auto record = std::make_unique<GamutConfig>();
  record->enable = true;
  record->num_entries = 0xFFFFFFFFu;
  auto asset = std::make_shared<HwAssetGamut>(0, nullptr);
  asset->SetConfig(*record);
  EXPECT_EQ((*asset->AsJV())["mapFine"].size(), kEntries);

  AlgoDouble algo;
  algo.set_responder([](VexaKivOps op, const unsigned char* in, uint32_t in_len, unsigned char* out,
                        uint32_t out_len) {
    AlgoDouble::KnownResult(op, in, in_len, out, out_len);
    testing::StoreAt<uint32_t>(out, 4 + 12, 100000);  // num_entries beyond the table
  });
  auto operand = Read(0, Inline(1, 3));
  auto merged = std::make_shared<HwAssetGamut>(&algo, MergeOp::kMergeOperand, operand, operand);
  ASSERT_TRUE(merged->config().enable);
  EXPECT_EQ((*merged->AsJV())["mapFine"].size(), kEntries);
}

}  // namespace
}  // namespace vexa
