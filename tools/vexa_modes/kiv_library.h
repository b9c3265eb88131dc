// The parser library as the display service sees it: a shared object opened with dlopen, its
// factory GetVexaKivInterface(2, 0), and one interface object driven through VexaKivPayload
// envelopes. Only the public header is used here, so the tool exercises exactly the boundary
// that the service does.
//
// Payload records handed out by the library own memory whose deleters live in the library's
// code: every record obtained through this object must be destroyed before the object is.
#ifndef VEXA_TOOLS_VEXA_MODES_KIV_LIBRARY_H_
#define VEXA_TOOLS_VEXA_MODES_KIV_LIBRARY_H_

#include <cstdint>
#include <string>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::tools {

class KivLibrary {
 public:
  KivLibrary() = default;
  ~KivLibrary();
  KivLibrary(const KivLibrary&) = delete;
  KivLibrary& operator=(const KivLibrary&) = delete;

  // Opens the library and creates the interface object. False (with error()) when the file
  // cannot be loaded, lacks the factory, or the factory refuses version 2.0.
  bool Load(const std::string& path);

  // Init(panel); false (with error()) on a non-zero status.
  bool Init(const std::string& panel);

  // The published modes (kKivModesList), appended to `modes`; the library's status.
  int32_t GetModes(ColorModeList* modes);

  // Runs kKivModeRenderIntent or kKivModeSwAssets for the wanted mode; the library's status.
  int32_t RunModeOp(VexaKivOps op, const ModeRenderInputParams& wanted, HwConfigOutputParams* out);

  const std::string& error() const { return error_; }

 private:
  void* handle_ = nullptr;
  VexaKivInterface* interface_ = nullptr;
  bool initialised_ = false;
  std::string error_;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_KIV_LIBRARY_H_
