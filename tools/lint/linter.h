// `vexa-modes lint`: loads a panel's files through the library's own start-up code, as a device
// would, and reports every problem as a diagnostic: each error and refusal that the library
// logs while loading, and the findings that need the whole loaded panel.
//
// Merges run with a stand-in for the colour-algorithm library that accepts every merge, so that
// a merge error names a missing operand or block, never the host's lack of the library.
#ifndef VEXA_TOOLS_LINT_LINTER_H_
#define VEXA_TOOLS_LINT_LINTER_H_

#include <string>
#include <vector>

#include "parser/panel_mode_loader.h"
#include "tools/lint/diagnostic.h"

namespace vexa::lint {

// The panel's files under `options.root` (VEXA_SYSROOT while linting; unchanged when empty).
std::vector<Diagnostic> LintDeviceTree(const LintOptions& options);

// Each of `options.files` alone, read as the device reads a file of its kind; the kind and,
// unless `options.panel` is set, the panel come from the name "<stem>_<panel>.json".
std::vector<Diagnostic> LintFiles(const LintOptions& options);

// The kind and panel of a file named like a device file; false for any other name.
bool ParsePanelFileName(const std::string& path, PanelFileKind* kind, std::string* panel);

}  // namespace vexa::lint

#endif  // VEXA_TOOLS_LINT_LINTER_H_
