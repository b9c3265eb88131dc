// A stand-in for the vendor colour-algorithm library, built only from the public header. Its
// merges are simple sums, so that a test can predict every merged value.
#include "algo/vexa_test_algo.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "vexa/vexa_kiv_interface.h"

namespace {

// The records travel without their first 8 bytes (len, enable and padding).
constexpr size_t kRecordHeader = 8;
constexpr size_t kGamutBody = sizeof(vexa::GamutConfig) - kRecordHeader;
constexpr uint32_t kGamutMergeInputLen = 4 + 2 * kGamutBody;
constexpr uint32_t kGamutMergeOutputLen = 4 + kGamutBody;
constexpr uint32_t kPccMergeInputLen = 8 + 2 * sizeof(vexa::pcc_coeff_data);

TestAlgoCounters g_counters{};

bool BehaviourIs(const char* word) {
  const char* value = std::getenv(kTestAlgoBehaviourVariable);
  return value != nullptr && std::strcmp(value, word) == 0;
}

void ReadGamutBody(const uint8_t* from, vexa::GamutConfig* to) {
  std::memcpy(reinterpret_cast<uint8_t*>(to) + kRecordHeader, from, kGamutBody);
}

int32_t MergeGamut(const vexa::VexaKivPayload& input, vexa::VexaKivPayload* output) {
  if (input.len != kGamutMergeInputLen || output->len != kGamutMergeOutputLen ||
      input.payload == nullptr || output->payload == nullptr) {
    return -EINVAL;
  }
  const auto* in = static_cast<const uint8_t*>(input.payload);
  auto left = std::make_unique<vexa::GamutConfig>();
  auto right = std::make_unique<vexa::GamutConfig>();
  ReadGamutBody(in + 4, left.get());
  ReadGamutBody(in + 4 + kGamutBody, right.get());

  auto merged = std::make_unique<vexa::GamutConfig>();
  merged->grid_mode = 1;
  merged->num_entries = left->num_entries;
  for (uint32_t i = 0; i < vexa::kGamutEntries; ++i) {
    const vexa::GamutEntry& l = left->entries[i];
    const vexa::GamutEntry& r = right->entries[i];
    merged->entries[i] = {l.in_0, l.in_1, l.in_2, l.out_0 + r.out_0, l.out_1 + r.out_1,
                          l.out_2 + r.out_2};
  }
  std::memcpy(static_cast<uint8_t*>(output->payload) + 4,
              reinterpret_cast<const uint8_t*>(merged.get()) + kRecordHeader, kGamutBody);
  ++g_counters.gamut_merges;
  return 0;
}

vexa::pcc_coeff Sum(const vexa::pcc_coeff& a, const vexa::pcc_coeff& b) {
  return {a.c + b.c,   a.r + b.r,   a.g + b.g,   a.b + b.b,   a.rr + b.rr,   a.gg + b.gg,
          a.bb + b.bb, a.rg + b.rg, a.gb + b.gb, a.rb + b.rb, a.rgb + b.rgb};
}

int32_t MergePcc(const vexa::VexaKivPayload& input, vexa::VexaKivPayload* output) {
  if (input.len != kPccMergeInputLen || output->len != vexa::kPccConfigLen ||
      input.payload == nullptr || output->payload == nullptr) {
    return -EINVAL;
  }
  const auto* in = static_cast<const uint8_t*>(input.payload);
  vexa::pcc_coeff_data left;
  vexa::pcc_coeff_data right;
  std::memcpy(&left, in + 8, sizeof(left));
  std::memcpy(&right, in + 8 + sizeof(left), sizeof(right));
  auto* out = static_cast<vexa::PccConfig*>(output->payload);
  out->coeffs.reserved = 0;
  out->coeffs.red = Sum(left.red, right.red);
  out->coeffs.green = Sum(left.green, right.green);
  out->coeffs.blue = Sum(left.blue, right.blue);
  ++g_counters.pcc_merges;
  return 0;
}

class TestAlgo : public vexa::VexaKivInterface {
 public:
  TestAlgo() { ++g_counters.objects_alive; }
  ~TestAlgo() override { --g_counters.objects_alive; }

  int32_t Init(const std::string&) override {
    ++g_counters.inits;
    return BehaviourIs(kTestAlgoInitFails) ? kTestAlgoInitError : 0;
  }
  int32_t DeInit() override {
    ++g_counters.deinits;
    return 0;
  }
  int32_t SetProperty(const vexa::VexaKivPayload&) override { return -EINVAL; }
  int32_t GetProperty(vexa::VexaKivPayload*) override { return -EINVAL; }
  int32_t ProcessOps(vexa::VexaKivOps op, const vexa::VexaKivPayload& input,
                     vexa::VexaKivPayload* output) override {
    if (output == nullptr) return -EINVAL;
    if (op == vexa::kKivGamutMerge) return MergeGamut(input, output);
    if (op == vexa::kKivPccMerge) return MergePcc(input, output);
    return -EINVAL;
  }
};

}  // namespace

extern "C" __attribute__((visibility("default"))) vexa::VexaKivInterface* GetVexaAlgoInterface(
    int32_t major, int32_t minor) {
  ++g_counters.factory_calls;
  if (major != 2 || minor != 0 || BehaviourIs(kTestAlgoNoInterface)) return nullptr;
  return new TestAlgo();
}

extern "C" __attribute__((visibility("default"))) TestAlgoCounters VexaTestAlgoCounters() {
  return g_counters;
}
