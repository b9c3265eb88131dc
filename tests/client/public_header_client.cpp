// A display-service stand-in that knows nothing but the public header: it loads the library by
// path, asks for the mode list of a panel and prints it.
//
// Usage: vexa_public_header_client <library path> <panel name>
// Prints "status <s> modes <n>", then one "mode <gamut> <gamma> <intent> <name>" line per mode.
#include <dlfcn.h>

#include <cstdio>

#include "vexa/vexa_kiv_interface.h"

int main(int argc, char** argv) {
  void* library = argc == 3 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
  auto factory = reinterpret_cast<decltype(&GetVexaKivInterface)>(
      library ? dlsym(library, "GetVexaKivInterface") : nullptr);
  vexa::VexaKivInterface* parser = factory ? factory(2, 0) : nullptr;
  if (parser == nullptr) return 2;
  parser->Init(argv[2]);
  vexa::ColorModeList list{vexa::kColorModeListVersion, {}};
  vexa::VexaKivPayload payload{vexa::kVexaKivPayloadVersion, vexa::kColorModeListLen,
                               vexa::kKivModesList, &list};
  const int32_t status = parser->GetProperty(&payload);
  std::printf("status %d modes %zu\n", status, list.modes.size());
  for (const vexa::ColorMode& mode : list.modes) {
    std::printf("mode %d %d %d %s\n", mode.gamut, mode.gamma, mode.intent,
                mode.render_intent_name.c_str());
  }
  parser->DeInit();
  delete parser;
  dlclose(library);
  return status == 0 ? 0 : 1;
}
