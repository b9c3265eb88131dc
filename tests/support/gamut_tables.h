// Gamut tables for the algorithm tests: records filled from a function of the grid point, and
// the merge framing the parser builds around two of them.
#ifndef VEXA_TESTS_SUPPORT_GAMUT_TABLES_H_
#define VEXA_TESTS_SUPPORT_GAMUT_TABLES_H_

#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include "algo/gamut_composer.h"
#include "algo/lut3d.h"

namespace vexa::testing {

using algo::GamutComposer;
using algo::Lut3d;
using algo::RgbWord;
using GridFunction = std::function<RgbWord(const RgbWord&)>;

inline RgbWord Scramble(const RgbWord& p) { return {p[2] / 2 + 7, p[0] ^ 0x5a5, 4095 - p[1]}; }

// f at every grid point, in entry order.
inline std::vector<RgbWord> GridOutputs(const GridFunction& f) {
  std::vector<RgbWord> outputs;
  for (uint32_t i = 0; i < Lut3d::kEntries; ++i) outputs.push_back(f(Lut3d::GridPoint(i)));
  return outputs;
}

// A record whose every entry holds f(grid point), with the count word `count`.
inline std::unique_ptr<GamutConfig> GamutRecord(const GridFunction& f, uint32_t count = kGamutEntries) {
  auto record = std::make_unique<GamutConfig>();
  record->num_entries = count;
  const std::vector<RgbWord> outputs = GridOutputs(f);
  for (uint32_t i = 0; i < kGamutEntries; ++i) {
    record->entries[i].out_0 = outputs[i][0];
    record->entries[i].out_1 = outputs[i][1];
    record->entries[i].out_2 = outputs[i][2];
  }
  return record;
}

inline const unsigned char* Body(const GamutConfig& record) {
  return reinterpret_cast<const unsigned char*>(&record) + GamutComposer::kBodyOffset;
}

// Input: length word, main body, tuning body.
inline std::vector<unsigned char> GamutMergeInput(const GamutConfig& main, const GamutConfig& tuning) {
  constexpr uint32_t kBody = GamutComposer::kBodyLen, kLen = 4 + 2 * kBody;
  std::vector<unsigned char> input(kLen);
  std::memcpy(input.data(), &kLen, 4);
  std::memcpy(input.data() + 4, Body(main), kBody);
  std::memcpy(input.data() + 4 + kBody, Body(tuning), kBody);
  return input;
}

// Output: length word, then a zeroed body.
inline std::vector<unsigned char> GamutMergeOutput() {
  constexpr uint32_t kLen = 4 + GamutComposer::kBodyLen;
  std::vector<unsigned char> output(kLen);
  std::memcpy(output.data(), &kLen, 4);
  return output;
}

// The outputs held by a merge output's body, entry by entry.
inline std::vector<RgbWord> OutputsOf(const std::vector<unsigned char>& output) {
  auto record = std::make_unique<GamutConfig>();
  std::memcpy(reinterpret_cast<unsigned char*>(record.get()) + GamutComposer::kBodyOffset, output.data() + 4,
              GamutComposer::kBodyLen);
  std::vector<RgbWord> outputs;
  for (const GamutEntry& e : record->entries) outputs.push_back({e.out_0, e.out_1, e.out_2});
  return outputs;
}

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_GAMUT_TABLES_H_
