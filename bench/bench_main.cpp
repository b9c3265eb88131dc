// Runs the benchmarks, then prints the targets as ratios of medians measured in this one run.
//
//   vexa_bench [--vexa_modes=10,40,160] [--vexa_check_margin=M] [--vexa_show_log=1]
//              [Google Benchmark flags, e.g. --benchmark_repetitions=5]
//
// With --vexa_check_margin the exit status is 1 when a target is missed by more than the margin.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <map>
#include <optional>
#include <string>

#include "bench/pipeline_benchmarks.h"
#include "bench/target_table.h"
#include "platform/log.h"

namespace vexa::bench {
namespace {

constexpr uint32_t kRatioModes = 40;
constexpr uint32_t kLargeModes = 160;
constexpr double kInitOverFloorLimit = 1.15;
constexpr double kGrowthLimit = 4.4;
constexpr double kRenderIntentLimitNs = 1000;

// Keeps each benchmark's CPU time per iteration, in seconds: the median when repeated.
class MedianReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) continue;
      const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (run.run_type == Run::RT_Aggregate && !median) continue;
      Entry& entry = seconds_[run.run_name.str()];
      if (median || !entry.median) {
        entry.seconds = run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        entry.median = median;
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }

  std::optional<double> Seconds(const char* name, uint32_t modes) const {
    auto it = seconds_.find(std::string(name) + "/" + std::to_string(modes));
    if (it == seconds_.end()) return std::nullopt;
    return it->second.seconds;
  }

 private:
  struct Entry {
    double seconds = 0;
    bool median = false;
  };
  std::map<std::string, Entry> seconds_;
};

std::optional<double> Ratio(std::optional<double> a, std::optional<double> b) {
  if (!a || !b || *b <= 0) return std::nullopt;
  return *a / *b;
}

TargetTable Targets(const MedianReporter& results) {
  TargetTable table;
  table.Add("Init / JSON reader floor, 40 modes",
            Ratio(results.Seconds(kInitBenchmark, kRatioModes),
                  results.Seconds(kFloorBenchmark, kRatioModes)),
            kInitOverFloorLimit, "");
  table.Add("Init 160 modes / Init 40 modes",
            Ratio(results.Seconds(kInitBenchmark, kLargeModes),
                  results.Seconds(kInitBenchmark, kRatioModes)),
            kGrowthLimit, "");
  std::optional<double> request = results.Seconds(kRenderIntentBenchmark, kRatioModes);
  if (request) *request *= 1e9;
  table.Add("render-intent request, 40 modes", request, kRenderIntentLimitNs, "ns");
  return table;
}

// The library's error lines (one per Init here: no colour-algorithm library) would drown the
// report; they go to /dev/null unless asked for. Returns the saved standard error.
int SilenceLibraryLog() {
  std::fflush(stderr);
  const int saved = dup(STDERR_FILENO);
  const int null = open("/dev/null", O_WRONLY);
  if (null >= 0) {
    dup2(null, STDERR_FILENO);
    close(null);
  }
  return saved;
}

void RestoreLog(int saved) {
  if (saved < 0) return;
  std::fflush(stderr);
  dup2(saved, STDERR_FILENO);
  close(saved);
}

}  // namespace
}  // namespace vexa::bench

int main(int argc, char** argv) {
  using namespace vexa::bench;
  BenchOptions options;
  if (!TakeBenchOptions(&argc, argv, &options)) return 2;
  const bool show_log = TakeFlag(&argc, argv, "vexa_show_log").has_value();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;

  vexa::SetLogLevel(0);
  RegisterPipelineBenchmarks(options.mode_counts);
  MedianReporter reporter;
  reporter.SetErrorStream(&std::cout);
  const int saved_stderr = show_log ? -1 : SilenceLibraryLog();
  benchmark::RunSpecifiedBenchmarks(&reporter);
  RestoreLog(saved_stderr);
  benchmark::Shutdown();

  return Targets(reporter).Finish(options.check_margin);
}
