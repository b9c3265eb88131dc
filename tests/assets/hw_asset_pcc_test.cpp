#include "assets/hw_asset_pcc.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/algo_double.h"
#include "support/asset_json.h"

namespace vexa {
namespace {

using testing::AlgoDouble;
using testing::LogCapture;
using MergeOp = kiv_mode_merge_caps::KivPostBlendPCCMergeOp;

constexpr char kWhere[] = "VexaJsonModeParser::HwAssetPCC";
constexpr const char* kChannelKeys[] = {"R", "G", "B"};
constexpr const char* kCoeffNames[] = {"c", "r", "g", "b", "rr", "gg", "bb", "rg", "gb", "rb", "rgb"};
// Half of each coefficient's range, in powers of two: seeds within [-1, 1] stay in range, exactly.
constexpr double kScale[] = {128, 2, 2, 2, 0x1p-7, 0x1p-7, 0x1p-7, 0x1p-7, 0x1p-7, 0x1p-7, 0x1p-15};

// Coefficient i of channel ch is seed[ch] * kScale[i].
Json::Value Channels(double r, double g, double b) {
  const double seeds[] = {r, g, b};
  Json::Value json(Json::objectValue);
  for (int ch = 0; ch < 3; ++ch) {
    for (int i = 0; i < 11; ++i) json[kChannelKeys[ch]][kCoeffNames[i]] = seeds[ch] * kScale[i];
  }
  return json;
}

std::shared_ptr<HwAssetPCC> Read(Json::Value json, const Json::Value& tuning = Json::Value()) {
  json["enable"] = true;
  if (!tuning.isNull()) json["Tuning"] = tuning;
  auto asset = std::make_shared<HwAssetPCC>(0, nullptr);
  asset->SetConfig(json);
  return asset;
}

// Every coefficient in the raw bytes of a coefficient block (reserved word first) equals that of
// the JSON channels; identity when `json` is null.
void ExpectCoeffs(const void* block, const Json::Value& json) {
  EXPECT_EQ(testing::LoadAt(block, 0), 0u) << "reserved word";
  for (int ch = 0; ch < 3; ++ch) {
    for (int i = 0; i < 11; ++i) {
      const double expected = json.isNull() ? (i == ch + 1 ? 1.0 : 0.0) : json[kChannelKeys[ch]][kCoeffNames[i]].asDouble();
      EXPECT_EQ(testing::LoadAt<double>(block, 8 + 88 * ch + 8 * i), expected) << kChannelKeys[ch] << kCoeffNames[i];
    }
  }
}

TEST(HwAssetPCCTest, RoundTripsMainRecordAndKeepsTuningApart) {
  LogCapture log;
  Json::Value main = Channels(0.5, 0.25, -1);
  main["R"]["c"] = 300.0;  // out of range: reading does not clip
  const Json::Value tuning = Channels(-0.5, 1, 0.125);
  auto asset = Read(main, tuning);
  main["enable"] = true;
  EXPECT_EQ(*asset->AsJV(), main) << "no \"Tuning\" is written back";
  EXPECT_TRUE(asset->tuning_config().enable);
  ExpectCoeffs(&asset->tuning_config().coeffs, tuning);

  // Missing members read as 0; without "Tuning" the earlier tuning record stays.
  asset->SetConfig(testing::ParseJson(R"({"enable":true,"G":{"rg":0.0078125}})"));
  Json::Value zeros = Channels(0, 0, 0);
  zeros["G"]["rg"] = 0.0078125;
  ExpectCoeffs(&asset->config().coeffs, zeros);
  ExpectCoeffs(&asset->tuning_config().coeffs, tuning);
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TEST(HwAssetPCCTest, DisabledOrRefusedSectionIsIdentityAndKeepsTuning) {
  const struct {
    const char* json;
    const char* error;  // empty: no error line
  } cases[] = {
      {R"({"enable":false,"R":{"c":1}})", ""},
      {R"({"enable":true,"R":5})", R"(Invalid member "R": expected object)"},
      {R"({"enable":true,"G":{"rg":"x"}})", R"(Invalid member "rg" in channel "G": expected number)"},
      {R"({"enable":true,"Tuning":{"B":{"rgb":[]}}})", R"(Invalid member "rgb" in "Tuning", channel "B")"},
      {R"([{"enable":true}])", R"x(Invalid member "(section)": expected object, found array)x"},
  };
  const Json::Value tuning = Channels(0.5, 0.5, 0.5);
  for (const auto& c : cases) {
    auto asset = Read(Channels(0.25, 0.25, 0.25), tuning);
    LogCapture log;
    asset->SetConfig(testing::ParseJson(c.json));
    testing::ExpectOneLine(log, "E", kWhere, c.error);
    EXPECT_FALSE(asset->config().enable) << c.json;
    ExpectCoeffs(&asset->config().coeffs, Json::Value());
    ExpectCoeffs(&asset->tuning_config().coeffs, tuning);
  }
}

// Each coefficient is clipped to its own range, limits included, and NaN is left alone.
TEST(HwAssetPCCTest, ClipsEachCoefficientToItsRange) {
  const double limits[][2] = {{-256.0, 255.9921875}, {-4.0, 3.99996948}, {-4.0, 3.99996948}, {-4.0, 3.99996948},
                              {-0.015625, 0.01562488}, {-0.015625, 0.01562488}, {-0.015625, 0.01562488},
                              {-0.015625, 0.01562488}, {-0.015625, 0.01562488}, {-0.015625, 0.01562488},
                              {-6.10351563e-05, 6.10346906e-05}};
  auto asset = std::make_shared<HwAssetPCC>(0, nullptr);
  for (int i = 0; i < 11; ++i) {
    const double min = limits[i][0], max = limits[i][1];
    const double values[][2] = {{min, min}, {max, max}, {std::nextafter(min, -1e9), min}, {std::nextafter(max, 1e9), max},
                                {NAN, NAN}};  // value, result
    for (const auto& v : values) {
      pcc_coeff_data data{};
      double* coeff = reinterpret_cast<double*>(&data.blue) + i;
      *coeff = v[0];
      EXPECT_EQ(asset->ClipPccCoeffData(data), v[0] != v[1] && !std::isnan(v[0])) << kCoeffNames[i] << " " << v[0];
      EXPECT_TRUE(*coeff == v[1] || (std::isnan(*coeff) && std::isnan(v[1]))) << kCoeffNames[i] << " " << v[0];
      *coeff = 0;
      ExpectCoeffs(&data, Channels(0, 0, 0));  // nothing else moved
    }
  }
  pcc_coeff_data data{};
  data.green.rg = -0.02;
  LogCapture log;
  asset->ClipPccCoeffData(data);
  const char* const expected[][2] = {  // function, message
      {"Clip", "PCC Merge Info: Coefficient value [-0.020000] clipped to min[-0.015625]"},
      {"ClipPccCoeffs", "PCC Merge Info: Coefficient 'rg' is out of valid range and has been clipped"},
      {"ClipPccCoeffData", "PCC Merge Info: Coefficient(s) from green channel PCC out of valid range and clipped"}};
  ASSERT_EQ(log.Lines().size(), 3u) << log.Dump();
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(testing::IsLogLine(log.Lines()[i], "I", std::string(kWhere) + "::" + expected[i][0], expected[i][1]));
  }
}

TEST(HwAssetPCCTest, MergeFramesLeftMainAndRightTuningAndClipsBeforeAndAfter) {
  LogCapture log;
  Json::Value left_main = Channels(0.5, 0.25, 0.125);
  left_main["R"]["c"] = 300.0;
  auto left = Read(left_main, Channels(-1, -1, -1));  // left tuning never used
  Json::Value right_tuning = Channels(0.25, -0.25, 0.125);
  right_tuning["G"]["rg"] = -0.02;
  auto right = Read(Channels(0.75, 0.75, 0.75), right_tuning);  // right main never used
  AlgoDouble algo;
  algo.set_check_framing(true);
  HwAssetPCC merged(&algo, MergeOp::kMergeOperand, left, right);
  ASSERT_EQ(algo.calls().size(), 1u);
  EXPECT_TRUE(algo.framing_errors().empty()) << algo.framing_errors()[0];
  // Both operands were clipped before they were handed over.
  left_main["R"]["c"] = 255.9921875;
  right_tuning["G"]["rg"] = -0.015625;
  ExpectCoeffs(algo.calls()[0].input.data() + 8, left_main);
  ExpectCoeffs(algo.calls()[0].input.data() + 280, right_tuning);

  // The double answers left + 2 * right; two sums leave the range and are clipped.
  Json::Value expected = Channels(1, -0.25, 0.375);
  expected["R"]["c"] = 255.9921875;
  expected["G"]["rg"] = -0.015625;
  EXPECT_TRUE(merged.config().enable);
  ExpectCoeffs(&merged.config().coeffs, expected);
  for (const char* side : {"Left", "Right", "Output"}) {
    EXPECT_EQ(testing::CountLogLines(log, "I", std::string(kWhere) + "::Merge", std::string("PCC Merge Info: ") + side +
                                     " PCC had an out of range coefficient and has been clipped"), 1u) << side;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();

  // A right operand read without "Tuning" contributes zero coefficients.
  HwAssetPCC untuned(&algo, MergeOp::kMergeOperand, left, Read(Channels(0.75, 0.75, 0.75)));
  ASSERT_EQ(algo.calls().size(), 2u);
  ExpectCoeffs(algo.calls()[1].input.data() + 280, Channels(0, 0, 0));
}

TEST(HwAssetPCCTest, MergeWithoutOperandOrLibraryOrWithAFailedCallIsIdentity) {
  const std::string missing =
      "HwAssetPCC(): PCC Merge Error: Source (either left or right operand) is empty or vexa_algo_intf is nullptr: ";
  const struct {
    MergeOp op;
    bool left, right, algo;
    int32_t status;
    std::string error;
  } cases[] = {
      {MergeOp::kMergeOperand, false, true, true, 0, missing + "left(null), right(ok), vexa_algo_intf(ok)"},
      {MergeOp::kMergeOperand, true, false, true, 0, missing + "left(ok), right(null), vexa_algo_intf(ok)"},
      {MergeOp::kMergeOperand, true, true, false, 0, missing + "left(ok), right(ok), vexa_algo_intf(null)"},
      {MergeOp::kMergeOperand, true, true, true, -5, "Merge(): Failed to process kKivPccMerge"},
      {MergeOp::kRightOperand, true, true, true, 0, ""},  // the right main record, never its tuning
  };
  for (const auto& c : cases) {
    AlgoDouble algo;
    algo.set_status(c.status);  // the double still writes its result
    LogCapture log;
    HwAssetPCC merged(c.algo ? &algo : nullptr, c.op, c.left ? Read(Channels(0.5, 0.5, 0.5), Channels(1, 1, 1)) : nullptr,
                      c.right ? Read(Channels(-0.5, -0.5, -0.5), Channels(1, 1, 1)) : nullptr);
    testing::ExpectOneLine(log, "E", kWhere, c.error);
    EXPECT_EQ(merged.config().enable, c.error.empty());
    ExpectCoeffs(&merged.config().coeffs, c.error.empty() ? Channels(-0.5, -0.5, -0.5) : Json::Value());
    EXPECT_FALSE(merged.tuning_config().enable) << "a merge never copies the tuning record";
    ExpectCoeffs(&merged.tuning_config().coeffs, Channels(0, 0, 0));
  }
}

}  // namespace
}  // namespace vexa
