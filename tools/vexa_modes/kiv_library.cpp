#include "tools/vexa_modes/kiv_library.h"

#include <dlfcn.h>

namespace vexa::tools {
namespace {

constexpr char kFactorySymbol[] = "GetVexaKivInterface";
constexpr int32_t kInterfaceMajor = 2;
constexpr int32_t kInterfaceMinor = 0;

using FactoryFunction = VexaKivInterface* (*)(int32_t, int32_t);

std::string DlError() {
  const char* text = dlerror();
  return text != nullptr ? text : "unknown error";
}

}  // namespace

KivLibrary::~KivLibrary() {
  if (interface_ != nullptr) {
    if (initialised_) interface_->DeInit();
    delete interface_;
  }
  // Unloaded last: the interface's code lives in the library.
  if (handle_ != nullptr) dlclose(handle_);
}

bool KivLibrary::Load(const std::string& path) {
  handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    error_ = "cannot load the library: " + DlError();
    return false;
  }
  dlerror();
  void* symbol = dlsym(handle_, kFactorySymbol);
  if (symbol == nullptr) {
    error_ = std::string("no ") + kFactorySymbol + " in the library: " + DlError();
    return false;
  }
  const auto factory = reinterpret_cast<FactoryFunction>(symbol);
  interface_ = factory(kInterfaceMajor, kInterfaceMinor);
  if (interface_ == nullptr) {
    error_ = std::string(kFactorySymbol) + "(2, 0) of " + path + " returned null";
    return false;
  }
  return true;
}

bool KivLibrary::Init(const std::string& panel) {
  const int32_t status = interface_->Init(panel);
  if (status != 0) {
    error_ = "Init(\"" + panel + "\") returned " + std::to_string(status);
    return false;
  }
  initialised_ = true;
  return true;
}

int32_t KivLibrary::GetModes(ColorModeList* modes) {
  modes->version = kColorModeListVersion;
  VexaKivPayload envelope{kVexaKivPayloadVersion, kColorModeListLen, kKivModesList, modes};
  return interface_->GetProperty(&envelope);
}

int32_t KivLibrary::RunModeOp(VexaKivOps op, const ModeRenderInputParams& wanted,
                              HwConfigOutputParams* out) {
  // The interface takes a non-const record pointer in its envelope; the ops only read the input.
  ModeRenderInputParams input = wanted;
  input.version = kModeRenderInputParamsVersion;
  out->version = kHwConfigOutputParamsVersion;
  const VexaKivPayload in_envelope{kVexaKivPayloadVersion, kModeRenderInputParamsLen, 0, &input};
  VexaKivPayload out_envelope{kVexaKivPayloadVersion, kHwConfigOutputParamsLen, 0, out};
  return interface_->ProcessOps(op, in_envelope, &out_envelope);
}

}  // namespace vexa::tools
