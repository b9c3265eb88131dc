// The benchmarks of the start-up path and of the mode operations, each registered for every
// calibration-mode count asked for.
#ifndef VEXA_BENCH_PIPELINE_BENCHMARKS_H_
#define VEXA_BENCH_PIPELINE_BENCHMARKS_H_

#include <cstdint>
#include <vector>

namespace vexa::bench {

// Names under which the benchmarks report (followed by "/<modes>").
inline constexpr char kInitBenchmark[] = "Init";
inline constexpr char kFloorBenchmark[] = "JsonReaderFloor";
inline constexpr char kRenderIntentBenchmark[] = "RenderIntentRequest";

void RegisterPipelineBenchmarks(const std::vector<uint32_t>& mode_counts);

}  // namespace vexa::bench

#endif  // VEXA_BENCH_PIPELINE_BENCHMARKS_H_
