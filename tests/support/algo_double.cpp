#include "support/algo_double.h"

namespace vexa::testing {
namespace {

constexpr int32_t kInvalid = -22;

// PCC: input = length word, padding, left and right coefficient blocks (272 bytes each: reserved
// word, padding, 33 doubles); output = a 280-byte record whose coefficient block starts at 8.
constexpr uint32_t kPccInputLen = 552;
constexpr uint32_t kPccOutputLen = 280;
constexpr size_t kPccLeft = 8;
constexpr size_t kPccRight = 280;
constexpr size_t kPccCoeffs = 8;  // in a coefficient block
constexpr size_t kPccCoeffCount = 33;
// Gamut: input = length word, left and right bodies (a record from its reserved words on: four
// header words, then entries of three input and three output words); output = length word, body.
constexpr size_t kGamutBodyLen = 117928;
constexpr uint32_t kGamutInputLen = 4 + 2 * kGamutBodyLen;
constexpr uint32_t kGamutOutputLen = 4 + kGamutBodyLen;
constexpr size_t kGamutHeaderWords = 4;
constexpr size_t kGamutEntryWords = 6;

struct Framing {
  uint32_t input_len;
  uint32_t output_len;
};

bool FramingOf(VexaKivOps op, Framing* framing) {
  if (op != kKivPccMerge && op != kKivGamutMerge) return false;
  *framing = op == kKivPccMerge ? Framing{kPccInputLen, kPccOutputLen} : Framing{kGamutInputLen, kGamutOutputLen};
  return true;
}

void PccResult(const unsigned char* input, unsigned char* output) {
  StoreAt<uint32_t>(output, kPccCoeffs, 0);
  for (size_t i = 0; i < kPccCoeffCount; ++i) {
    const size_t at = kPccCoeffs + i * sizeof(double);
    const double sum = LoadAt<double>(input, kPccLeft + at) + 2 * LoadAt<double>(input, kPccRight + at);
    StoreAt<double>(output, kPccCoeffs + at, sum);
  }
}

void GamutResult(const unsigned char* input, unsigned char* output) {
  for (size_t word = 0; word < kGamutBodyLen / 4; ++word) {
    const size_t at = 4 + word * 4;
    uint32_t value = LoadAt<uint32_t>(input, at);
    const bool is_output_word = word >= kGamutHeaderWords && (word - kGamutHeaderWords) % kGamutEntryWords >= 3;
    if (is_output_word) value += 2 * LoadAt<uint32_t>(input, kGamutBodyLen + at);
    StoreAt<uint32_t>(output, at, value);
  }
}

}  // namespace

int32_t AlgoDouble::Init(const std::string& panel_name) {
  ++init_calls_;
  panel_name_ = panel_name;
  return 0;
}

int32_t AlgoDouble::DeInit() {
  ++deinit_calls_;
  return 0;
}

int32_t AlgoDouble::SetProperty(const VexaKivPayload&) { return kInvalid; }

int32_t AlgoDouble::GetProperty(VexaKivPayload*) { return kInvalid; }

int32_t AlgoDouble::ProcessOps(VexaKivOps op, const VexaKivPayload& input, VexaKivPayload* output) {
  AlgoCall call{op, input.len, output != nullptr ? output->len : 0, {}};
  const auto* in = static_cast<const unsigned char*>(input.payload);
  if (in != nullptr) call.input.assign(in, in + input.len);
  calls_.push_back(std::move(call));
  if (check_framing_) {
    std::string error = FramingError(op, input, output);
    if (!error.empty()) {
      framing_errors_.push_back(std::move(error));
      return kInvalid;
    }
  }
  if (in != nullptr && output != nullptr && output->payload != nullptr) {
    responder_(op, in, input.len, static_cast<unsigned char*>(output->payload), output->len);
  }
  return status_;
}

std::string AlgoDouble::FramingError(VexaKivOps op, const VexaKivPayload& input,
                                     const VexaKivPayload* output) const {
  Framing expected{};
  if (!FramingOf(op, &expected)) return "op " + std::to_string(op) + " is not a merge";
  if (output == nullptr || input.payload == nullptr || output->payload == nullptr) {
    return "null record";
  }
  if (input.len != expected.input_len || output->len != expected.output_len) {
    return "lengths " + std::to_string(input.len) + "/" + std::to_string(output->len);
  }
  const auto* in = static_cast<const unsigned char*>(input.payload);
  const auto* out = static_cast<const unsigned char*>(output->payload);
  if (LoadAt<uint32_t>(in, 0) != expected.input_len) return "input length word";
  if (LoadAt<uint32_t>(out, 0) != expected.output_len) return "output length word";
  for (size_t i = 4; i < expected.output_len; ++i) {
    if (out[i] != 0) return "output byte " + std::to_string(i) + " not zero";
  }
  return "";
}

void AlgoDouble::KnownResult(VexaKivOps op, const unsigned char* input, uint32_t input_len,
                             unsigned char* output, uint32_t output_len) {
  Framing framing{};
  if (!FramingOf(op, &framing) || input_len < framing.input_len || output_len < framing.output_len) return;
  if (op == kKivPccMerge) {
    PccResult(input, output);
  } else {
    GamutResult(input, output);
  }
}

}  // namespace vexa::testing
