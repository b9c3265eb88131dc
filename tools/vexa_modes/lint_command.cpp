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

std::vector<Finding> LintFindingsSource::Collect(const std::string& root, const std::string& panel) {
  lint::LintOptions options;
  options.root = root;
  options.panel = panel;
  std::vector<Finding> findings;
  for (const lint::Diagnostic& d : lint::LintDeviceTree(options)) {
    if (d.severity == lint::Severity::kNote) continue;  // a clean panel reports no findings
    findings.push_back(Finding{lint::SeverityWord(d.severity), lint::DiagnosticPlace(d),
                               d.message + " (" + d.consequence + ")"});
  }
  return findings;
}

}  // namespace vexa::tools
