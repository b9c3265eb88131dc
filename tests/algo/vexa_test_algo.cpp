// A stand-in for the vendor colour-algorithm library, built from the public header and the
// algorithm double alone.
#include "algo/vexa_test_algo.h"

#include <cstdlib>
#include <string>

#include "support/algo_double.h"

namespace {

bool BehaviourIs(const char* word) {
  const char* value = std::getenv(kTestAlgoBehaviourVariable);
  return value != nullptr && std::string(value) == word;
}

class TestAlgo : public vexa::testing::AlgoDouble {
 public:
  TestAlgo() { set_check_framing(true); }
  int32_t Init(const std::string& panel_name) override {
    return BehaviourIs(kTestAlgoInitFails) ? -5 : AlgoDouble::Init(panel_name);
  }
};

}  // namespace

extern "C" __attribute__((visibility("default"))) vexa::VexaKivInterface* GetVexaAlgoInterface(
    int32_t major, int32_t minor) {
  if (major != 2 || minor != 0 || BehaviourIs(kTestAlgoNoInterface)) return nullptr;
  return new TestAlgo();
}
