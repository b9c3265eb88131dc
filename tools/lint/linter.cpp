#include "tools/lint/linter.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <utility>

#include "modes/kiv_modes_manager.h"
#include "platform/device_paths.h"
#include "tools/lint/log_diagnostics.h"
#include "tools/lint/panel_checks.h"
#include "tools/modes_files/library_log_tap.h"

namespace vexa::lint {
namespace {

// Accepts every merge and leaves the merged block as the caller zeroed it: lint judges the files,
// not the algorithm.
class AcceptingAlgo : public VexaKivInterface {
 public:
  int32_t Init(const std::string&) override { return 0; }
  int32_t DeInit() override { return 0; }
  int32_t SetProperty(const VexaKivPayload&) override { return 0; }
  int32_t GetProperty(VexaKivPayload*) override { return 0; }
  int32_t ProcessOps(VexaKivOps, const VexaKivPayload&, VexaKivPayload*) override { return 0; }
};

// Points the library's device paths at `root` for the object's life (empty root: no sysroot).
class ScopedSysroot {
 public:
  explicit ScopedSysroot(const std::string& root) {
    if (const char* saved = std::getenv(kSysrootVariable)) saved_ = saved;
    if (root.empty()) {
      unsetenv(kSysrootVariable);
    } else {
      setenv(kSysrootVariable, root.c_str(), 1);
    }
  }
  ~ScopedSysroot() {
    if (saved_) {
      setenv(kSysrootVariable, saved_->c_str(), 1);
    } else {
      unsetenv(kSysrootVariable);
    }
  }
  ScopedSysroot(const ScopedSysroot&) = delete;
  ScopedSysroot& operator=(const ScopedSysroot&) = delete;

 private:
  std::optional<std::string> saved_;
};

struct FileStem {
  const char* stem;
  PanelFileKind kind;
};
constexpr FileStem kFileStems[] = {
    {kMergeRulesStem, PanelFileKind::kMergeRules},
    {kFactoryStem, PanelFileKind::kFactory},
    {kCalibStem, PanelFileKind::kCalibration},
};

std::string UsedFile(const PanelModeLoader& loader, PanelFileKind kind) {
  for (const PanelFileLookup& lookup : loader.lookups()) {
    if (lookup.kind == kind && lookup.used) return lookup.path;
  }
  return std::string();
}

Diagnostic Finding(Severity severity, const char* check, std::string file, std::string message,
                   std::string consequence) {
  Diagnostic d;
  d.severity = severity;
  d.check = check;
  d.file = std::move(file);
  d.message = std::move(message);
  d.consequence = std::move(consequence);
  return d;
}

void NoteOrigins(const std::shared_ptr<KivModeList>& modes, const std::string& file,
                 ModeOrigin::Kind kind, ModeOrigins* origins) {
  if (!modes) return;
  for (const auto& mode : *modes) (*origins)[mode.get()] = ModeOrigin{file, kind};
}

// What the loader did, looked at as a whole.
class PanelReview {
 public:
  PanelReview(const PanelModeLoader& loader, const KivModesManager& manager, std::string panel)
      : loader_(loader), published_(manager.mode_list()->modes), panel_(std::move(panel)) {
    rules_file_ = UsedFile(loader, PanelFileKind::kMergeRules);
    factory_file_ = UsedFile(loader, PanelFileKind::kFactory);
    calib_file_ = UsedFile(loader, PanelFileKind::kCalibration);
    NoteOrigins(loader.factory_modes(), factory_file_, ModeOrigin::Kind::kFactory, &origins_);
    NoteOrigins(loader.calib_modes(), calib_file_, ModeOrigin::Kind::kCalibration, &origins_);
    for (const auto& mode : published_) {
      if (origins_.count(mode.get()) == 0) {
        origins_[mode.get()] = ModeOrigin{rules_file_, ModeOrigin::Kind::kMerged};
      }
    }
  }

  // Findings about the loaded modes; these build payloads, so they run while the log is recorded.
  void CheckModes(std::vector<Diagnostic>* out) const {
    KivModeList parsed;
    for (const auto* list : {&loader_.factory_modes(), &loader_.calib_modes()}) {
      if (*list) parsed.insert(parsed.end(), (*list)->begin(), (*list)->end());
    }
    CheckDroppedModes(parsed, published_, origins_, out);
    CheckShadowedModes(published_, origins_, out);
    if (loader_.factory_modes()) CheckUnusedTables(factory_file_, *loader_.factory_modes(), out);
    if (loader_.calib_modes()) CheckUnusedTables(calib_file_, *loader_.calib_modes(), out);
  }

  // Findings about the files and merging, given what the log said.
  void CheckFiles(bool whole_tree, std::vector<Diagnostic>* diagnostics) const {
    for (const PanelFileLookup& lookup : loader_.lookups()) {
      if (!lookup.used) CheckSilentlyRefusedFile(lookup.path, MapDevicePath(lookup.path), diagnostics);
    }
    CheckModesFile(factory_file_, loader_.factory_modes(), diagnostics);
    CheckModesFile(calib_file_, loader_.calib_modes(), diagnostics);
    CheckMerging(whole_tree, diagnostics);
    if (whole_tree && published_.empty()) {
      diagnostics->push_back(Finding(Severity::kError, "no-modes", std::string(),
                                     "no mode loads for panel \"" + panel_ + "\"",
                                     "no mode published"));
    }
  }

 private:
  void CheckModesFile(const std::string& file, const std::shared_ptr<KivModeList>& modes,
                      std::vector<Diagnostic>* out) const {
    if (file.empty() || !modes || !modes->empty()) return;
    out->push_back(Finding(Severity::kWarning, "file-without-modes", file,
                           "no mode for panel \"" + panel_ + "\" loads from the file",
                           "the file adds nothing"));
  }

  void CheckMerging(bool whole_tree, std::vector<Diagnostic>* out) const {
    if (rules_file_.empty()) return;
    const auto& rules = loader_.rules();
    if (loader_.merging() == MergingState::kIncompatibleVersions) {
      DescribeVersionRefusal(*rules->front()->version_context, rules_file_, out);
    } else if (loader_.merging() == MergingState::kNoRules) {
      out->push_back(Finding(Severity::kWarning, "rules-empty", rules_file_,
                             "no merge rule for panel \"" + panel_ + "\" loads from the file",
                             kMergingOff));
    } else if (whole_tree && !loader_.CanMerge()) {
      const char* missing = loader_.factory_modes() ? "calibration" : "factory";
      out->push_back(Finding(Severity::kWarning, "merging-without-operands", rules_file_,
                             std::string("no ") + missing + " modes file loads for panel \"" +
                                 panel_ + "\"",
                             kMergingOff));
    }
  }

  const PanelModeLoader& loader_;
  const KivModeList& published_;
  std::string panel_;
  std::string rules_file_, factory_file_, calib_file_;
  ModeOrigins origins_;
};

// Runs `load` on a fresh loader and manager under a verbose log tap and reviews the result.
template <typename Load>
std::vector<Diagnostic> LintLoad(const std::string& panel, bool whole_tree, Load load) {
  KivModesManager manager(panel);
  PanelModeLoader loader(panel);
  std::vector<Diagnostic> view;
  std::vector<LoggedLine> lines;
  {
    tools::LibraryLogTap tap(tools::LibraryLogTap::Capture::kVerbose);
    load(loader, manager);
    PanelReview(loader, manager, panel).CheckModes(&view);
    lines = tap.Take();
  }
  std::vector<Diagnostic> diagnostics = DiagnosticsFromLog(lines);
  PanelReview(loader, manager, panel).CheckFiles(whole_tree, &diagnostics);
  diagnostics.insert(diagnostics.end(), view.begin(), view.end());
  return diagnostics;
}

}  // namespace

bool ParsePanelFileName(const std::string& path, PanelFileKind* kind, std::string* panel) {
  const std::filesystem::path file(path);
  if (file.extension() != ".json") return false;
  const std::string stem = file.stem().string();
  for (const FileStem& entry : kFileStems) {
    const std::string prefix = std::string(entry.stem) + "_";
    if (stem.size() <= prefix.size() || stem.compare(0, prefix.size(), prefix) != 0) continue;
    *kind = entry.kind;
    *panel = stem.substr(prefix.size());
    return true;
  }
  return false;
}

std::vector<Diagnostic> LintDeviceTree(const LintOptions& options) {
  ScopedSysroot sysroot(options.root);
  return LintLoad(options.panel, /*whole_tree=*/true,
                  [](PanelModeLoader& loader, KivModesManager& manager) {
                    loader.LoadFiles(&manager);
                    AcceptingAlgo algo;
                    if (loader.CanMerge()) loader.MergeModes(&algo, &manager);
                  });
}

std::vector<Diagnostic> LintFiles(const LintOptions& options) {
  ScopedSysroot no_sysroot{std::string()};  // the paths are host paths
  std::vector<Diagnostic> diagnostics;
  for (const std::string& path : options.files) {
    PanelFileKind kind = PanelFileKind::kCalibration;
    std::string panel;
    const bool named = ParsePanelFileName(path, &kind, &panel);
    if (!options.panel.empty()) panel = options.panel;
    if (!named || panel.empty()) {
      diagnostics.push_back(Finding(
          Severity::kError, "file-name", path,
          "the file's kind is not known: name it <stem>_<panel>.json with the stem "
          "factory_calib_data, vexa_calib_data or vexa_merge_rules",
          "not linted"));
      continue;
    }
    if (!std::filesystem::exists(path)) {
      diagnostics.push_back(Finding(Severity::kError, "file-missing", path, "no such file",
                                    "not linted"));
      continue;
    }
    std::vector<Diagnostic> found = LintLoad(
        panel, /*whole_tree=*/false, [&](PanelModeLoader& loader, KivModesManager& manager) {
          switch (kind) {
            case PanelFileKind::kMergeRules: loader.LoadRulesFile(path); break;
            case PanelFileKind::kFactory: loader.LoadFactoryFile(path, &manager); break;
            case PanelFileKind::kCalibration: loader.LoadCalibrationFile(path, &manager); break;
          }
        });
    diagnostics.insert(diagnostics.end(), found.begin(), found.end());
  }
  return diagnostics;
}

}  // namespace vexa::lint
