// A stand-in for the vendor colour-algorithm library, built from the public header and the
// algorithm double alone.
#include "algo/vexa_test_algo.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "support/algo_double.h"

namespace {

TestAlgoCounters g_counters{};

bool BehaviourIs(const char* word) {
  const char* value = std::getenv(kTestAlgoBehaviourVariable);
  return value != nullptr && std::strcmp(value, word) == 0;
}

class CountingAlgo : public vexa::testing::AlgoDouble {
 public:
  CountingAlgo() {
    set_check_framing(true);
    ++g_counters.objects_alive;
  }
  ~CountingAlgo() override { --g_counters.objects_alive; }

  int32_t Init(const std::string& panel_name) override {
    ++g_counters.inits;
    AlgoDouble::Init(panel_name);
    return BehaviourIs(kTestAlgoInitFails) ? kTestAlgoInitError : 0;
  }
  int32_t DeInit() override {
    ++g_counters.deinits;
    return AlgoDouble::DeInit();
  }
  int32_t ProcessOps(vexa::VexaKivOps op, const vexa::VexaKivPayload& input,
                     vexa::VexaKivPayload* output) override {
    const size_t errors = framing_errors().size();
    const int32_t status = AlgoDouble::ProcessOps(op, input, output);
    if (op == vexa::kKivGamutMerge) ++g_counters.gamut_merges;
    if (op == vexa::kKivPccMerge) ++g_counters.pcc_merges;
    g_counters.framing_errors += static_cast<int32_t>(framing_errors().size() - errors);
    return status;
  }
};

}  // namespace

extern "C" __attribute__((visibility("default"))) vexa::VexaKivInterface* GetVexaAlgoInterface(
    int32_t major, int32_t minor) {
  ++g_counters.factory_calls;
  if (major != 2 || minor != 0 || BehaviourIs(kTestAlgoNoInterface)) return nullptr;
  return new CountingAlgo();
}

extern "C" __attribute__((visibility("default"))) TestAlgoCounters VexaTestAlgoCounters() {
  return g_counters;
}
