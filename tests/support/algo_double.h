// An in-process stand-in for the colour-algorithm library. It records every ProcessOps call (the
// operation, both lengths and a copy of the input bytes), can check the framing of the two merge
// operations, and answers with a configurable status and a known result computed from the
// operands, so that a test sees a wrong offset, a swapped operand or a missing clip in the result.
#ifndef VEXA_TESTS_SUPPORT_ALGO_DOUBLE_H_
#define VEXA_TESTS_SUPPORT_ALGO_DOUBLE_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::testing {

using Bytes = std::vector<unsigned char>;

// Unaligned reads and writes of a value at a byte offset.
template <typename T>
T LoadAt(const unsigned char* bytes, size_t offset) {
  T value;
  std::memcpy(&value, bytes + offset, sizeof(T));
  return value;
}

template <typename T>
void StoreAt(unsigned char* bytes, size_t offset, T value) {
  std::memcpy(bytes + offset, &value, sizeof(T));
}

struct AlgoCall {
  VexaKivOps op;
  uint32_t input_len;
  uint32_t output_len;
  Bytes input;  // the input record as it was handed over
};

class AlgoDouble : public VexaKivInterface {
 public:
  // Writes the answer to one call into `output` (output_len bytes).
  using Responder = std::function<void(VexaKivOps op, const unsigned char* input, uint32_t input_len,
                                       unsigned char* output, uint32_t output_len)>;

  AlgoDouble() : responder_(KnownResult) {}

  int32_t Init(const std::string& panel_name) override;
  int32_t DeInit() override;
  int32_t SetProperty(const VexaKivPayload& payload) override;
  int32_t GetProperty(VexaKivPayload* payload) override;
  // Records the call; with framing checks on, a wrongly framed call is refused with -22 and
  // described in framing_errors(). Otherwise the responder writes the output (also when the
  // status is a failure, so that a caller that uses it anyway is caught) and the status is returned.
  int32_t ProcessOps(VexaKivOps op, const VexaKivPayload& input, VexaKivPayload* output) override;

  void set_status(int32_t status) { status_ = status; }
  void set_responder(Responder responder) { responder_ = std::move(responder); }
  void set_check_framing(bool check) { check_framing_ = check; }

  const std::vector<AlgoCall>& calls() const { return calls_; }
  const std::vector<std::string>& framing_errors() const { return framing_errors_; }
  int init_calls() const { return init_calls_; }
  int deinit_calls() const { return deinit_calls_; }
  const std::string& panel_name() const { return panel_name_; }

  // The default answer. PCC: every output coefficient is left + 2 * right. Gamut: the left body
  // with every output word left + 2 * right. Any other operation: the output is left alone.
  static void KnownResult(VexaKivOps op, const unsigned char* input, uint32_t input_len,
                          unsigned char* output, uint32_t output_len);

 private:
  std::string FramingError(VexaKivOps op, const VexaKivPayload& input,
                           const VexaKivPayload* output) const;

  Responder responder_;
  int32_t status_ = 0;
  bool check_framing_ = false;
  std::vector<AlgoCall> calls_;
  std::vector<std::string> framing_errors_;
  int init_calls_ = 0;
  int deinit_calls_ = 0;
  std::string panel_name_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_ALGO_DOUBLE_H_
