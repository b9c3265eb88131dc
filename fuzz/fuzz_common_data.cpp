// The shared tables of a modes file ("Common", decoded) and their lookups.
#include <cstddef>
#include <cstdint>

#include "formats/common_data.h"
#include "formats/json_text.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  vexa::fuzz::InitFuzzing();
  Json::Value common;
  if (!vexa::PopulateJsonValue(vexa::fuzz::AsText(data, size), common)) return 0;
  vexa::HwAssetsCommonData tables(common);
  for (const char* name : {"a", "srgb", "p3", "gamma22", ""}) {
    tables.GetIgc(name);
    tables.GetGc(name);
    tables.GetGamut(name);
  }
  return 0;
}
