#include "fuzz/throw_guard.h"

#include <dlfcn.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <typeinfo>

namespace vexa::fuzz {
namespace {

std::atomic<size_t> g_throws{0};
std::atomic<bool> g_abort_on_throw{false};

using CxaThrow = void (*)(void*, std::type_info*, void (*)(void*));

}  // namespace

size_t ThrowCount() { return g_throws.load(); }
void SetAbortOnThrow(bool abort_on_throw) { g_abort_on_throw.store(abort_on_throw); }

}  // namespace vexa::fuzz

// The executable's definition takes precedence over the C++ runtime's for every throw made
// through the dynamic linker (jsoncpp's and the standard library's included).
extern "C" [[noreturn]] void __cxa_throw(void* object, std::type_info* type, void (*destructor)(void*)) {
  vexa::fuzz::g_throws.fetch_add(1);
  if (vexa::fuzz::g_abort_on_throw.load()) {
    std::fprintf(stderr, "C++ exception thrown: %s\n", type != nullptr ? type->name() : "?");
    std::abort();
  }
  static auto real = reinterpret_cast<vexa::fuzz::CxaThrow>(dlsym(RTLD_NEXT, "__cxa_throw"));
  real(object, type, destructor);
  std::abort();  // not reached
}
