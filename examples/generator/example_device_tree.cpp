#include "examples/generator/example_device_tree.h"

#include <fstream>
#include <optional>
#include <sstream>
#include <system_error>

#include "examples/generator/device_file_edits.h"
#include "examples/generator/generator_words.h"
#include "formats/json_access.h"
#include "formats/json_text.h"
#include "tools/modes_files/modes_file_packer.h"

namespace vexa::example {
namespace {

constexpr char kPanelSource[] = "panel.json";
constexpr char kJsonSuffix[] = ".json";
// Where the device keeps its files and where the library writes its own.
constexpr char kFactoryDir[] = "mnt/vendor/persist/display";
constexpr char kVendorDir[] = "vendor/etc/display";
constexpr char kDataDir[] = "data/vendor/display";
constexpr char kFactoryStem[] = "factory_calib_data";
constexpr char kCalibrationStem[] = "vexa_calib_data";
constexpr char kMergeRulesStem[] = "vexa_merge_rules";

std::optional<Json::Value> ReadJsonFile(const std::filesystem::path& path, std::string* error) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    *error = "cannot read " + path.string();
    return std::nullopt;
  }
  std::ostringstream text;
  text << file.rdbuf();
  Json::Value document;
  if (!PopulateJsonValue(text.str(), document)) {
    *error = path.string() + " is not valid JSON";
    return std::nullopt;
  }
  return document;
}

bool WriteTextFile(const std::filesystem::path& path, const std::string& text, std::string* error) {
  std::error_code ignored;
  std::filesystem::create_directories(path.parent_path(), ignored);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  if (!file) {
    *error = "cannot write " + path.string();
    return false;
  }
  return true;
}

std::optional<Chromaticity> ReadChromaticity(const Json::Value& primaries, const char* key) {
  const Json::Value* xy = FindMember(primaries, key);
  if (xy == nullptr || !xy->isArray() || xy->size() != 2 || !(*xy)[0].isNumeric() ||
      !(*xy)[1].isNumeric()) {
    return std::nullopt;
  }
  return Chromaticity{(*xy)[0].asDouble(), (*xy)[1].asDouble()};
}

std::optional<Primaries> ReadPrimaries(const Json::Value& panel, std::string* error) {
  const Json::Value* primaries = FindMember(panel, words::kPanelPrimaries);
  const Json::Value none;
  const Json::Value& object = primaries != nullptr ? *primaries : none;
  const auto red = ReadChromaticity(object, words::kRed);
  const auto green = ReadChromaticity(object, words::kGreen);
  const auto blue = ReadChromaticity(object, words::kBlue);
  const auto white = ReadChromaticity(object, words::kWhite);
  if (!red || !green || !blue || !white) {
    *error = "panel.json: \"primaries\" needs \"red\", \"green\", \"blue\" and \"white\" as [x, y]";
    return std::nullopt;
  }
  return Primaries{*red, *green, *blue, *white};
}

}  // namespace

bool ExampleDeviceTree::Build(std::string* error) {
  const auto panel = ReadJsonFile(sources_ / kPanelSource, error);
  if (!panel) return false;
  const Json::Value* name = FindMember(*panel, words::kPanelName);
  if (name == nullptr || !name->isString() || name->asString().empty()) {
    *error = "panel.json: \"name\" must be a non-empty string";
    return false;
  }
  panel_ = name->asString();
  const auto primaries = ReadPrimaries(*panel, error);
  if (!primaries) return false;
  const auto model = PanelModel::Create(*primaries);
  if (!model) {
    *error = "panel.json: the primaries are degenerate";
    return false;
  }
  const RecipeExpander expander(*model);
  static const DeviceFile kFiles[] = {
      {kFactoryDir, kFactoryStem, FileKind::kModes},
      {kVendorDir, kCalibrationStem, FileKind::kModes},
      {kVendorDir, kMergeRulesStem, FileKind::kMergeRules},
  };
  for (const DeviceFile& file : kFiles) {
    if (!WriteDeviceFile(file, expander, error)) return false;
  }
  std::error_code failure;
  std::filesystem::create_directories(root_ / kDataDir, failure);
  if (failure) {
    *error = "cannot create " + (root_ / kDataDir).string() + ": " + failure.message();
    return false;
  }
  return true;
}

bool ExampleDeviceTree::WriteDeviceFile(const DeviceFile& file, const RecipeExpander& expander,
                                        std::string* error) const {
  const std::filesystem::path source = sources_ / (std::string(file.stem) + kJsonSuffix);
  auto document = ReadJsonFile(source, error);
  if (!document) return false;
  const bool ok =
      ReplacePanelPlaceholder(*document, panel_, error) && expander.Expand(*document, error) &&
      (file.kind == FileKind::kModes ? tools::PackModesFile(*document, error)
                                     : SetDeviceMergeVersions(*document, panel_, error));
  if (!ok) {
    *error = source.string() + ": " + *error;
    return false;
  }
  const std::string device_name = std::string(file.stem) + "_" + panel_ + kJsonSuffix;
  return WriteTextFile(root_ / file.device_dir / device_name, JsonToCompactText(*document), error);
}

}  // namespace vexa::example
