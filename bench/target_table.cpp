#include "bench/target_table.h"

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace vexa::bench {

void TargetTable::Add(std::string what, std::optional<double> measured, double limit,
                      const char* unit) {
  rows_.push_back({std::move(what), measured, limit, unit});
}

void TargetTable::Print(std::FILE* out) const {
  std::fprintf(out, "\n%-46s %12s %12s\n", "target", "measured", "limit");
  for (const Row& row : rows_) {
    char measured[32] = "not run";
    if (row.measured) std::snprintf(measured, sizeof(measured), "%.3f", *row.measured);
    std::fprintf(out, "%-46s %12s %12.3f %s%s\n", row.what.c_str(), measured, row.limit, row.unit,
                 row.measured && *row.measured > row.limit ? "  MISSED" : "");
  }
}

bool TargetTable::Met(double margin) const {
  for (const Row& row : rows_) {
    if (row.measured && *row.measured > row.limit * margin) return false;
  }
  return true;
}

int TargetTable::Finish(std::optional<double> margin) const {
  Print(stdout);
  if (!margin) return 0;
  const bool met = Met(*margin);
  std::printf("%s (margin %.2f)\n", met ? "targets met" : "TARGETS MISSED", *margin);
  return met ? 0 : 1;
}

bool TakeBenchOptions(int* argc, char** argv, BenchOptions* options) {
  const std::string counts = TakeFlag(argc, argv, "vexa_modes").value_or("10,40,160");
  const std::optional<std::string> margin = TakeFlag(argc, argv, "vexa_check_margin");
  options->mode_counts = ParseModeCounts(counts);
  if (margin) options->check_margin = std::atof(margin->c_str());
  if (!options->mode_counts.empty() && (!margin || *options->check_margin > 0)) return true;
  std::fprintf(stderr, "usage: %s [--vexa_modes=10,40,160] [--vexa_check_margin=M] ...\n", argv[0]);
  return false;
}

std::optional<std::string> TakeFlag(int* argc, char** argv, const char* name) {
  const std::string prefix = std::string("--") + name + "=";
  for (int i = 1; i < *argc; ++i) {
    if (std::strncmp(argv[i], prefix.c_str(), prefix.size()) != 0) continue;
    std::string value = argv[i] + prefix.size();
    for (int j = i; j + 1 < *argc; ++j) argv[j] = argv[j + 1];
    --*argc;
    return value;
  }
  return std::nullopt;
}

std::vector<uint32_t> ParseModeCounts(const std::string& text) {
  std::vector<uint32_t> counts;
  const char* at = text.data();
  const char* end = at + text.size();
  while (at < end) {
    uint32_t count = 0;
    auto [next, ec] = std::from_chars(at, end, count);
    if (ec != std::errc() || count == 0 || (next != end && *next != ',')) return {};
    counts.push_back(count);
    at = next == end ? end : next + 1;
  }
  return counts;
}

}  // namespace vexa::bench
