// A client of the installed library: links it, initialises a parser on a device without files,
// lists its modes, then loads the installed algorithm library by name and initialises it.
// Prints "parser <status> modes <count>" and "algo <status>".
#include <dlfcn.h>

#include <cstdio>

#include "vexa/vexa_kiv_interface.h"

int main() {
  vexa::VexaKivInterface* parser = GetVexaKivInterface(2, 0);
  if (parser == nullptr) return 2;
  parser->Init("consumer_panel");
  vexa::ColorModeList list{vexa::kColorModeListVersion, {}};
  vexa::VexaKivPayload payload{vexa::kVexaKivPayloadVersion, vexa::kColorModeListLen,
                               vexa::kKivModesList, &list};
  std::printf("parser %d modes %zu\n", parser->GetProperty(&payload), list.modes.size());
  parser->DeInit();
  delete parser;

  void* library = dlopen("libvexa-algo.so", RTLD_NOW | RTLD_LOCAL);
  auto factory = reinterpret_cast<decltype(&GetVexaAlgoInterface)>(
      library ? dlsym(library, "GetVexaAlgoInterface") : nullptr);
  vexa::VexaKivInterface* algo = factory ? factory(2, 0) : nullptr;
  if (algo == nullptr) return 3;
  std::printf("algo %d\n", algo->Init("consumer_panel"));
  delete algo;
  dlclose(library);
  return 0;
}
