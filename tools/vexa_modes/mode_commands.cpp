#include "tools/vexa_modes/mode_commands.h"

#include <cstdlib>
#include <filesystem>

#include "platform/device_paths.h"
#include "tools/vexa_modes/exit_codes.h"
#include "tools/vexa_modes/kiv_library.h"
#include "tools/vexa_modes/mode_table.h"
#include "tools/vexa_modes/payload_printer.h"
#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr char kLibraryFileName[] = "libvexa-json-mode-parser.so";
// The environment variable that stands for "vendor.display.kivloglevel" on Linux hosts.
constexpr char kLogLevelVariable[] = "VENDOR_DISPLAY_KIVLOGLEVEL";
constexpr char kErrorPrefix[] = "vexa-modes: ";

// The library reads both variables when it is loaded or when it opens a device path, so they
// are set before dlopen.
void ExportEnvironment(const ToolOptions& options) {
  if (!options.root.empty()) setenv(kSysrootVariable, options.root.c_str(), 1);
  if (options.log_level) setenv(kLogLevelVariable, std::to_string(*options.log_level).c_str(), 1);
}

}  // namespace

int LoadModes(KivLibrary& library, const ToolOptions& options, ColorModeList* modes,
              std::ostream& err) {
  ExportEnvironment(options);
  if (!library.Load(options.library)) {
    err << kErrorPrefix << library.error() << '\n';
    return kExitLibraryNotLoadable;
  }
  if (!library.Init(options.panel)) {
    err << kErrorPrefix << library.error() << '\n';
    return kExitFailure;
  }
  const int32_t status = library.GetModes(modes);
  if (status != 0) {
    err << kErrorPrefix << "the modes list property returned " << status << '\n';
    return kExitFailure;
  }
  return kExitOk;
}

std::string ModeText(const WantedMode& wanted) {
  return Format("gamut %d, gamma %d, intent %d", wanted.gamut, wanted.gamma, wanted.intent);
}

std::string ModeText(const ColorMode& mode) {
  return ModeText(WantedMode{mode.gamut, mode.gamma, mode.intent});
}

namespace {

// Runs one mode op and prints its payloads under `title`.
int ShowModeOp(KivLibrary& library, VexaKivOps op, const char* title,
               const ModeRenderInputParams& input, std::ostream& out, std::ostream& err) {
  HwConfigOutputParams output{};
  const int32_t status = library.RunModeOp(op, input, &output);
  if (status != 0) {
    err << kErrorPrefix << title << " operation returned " << status << " for "
        << ModeText(WantedMode{input.gamut, input.gamma, input.intent}) << '\n';
    return kExitFailure;
  }
  out << title << " (" << output.payloads.size() << "):\n";
  for (const HwConfigPayload& payload : output.payloads) PrintPayload(out, payload);
  return kExitOk;
}

}  // namespace

ModeRenderInputParams RenderInputOf(const ColorMode& mode) {
  ModeRenderInputParams input{};
  input.gamut = mode.gamut;
  input.gamma = mode.gamma;
  input.intent = mode.intent;
  input.hw_assets = mode.hw_assets;
  return input;
}

const ColorMode* FindMode(const std::vector<ColorMode>& modes, const WantedMode& wanted) {
  for (const ColorMode& mode : modes) {
    if (mode.gamut == wanted.gamut && mode.gamma == wanted.gamma && mode.intent == wanted.intent) {
      return &mode;
    }
  }
  return nullptr;
}

std::string DefaultLibraryPath(const std::string& executable_path) {
  const std::filesystem::path bin_dir = std::filesystem::path(executable_path).parent_path();
  return (bin_dir / ".." / "lib" / kLibraryFileName).lexically_normal().string();
}

int RunList(const ToolOptions& options, std::ostream& out, std::ostream& err) {
  KivLibrary library;  // outlives every record it hands out
  ColorModeList modes{};
  const int status = LoadModes(library, options, &modes, err);
  if (status != kExitOk) return status;
  out << "Panel " << options.panel << ": " << modes.modes.size() << " modes\n";
  PrintModeTable(out, modes.modes);
  return kExitOk;
}

int RunShow(const ToolOptions& options, const WantedMode& wanted, std::ostream& out,
            std::ostream& err) {
  KivLibrary library;  // outlives every record it hands out
  ColorModeList modes{};
  int status = LoadModes(library, options, &modes, err);
  if (status != kExitOk) return status;
  const ColorMode* mode = FindMode(modes.modes, wanted);
  if (mode == nullptr) {
    err << kErrorPrefix << "panel " << options.panel << " has no mode with " << ModeText(wanted)
        << " (the list command shows the published modes)\n";
    return kExitNoSuchMode;
  }
  out << "Mode " << ModeText(wanted) << ", intent name \"" << mode->render_intent_name << "\"\n";
  const ModeRenderInputParams input = RenderInputOf(*mode);
  status = ShowModeOp(library, kKivModeRenderIntent, "Hardware assets", input, out, err);
  if (status != kExitOk) return status;
  return ShowModeOp(library, kKivModeSwAssets, "Software assets", input, out, err);
}

}  // namespace vexa::tools
