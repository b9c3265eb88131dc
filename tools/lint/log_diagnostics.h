// Turns the library's recorded log lines into diagnostics. Every error and warning line becomes
// one; so do the info lines that report a refusal. Info lines that only explain a later line
// (a table name not found, an operand found) are folded into it, and a line that repeats what an
// earlier one said is dropped. What each kind of line costs on the device is kept in one table.
#ifndef VEXA_TOOLS_LINT_LOG_DIAGNOSTICS_H_
#define VEXA_TOOLS_LINT_LOG_DIAGNOSTICS_H_

#include <vector>

#include "tools/lint/diagnostic.h"
#include "tools/modes_files/library_log_tap.h"

namespace vexa::lint {

using tools::LoggedLine;

std::vector<Diagnostic> DiagnosticsFromLog(const std::vector<LoggedLine>& lines);

// Check names that other findings refer to.
inline constexpr char kCheckWrongType[] = "wrong-type";
inline constexpr char kCheckMergeVersions[] = "merge-versions";
inline constexpr char kCheckRuleOperand[] = "rule-operand-missing";
inline constexpr char kCheckLibraryError[] = "library-error";

// Consequence words shared with the whole-view findings.
inline constexpr char kFileIgnored[] = "file ignored";
inline constexpr char kMergingOff[] = "merging off: no merged mode is made";

}  // namespace vexa::lint

#endif  // VEXA_TOOLS_LINT_LOG_DIAGNOSTICS_H_
