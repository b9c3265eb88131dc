// The algorithm object behind ProcessOps: what it refuses, both merges through the framing the
// parser builds, and how long they take.
#include "algo/vexa_algo.h"

#include <gtest/gtest.h>
#include <time.h>

#include <cstring>

#include "support/gamut_tables.h"
#include "support/log_capture.h"
#include "support/pcc_coeffs.h"

namespace vexa::testing {
namespace {

using algo::VexaAlgo;

struct PccInput {
  uint32_t len = VexaAlgo::kPccMergeInputLen;
  pcc_coeff_data main, tuning;
};

class VexaAlgoTest : public ::testing::Test {
 protected:
  int32_t Pcc(const pcc_coeff_data& main, const pcc_coeff_data& tuning, PccConfig* out) {
    PccInput input{VexaAlgo::kPccMergeInputLen, main, tuning};
    *out = PccConfig{kPccConfigLen, false, {}};
    VexaKivPayload out_payload{0, kPccConfigLen, 0, out};
    return algo_.ProcessOps(kKivPccMerge, {0, sizeof(input), 0, &input}, &out_payload);
  }
  int32_t Gamut(const GamutConfig& main, const GamutConfig& tuning, std::vector<unsigned char>* out) {
    std::vector<unsigned char> input = GamutMergeInput(main, tuning);
    *out = GamutMergeOutput();
    VexaKivPayload out_payload{0, uint32_t(out->size()), 0, out->data()};
    return algo_.ProcessOps(kKivGamutMerge, {0, uint32_t(input.size()), 0, input.data()}, &out_payload);
  }

  LogCapture log_{2};
  VexaAlgo algo_;
};

TEST_F(VexaAlgoTest, RefusesAnythingButAWellFramedMerge) {
  std::vector<unsigned char> gamut_in = GamutMergeInput(*GamutRecord(Scramble), GamutConfig{});
  std::vector<unsigned char> gamut_out = GamutMergeOutput();
  PccInput pcc_in{VexaAlgo::kPccMergeInputLen, kIdentityPcc, kIdentityPcc};
  PccConfig pcc_out{kPccConfigLen, false, {}};
  const uint32_t gin = VexaAlgo::kGamutMergeInputLen, gout = VexaAlgo::kGamutMergeOutputLen;
  const struct {
    VexaKivOps op;
    uint32_t in_len, out_len;
    void *in, *out;
    uint32_t in_word, out_word;  // the records' length words
    const char* message;
  } cases[] = {
      {kKivModeRenderIntent, 552, 280, &pcc_in, &pcc_out, 552, 280, "Unsupported op 0"},
      {kKivPccMerge, 551, 280, &pcc_in, &pcc_out, 552, 280, "input len 551, output len 280"},
      {kKivPccMerge, 552, 280, &pcc_in, &pcc_out, 0, 280, "length words 0 and 280"},
      {kKivPccMerge, 552, 280, nullptr, &pcc_out, 552, 280, "input record (nil)"},
      {kKivPccMerge, 552, 280, &pcc_in, nullptr, 552, 280, "output record (nil)"},
      {kKivGamutMerge, 552, 280, &pcc_in, &pcc_out, 552, 280, "input len 552, output len 280"},
      {kKivGamutMerge, gin, gout, gamut_in.data(), gamut_out.data(), gin, 280, "length words 235860 and 280"},
  };
  for (const auto& c : cases) {
    log_.Clear();
    if (c.in != nullptr) std::memcpy(c.in, &c.in_word, 4);
    if (c.out != nullptr) std::memcpy(c.out, &c.out_word, 4);
    VexaKivPayload out{0, c.out_len, 0, c.out};
    EXPECT_EQ(algo_.ProcessOps(c.op, {0, c.in_len, 0, c.in}, &out), -22) << c.message;
    ASSERT_EQ(log_.Errors().size(), 1u) << log_.Dump();
    EXPECT_NE(log_.Errors()[0].find(c.message), std::string::npos) << log_.Dump();
    EXPECT_EQ(log_.Errors()[0].rfind("E VexaAlgo::VexaAlgo::", 0), 0u) << log_.Dump();
  }
  EXPECT_EQ(algo_.ProcessOps(kKivPccMerge, {0, 552, 0, &pcc_in}, nullptr), -22);
  EXPECT_EQ(OutputsOf(gamut_out), std::vector<RgbWord>(kGamutEntries, RgbWord{0, 0, 0}));
  EXPECT_EQ(ScaledDifference(pcc_out.coeffs, {}), 0.0);  // nothing written on refusal
}

TEST_F(VexaAlgoTest, MergesThroughTheFramingAndRefusesNonFiniteCoefficients) {
  std::vector<unsigned char> out;
  ASSERT_EQ(Gamut(*GamutRecord(Scramble), GamutConfig{}, &out), 0);
  EXPECT_EQ(OutputsOf(out), GridOutputs(Scramble));
  uint32_t len;
  std::memcpy(&len, out.data(), 4);
  EXPECT_EQ(len, VexaAlgo::kGamutMergeOutputLen);
  PccConfig pcc;
  const pcc_coeff_data gains = Coeffs({0, 0.5}, {0, 0, 2}, {0, 0, 0, 1.5});
  pcc_coeff_data offsets = Coeffs({20, 1}, {-30, 0, 1}, {255, 0, 0, 1});
  ASSERT_EQ(Pcc(gains, offsets, &pcc), 0);
  EXPECT_LT(ScaledDifference(pcc.coeffs, Coeffs({10, 0.5}, {-60, 0, 2}, {382.5, 0, 0, 1.5})), 1e-9);
  EXPECT_EQ(pcc.len, kPccConfigLen);
  EXPECT_TRUE(log_.Errors().empty()) << log_.Dump();
  for (double bad : {std::nan(""), HUGE_VAL, 1e300}) {
    offsets.green.rgb = bad;
    EXPECT_EQ(Pcc(gains, offsets, &pcc), -22) << bad;
  }
  EXPECT_EQ(log_.Count("PCC merge refused: a coefficient is not a finite number"), 2u) << log_.Dump();
  EXPECT_EQ(log_.Count("PCC merge refused: the composed polynomial overflows"), 1u) << log_.Dump();
}

// The slowest of a few runs each (the first included), in processor time of this thread, so that
// other processes on a loaded machine do not count. The limit holds for optimised builds;
// sanitizer and debug builds are several times slower and only report the figure.
TEST_F(VexaAlgoTest, BothMergesTakeUnderFiveMilliseconds) {
  const auto main = GamutRecord(Scramble);
  const auto tuning = GamutRecord([](const RgbWord& p) -> RgbWord { return {p[0] / 2 + 3, p[1], 4095 - p[2]}; });
  std::vector<unsigned char> out;
  PccConfig pcc;
  const auto slowest = [](const std::function<void()>& run) {
    double worst = 0;
    for (int i = 0; i < 5; ++i) {
      timespec start, end;
      clock_gettime(CLOCK_THREAD_CPUTIME_ID, &start);
      run();
      clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
      worst = std::max(worst, (end.tv_sec - start.tv_sec) * 1e3 + (end.tv_nsec - start.tv_nsec) / 1e6);
    }
    return worst;
  };
  const double gamut_ms = slowest([&] { EXPECT_EQ(Gamut(*main, *tuning, &out), 0); });
  const double pcc_ms = slowest([&] { EXPECT_EQ(Pcc(kIdentityPcc, Coeffs({1, 0.5, 0, 0, 1e-3}, {}, {}), &pcc), 0); });
  std::printf("gamut merge %.2f ms, PCC merge %.2f ms\n", gamut_ms, pcc_ms);
#if defined(NDEBUG) && !defined(__SANITIZE_ADDRESS__)
  EXPECT_LT(gamut_ms, 5.0);
  EXPECT_LT(pcc_ms, 5.0);
#endif
}

}  // namespace
}  // namespace vexa::testing
