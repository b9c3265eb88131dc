// `report`: the panel report page (report_page.h), gathered through the library as the display
// service sees it, plus the panel's merge rules as the library reads them.
#ifndef VEXA_TOOLS_VEXA_MODES_REPORT_COMMAND_H_
#define VEXA_TOOLS_VEXA_MODES_REPORT_COMMAND_H_

#include <ostream>
#include <string>

#include "tools/vexa_modes/findings_source.h"
#include "tools/vexa_modes/mode_commands.h"

namespace vexa::tools {

// Writes the page to `output` (empty: `out`); `findings` may be null (no checker). An exit status.
int RunReport(const ToolOptions& options, const std::string& output, FindingsSource* findings,
              std::ostream& out, std::ostream& err);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_REPORT_COMMAND_H_
