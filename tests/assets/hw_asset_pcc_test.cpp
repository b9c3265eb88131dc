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

// Each coefficient is clipped to its own range, limits included, and NaN is left alone.
TEST(HwAssetPCCTest, ClipsEachCoefficientToItsRange) {
  const double ranges[][2] = {{-256.0, 255.9921875}, {-4.0, 3.99996948}, {-0.015625, 0.01562488},
                              {-6.10351563e-05, 6.10346906e-05}};  // c; r, g, b; the products; rgb
  auto asset = std::make_shared<HwAssetPCC>(0, nullptr);
  for (int i = 0; i < 11; ++i) {
    const auto [min, max] = ranges[i == 0 ? 0 : i < 4 ? 1 : i < 10 ? 2 : 3];
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
  EXPECT_TRUE(log.Contains("PCC Merge Info: Coefficient value [-0.020000] clipped to min[-0.015625]") &&
              log.Contains("PCC Merge Info: Coefficient(s) from green channel PCC out of valid range and clipped"));
}

// Reading does not clip and writes back no "Tuning"; a merge clips both operands and the result.
TEST(HwAssetPCCTest, MergeFramesLeftMainAndRightTuningAndClipsBeforeAndAfter) {
  LogCapture log;
  Json::Value left_main = Channels(0.5, 0.25, 0.125);
  left_main["R"]["c"] = 300.0;
  auto left = Read(left_main, Channels(-1, -1, -1));  // left tuning never used
  left_main["enable"] = true;
  EXPECT_EQ(*left->AsJV(), left_main);
  Json::Value right_tuning = Channels(0.25, -0.25, 0.125);
  right_tuning["G"]["rg"] = -0.02;
  AlgoDouble algo;
  algo.set_check_framing(true);
  HwAssetPCC merged(&algo, MergeOp::kMergeOperand, left, Read(Channels(0.75, 0.75, 0.75), right_tuning));
  ASSERT_EQ(algo.calls().size(), 1u);
  EXPECT_TRUE(algo.framing_errors().empty()) << algo.framing_errors()[0];
  left_main["R"]["c"] = 255.9921875;  // both operands were clipped before they were handed over
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
  // A missing operand or a failed call leaves the block off: the double's result is not used.
  algo.set_status(-5);
  log.Clear();
  ExpectCoeffs(&HwAssetPCC(&algo, MergeOp::kMergeOperand, left, left).config().coeffs, Json::Value());
  testing::ExpectOneLine(log, "E", kWhere, "Merge(): Failed to process kKivPccMerge");
  log.Clear();
  EXPECT_FALSE(HwAssetPCC(&algo, MergeOp::kMergeOperand, nullptr, left).config().enable);
  testing::ExpectOneLine(log, "E", kWhere, "HwAssetPCC(): PCC Merge Error: Source (either left or right operand) is "
                         "empty or vexa_algo_intf is nullptr: left(null), right(ok), vexa_algo_intf(ok)");
}

}  // namespace
}  // namespace vexa
