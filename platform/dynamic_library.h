// A shared library opened at run time. The owner decides when it is closed: nothing is closed
// on destruction, because code of the library must stay mapped until every object it created
// is gone, which only the owner knows.
#ifndef VEXA_PLATFORM_DYNAMIC_LIBRARY_H_
#define VEXA_PLATFORM_DYNAMIC_LIBRARY_H_

#include <string>

namespace vexa {

class DynamicLibrary {
 public:
  DynamicLibrary() = default;
  DynamicLibrary(const DynamicLibrary&) = delete;
  DynamicLibrary& operator=(const DynamicLibrary&) = delete;

  // Opens the library with immediate binding, by the loader's usual search when `name` holds no
  // '/'. False when it cannot be loaded (LastError() says why). Call Close() first to reopen.
  bool Open(const std::string& name);
  // The address of an exported symbol, or null (also when nothing is open).
  void* Symbol(const std::string& name) const;
  // Releases the handle; nothing happens when nothing is open.
  void Close();
  bool is_open() const { return handle_ != nullptr; }

  // The loader's description of the last failure, or an empty string.
  static std::string LastError();

 private:
  void* handle_ = nullptr;
};

}  // namespace vexa

#endif  // VEXA_PLATFORM_DYNAMIC_LIBRARY_H_
