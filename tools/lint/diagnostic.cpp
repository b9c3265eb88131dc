#include "tools/lint/diagnostic.h"

namespace vexa::lint {

const char* SeverityWord(Severity severity) {
  switch (severity) {
    case Severity::kNote: return "note";
    case Severity::kWarning: return "warning";
    case Severity::kError: return "error";
  }
  return "";
}

int LintExitStatus(const std::vector<Diagnostic>& diagnostics) {
  int status = 0;
  for (const Diagnostic& d : diagnostics) {
    if (d.severity == Severity::kError) return 2;
    if (d.severity == Severity::kWarning) status = 1;
  }
  return status;
}

}  // namespace vexa::lint
