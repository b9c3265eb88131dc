// The reference colour-algorithm library's object (libvexa-algo.so): the parser hands it the
// gamut and PCC merge operands through ProcessOps.
//
//   kKivGamutMerge: input = a length word (235860), the left mode's main gamut body, the right
//     mode's tuning body (each a gamut record from its first reserved word on); output = a length
//     word (117932) and a body to fill. Result: main(tuning(x)) at every grid point.
//   kKivPccMerge: input = a length word (552), padding, the left main and the right tuning
//     coefficient blocks; output = a PCC record (280) whose coefficients are filled. Result: the
//     least-squares fit of main(tuning(rgb)) in the PCC basis.
// Anything else, a wrong length (envelope or length word) or a missing record is refused with
// -22 and an error line. The object keeps no state: calls may run on any thread.
#ifndef VEXA_ALGO_VEXA_ALGO_H_
#define VEXA_ALGO_VEXA_ALGO_H_

#include <cstdint>
#include <string>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::algo {

class VexaAlgo : public VexaKivInterface {
 public:
  static constexpr uint32_t kGamutMergeInputLen = 235860;
  static constexpr uint32_t kGamutMergeOutputLen = 117932;
  static constexpr uint32_t kPccMergeInputLen = 552;
  static constexpr uint32_t kPccMergeOutputLen = kPccConfigLen;

  int32_t Init(const std::string& panel_name) override;
  int32_t DeInit() override;
  // No property exists: both refuse with -22.
  int32_t SetProperty(const VexaKivPayload& payload) override;
  int32_t GetProperty(VexaKivPayload* payload) override;
  int32_t ProcessOps(VexaKivOps op, const VexaKivPayload& input, VexaKivPayload* output) override;

 private:
  static bool IsFramed(VexaKivOps op, const VexaKivPayload& input, const VexaKivPayload* output,
                       uint32_t input_len, uint32_t output_len);
  static int32_t MergeGamut(const unsigned char* input, unsigned char* output);
  static int32_t MergePcc(const unsigned char* input, unsigned char* output);
};

}  // namespace vexa::algo

#endif  // VEXA_ALGO_VEXA_ALGO_H_
