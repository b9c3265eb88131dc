// One generated device tree on disk, with what the stage benchmarks start from: the three file
// texts and every hex section of the two modes files, as hex and decoded.
#ifndef VEXA_BENCH_BENCH_WORKLOAD_H_
#define VEXA_BENCH_BENCH_WORKLOAD_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vexa::bench {

class BenchWorkload {
 public:
  // Generates the tree for `calibration_modes` modes in a fresh directory below the system's
  // temporary directory; null, with `error`, when it cannot be written or read back.
  static std::unique_ptr<BenchWorkload> Create(uint32_t calibration_modes, std::string* error);
  // The workload of that size, made once per process (a benchmark registered for N uses it).
  static const BenchWorkload& Shared(uint32_t calibration_modes);
  ~BenchWorkload();
  BenchWorkload(const BenchWorkload&) = delete;
  BenchWorkload& operator=(const BenchWorkload&) = delete;

  // Points the library's device paths at this tree (VEXA_SYSROOT).
  void UseAsDeviceRoot() const;

  uint32_t calibration_modes() const { return calibration_modes_; }
  const std::string& root() const { return root_; }
  const std::string& factory_text() const { return factory_text_; }
  const std::string& calibration_text() const { return calibration_text_; }
  const std::string& rules_text() const { return rules_text_; }
  // Every "Common" table and asset section of both modes files, in file order.
  const std::vector<std::string>& hex_sections() const { return hex_sections_; }
  const std::vector<std::string>& decoded_sections() const { return decoded_sections_; }
  // Bytes of the three files.
  size_t file_bytes() const;

 private:
  BenchWorkload(uint32_t calibration_modes, std::string root)
      : calibration_modes_(calibration_modes), root_(std::move(root)) {}
  bool Load(std::string* error);
  bool CollectSections(const std::string& text, std::string* error);

  uint32_t calibration_modes_;
  std::string root_;
  std::string factory_text_;
  std::string calibration_text_;
  std::string rules_text_;
  std::vector<std::string> hex_sections_;
  std::vector<std::string> decoded_sections_;
};

}  // namespace vexa::bench

#endif  // VEXA_BENCH_BENCH_WORKLOAD_H_
