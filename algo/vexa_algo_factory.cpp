// The library's one exported symbol: a new algorithm object for interface version 2.0, null for
// any other version. The caller owns the object and deletes it through its virtual destructor.
#include "algo/vexa_algo.h"

extern "C" __attribute__((visibility("default"))) vexa::VexaKivInterface* GetVexaAlgoInterface(
    int32_t major, int32_t minor) {
  if (major != 2 || minor != 0) return nullptr;
  return new vexa::algo::VexaAlgo();
}
