// A display-service stand-in that knows nothing but the public header: it loads the library by
// path, asks for the mode list of a panel and prints it.
//
// Usage: vexa_public_header_client <library path> <panel name>
// Prints "status <s> modes <n>", then one "mode <gamut> <gamma> <intent> <name>" line per mode.
#include <dlfcn.h>

#include <cstdio>
#include <memory>

#include "vexa/vexa_kiv_interface.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s <library> <panel>\n", argv[0]);
    return 2;
  }
  void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    std::fprintf(stderr, "dlopen: %s\n", dlerror());
    return 1;
  }
  auto factory = reinterpret_cast<decltype(&GetVexaKivInterface)>(
      dlsym(library, "GetVexaKivInterface"));
  if (factory == nullptr) {
    std::fprintf(stderr, "no GetVexaKivInterface\n");
    return 1;
  }
  int32_t status = -1;
  {
    std::unique_ptr<vexa::VexaKivInterface> parser(factory(2, 0));
    if (!parser) return 1;
    parser->Init(argv[2]);
    vexa::ColorModeList list{vexa::kColorModeListVersion, {}};
    vexa::VexaKivPayload payload{vexa::kVexaKivPayloadVersion, vexa::kColorModeListLen,
                                 vexa::kKivModesList, &list};
    status = parser->GetProperty(&payload);
    std::printf("status %d modes %zu\n", status, list.modes.size());
    for (const vexa::ColorMode& mode : list.modes) {
      std::printf("mode %d %d %d %s\n", mode.gamut, mode.gamma, mode.intent,
                  mode.render_intent_name.c_str());
    }
    parser->DeInit();
  }
  dlclose(library);
  return status == 0 ? 0 : 1;
}
