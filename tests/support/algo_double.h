// An in-process stand-in for the colour-algorithm library. It records every ProcessOps call (the
// operation and a copy of the input bytes), can check the framing of the two merge operations,
// and answers with a configurable status and a known result computed from the operands, so that
// a test sees a wrong offset, a swapped operand or a missing clip in the result:
//   PCC: every output coefficient is left + 2 * right.
//   Gamut: the left body, with every output word left + 2 * right.
#ifndef VEXA_TESTS_SUPPORT_ALGO_DOUBLE_H_
#define VEXA_TESTS_SUPPORT_ALGO_DOUBLE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::testing {

struct AlgoCall {
  VexaKivOps op;
  std::vector<unsigned char> input;  // the input record as it was handed over
};

class AlgoDouble : public VexaKivInterface {
 public:
  int32_t Init(const std::string&) override { return 0; }
  int32_t DeInit() override { return 0; }
  int32_t SetProperty(const VexaKivPayload&) override { return -22; }
  int32_t GetProperty(VexaKivPayload*) override { return -22; }
  // Records the call; with framing checks on, a wrongly framed call is refused with -22 and
  // described in framing_errors(). Otherwise the known result is written (also when the status
  // is a failure, so that a caller that uses it anyway is caught) and the status is returned.
  int32_t ProcessOps(VexaKivOps op, const VexaKivPayload& input, VexaKivPayload* output) override;

  void set_status(int32_t status) { status_ = status; }
  void set_check_framing(bool check) { check_framing_ = check; }
  const std::vector<AlgoCall>& calls() const { return calls_; }
  const std::vector<std::string>& framing_errors() const { return framing_errors_; }

 private:
  int32_t status_ = 0;
  bool check_framing_ = false;
  std::vector<AlgoCall> calls_;
  std::vector<std::string> framing_errors_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_ALGO_DOUBLE_H_
