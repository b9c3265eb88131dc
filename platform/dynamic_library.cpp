#include "platform/dynamic_library.h"

#include <dlfcn.h>

namespace vexa {

bool DynamicLibrary::Open(const std::string& name) {
  if (handle_ != nullptr) return false;
  handle_ = dlopen(name.c_str(), RTLD_NOW);
  return handle_ != nullptr;
}

void* DynamicLibrary::Symbol(const std::string& name) const {
  if (handle_ == nullptr) return nullptr;
  return dlsym(handle_, name.c_str());
}

void DynamicLibrary::Close() {
  if (handle_ == nullptr) return;
  dlclose(handle_);
  handle_ = nullptr;
}

std::string DynamicLibrary::LastError() {
  const char* error = dlerror();
  return error != nullptr ? std::string(error) : std::string();
}

}  // namespace vexa
