// One finding of `vexa-modes lint`: what is wrong, where, and what the device does about it.
#ifndef VEXA_TOOLS_LINT_DIAGNOSTIC_H_
#define VEXA_TOOLS_LINT_DIAGNOSTIC_H_

#include <string>
#include <vector>

namespace vexa::lint {

// Notes never change the exit status; warnings give 1, errors 2.
enum class Severity { kNote, kWarning, kError };

struct Diagnostic {
  Severity severity = Severity::kError;
  std::string check;        // short stable name of the finding, e.g. "mode-shadowed"
  std::string file;         // device path (tree) or the path given (single file)
  std::string mode;         // mode or merge-rule name
  std::string section;      // asset section ("PostBlendGC") or "Common" table group
  std::string member;       // member, table or key name
  std::string message;      // what is wrong
  std::string consequence;  // what the device does about it
};

const char* SeverityWord(Severity severity);

// What to lint: a device tree (root and panel) or single files (panel taken from their names
// when not given).
struct LintOptions {
  std::string root;
  std::string panel;
  std::vector<std::string> files;
};

// Exit status for a set of findings: 0 none above notes, 1 warnings only, 2 any error.
int LintExitStatus(const std::vector<Diagnostic>& diagnostics);

}  // namespace vexa::lint

#endif  // VEXA_TOOLS_LINT_DIAGNOSTIC_H_
