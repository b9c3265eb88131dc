#include "parser/panel_mode_loader.h"

#include <cstdio>
#include <utility>

#include "formats/file_utils.h"
#include "formats/json_access.h"
#include "formats/json_parser.h"
#include "formats/merge_caps.h"
#include "platform/log.h"

namespace vexa {
namespace {

// Start-up lines carry the parser's label and Init's name, whichever helper writes them.
constexpr char kLogLabel[] = "VexaJsonModeParser";
constexpr char kInitFunction[] = "Init";

// Paths are formatted into fixed buffers; a longer path is cut.
constexpr size_t kPathBufferSize = 256;

const char* DescrName(const std::shared_ptr<KivModeDescr>& descr) {
  return descr ? descr->name.c_str() : "";
}

}  // namespace

PanelModeLoader::PanelModeLoader(std::string panel_name) : panel_name_(std::move(panel_name)) {}

std::string PanelModeLoader::PanelFilePath(const char* dir, const char* stem,
                                           const std::string& panel) {
  char path[kPathBufferSize];
  std::snprintf(path, sizeof(path), "%s/%s_%s.json", dir, stem, panel.c_str());
  return path;
}

std::string PanelModeLoader::DeviceFilePath(const char* dir, const char* stem) {
  char path[kPathBufferSize];
  std::snprintf(path, sizeof(path), "%s/%s.json", dir, stem);
  return path;
}

void PanelModeLoader::LoadFiles(KivModesManager* manager) {
  for (const char* dir : kSearchDirs) {
    if (LoadRulesFile(PanelFilePath(dir, kMergeRulesStem, panel_name_))) break;
  }
  LoadFactoryFile(PanelFilePath(kPersistDir, kFactoryStem, panel_name_), manager);
  for (const char* dir : kSearchDirs) {
    if (LoadCalibrationFile(PanelFilePath(dir, kCalibStem, panel_name_), manager)) break;
  }
}

bool PanelModeLoader::LoadRulesFile(const std::string& path) {
  ScopedJsonContext where(JsonScope::kFile, path, std::string());
  const bool loaded = ParseMergeRulesFile(path, &rules_);
  merging_ = DecideMerging();
  if (loaded) rules_path_ = path;
  return loaded;
}

bool PanelModeLoader::LoadFactoryFile(const std::string& path, KivModesManager* manager) {
  if (!ParseModesFile(PanelFileKind::kFactory, path, &factory_modes_)) return false;
  // With merging the factory-floor mode is an operand only; without, it is the default.
  if (merging_ != MergingState::kOn) manager->SetFactoryFloorModeAsDefault(*factory_modes_);
  for (const auto& mode : *factory_modes_) manager->AddModeToList(mode, true);
  return true;
}

bool PanelModeLoader::LoadCalibrationFile(const std::string& path, KivModesManager* manager) {
  if (!ParseModesFile(PanelFileKind::kCalibration, path, &calib_modes_)) return false;
  for (const auto& mode : *calib_modes_) manager->AddModeToList(mode, false);
  return true;
}

bool PanelModeLoader::CanMerge() const {
  return merging_ == MergingState::kOn && factory_modes_ && calib_modes_;
}

void PanelModeLoader::MergeModes(VexaKivInterface* algo, KivModesManager* manager) {
  ScopedJsonContext file(JsonScope::kFile, rules_path_, std::string());
  for (const std::shared_ptr<KivModeMergeDef>& rule : *rules_) {
    if (!rule) continue;
    const std::string name = DescrName(rule->descr);
    ScopedJsonContext where(JsonScope::kRule, name, std::string());
    std::shared_ptr<KivMode> merged =
        manager->MergeModesFromList(algo, rule, *factory_modes_, *calib_modes_);
    if (merged) {
      VKR_LOGI_AT(2, kLogLabel, kInitFunction, __LINE__, "Created %s merged mode from %s and %s",
                  DescrName(merged->descr()), rule->left_mode_name.c_str(),
                  rule->right_mode_name.c_str());
      manager->AddModeToList(merged, true);
    } else {
      VKR_LOGE_AT(kLogLabel, kInitFunction, __LINE__, "Failed to create %s merge from %s and %s",
                  name.c_str(), rule->left_mode_name.c_str(), rule->right_mode_name.c_str());
    }
  }
}

bool PanelModeLoader::ParseModesFile(PanelFileKind kind, const std::string& path,
                                     std::shared_ptr<KivModeList>* out) {
  if (!Exists(path)) return false;
  ScopedJsonContext where(JsonScope::kFile, path, std::string());
  const ByteBuffer text = ReadFileBytes(path);
  *out = text.size > 0 ? json_parser::parse_modes(text.view(), panel_name_) : nullptr;
  Note(kind, path, *out != nullptr);
  return *out != nullptr;
}

bool PanelModeLoader::ParseMergeRulesFile(const std::string& path,
                                          std::shared_ptr<KivModeMergeDefList>* out) {
  if (!Exists(path)) return false;
  const ByteBuffer text = ReadFileBytes(path);
  *out = text.size > 0 ? json_parser::parse_mode_merge_rules(text.view(), panel_name_) : nullptr;
  Note(PanelFileKind::kMergeRules, path, *out != nullptr);
  return *out != nullptr;
}

MergingState PanelModeLoader::DecideMerging() const {
  // An empty rule list counts as no rule list.
  if (!rules_ || rules_->empty() || rules_->front() == nullptr) return MergingState::kNoRules;
  // Every rule of a file carries the same versions.
  if (!MergeVersionCheck(rules_->front()->version_context)) {
    VKR_LOGE_AT(kLogLabel, kInitFunction, __LINE__,
                "Error: incompatible versions of the vexa merge rules and device merge mode code.");
    return MergingState::kIncompatibleVersions;
  }
  return MergingState::kOn;
}

void PanelModeLoader::Note(PanelFileKind kind, const std::string& path, bool used) {
  lookups_.push_back(PanelFileLookup{kind, path, used});
}

}  // namespace vexa
