// Builds one panel's example device tree from the readable sources: the factory calibration
// file (version 2, inline tables), the calibration file (version 3, shared "Common" tables) and
// the merge rules, each where the device looks for it, plus the writable data directory into
// which the library writes its merge-version file.
#ifndef VEXA_EXAMPLES_GENERATOR_EXAMPLE_DEVICE_TREE_H_
#define VEXA_EXAMPLES_GENERATOR_EXAMPLE_DEVICE_TREE_H_

#include <filesystem>
#include <string>

#include "examples/generator/recipe_expander.h"

namespace vexa::example {

// Where the device keeps its files and where the library writes its own, below a tree's root.
inline constexpr char kFactoryDir[] = "mnt/vendor/persist/display";
inline constexpr char kVendorDir[] = "vendor/etc/display";
inline constexpr char kDataDir[] = "data/vendor/display";
inline constexpr char kFactoryStem[] = "factory_calib_data";
inline constexpr char kCalibrationStem[] = "vexa_calib_data";
inline constexpr char kMergeRulesStem[] = "vexa_merge_rules";

enum class DeviceFileKind { kModes, kMergeRules };

// Turns an unpacked document into the form the device reads: the panel key in place of "@panel",
// every recipe expanded, then a modes file packed (hex sections) or a rules file given this
// device's merge versions. False, with `error`, when a step refuses the document.
bool PackDeviceDocument(Json::Value& document, DeviceFileKind kind, const std::string& panel,
                        const RecipeExpander& expander, std::string* error);

// Writes `text` to `path`, creating the directories above it.
bool WriteTextFile(const std::filesystem::path& path, const std::string& text, std::string* error);

class ExampleDeviceTree {
 public:
  // `sources` holds panel.json and the unpacked files; the tree is written below `root`.
  ExampleDeviceTree(std::filesystem::path sources, std::filesystem::path root)
      : sources_(std::move(sources)), root_(std::move(root)) {}

  // False, with `error`, when a source is missing or malformed or a file cannot be written.
  bool Build(std::string* error);

  // The panel name from panel.json, once Build has read it.
  const std::string& panel() const { return panel_; }

 private:
  struct DeviceFile {
    const char* device_dir;
    const char* stem;  // the device file is <stem>_<panel>.json, its source <stem>.json
    DeviceFileKind kind;
  };

  bool WriteDeviceFile(const DeviceFile& file, const RecipeExpander& expander,
                       std::string* error) const;

  std::filesystem::path sources_;
  std::filesystem::path root_;
  std::string panel_;
};

}  // namespace vexa::example

#endif  // VEXA_EXAMPLES_GENERATOR_EXAMPLE_DEVICE_TREE_H_
