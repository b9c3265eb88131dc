// Decodes a HwConfigPayload by its name and prints the record's key fields: enable, table
// lengths with their first, middle and last entries, a few gamut grid points, the PCC
// coefficients, the dither, DE and PA fields, and the blob texts.
#ifndef VEXA_TOOLS_VEXA_MODES_PAYLOAD_PRINTER_H_
#define VEXA_TOOLS_VEXA_MODES_PAYLOAD_PRINTER_H_

#include <ostream>

#include "vexa/vexa_kiv_interface.h"

namespace vexa::tools {

void PrintPayload(std::ostream& out, const HwConfigPayload& payload);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_PAYLOAD_PRINTER_H_
