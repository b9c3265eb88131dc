// A large, realistic device tree for measuring start-up: a factory file (version 2) with
// kFactoryModes modes carrying inline gamma tables, inline 4913-entry gamut tables and PCC; a
// calibration file (version 3) whose "Common" holds several shared gamma and gamut tables and
// whose N modes take them by name, each with PCC, PA (six-zone curves included), dither, DE and a
// game blob, every other one with a gamut tuning table; and merge rules pairing each odd
// calibration mode with the factory mode of its colour space.
//
// The documents are written in the example sources' unpacked form (recipes for computed tables)
// and packed by the example generator, so they are exactly what the device would read.
#ifndef VEXA_BENCH_BENCH_DEVICE_TREE_H_
#define VEXA_BENCH_BENCH_DEVICE_TREE_H_

#include <json/json.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace vexa::bench {

inline constexpr char kBenchPanel[] = "vx_bench_6p7";
inline constexpr uint32_t kFactoryModes = 4;

// The tree's files, relative to its root, and the directory that the library writes into.
std::filesystem::path FactoryFilePath();
std::filesystem::path CalibrationFilePath();
std::filesystem::path MergeRulesFilePath();
std::filesystem::path DataDirPath();

class BenchDeviceTree {
 public:
  explicit BenchDeviceTree(uint32_t calibration_modes) : calibration_modes_(calibration_modes) {}

  // Writes the three files below `root` and creates the writable data directory.
  bool Write(const std::filesystem::path& root, std::string* error) const;

  // The unpacked documents, "@panel" standing for the panel key.
  Json::Value FactoryDocument() const;
  Json::Value CalibrationDocument() const;
  Json::Value MergeRulesDocument() const;

  // Modes that Init publishes: every factory and every calibration mode (merged modes replace the
  // calibration modes they were made from).
  uint32_t PublishedModes() const { return kFactoryModes + calibration_modes_; }
  uint32_t MergeRules() const { return calibration_modes_ / 2; }

  // The name of calibration mode i, and whether it carries a gamut tuning table.
  static std::string CalibrationModeName(uint32_t i);
  static bool HasGamutTuning(uint32_t i) { return i % 2 == 0; }

 private:
  Json::Value CalibrationMode(uint32_t i) const;
  Json::Value MergeRule(uint32_t i) const;

  uint32_t calibration_modes_;
};

}  // namespace vexa::bench

#endif  // VEXA_BENCH_BENCH_DEVICE_TREE_H_
