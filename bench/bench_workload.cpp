#include "bench/bench_workload.h"

#include <json/json.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "bench/bench_device_tree.h"
#include "formats/hex_coding.h"
#include "formats/json_access.h"
#include "formats/json_text.h"
#include "formats/keys.h"

namespace vexa::bench {
namespace {

constexpr char kSysrootVariable[] = "VEXA_SYSROOT";

bool ReadText(const std::filesystem::path& path, std::string* text, std::string* error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    *error = "cannot read " + path.string();
    return false;
  }
  text->assign(std::istreambuf_iterator<char>(in), {});
  return true;
}

bool IsDescriptorMember(const std::string& name) {
  return name == keys::kApplicability || name == keys::kDynamicRange ||
         name == keys::kWhitePoint || name == keys::kMergeId;
}

}  // namespace

std::unique_ptr<BenchWorkload> BenchWorkload::Create(uint32_t calibration_modes,
                                                     std::string* error) {
  std::string root = (std::filesystem::temp_directory_path() / "vexa-bench-XXXXXX").string();
  if (mkdtemp(root.data()) == nullptr) {
    *error = "cannot make a directory like " + root;
    return nullptr;
  }
  std::unique_ptr<BenchWorkload> workload(new BenchWorkload(calibration_modes, root));
  if (!BenchDeviceTree(calibration_modes).Write(root, error) || !workload->Load(error)) {
    return nullptr;
  }
  return workload;
}

const BenchWorkload& BenchWorkload::Shared(uint32_t calibration_modes) {
  static std::map<uint32_t, std::unique_ptr<BenchWorkload>> workloads;
  std::unique_ptr<BenchWorkload>& workload = workloads[calibration_modes];
  if (!workload) {
    std::string error;
    workload = Create(calibration_modes, &error);
    if (!workload) {
      std::fprintf(stderr, "benchmark workload of %u modes: %s\n", calibration_modes, error.c_str());
      std::exit(1);
    }
  }
  return *workload;
}

BenchWorkload::~BenchWorkload() {
  std::error_code ignored;
  std::filesystem::remove_all(root_, ignored);
}

void BenchWorkload::UseAsDeviceRoot() const { setenv(kSysrootVariable, root_.c_str(), 1); }

size_t BenchWorkload::file_bytes() const {
  return factory_text_.size() + calibration_text_.size() + rules_text_.size();
}

bool BenchWorkload::Load(std::string* error) {
  const std::filesystem::path root(root_);
  return ReadText(root / FactoryFilePath(), &factory_text_, error) &&
         ReadText(root / CalibrationFilePath(), &calibration_text_, error) &&
         ReadText(root / MergeRulesFilePath(), &rules_text_, error) &&
         CollectSections(factory_text_, error) && CollectSections(calibration_text_, error);
}

// The hex strings that the modes parser decodes: each "Common" table, then each asset section.
bool BenchWorkload::CollectSections(const std::string& text, std::string* error) {
  Json::Value file;
  if (!PopulateJsonValue(text, file)) {
    *error = "a generated modes file does not parse";
    return false;
  }
  std::vector<const Json::Value*> sections;
  if (const Json::Value* common = FindMember(file, keys::kCommon)) {
    for (const std::string& name : MemberNames(*common)) sections.push_back(&(*common)[name]);
  }
  const Json::Value& modes = file[kBenchPanel];
  for (const std::string& mode : MemberNames(modes)) {
    for (const std::string& name : MemberNames(modes[mode])) {
      if (!IsDescriptorMember(name)) sections.push_back(&modes[mode][name]);
    }
  }
  for (const Json::Value* section : sections) {
    if (!section->isString()) {
      *error = "a generated section is not hex text";
      return false;
    }
    hex_sections_.push_back(section->asString());
    std::string decoded;
    DecodeHexText(hex_sections_.back(), decoded);
    decoded_sections_.push_back(std::move(decoded));
  }
  return true;
}

}  // namespace vexa::bench
