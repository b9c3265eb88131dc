// The two forms of lint's findings: readable text, and a JSON document for scripts.
#ifndef VEXA_TOOLS_LINT_LINT_OUTPUT_H_
#define VEXA_TOOLS_LINT_LINT_OUTPUT_H_

#include <json/json.h>

#include <ostream>
#include <string>
#include <vector>

#include "tools/lint/diagnostic.h"

namespace vexa::lint {

// Where a finding stands: the file, then mode "x", section "y", member "z" as far as known.
std::string DiagnosticPlace(const Diagnostic& diagnostic);

// One block per finding, then a count line.
void WriteLintText(const std::vector<Diagnostic>& diagnostics, std::ostream& out);

// {"diagnostics": [{"severity", "check", "file", "mode", "section", "member", "message",
//   "consequence"}...], "errors": n, "warnings": n, "notes": n}
Json::Value LintJson(const std::vector<Diagnostic>& diagnostics);
void WriteLintJson(const std::vector<Diagnostic>& diagnostics, std::ostream& out);

}  // namespace vexa::lint

#endif  // VEXA_TOOLS_LINT_LINT_OUTPUT_H_
