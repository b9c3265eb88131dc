// The performance targets as a table: each a measured ratio or time against its limit. Printed
// after a run; with a margin (> 1 on noisy machines) a target counts as missed only beyond
// limit x margin.
#ifndef VEXA_BENCH_TARGET_TABLE_H_
#define VEXA_BENCH_TARGET_TABLE_H_

#include <cstdio>
#include <optional>
#include <string>
#include <vector>
#include <cstdint>

namespace vexa::bench {

class TargetTable {
 public:
  // `measured` is empty when the run did not measure it (filtered out); it is then not checked.
  void Add(std::string what, std::optional<double> measured, double limit, const char* unit);

  // Prints the table to `out`.
  void Print(std::FILE* out) const;
  // True when every measured target lies within limit x margin.
  bool Met(double margin) const;
  // Prints the table and, given a margin, whether the targets are met; the exit status: 1 when
  // missed beyond the margin, else 0.
  int Finish(std::optional<double> margin) const;

 private:
  struct Row {
    std::string what;
    std::optional<double> measured;
    double limit;
    const char* unit;
  };
  std::vector<Row> rows_;
};

// The flags both benchmark programs take: --vexa_modes=10,40,160 (the default) and
// --vexa_check_margin=M. Removed from the arguments; false (with a usage line) when malformed.
struct BenchOptions {
  std::vector<uint32_t> mode_counts;
  std::optional<double> check_margin;
};
bool TakeBenchOptions(int* argc, char** argv, BenchOptions* options);

// The value of "--<name>=<value>" among the arguments, removed from them; empty when absent.
std::optional<std::string> TakeFlag(int* argc, char** argv, const char* name);
// A comma-separated list of mode counts ("10,40,160"); empty when malformed.
std::vector<uint32_t> ParseModeCounts(const std::string& text);

}  // namespace vexa::bench

#endif  // VEXA_BENCH_TARGET_TABLE_H_
