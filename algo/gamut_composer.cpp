#include "algo/gamut_composer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace vexa::algo {
namespace {

constexpr size_t kGridModeAt = offsetof(GamutConfig, grid_mode) - GamutComposer::kBodyOffset;
constexpr size_t kCountAt = offsetof(GamutConfig, num_entries) - GamutComposer::kBodyOffset;
constexpr size_t kEntriesAt = offsetof(GamutConfig, entries) - GamutComposer::kBodyOffset;
constexpr size_t kOutputsInEntry = offsetof(GamutEntry, out_0);
constexpr uint32_t kGridMode = 1;

uint32_t LoadWord(const unsigned char* bytes, size_t at) {
  uint32_t word;
  std::memcpy(&word, bytes + at, sizeof(word));
  return word;
}

void StoreWord(unsigned char* bytes, size_t at, uint32_t word) {
  std::memcpy(bytes + at, &word, sizeof(word));
}

uint32_t RoundToWord(double value) {
  constexpr double kMax = std::numeric_limits<uint32_t>::max();
  return static_cast<uint32_t>(std::clamp(std::round(value), 0.0, kMax));
}

}  // namespace

Lut3d GamutComposer::ReadOutputs(const unsigned char* body, uint32_t count) {
  Lut3d lut = Lut3d::Identity();
  for (uint32_t i = 0; i < std::min(count, Lut3d::kEntries); ++i) {
    const size_t at = kEntriesAt + i * sizeof(GamutEntry) + kOutputsInEntry;
    lut.at(i) = {LoadWord(body, at), LoadWord(body, at + 4), LoadWord(body, at + 8)};
  }
  return lut;
}

Lut3d GamutComposer::MainTable(const unsigned char* body) {
  return ReadOutputs(body, LoadWord(body, kCountAt));
}

Lut3d GamutComposer::TuningTable(const unsigned char* body) {
  Lut3d lut = ReadOutputs(body, Lut3d::kEntries);
  return lut.IsAllZero() ? Lut3d::Identity() : lut;
}

Lut3d GamutComposer::Compose(const Lut3d& main, const Lut3d& tuning) {
  Lut3d result = Lut3d::Identity();
  for (uint32_t i = 0; i < Lut3d::kEntries; ++i) {
    const RgbWord& tuned = tuning.at(i);
    const Rgb out = main.Sample({static_cast<double>(tuned[0]), static_cast<double>(tuned[1]),
                                 static_cast<double>(tuned[2])});
    result.at(i) = {RoundToWord(out[0]), RoundToWord(out[1]), RoundToWord(out[2])};
  }
  return result;
}

void GamutComposer::WriteBody(const Lut3d& lut, unsigned char* body) {
  std::memset(body, 0, kBodyLen);
  StoreWord(body, kGridModeAt, kGridMode);
  StoreWord(body, kCountAt, Lut3d::kEntries);
  for (uint32_t i = 0; i < Lut3d::kEntries; ++i) {
    const RgbWord in = Lut3d::GridPoint(i);
    const RgbWord& out = lut.at(i);
    const std::array<uint32_t, 6> words = {in[0], in[1], in[2], out[0], out[1], out[2]};
    std::memcpy(body + kEntriesAt + i * sizeof(GamutEntry), words.data(), sizeof(GamutEntry));
  }
}

}  // namespace vexa::algo
