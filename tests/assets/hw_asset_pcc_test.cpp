#include "assets/hw_asset_pcc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "formats/json_text.h"
#include "support/algo_double.h"
#include "support/log_capture.h"
#include "support/log_lines.h"

namespace vexa {
namespace {

using testing::AlgoDouble;
using testing::LoadAt;
using testing::LogCapture;
using testing::IsLogLine;
using MergeOp = kiv_mode_merge_caps::KivPostBlendPCCMergeOp;

constexpr const char* kChannelKeys[] = {"R", "G", "B"};
constexpr const char* kCoeffNames[] = {"c", "r", "g", "b", "rr", "gg", "bb", "rg", "gb", "rb", "rgb"};
// Half of each coefficient's range, in powers of two: seeds within [-1, 1] stay in range, exactly.
constexpr double kScale[] = {128, 2, 2, 2, 0x1p-7, 0x1p-7, 0x1p-7, 0x1p-7, 0x1p-7, 0x1p-7, 0x1p-15};

// Coefficient `i` of channel `ch` in the raw bytes of a coefficient block (reserved word first).
double CoeffAt(const void* block, int ch, int i) {
  return LoadAt<double>(static_cast<const unsigned char*>(block), 8 + 88 * ch + 8 * i);
}

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

// Every coefficient of `block` equals that of the JSON channels; identity when `json` is null.
void ExpectCoeffs(const void* block, const Json::Value& json) {
  EXPECT_EQ(LoadAt<uint32_t>(static_cast<const unsigned char*>(block), 0), 0u) << "reserved word";
  for (int ch = 0; ch < 3; ++ch) {
    for (int i = 0; i < 11; ++i) {
      const double expected = json.isNull() ? (i == ch + 1 ? 1.0 : 0.0) : json[kChannelKeys[ch]][kCoeffNames[i]].asDouble();
      EXPECT_EQ(CoeffAt(block, ch, i), expected) << kChannelKeys[ch] << "." << kCoeffNames[i];
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
  Json::Value sparse;
  ASSERT_TRUE(PopulateJsonValue(R"({"enable":true,"G":{"rg":0.0078125}})", sparse));
  asset->SetConfig(sparse);
  Json::Value zeros = Channels(0, 0, 0);
  zeros["G"]["rg"] = 0.0078125;
  EXPECT_TRUE(asset->config().enable);
  ExpectCoeffs(&asset->config().coeffs, zeros);
  ExpectCoeffs(&asset->tuning_config().coeffs, tuning);
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TEST(HwAssetPCCTest, PayloadIsACopyAtTheRecordOffsets) {
  const Json::Value main = Channels(0.5, 0.25, -1);
  auto asset = Read(main);
  auto payload = asset->AsPayload();
  ASSERT_TRUE(payload);
  EXPECT_EQ(payload->size, 56u);
  EXPECT_EQ(payload->name, "PostBlendPCC");
  EXPECT_EQ(payload->config_size, 280u);
  const auto* bytes = static_cast<const unsigned char*>(payload->config.get());
  EXPECT_EQ(LoadAt<uint32_t>(bytes, 0), 280u);
  EXPECT_EQ(bytes[4], 1);
  EXPECT_EQ(LoadAt<double>(bytes, 16), main["R"]["c"].asDouble());        // red from 16
  EXPECT_EQ(LoadAt<double>(bytes, 104 + 8), main["G"]["r"].asDouble());   // green from 104
  EXPECT_EQ(LoadAt<double>(bytes, 192 + 80), main["B"]["rgb"].asDouble());  // blue from 192
  ExpectCoeffs(bytes + 8, main);

  asset->SetIdentity();
  EXPECT_EQ(bytes[4], 1) << "a payload already handed out must not follow the asset";
  auto identity = asset->AsPayload();
  EXPECT_EQ(static_cast<const unsigned char*>(identity->config.get())[4], 0);
  ExpectCoeffs(static_cast<const unsigned char*>(identity->config.get()) + 8, Json::Value());
}

TEST(HwAssetPCCTest, DisabledOrRefusedSectionIsIdentityAndKeepsTuning) {
  const struct {
    const char* json;
    const char* error;  // empty: no error line
  } cases[] = {
      {R"({"enable":false,"R":{"c":1}})", ""},
      {R"({"R":{"c":1}})", ""},
      {R"({"enable":"yes"})", R"(Invalid member "enable": expected boolean, found string)"},
      {R"({"enable":true,"R":5})", R"(Invalid member "R": expected object)"},
      {R"({"enable":true,"G":{"rg":"x"}})", R"(Invalid member "rg" in channel "G": expected number)"},
      {R"({"enable":true,"Tuning":[1]})", R"(Invalid member "Tuning": expected object, found array)"},
      {R"({"enable":true,"Tuning":{"B":{"rgb":[]}}})", R"(Invalid member "rgb" in "Tuning", channel "B")"},
      {R"([{"enable":true}])", R"x(Invalid member "(section)": expected object, found array)x"},
  };
  const Json::Value tuning = Channels(0.5, 0.5, 0.5);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.json);
    auto asset = Read(Channels(0.25, 0.25, 0.25), tuning);
    Json::Value json;
    ASSERT_TRUE(PopulateJsonValue(c.json, json));
    LogCapture log;
    asset->SetConfig(json);
    EXPECT_FALSE(asset->config().enable);
    ExpectCoeffs(&asset->config().coeffs, Json::Value());
    EXPECT_EQ(JsonToCompactText(*asset->AsJV()), "{\"enable\":false}\n");
    ExpectCoeffs(&asset->tuning_config().coeffs, tuning);
    const auto errors = log.Errors();
    ASSERT_EQ(errors.size(), *c.error ? 1u : 0u) << log.Dump();
    if (*c.error) {
      EXPECT_EQ(errors[0].find("E VexaJsonModeParser::HwAssetPCC::SetConfig():"), 0u) << errors[0];
      EXPECT_NE(errors[0].find(c.error), std::string::npos) << errors[0];
    }
  }
}

TEST(HwAssetPCCTest, ClipsAtTheLimitsAndLeavesNaN) {
  const double limits[][2] = {{-256.0, 255.9921875},       {-4.0, 3.99996948},   {-4.0, 3.99996948},
                              {-4.0, 3.99996948},          {-0.015625, 0.01562488}, {-0.015625, 0.01562488},
                              {-0.015625, 0.01562488},     {-0.015625, 0.01562488}, {-0.015625, 0.01562488},
                              {-0.015625, 0.01562488},     {-6.10351563e-05, 6.10346906e-05}};
  double pcc_coeff::*const members[] = {&pcc_coeff::c,  &pcc_coeff::r,  &pcc_coeff::g,  &pcc_coeff::b,
                                         &pcc_coeff::rr, &pcc_coeff::gg, &pcc_coeff::bb, &pcc_coeff::rg,
                                         &pcc_coeff::gb, &pcc_coeff::rb, &pcc_coeff::rgb};
  const double inf = std::numeric_limits<double>::infinity();
  auto asset = std::make_shared<HwAssetPCC>(0, nullptr);
  for (int i = 0; i < 11; ++i) {
    const double min = limits[i][0];
    const double max = limits[i][1];
    const double values[][2] = {  // value, result
        {min, min}, {max, max}, {std::nextafter(min, 0.0), std::nextafter(min, 0.0)},
        {std::nextafter(max, 0.0), std::nextafter(max, 0.0)}, {std::nextafter(min, -inf), min},
        {std::nextafter(max, inf), max}, {-inf, min}, {NAN, NAN}};
    for (const auto& v : values) {
      SCOPED_TRACE(std::string(kCoeffNames[i]) + " " + std::to_string(v[0]));
      pcc_coeff_data data{};
      double* coeff = &(data.blue.*members[i]);
      *coeff = v[0];
      LogCapture log;
      const bool clipped = asset->ClipPccCoeffData(data);
      EXPECT_EQ(clipped, v[0] != v[1] && !std::isnan(v[0]));
      EXPECT_TRUE(*coeff == v[1] || (std::isnan(*coeff) && std::isnan(v[1])));
      *coeff = 0;
      ExpectCoeffs(&data, Channels(0, 0, 0));  // nothing else moved
      EXPECT_EQ(log.Count("PCC Merge Info: Coefficient '" + std::string(kCoeffNames[i]) + "' is out of"),
                clipped ? 1u : 0u) << log.Dump();
      EXPECT_EQ(log.Count("Coefficient(s) from blue channel PCC out of valid range"), clipped ? 1u : 0u);
    }
  }
}

TEST(HwAssetPCCTest, ClipInformationLinesAtLevelTwoOnly) {
  auto asset = std::make_shared<HwAssetPCC>(0, nullptr);
  for (uint32_t level : {2u, 1u}) {
    pcc_coeff_data data{};
    data.green.rg = -0.02;
    LogCapture log(level);
    EXPECT_TRUE(asset->ClipPccCoeffData(data));
    EXPECT_EQ(data.green.rg, -0.015625);
    const auto lines = log.Lines();
    if (level < 2) {
      EXPECT_TRUE(lines.empty()) << log.Dump();
      continue;
    }
    const char* const expected[][2] = {  // function, message
        {"Clip", "PCC Merge Info: Coefficient value [-0.020000] clipped to min[-0.015625]"},
        {"ClipPccCoeffs", "PCC Merge Info: Coefficient 'rg' is out of valid range and has been clipped"},
        {"ClipPccCoeffData", "PCC Merge Info: Coefficient(s) from green channel PCC out of valid range and clipped"}};
    ASSERT_EQ(lines.size(), 3u) << log.Dump();
    for (int i = 0; i < 3; ++i) {
      EXPECT_TRUE(IsLogLine(lines[i], "I", std::string("VexaJsonModeParser::HwAssetPCC::") + expected[i][0],
                            expected[i][1]))
          << lines[i];
    }
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
  const testing::AlgoCall& call = algo.calls()[0];
  EXPECT_EQ(call.op, kKivPccMerge);
  EXPECT_EQ(call.input_len, 552u);
  EXPECT_EQ(call.output_len, 280u);
  // Both operands were clipped in place before they were handed over.
  left_main["R"]["c"] = 255.9921875;
  right_tuning["G"]["rg"] = -0.015625;
  ExpectCoeffs(&left->config().coeffs, left_main);
  ExpectCoeffs(&right->tuning_config().coeffs, right_tuning);
  ExpectCoeffs(call.input.data() + 8, left_main);
  ExpectCoeffs(call.input.data() + 280, right_tuning);

  // The double answers left + 2 * right; two sums leave the range and are clipped.
  Json::Value expected = Channels(1, -0.25, 0.375);
  expected["R"]["c"] = 255.9921875;
  expected["G"]["rg"] = -0.015625;
  EXPECT_TRUE(merged.config().enable);
  ExpectCoeffs(&merged.config().coeffs, expected);
  EXPECT_TRUE(log.Contains("HwAssetPCC::Merge():")) << log.Dump();
  for (const char* side : {"Left", "Right", "Output"}) {
    EXPECT_TRUE(log.Contains(std::string("PCC Merge Info: ") + side +
                             " PCC had an out of range coefficient and has been clipped"))
        << side;
  }
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();

  // A right operand read without "Tuning" contributes zero coefficients.
  HwAssetPCC untuned(&algo, MergeOp::kMergeOperand, left, Read(Channels(0.75, 0.75, 0.75)));
  ASSERT_EQ(algo.calls().size(), 2u);
  ExpectCoeffs(algo.calls()[1].input.data() + 280, Channels(0, 0, 0));
}

TEST(HwAssetPCCTest, MergeConstructorByOperation) {
  const std::string missing =
      "PCC Merge Error: Source (either left or right operand) is empty or vexa_algo_intf is nullptr: ";
  const struct {
    MergeOp op;
    bool left, right, algo;
    int32_t status;
    double seed;        // of the resulting main record; 0: identity
    std::string error;  // from the merge constructor, or "Merge" when the call failed
  } cases[] = {
      {MergeOp::kMergeOperand, false, true, true, 0, 0, missing + "left(null), right(ok), vexa_algo_intf(ok)"},
      {MergeOp::kMergeOperand, true, false, true, 0, 0, missing + "left(ok), right(null), vexa_algo_intf(ok)"},
      {MergeOp::kMergeOperand, true, true, false, 0, 0, missing + "left(ok), right(ok), vexa_algo_intf(null)"},
      {MergeOp::kMergeOperand, false, false, false, 0, 0, missing + "left(null), right(null), vexa_algo_intf(null)"},
      {MergeOp::kMergeOperand, true, true, true, -5, 0, "Failed to process kKivPccMerge"},
      {MergeOp::kLeftOperand, true, true, true, 0, 0.5, ""},
      {MergeOp::kRightOperand, true, true, true, 0, -0.5, ""},
      {MergeOp::kLeftOperand, false, true, true, 0, 0, "PCC Merge Error: Source (left operand) is empty"},
      {MergeOp::kRightOperand, true, false, true, 0, 0, "PCC Merge Error: Source (right operand) is empty"},
      {MergeOp::kIdentity, true, true, true, 0, 0, ""},
  };
  const Json::Value tuning = Channels(1, 1, 1);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.error.empty() ? std::to_string(static_cast<int>(c.op)) : c.error);
    AlgoDouble algo;
    algo.set_status(c.status);  // the double still writes its result
    LogCapture log;
    HwAssetPCC merged(c.algo ? &algo : nullptr, c.op, c.left ? Read(Channels(0.5, 0.5, 0.5), tuning) : nullptr,
                      c.right ? Read(Channels(-0.5, -0.5, -0.5), tuning) : nullptr);
    EXPECT_EQ(merged.config().enable, c.seed != 0);
    ExpectCoeffs(&merged.config().coeffs, c.seed == 0 ? Json::Value() : Channels(c.seed, c.seed, c.seed));
    EXPECT_FALSE(merged.tuning_config().enable) << "a merge never copies the tuning record";
    ExpectCoeffs(&merged.tuning_config().coeffs, Channels(0, 0, 0));
    EXPECT_EQ(algo.calls().size(), c.status != 0 ? 1u : 0u);
    const auto errors = log.Errors();
    ASSERT_EQ(errors.size(), c.error.empty() ? 0u : 1u) << log.Dump();
    if (!c.error.empty()) {
      const char* function = c.status != 0 ? "Merge" : "HwAssetPCC";
      EXPECT_TRUE(IsLogLine(errors[0], "E", std::string("VexaJsonModeParser::HwAssetPCC::") + function, c.error))
          << errors[0];
    }
  }
}

}  // namespace
}  // namespace vexa
