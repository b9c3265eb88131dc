// The library's one exported symbol.
#include <cstdint>

#include "parser/vexa_json_mode_parser.h"
#include "platform/log.h"

namespace {
constexpr char kLogLabel[] = "VexaJsonModeParser";
}  // namespace

extern "C" __attribute__((visibility("default"))) vexa::VexaKivInterface* GetVexaKivInterface(
    int32_t major, int32_t minor) {
  if (major == vexa::kKivInterfaceMajorVersion && minor == vexa::kKivInterfaceMinorVersion) {
    VKR_LOGI(1, "VexaJsonModeParser created");
    return new vexa::VexaJsonModeParser();
  }
  VKR_LOGI(2, "Invalid major_version %d minor_version %d", major, minor);
  return nullptr;
}
