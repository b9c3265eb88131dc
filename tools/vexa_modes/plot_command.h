// `plot`: SVG figures of published modes, drawn from the hardware payloads that the library returns
// for each mode through the render-intent operation, i.e. what the device would program.
#ifndef VEXA_TOOLS_VEXA_MODES_PLOT_COMMAND_H_
#define VEXA_TOOLS_VEXA_MODES_PLOT_COMMAND_H_

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "tools/vexa_modes/kiv_library.h"
#include "tools/vexa_modes/mode_commands.h"
#include "tools/vexa_modes/mode_figures.h"

namespace vexa::tools {

struct PlotOptions {
  std::optional<WantedMode> mode;  // empty: every published mode
  std::string output_dir;
  bool per_figure = false;  // one file per figure instead of one per mode
};

struct PlottedMode {
  ColorMode mode;
  std::vector<ModeFigure> figures;
};

// The figures of each of `modes`; false (with the failure in `err`) when the library refuses the
// render-intent operation for one of them.
bool PlotModes(KivLibrary& library, const std::vector<ColorMode>& modes,
               std::vector<PlottedMode>* plotted, std::ostream& err);

// "standard-g1-t1-i1": a file-name stem for a mode (intent name, gamut, gamma, intent).
std::string ModeFileStem(const ColorMode& mode);
// Mode "standard" (gamut 1, gamma 1, intent 1)
std::string ModeTitle(const ColorMode& mode);

// One SVG holding the figures one above the other.
std::string StackedFigures(const std::string& title, const std::vector<ModeFigure>& figures);

// Writes the files into the output directory and lists them on `out`; an exit status.
int RunPlot(const ToolOptions& options, const PlotOptions& plot, std::ostream& out,
            std::ostream& err);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_PLOT_COMMAND_H_
