// The published colour modes as a readable table, one row per mode in the library's order.
#ifndef VEXA_TOOLS_VEXA_MODES_MODE_TABLE_H_
#define VEXA_TOOLS_VEXA_MODES_MODE_TABLE_H_

#include <ostream>
#include <vector>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::tools {

// Columns: index, gamut, gamma, intent, intent name, hardware asset names.
void PrintModeTable(std::ostream& out, const std::vector<ColorMode>& modes);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_MODE_TABLE_H_
