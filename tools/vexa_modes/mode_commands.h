// The tool's two commands over a loaded library: `list` prints the published modes, `show` runs
// the render-intent and software-asset operations for one mode and decodes their payloads.
#ifndef VEXA_TOOLS_VEXA_MODES_MODE_COMMANDS_H_
#define VEXA_TOOLS_VEXA_MODES_MODE_COMMANDS_H_

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::tools {

struct ToolOptions {
  std::string library;                // path of libvexa-json-mode-parser.so
  std::string root;                   // device tree exported as VEXA_SYSROOT; empty: unchanged
  std::string panel;                  // panel name handed to Init
  std::optional<uint32_t> log_level;  // exported as the log-level property; empty: unchanged
};

struct WantedMode {
  int32_t gamut = 0;
  int32_t gamma = 0;
  int32_t intent = 0;
};

class KivLibrary;

// Loads the library, initialises it for the panel and appends the modes it publishes to `modes`;
// an exit status of exit_codes.h, with the failure written to `err`.
int LoadModes(KivLibrary& library, const ToolOptions& options, ColorModeList* modes,
              std::ostream& err);

// Both return an exit status of exit_codes.h; results go to `out`, failures to `err`.
int RunList(const ToolOptions& options, std::ostream& out, std::ostream& err);
int RunShow(const ToolOptions& options, const WantedMode& wanted, std::ostream& out,
            std::ostream& err);

// "gamut 1, gamma 1, intent 1".
std::string ModeText(const WantedMode& wanted);
std::string ModeText(const ColorMode& mode);

// The render-intent request for a published mode, as the display service would make it.
ModeRenderInputParams RenderInputOf(const ColorMode& mode);

// The first published mode with the wanted gamut, gamma and intent, or null.
const ColorMode* FindMode(const std::vector<ColorMode>& modes, const WantedMode& wanted);

// The library beside the tool's installation: <exe dir>/../lib/libvexa-json-mode-parser.so.
std::string DefaultLibraryPath(const std::string& executable_path);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_MODE_COMMANDS_H_
