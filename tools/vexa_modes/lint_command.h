// The `lint` command of vexa-modes: runs the lint over a device tree or single files and prints
// the findings as text or JSON.
#ifndef VEXA_TOOLS_VEXA_MODES_LINT_COMMAND_H_
#define VEXA_TOOLS_VEXA_MODES_LINT_COMMAND_H_

#include <ostream>

#include "tools/lint/diagnostic.h"
#include "tools/vexa_modes/findings_source.h"

namespace vexa::tools {

enum class LintFormat { kText, kJson };

// Exit status: 0 clean (notes at most), 1 warnings only, 2 errors.
int RunLint(const lint::LintOptions& options, LintFormat format, std::ostream& out);

// The lint of a device tree as the report's findings: its warnings and errors.
class LintFindingsSource : public FindingsSource {
 public:
  std::vector<Finding> Collect(const std::string& root, const std::string& panel) override;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_LINT_COMMAND_H_
