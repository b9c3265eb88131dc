#include "support/algo_double.h"

#include <cstring>

namespace vexa::testing {
namespace {

// PCC: input = length word, padding, left and right coefficient blocks (272 bytes each: reserved
// word, padding, 33 doubles); output = a 280-byte record whose coefficient block starts at 8.
// Gamut: input = length word, left and right bodies (a record from its reserved words on: four
// header words, then entries of three input and three output words); output = length word, body.
constexpr uint32_t kGamutBodyLen = 117928;

template <typename T>
T Load(const unsigned char* bytes, size_t offset) {
  T value;
  std::memcpy(&value, bytes + offset, sizeof(T));
  return value;
}

template <typename T>
void Store(unsigned char* bytes, size_t offset, T value) {
  std::memcpy(bytes + offset, &value, sizeof(T));
}

void PccResult(const unsigned char* in, unsigned char* out) {
  for (size_t at = 16; at < 16 + 33 * sizeof(double); at += sizeof(double)) {
    Store<double>(out, at, Load<double>(in, at) + 2 * Load<double>(in, 272 + at));
  }
}

void GamutResult(const unsigned char* in, unsigned char* out) {
  std::memcpy(out + 4, in + 4, kGamutBodyLen);
  for (size_t word = 7; word < kGamutBodyLen / 4; ++word) {  // from the first entry's outputs
    const size_t at = 4 + word * 4;
    if ((word - 4) % 6 >= 3) Store<uint32_t>(out, at, Load<uint32_t>(in, at) + 2 * Load<uint32_t>(in, kGamutBodyLen + at));
  }
}

}  // namespace

int32_t AlgoDouble::ProcessOps(VexaKivOps op, const VexaKivPayload& input, VexaKivPayload* output) {
  const auto* in = static_cast<const unsigned char*>(input.payload);
  auto* out = output != nullptr ? static_cast<unsigned char*>(output->payload) : nullptr;
  calls_.push_back({op, {}});
  if (in != nullptr) calls_.back().input.assign(in, in + input.len);
  const bool pcc = op == kKivPccMerge;
  const uint32_t in_len = pcc ? 552 : 4 + 2 * kGamutBodyLen;
  const uint32_t out_len = pcc ? 280 : 4 + kGamutBodyLen;
  const bool framed = (pcc || op == kKivGamutMerge) && in != nullptr && out != nullptr && input.len == in_len &&
                      output->len == out_len;
  std::string error = framed ? "" : "op " + std::to_string(op) + ": not a merge, or records or lengths wrong";
  if (framed && (Load<uint32_t>(in, 0) != in_len || Load<uint32_t>(out, 0) != out_len)) error = "length words";
  for (size_t i = 4; framed && error.empty() && i < out_len; ++i) {
    if (out[i] != 0) error = "output byte " + std::to_string(i) + " not zero";
  }
  if (check_framing_ && !error.empty()) {
    framing_errors_.push_back(error);
    return -22;
  }
  if (framed) pcc ? PccResult(in, out) : GamutResult(in, out);
  return status_;
}

}  // namespace vexa::testing
