// The file half of start-up: finds the panel's merge rules, factory modes and calibration modes
// in the device's search directories, decides whether merging may run, fills a modes manager and
// merges modes rule by rule. The parser's Init drives it; host tools drive the same object to see
// what a device would load, step by step.
//
// While a file is read, a context frame (JsonScope::kFile, the path, not shown in log lines)
// is open; while a rule is merged, a frame of the rule (JsonScope::kRule, not shown either).
#ifndef VEXA_PARSER_PANEL_MODE_LOADER_H_
#define VEXA_PARSER_PANEL_MODE_LOADER_H_

#include <memory>
#include <string>
#include <vector>

#include "formats/merge_rule.h"
#include "modes/kiv_mode.h"
#include "modes/kiv_modes_manager.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa {

// Device directories.
constexpr char kDataDir[] = "/data/vendor/display";
constexpr char kPersistDir[] = "/mnt/vendor/persist/display";
constexpr char kVendorDir[] = "/vendor/etc/display";
constexpr char kOemDir[] = "/oem/etc";
constexpr char kOdmDir[] = "/odm/etc/display";
// Calibration and merge-rules files are looked for in this order; the first that parses wins.
constexpr const char* kSearchDirs[] = {kDataDir, kVendorDir, kOemDir, kOdmDir};

// File stems; panel files are "<dir>/<stem>_<panel>.json".
constexpr char kCalibStem[] = "vexa_calib_data";
constexpr char kFactoryStem[] = "factory_calib_data";
constexpr char kMergeRulesStem[] = "vexa_merge_rules";
constexpr char kMergeVersionStem[] = "vexa_mode_merge_version";
constexpr char kDebugModesStem[] = "vexa_debug_modes_list";

// The three kinds of panel file, in the order Init reads them.
enum class PanelFileKind { kMergeRules, kFactory, kCalibration };

// A file that exists in a search directory, and what Init made of it.
struct PanelFileLookup {
  PanelFileKind kind = PanelFileKind::kCalibration;
  std::string path;
  bool used = false;  // false: empty, unreadable or refused by its parser, so the search went on
};

// Why merging is off (kOn when it may run).
enum class MergingState { kOn, kNoRules, kIncompatibleVersions };

class PanelModeLoader {
 public:
  explicit PanelModeLoader(std::string panel_name);

  // The file path template of Init: "<dir>/<stem>_<panel>.json".
  static std::string PanelFilePath(const char* dir, const char* stem, const std::string& panel);
  // "<dir>/<stem>.json".
  static std::string DeviceFilePath(const char* dir, const char* stem);

  // Reads the rules, the factory modes and the calibration modes from the search directories,
  // and adds the modes to `manager` as Init does (factory replacing, calibration not).
  void LoadFiles(KivModesManager* manager);

  // The steps of LoadFiles for one given file each; false when the file is missing, empty or
  // refused. Rules decide merging; factory modes become the default when merging is off, so
  // the rules come first.
  bool LoadRulesFile(const std::string& path);
  bool LoadFactoryFile(const std::string& path, KivModesManager* manager);
  bool LoadCalibrationFile(const std::string& path, KivModesManager* manager);
  // True when merging is on and both mode files were found.
  bool CanMerge() const;
  // Merges every rule with the algorithm interface (may be null) and adds each merged mode.
  void MergeModes(VexaKivInterface* algo, KivModesManager* manager);

  const std::vector<PanelFileLookup>& lookups() const { return lookups_; }
  MergingState merging() const { return merging_; }
  const std::shared_ptr<KivModeMergeDefList>& rules() const { return rules_; }
  const std::shared_ptr<KivModeList>& factory_modes() const { return factory_modes_; }
  const std::shared_ptr<KivModeList>& calib_modes() const { return calib_modes_; }

 private:
  bool ParseModesFile(PanelFileKind kind, const std::string& path,
                      std::shared_ptr<KivModeList>* out);
  bool ParseMergeRulesFile(const std::string& path, std::shared_ptr<KivModeMergeDefList>* out);
  MergingState DecideMerging() const;
  // Notes an existing file and whether it was used.
  void Note(PanelFileKind kind, const std::string& path, bool used);

  std::string panel_name_;
  std::string rules_path_;
  std::vector<PanelFileLookup> lookups_;
  MergingState merging_ = MergingState::kNoRules;
  std::shared_ptr<KivModeMergeDefList> rules_;
  std::shared_ptr<KivModeList> factory_modes_;
  std::shared_ptr<KivModeList> calib_modes_;
};

}  // namespace vexa

#endif  // VEXA_PARSER_PANEL_MODE_LOADER_H_
