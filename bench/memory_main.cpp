// Measures the heap during Init for each workload size: the peak growth against the bytes that
// stay afterwards, and the bytes of JSON trees still held once Init has returned.
//
//   vexa_bench_memory [--vexa_modes=10,40,160] [--vexa_check_margin=M]
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "bench/bench_device_tree.h"
#include "bench/bench_workload.h"
#include "bench/heap_counter.h"
#include "bench/target_table.h"
#include "formats/json_text.h"
#include "parser/vexa_json_mode_parser.h"
#include "platform/log.h"

namespace vexa::bench {
namespace {

constexpr double kPeakOverRetainedLimit = 2.0;

struct InitMemory {
  size_t file_bytes;
  size_t retained;     // live after Init less live before
  size_t peak_growth;  // peak during Init less live before
  size_t json_held;    // jsoncpp storage live after Init less before
};

// The JSON bit works only if jsoncpp's allocations are really seen: a held tree must show.
bool JsonStorageVisible() {
  const size_t before = HeapCounter::JsonLiveBytes();
  Json::Value tree;
  PopulateJsonValue(R"({"a member name longer than any small-string buffer": "and its value too"})", tree);
  return HeapCounter::JsonLiveBytes() > before;
}

std::optional<InitMemory> MeasureInit(uint32_t modes) {
  std::string error;
  std::unique_ptr<BenchWorkload> workload = BenchWorkload::Create(modes, &error);
  if (!workload) {
    std::fprintf(stderr, "workload of %u modes: %s\n", modes, error.c_str());
    return std::nullopt;
  }
  workload->UseAsDeviceRoot();
  std::unique_ptr<VexaKivInterface> parser(
      GetVexaKivInterface(kKivInterfaceMajorVersion, kKivInterfaceMinorVersion));
  const size_t live_before = HeapCounter::LiveBytes();
  const size_t json_before = HeapCounter::JsonLiveBytes();
  HeapCounter::ResetPeak();
  parser->Init(kBenchPanel);
  InitMemory memory{workload->file_bytes(), HeapCounter::LiveBytes() - live_before,
                    HeapCounter::PeakBytes() - live_before,
                    HeapCounter::JsonLiveBytes() - json_before};
  return memory;
}

}  // namespace
}  // namespace vexa::bench

int main(int argc, char** argv) {
  using namespace vexa::bench;
  BenchOptions options;
  if (!TakeBenchOptions(&argc, argv, &options)) return 2;
  if (argc != 1) {
    std::fprintf(stderr, "%s: unknown argument %s\n", argv[0], argv[1]);
    return 2;
  }
  if (!HeapCounter::FindJsonLibrary() || !JsonStorageVisible()) {
    std::fprintf(stderr, "jsoncpp is not loaded as a shared library: JSON bytes cannot be told apart\n");
    return 2;
  }
  vexa::SetLogLevel(0);
  TargetTable targets;
  std::printf("%8s %12s %14s %14s %10s %12s\n", "modes", "file bytes", "retained", "peak growth",
              "peak/ret", "JSON held");
  for (uint32_t modes : options.mode_counts) {
    const std::optional<InitMemory> memory = MeasureInit(modes);
    if (!memory) return 1;
    const double ratio = memory->retained > 0
                             ? static_cast<double>(memory->peak_growth) / memory->retained
                             : 0;
    std::printf("%8u %12zu %14zu %14zu %10.3f %12zu\n", modes, memory->file_bytes, memory->retained,
                memory->peak_growth, ratio, memory->json_held);
    const std::string size = std::to_string(modes) + " modes";
    targets.Add("Init peak growth / retained, " + size, ratio, kPeakOverRetainedLimit, "");
    targets.Add("JSON bytes held after Init, " + size, static_cast<double>(memory->json_held), 0, "B");
  }
  return targets.Finish(options.check_margin);
}
