// The figures of one colour mode, drawn from the hardware payloads the library hands out for it:
// the GC and IGC curves per channel, the gamut table's grey axis and six primary and secondary
// ramps, and a heat map of how far the gamut table moves each grid point.
#ifndef VEXA_TOOLS_VEXA_MODES_MODE_FIGURES_H_
#define VEXA_TOOLS_VEXA_MODES_MODE_FIGURES_H_

#include <string>
#include <vector>

#include "tools/vexa_modes/svg_figure.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::tools {

struct ModeFigure {
  std::string kind;  // "gc", "igc", "gamut-ramps", "gamut-shift": part of the figure's file name
  SvgFigure figure;
};

// The figures of the payloads in `payloads`, in the order above; a block the mode lacks (or
// whose record has an unexpected length) gives no figure. `mode_title` heads every figure.
std::vector<ModeFigure> ModeFigures(const std::string& mode_title,
                                    const std::vector<HwConfigPayload>& payloads);

// 12-bit input level of gamut grid index k (0..16): steps of 256, the last point 4095.
uint32_t GamutGridLevel(uint32_t k);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_MODE_FIGURES_H_
