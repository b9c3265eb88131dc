#include "algo/lut3d.h"

#include <algorithm>
#include <cmath>

namespace vexa::algo {
namespace {

constexpr uint32_t kGridStep = 256;
constexpr uint32_t kLastCell = Lut3d::kLevels - 2;

// The cell that holds `value` along one axis and the position inside it, 0 to 1.
struct AxisCell {
  uint32_t k;
  double fraction;
};

AxisCell CellOf(double value) {
  const double clamped = std::clamp(value, 0.0, static_cast<double>(Lut3d::kMaxCode));
  const uint32_t k = std::min(static_cast<uint32_t>(clamped / kGridStep), kLastCell);
  const double low = Lut3d::Level(k);
  return {k, (clamped - low) / (Lut3d::Level(k + 1) - low)};
}

}  // namespace

Lut3d Lut3d::Identity() {
  Lut3d lut;
  for (uint32_t i = 0; i < kEntries; ++i) lut.outputs_[i] = GridPoint(i);
  return lut;
}

uint32_t Lut3d::Level(uint32_t k) { return std::min(k * kGridStep, kMaxCode); }

uint32_t Lut3d::Index(uint32_t k0, uint32_t k1, uint32_t k2) {
  return kLevels * kLevels * k2 + kLevels * k1 + k0;
}

RgbWord Lut3d::GridPoint(uint32_t index) {
  return {Level(index % kLevels), Level(index / kLevels % kLevels), Level(index / (kLevels * kLevels))};
}

bool Lut3d::IsAllZero() const {
  return std::all_of(outputs_.begin(), outputs_.end(),
                     [](const RgbWord& out) { return out == RgbWord{0, 0, 0}; });
}

// The cube is split into six tetrahedra along its main diagonal; the one holding the point is
// chosen by the order of the three fractions. Walking from corner 000 to corner 111 one axis at a
// time, largest fraction first, the weights are 1 - f_a, f_a - f_b, f_b - f_c and f_c.
Rgb Lut3d::Sample(const Rgb& point) const {
  const std::array<AxisCell, 3> cells = {CellOf(point[0]), CellOf(point[1]), CellOf(point[2])};
  std::array<int, 3> axes = {0, 1, 2};
  std::stable_sort(axes.begin(), axes.end(),
                   [&](int a, int b) { return cells[a].fraction > cells[b].fraction; });

  std::array<uint32_t, 3> corner = {cells[0].k, cells[1].k, cells[2].k};
  double previous_fraction = 1.0;
  Rgb result = {0.0, 0.0, 0.0};
  auto add = [&](double weight) {
    const RgbWord& out = outputs_[Index(corner[0], corner[1], corner[2])];
    for (int c = 0; c < 3; ++c) result[c] += weight * out[c];
  };
  for (int axis : axes) {
    const double fraction = cells[axis].fraction;
    add(previous_fraction - fraction);
    ++corner[axis];
    previous_fraction = fraction;
  }
  add(previous_fraction);
  return result;
}

}  // namespace vexa::algo
