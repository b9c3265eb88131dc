// Findings that only the whole loaded panel shows: modes dropped as duplicates, modes that no
// request can select, shared tables that no mode uses, rule versions the device refuses, and
// files that the search skipped without a word.
#ifndef VEXA_TOOLS_LINT_PANEL_CHECKS_H_
#define VEXA_TOOLS_LINT_PANEL_CHECKS_H_

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "formats/merge_caps.h"
#include "modes/kiv_mode.h"
#include "modes/kiv_modes_manager.h"
#include "tools/lint/diagnostic.h"

namespace vexa::lint {

// Where a loaded mode came from.
struct ModeOrigin {
  std::string file;  // modes file, or the rules file for a merged mode
  enum class Kind { kFactory, kCalibration, kMerged } kind = Kind::kFactory;
};
using ModeOrigins = std::map<const KivMode*, ModeOrigin>;

// Parsed modes that are not in the manager's final list, each named with the mode that kept its
// place (same primaries, transfer, intent, white point, dynamic range and merge id).
void CheckDroppedModes(const KivModeList& parsed, const KivModeList& published,
                       const ModeOrigins& origins, std::vector<Diagnostic>* out);

// Published modes that an earlier published mode answers for every request that would select
// them.
void CheckShadowedModes(const KivModeList& published, const ModeOrigins& origins,
                        std::vector<Diagnostic>* out);

// Tables of a modes file's "Common" that no asset of the file asked for.
void CheckUnusedTables(const std::string& file, const KivModeList& modes,
                       std::vector<Diagnostic>* out);

// Names the first key whose version the device's merging code does not support, in the
// diagnostics of the refused rules file.
void DescribeVersionRefusal(const KivModeMergeVersionContext& context, const std::string& file,
                            std::vector<Diagnostic>* diagnostics);

// A file that was there but refused without an error line of its own (empty, or not JSON):
// one error naming the reason.
void CheckSilentlyRefusedFile(const std::string& file, const std::string& host_path,
                              std::vector<Diagnostic>* diagnostics);

}  // namespace vexa::lint

#endif  // VEXA_TOOLS_LINT_PANEL_CHECKS_H_
