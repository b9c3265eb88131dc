#include "algo/vexa_algo.h"

#include <cerrno>
#include <cstring>

#include "algo/gamut_composer.h"
#include "algo/pcc_fitter.h"
#include "platform/log.h"

namespace vexa::algo {
namespace {

constexpr char kLogLabel[] = "VexaAlgo::VexaAlgo";

// The PCC merge input: the length word, then the two coefficient blocks at their natural
// alignment (the block starts with a 32-bit word followed by doubles, hence the padding).
struct PccMergeInput {
  uint32_t len;
  pcc_coeff_data main;
  pcc_coeff_data tuning;
};
static_assert(sizeof(PccMergeInput) == VexaAlgo::kPccMergeInputLen, "PCC merge input layout");
static_assert(VexaAlgo::kGamutMergeInputLen == sizeof(uint32_t) + 2 * GamutComposer::kBodyLen,
              "gamut merge input layout");
static_assert(VexaAlgo::kGamutMergeOutputLen == sizeof(uint32_t) + GamutComposer::kBodyLen,
              "gamut merge output layout");

uint32_t LengthWord(const void* record) {
  uint32_t len;
  std::memcpy(&len, record, sizeof(len));
  return len;
}

struct MergeOp {
  VexaKivOps op;
  uint32_t input_len;
  uint32_t output_len;
  int32_t (*merge)(const unsigned char* input, unsigned char* output);
};

}  // namespace

int32_t VexaAlgo::Init(const std::string&) { return 0; }

int32_t VexaAlgo::DeInit() { return 0; }

int32_t VexaAlgo::SetProperty(const VexaKivPayload& payload) {
  VKR_LOGE("No property %u to set", payload.prop);
  return -EINVAL;
}

int32_t VexaAlgo::GetProperty(VexaKivPayload* payload) {
  VKR_LOGE("No property %u to get", payload != nullptr ? payload->prop : 0u);
  return -EINVAL;
}

int32_t VexaAlgo::ProcessOps(VexaKivOps op, const VexaKivPayload& input, VexaKivPayload* output) {
  static const MergeOp kMergeOps[] = {
      {kKivGamutMerge, kGamutMergeInputLen, kGamutMergeOutputLen, &VexaAlgo::MergeGamut},
      {kKivPccMerge, kPccMergeInputLen, kPccMergeOutputLen, &VexaAlgo::MergePcc},
  };
  for (const MergeOp& merge : kMergeOps) {
    if (merge.op != op) continue;
    if (!IsFramed(op, input, output, merge.input_len, merge.output_len)) return -EINVAL;
    return merge.merge(static_cast<const unsigned char*>(input.payload),
                       static_cast<unsigned char*>(output->payload));
  }
  VKR_LOGE("Unsupported op %u", static_cast<uint32_t>(op));
  return -EINVAL;
}

// Both records present, and both the envelope lengths and the records' own length words exactly
// those of the operation.
bool VexaAlgo::IsFramed(VexaKivOps op, const VexaKivPayload& input, const VexaKivPayload* output,
                        uint32_t input_len, uint32_t output_len) {
  if (output == nullptr || input.payload == nullptr || output->payload == nullptr) {
    VKR_LOGE("Op %u refused: input record %p, output envelope %p, output record %p",
             static_cast<uint32_t>(op), input.payload, static_cast<const void*>(output),
             output != nullptr ? output->payload : nullptr);
    return false;
  }
  if (input.len != input_len || output->len != output_len) {
    VKR_LOGE("Op %u refused: input len %u, output len %u, expecting %u and %u",
             static_cast<uint32_t>(op), input.len, output->len, input_len, output_len);
    return false;
  }
  if (LengthWord(input.payload) != input_len || LengthWord(output->payload) != output_len) {
    VKR_LOGE("Op %u refused: length words %u and %u, expecting %u and %u",
             static_cast<uint32_t>(op), LengthWord(input.payload), LengthWord(output->payload),
             input_len, output_len);
    return false;
  }
  return true;
}

int32_t VexaAlgo::MergeGamut(const unsigned char* input, unsigned char* output) {
  const unsigned char* main_body = input + sizeof(uint32_t);
  const Lut3d main = GamutComposer::MainTable(main_body);
  const Lut3d tuning = GamutComposer::TuningTable(main_body + GamutComposer::kBodyLen);
  GamutComposer::WriteBody(GamutComposer::Compose(main, tuning), output + sizeof(uint32_t));
  return 0;
}

int32_t VexaAlgo::MergePcc(const unsigned char* input, unsigned char* output) {
  PccMergeInput operands;
  std::memcpy(&operands, input, sizeof(operands));
  const PccPolynomial main(operands.main), tuning(operands.tuning);
  if (!main.IsFinite() || !tuning.IsFinite()) {
    VKR_LOGE("PCC merge refused: a coefficient is not a finite number");
    return -EINVAL;
  }
  const PccPolynomial fitted(PccFitter::FitComposition(main, tuning));
  if (!fitted.IsFinite()) {
    VKR_LOGE("PCC merge refused: the composed polynomial overflows");
    return -EINVAL;
  }
  std::memcpy(output + offsetof(PccConfig, coeffs), &fitted.coeffs(), sizeof(pcc_coeff_data));
  return 0;
}

}  // namespace vexa::algo
