#include "tools/vexa_modes/lint_command.h"

#include <vector>

#include "tools/lint/linter.h"
#include "tools/lint/lint_output.h"

namespace vexa::tools {

int RunLint(const lint::LintOptions& options, LintFormat format, std::ostream& out) {
  const std::vector<lint::Diagnostic> diagnostics =
      options.files.empty() ? lint::LintDeviceTree(options) : lint::LintFiles(options);
  if (format == LintFormat::kJson) {
    lint::WriteLintJson(diagnostics, out);
  } else {
    lint::WriteLintText(diagnostics, out);
  }
  return lint::LintExitStatus(diagnostics);
}

}  // namespace vexa::tools
