// The performance targets as a table: each a measured ratio or time against its limit. Printed
// after a run; with a margin (> 1 on noisy machines) a target counts as missed only beyond
// limit x margin.
#ifndef VEXA_BENCH_TARGET_TABLE_H_
#define VEXA_BENCH_TARGET_TABLE_H_

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace vexa::bench {

class TargetTable {
 public:
  // `measured` is empty when the run did not measure it (filtered out); it is then not checked.
  void Add(std::string what, std::optional<double> measured, double limit, const char* unit);

  // Prints the table to `out`.
  void Print(std::FILE* out) const;
  // True when every measured target lies within limit x margin.
  bool Met(double margin) const;

 private:
  struct Row {
    std::string what;
    std::optional<double> measured;
    double limit;
    const char* unit;
  };
  std::vector<Row> rows_;
};

// The value of "--<name>=<value>" among the arguments, removed from them; empty when absent.
std::optional<std::string> TakeFlag(int* argc, char** argv, const char* name);
// A comma-separated list of mode counts ("10,40,160"); empty when malformed.
std::vector<uint32_t> ParseModeCounts(const std::string& text);

}  // namespace vexa::bench

#endif  // VEXA_BENCH_TARGET_TABLE_H_
