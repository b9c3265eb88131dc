#include "bench/pipeline_benchmarks.h"

#include <benchmark/benchmark.h>
#include <json/json.h>

#include <memory>

#include "bench/bench_device_tree.h"
#include "bench/bench_workload.h"
#include "formats/common_data.h"
#include "formats/hex_coding.h"
#include "formats/json_access.h"
#include "formats/json_parser.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "modes/kiv_mode.h"
#include "parser/vexa_json_mode_parser.h"
#include "vexa/vexa_kiv_interface.h"

// The old strict Reader is what the library parses with; the floor must use the same.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace vexa::bench {
namespace {

const BenchWorkload& Workload(const benchmark::State& state) {
  return BenchWorkload::Shared(static_cast<uint32_t>(state.range(0)));
}

std::unique_ptr<VexaKivInterface> NewParser() {
  return std::unique_ptr<VexaKivInterface>(
      GetVexaKivInterface(kKivInterfaceMajorVersion, kKivInterfaceMinorVersion));
}

std::unique_ptr<VexaKivInterface> InitialisedParser(const BenchWorkload& workload) {
  workload.UseAsDeviceRoot();
  std::unique_ptr<VexaKivInterface> parser = NewParser();
  parser->Init(kBenchPanel);
  return parser;
}

// The published modes, as the service lists them.
std::vector<ColorMode> ListModes(VexaKivInterface& parser) {
  ColorModeList list{kColorModeListVersion, {}};
  VexaKivPayload payload{kVexaKivPayloadVersion, kColorModeListLen, kKivModesList, &list};
  parser.GetProperty(&payload);
  return list.modes;
}

// Init end to end through the exported factory; the object's destruction is not timed.
void BM_Init(benchmark::State& state) {
  const BenchWorkload& workload = Workload(state);
  workload.UseAsDeviceRoot();
  for (auto _ : state) {
    std::unique_ptr<VexaKivInterface> parser = NewParser();
    benchmark::DoNotOptimize(parser->Init(kBenchPanel));
    state.PauseTiming();
    parser.reset();
    state.ResumeTiming();
  }
}

// What the mandated reader alone costs for the same texts: the three files and every decoded
// section, each parsed strictly into a tree that is then released. The range form, as the library
// uses it: the string form would add a copy of each text to the floor.
void BM_JsonReaderFloor(benchmark::State& state) {
  const BenchWorkload& workload = Workload(state);
  std::vector<const std::string*> texts = {&workload.factory_text(), &workload.calibration_text(),
                                           &workload.rules_text()};
  for (const std::string& section : workload.decoded_sections()) texts.push_back(&section);
  for (auto _ : state) {
    for (const std::string* text : texts) {
      Json::Value value;
      Json::Reader reader(Json::Features::strictMode());
      benchmark::DoNotOptimize(reader.parse(text->data(), text->data() + text->size(), value,
                                            /*collectComments=*/false));
    }
  }
}

// Both modes files through the modes parser (reader, hex, common data, modes and assets).
void BM_ParseModesFiles(benchmark::State& state) {
  const BenchWorkload& workload = Workload(state);
  for (auto _ : state) {
    benchmark::DoNotOptimize(json_parser::parse_modes(workload.factory_text(), kBenchPanel));
    benchmark::DoNotOptimize(json_parser::parse_modes(workload.calibration_text(), kBenchPanel));
  }
}

void BM_HexDecode(benchmark::State& state) {
  const BenchWorkload& workload = Workload(state);
  std::string decoded;
  for (auto _ : state) {
    for (const std::string& hex : workload.hex_sections()) {
      DecodeHexText(hex, decoded);
      benchmark::DoNotOptimize(decoded.data());
    }
  }
}

// The shared tables of the calibration file, from its decoded "Common" object.
void BM_CommonData(benchmark::State& state) {
  const BenchWorkload& workload = Workload(state);
  Json::Value file;
  PopulateJsonValue(workload.calibration_text(), file);
  Json::Value& common = file[keys::kCommon];
  for (const std::string& name : MemberNames(common)) {
    std::string decoded;
    DecodeData(common[name], decoded);
    PopulateJsonValue(decoded, common[name]);
  }
  for (auto _ : state) {
    HwAssetsCommonData tables(common);
    benchmark::DoNotOptimize(&tables);
  }
}

void BM_GetPayloads(benchmark::State& state) {
  const BenchWorkload& workload = Workload(state);
  auto modes = json_parser::parse_modes(workload.calibration_text(), kBenchPanel);
  for (auto _ : state) {
    for (const std::shared_ptr<KivMode>& mode : *modes) benchmark::DoNotOptimize(mode->GetPayloads());
  }
}

// One request per iteration, going round every published mode, each into a fresh output record.
void BM_RenderIntentRequest(benchmark::State& state) {
  std::unique_ptr<VexaKivInterface> parser = InitialisedParser(Workload(state));
  const std::vector<ColorMode> modes = ListModes(*parser);
  std::vector<ModeRenderInputParams> requests;
  for (const ColorMode& mode : modes) {
    requests.push_back({kModeRenderInputParamsVersion, mode.gamut, mode.gamma, mode.intent,
                        mode.hw_assets});
  }
  size_t next = 0;
  for (auto _ : state) {
    HwConfigOutputParams output{kHwConfigOutputParamsVersion, {}};
    VexaKivPayload in{kVexaKivPayloadVersion, kModeRenderInputParamsLen, 0, &requests[next]};
    VexaKivPayload out{kVexaKivPayloadVersion, kHwConfigOutputParamsLen, 0, &output};
    if (parser->ProcessOps(kKivModeRenderIntent, in, &out) != 0) state.SkipWithError("mode not found");
    benchmark::DoNotOptimize(output.payloads.data());
    next = next + 1 == requests.size() ? 0 : next + 1;
  }
}

void BM_GetModesList(benchmark::State& state) {
  std::unique_ptr<VexaKivInterface> parser = InitialisedParser(Workload(state));
  for (auto _ : state) benchmark::DoNotOptimize(ListModes(*parser));
}

}  // namespace

void RegisterPipelineBenchmarks(const std::vector<uint32_t>& mode_counts) {
  const struct {
    const char* name;
    void (*run)(benchmark::State&);
  } kBenchmarks[] = {
      {kInitBenchmark, &BM_Init},
      {kFloorBenchmark, &BM_JsonReaderFloor},
      {"ParseModesFiles", &BM_ParseModesFiles},
      {"HexDecode", &BM_HexDecode},
      {"CommonData", &BM_CommonData},
      {"GetPayloads", &BM_GetPayloads},
      {kRenderIntentBenchmark, &BM_RenderIntentRequest},
      {"GetModesList", &BM_GetModesList},
  };
  for (const auto& entry : kBenchmarks) {
    benchmark::internal::Benchmark* bench = benchmark::RegisterBenchmark(entry.name, entry.run);
    for (uint32_t modes : mode_counts) bench->Arg(modes);
    bench->Unit(benchmark::kMicrosecond);
  }
}

}  // namespace vexa::bench
