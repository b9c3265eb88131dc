// A whole modes file: parsing, payloads, the assets' JSON and the mode-list document.
#include <cstddef>
#include <cstdint>

#include "formats/json_parser.h"
#include "fuzz/fuzz_support.h"
#include "modes/kiv_mode.h"
#include "modes/kiv_modes_manager.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  vexa::fuzz::InitFuzzing();
  auto modes = vexa::json_parser::parse_modes(vexa::fuzz::AsText(data, size), vexa::fuzz::kFuzzPanel);
  if (!modes) return 0;
  vexa::KivModesManager manager(vexa::fuzz::kFuzzPanel);
  for (const auto& mode : *modes) {
    mode->GetPayloads();
    mode->GetHwAssetsJV();
    manager.AddModeToList(mode, false);
  }
  manager.SetFactoryFloorModeAsDefault(*modes);
  manager.GetModeListJV();
  return 0;
}
