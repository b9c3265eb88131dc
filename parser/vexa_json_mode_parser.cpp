#include "parser/vexa_json_mode_parser.h"

#include <sys/types.h>

#include <cerrno>
#include <cstdio>

#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_igc.h"
#include "formats/file_utils.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "formats/merge_caps.h"
#include "parser/panel_mode_loader.h"
#include "parser/published_mode.h"
#include "platform/log.h"

namespace vexa {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser";
// Lines of the start-up sequence carry Init's name, whichever helper writes them.
constexpr char kInitFunction[] = "Init";

constexpr char kAlgoLibName[] = "libvexa-algo.so";
constexpr char kAlgoSymName[] = "GetVexaAlgoInterface";
using AlgoFactory = VexaKivInterface* (*)(int32_t major, int32_t minor);

// Capabilities of the post-blend blocks until the service sets them.
constexpr uint32_t kIgcLutEntries = 257;
constexpr uint32_t kIgcHwParam = 12;
constexpr uint32_t kGcLutEntries = 1024;
constexpr uint32_t kGcHwParam = 10;
constexpr uint32_t kGamutHwParam = 10;
// Gamma and inverse-gamma LUT lengths the service may set.
constexpr uint32_t kMinGammaLutEntries = 1;
constexpr uint32_t kMaxGammaLutEntries = 1024;

// curr_mode_ before any render-intent request.
constexpr int32_t kUnsetGamut = 255;
constexpr int32_t kUnsetGamma = 255;
constexpr int32_t kUnsetIntent = 65535;

constexpr int32_t kDebugModesLogLevel = 2;

ColorMode UnsetColorMode() {
  ColorMode mode{};
  mode.gamut = kUnsetGamut;
  mode.gamma = kUnsetGamma;
  mode.intent = kUnsetIntent;
  return mode;
}

bool IsUnset(const ColorMode& mode) {
  return mode.gamut == kUnsetGamut && mode.gamma == kUnsetGamma && mode.intent == kUnsetIntent;
}

PostBlendHwCaps DefaultCaps(uint32_t config_size, uint32_t entries, uint32_t hw_param) {
  PostBlendHwCaps caps{};
  caps.config_size = config_size;
  caps.num_of_entries = entries;
  caps.hw_param = hw_param;
  return caps;
}

// Everything but config_size, which stays the block's own.
void StoreCaps(const PostBlendHwCaps& from, PostBlendHwCaps* to) {
  to->num_of_entries = from.num_of_entries;
  to->hw_param = from.hw_param;
  if (&from != to) to->properties = from.properties;
}

// The envelope of a property carries exactly one record of `expected` bytes.
bool PropertyLenOk(const VexaKivPayload& payload, uint32_t expected, const char* func, int line) {
  if (payload.len == expected && payload.payload != nullptr) return true;
  VKR_LOGE_AT(kLogLabel, func, line, "len of Input params act %zd exp %d",
              static_cast<ssize_t>(payload.len), expected);
  return false;
}

template <typename Record>
struct ExpectedVersion;
template <>
struct ExpectedVersion<ModeRenderInputParams> {
  static constexpr uint32_t kValue = kModeRenderInputParamsVersion;
};
template <>
struct ExpectedVersion<HwConfigOutputParams> {
  static constexpr uint32_t kValue = kHwConfigOutputParamsVersion;
};
template <>
struct ExpectedVersion<ColorModeList> {
  static constexpr uint32_t kValue = kColorModeListVersion;
};

}  // namespace

VexaJsonModeParser::VexaJsonModeParser()
    : algo_lib_name_(kAlgoLibName),
      algo_sym_name_(kAlgoSymName),
      sw_asset_names_{keys::kPostBlendHdrBlob, keys::kPostBlendGameBlob, keys::kPostBlendDE},
      curr_mode_(UnsetColorMode()),
      pb_igc_config_(DefaultCaps(kGammaConfigLen, kIgcLutEntries, kIgcHwParam)),
      pb_gc_config_(DefaultCaps(kGammaConfigLen, kGcLutEntries, kGcHwParam)),
      pb_gamut_config_(DefaultCaps(kGamutConfigLen, kGamutGridLevels, kGamutHwParam)) {
  set_prop_handlers_[kKivPostBlendInvGammaConfig] = &VexaJsonModeParser::SetPostBlendInvGammaConfig;
  set_prop_handlers_[kKivPostBlendGammaConfig] = &VexaJsonModeParser::SetPostBlendGammaConfig;
  set_prop_handlers_[kKivPostBlendGamutConfig] = &VexaJsonModeParser::SetPostBlendGamutConfig;
  get_prop_handlers_[kKivModesList] = &VexaJsonModeParser::GetModesList;
  get_prop_handlers_[kKivPbDitherHwConfig] = &VexaJsonModeParser::GetPbDitheHwConfig;
  ops_handlers_[kKivModeRenderIntent] = &VexaJsonModeParser::ProcessModeRenderIntent;
  ops_handlers_[kKivModeSwAssets] = &VexaJsonModeParser::ProcessModeSwAssets;
}

VexaJsonModeParser::~VexaJsonModeParser() {
  delete algo_intf_;
  algo_intf_ = nullptr;
  ReleaseModes();
  // Last: no object that the library's code made or touched is left.
  algo_lib_handle_.Close();
}

void VexaJsonModeParser::ReleaseModes() {
  modes_manager_.reset();
  modes_list_.clear();
  modes_list_.shrink_to_fit();
  curr_mode_ = UnsetColorMode();
}

// ---------------------------------------------------------------------------------------------
// Dispatch
// ---------------------------------------------------------------------------------------------

int32_t VexaJsonModeParser::SetProperty(const VexaKivPayload& payload) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!init_done_ || payload.version != kVexaKivPayloadVersion) {
    VKR_LOGE("Invalid params : init_done_ %d, actual version %zd exp version %d", init_done_,
             static_cast<ssize_t>(payload.version), kVexaKivPayloadVersion);
    return -EINVAL;
  }
  auto handler = set_prop_handlers_.find(static_cast<VexaKivProperty>(payload.prop));
  if (handler == set_prop_handlers_.end() || handler->second == nullptr) {
    // Member-function pointers do not print; a refused property never has a handler.
    VKR_LOGE("Invalid prop %d, function %pK", payload.prop, static_cast<void*>(nullptr));
    return -EINVAL;
  }
  return (this->*(handler->second))(payload);
}

int32_t VexaJsonModeParser::GetProperty(VexaKivPayload* payload) {
  std::lock_guard<std::mutex> lock(mutex_);
  // A missing envelope is refused, not dereferenced.
  if (payload == nullptr) {
    VKR_LOGE("Invalid params : p %pK", static_cast<void*>(payload));
    return -EINVAL;
  }
  if (!init_done_ || payload->version != kVexaKivPayloadVersion) {
    VKR_LOGE("Invalid params : init_done_ %d, actual version %zd exp version %d", init_done_,
             static_cast<ssize_t>(payload->version), kVexaKivPayloadVersion);
    return -EINVAL;
  }
  auto handler = get_prop_handlers_.find(static_cast<VexaKivProperty>(payload->prop));
  if (handler == get_prop_handlers_.end() || handler->second == nullptr) {
    VKR_LOGE("Invalid prop %d, function %pK", payload->prop, static_cast<void*>(nullptr));
    return -EINVAL;
  }
  return (this->*(handler->second))(payload);
}

int32_t VexaJsonModeParser::ProcessOps(VexaKivOps op, const VexaKivPayload& input,
                                       VexaKivPayload* output) {
  std::lock_guard<std::mutex> lock(mutex_);
  VKR_LOGI(2, "Process Ops called, op = %d", op);
  if (output == nullptr || !init_done_) {
    VKR_LOGE("Invalid params init_done_ %d output %pK", init_done_, static_cast<void*>(output));
    return -EINVAL;
  }
  auto handler = ops_handlers_.find(op);
  if (handler == ops_handlers_.end() || handler->second == nullptr) {
    VKR_LOGE("Invalid ops %d", op);
    return -EINVAL;
  }
  return (this->*(handler->second))(input, output);
}

template <typename Record>
int32_t VexaJsonModeParser::VersionCheck(const Record* record) const {
  if (record == nullptr) {
    VKR_LOGE("Invalid params : p %pK", static_cast<const void*>(record));
    return -EINVAL;
  }
  if (record->version != ExpectedVersion<Record>::kValue) {
    VKR_LOGE("Invalid version : exp version %d, actual version %zd", ExpectedVersion<Record>::kValue,
             static_cast<ssize_t>(record->version));
    return -EINVAL;
  }
  return 0;
}

// ---------------------------------------------------------------------------------------------
// Mode operations
// ---------------------------------------------------------------------------------------------

int32_t VexaJsonModeParser::GetModesList(VexaKivPayload* payload) {
  if (!PropertyLenOk(*payload, kColorModeListLen, __func__, __LINE__)) return -EINVAL;
  auto* list = static_cast<ColorModeList*>(payload->payload);
  if (VersionCheck(list) != 0) return -EINVAL;
  for (const ModeEntry& entry : modes_list_) list->modes.push_back(entry.first);
  return 0;
}

int32_t VexaJsonModeParser::ProcessModeRenderIntent(const VexaKivPayload& input,
                                                    VexaKivPayload* output) {
  return ServeModeRequest(input, output, PayloadKind::kHardware, __func__);
}

int32_t VexaJsonModeParser::ProcessModeSwAssets(const VexaKivPayload& input,
                                                VexaKivPayload* output) {
  return ServeModeRequest(input, output, PayloadKind::kSoftware, __func__);
}

int32_t VexaJsonModeParser::ServeModeRequest(const VexaKivPayload& input, VexaKivPayload* output,
                                             PayloadKind kind, const char* func) {
  // The "exp" label shows the actual length and "act" the expected one; log readers rely on
  // this order.
  if (input.len != kModeRenderInputParamsLen || output->len != kHwConfigOutputParamsLen) {
    VKR_LOGE_AT(kLogLabel, func, __LINE__, "len of Input params exp %zd act %d output exp %zd act %d",
                static_cast<ssize_t>(input.len), kModeRenderInputParamsLen,
                static_cast<ssize_t>(output->len), kHwConfigOutputParamsLen);
    return -EINVAL;
  }
  const auto* request = static_cast<const ModeRenderInputParams*>(input.payload);
  auto* result = static_cast<HwConfigOutputParams*>(output->payload);
  if (VersionCheck(request) != 0 || VersionCheck(result) != 0) return -EINVAL;

  VKR_LOGI_AT(2, kLogLabel, func, __LINE__, "Process the mode (gamut %d gamma %d intent %d)",
              request->gamut, request->gamma, request->intent);
  const ModeEntry* entry =
      FindMode(request->gamut, request->gamma, request->intent, request->hw_assets.size());
  if (entry == nullptr) {
    VKR_LOGI_AT(2, kLogLabel, func, __LINE__, "Cannot find mode (gamut %d, gamma %d, intent %d)",
                request->gamut, request->gamma, request->intent);
    return -EINVAL;
  }
  const bool want_software = kind == PayloadKind::kSoftware;
  for (const HwConfigPayload& payload : entry->second) {
    if (IsSoftwareAsset(payload.name) == want_software) result->payloads.push_back(payload);
  }
  if (kind == PayloadKind::kHardware) curr_mode_ = entry->first;
  VKR_LOGI_AT(2, kLogLabel, func, __LINE__, "Totally %zu hw assets in output",
              result->payloads.size());
  return 0;
}

const VexaJsonModeParser::ModeEntry* VexaJsonModeParser::FindMode(int32_t gamut, int32_t gamma,
                                                                  int32_t intent,
                                                                  size_t asset_count) const {
  for (const ModeEntry& entry : modes_list_) {
    if (MatchesModeRequest(entry.first, gamut, gamma, intent, asset_count)) return &entry;
  }
  return nullptr;
}

bool VexaJsonModeParser::IsSoftwareAsset(const std::string& name) const {
  return sw_asset_names_.count(name) != 0;
}

int32_t VexaJsonModeParser::GetPbDitheHwConfig(VexaKivPayload* payload) {
  if (!PropertyLenOk(*payload, kHwConfigOutputParamsLen, __func__, __LINE__)) return -EINVAL;
  auto* result = static_cast<HwConfigOutputParams*>(payload->payload);
  if (VersionCheck(result) != 0) return -EINVAL;
  if (IsUnset(curr_mode_)) {
    VKR_LOGI(1, "curr_mode_ is not set, no color mode is applied");
    return 0;
  }
  const ModeEntry* entry = FindMode(curr_mode_.gamut, curr_mode_.gamma, curr_mode_.intent,
                                    curr_mode_.hw_assets.size());
  if (entry == nullptr) {
    VKR_LOGI(2, "Cannot find mode (gamut %d, gamma %d, intent %d)", curr_mode_.gamut,
             curr_mode_.gamma, curr_mode_.intent);
    return -EINVAL;
  }
  // Any name holding "PostBlendDither" qualifies; "PostBlendPaDither" does not hold it.
  for (const HwConfigPayload& candidate : entry->second) {
    if (candidate.name.find(keys::kPostBlendDither) == std::string::npos) continue;
    VKR_LOGI(2, "Global dither hw asset found");
    result->payloads.clear();
    result->payloads.push_back(candidate);
    return 0;
  }
  return 0;
}

int32_t VexaJsonModeParser::SetPostBlendGammaConfig(const VexaKivPayload& payload) {
  return SetGammaCaps(payload, &pb_gc_config_, HwAssetGC::size_, __func__);
}

int32_t VexaJsonModeParser::SetPostBlendInvGammaConfig(const VexaKivPayload& payload) {
  return SetGammaCaps(payload, &pb_igc_config_, HwAssetIGC::size_, __func__);
}

int32_t VexaJsonModeParser::SetGammaCaps(const VexaKivPayload& payload, PostBlendHwCaps* caps,
                                         std::atomic<uint32_t>& class_lut_size,
                                         const char* func) {
  if (!PropertyLenOk(payload, kPostBlendHwCapsLen, func, __LINE__)) return -EINVAL;
  const auto* wanted = static_cast<const PostBlendHwCaps*>(payload.payload);
  if (wanted->num_of_entries < kMinGammaLutEntries || wanted->num_of_entries > kMaxGammaLutEntries) {
    VKR_LOGE_AT(kLogLabel, func, __LINE__, "Invalid of num_of_entries %d", wanted->num_of_entries);
    return -EINVAL;
  }
  StoreCaps(*wanted, caps);
  // Payloads made from now on use the new length; modes already published keep theirs.
  class_lut_size.store(caps->num_of_entries);
  return 0;
}

int32_t VexaJsonModeParser::SetPostBlendGamutConfig(const VexaKivPayload& payload) {
  if (!PropertyLenOk(payload, kPostBlendHwCapsLen, __func__, __LINE__)) return -EINVAL;
  // Stored for the service's sake only; nothing in the library reads it.
  StoreCaps(*static_cast<const PostBlendHwCaps*>(payload.payload), &pb_gamut_config_);
  return 0;
}

// ---------------------------------------------------------------------------------------------
// Start-up and teardown
// ---------------------------------------------------------------------------------------------

int32_t VexaJsonModeParser::Init(const std::string& panel_name) {
  std::lock_guard<std::mutex> lock(mutex_);
  panel_name_ = panel_name;
  VKR_LOGI(2, "panel: %s", panel_name_.c_str());
  if (init_done_) return 0;

  HwAssetGC::size_.store(pb_gc_config_.num_of_entries);
  HwAssetIGC::size_.store(pb_igc_config_.num_of_entries);
  modes_manager_ = std::make_unique<KivModesManager>(panel_name_);

  GenerateModeMergeVersionFile(PanelModeLoader::DeviceFilePath(kDataDir, kMergeVersionStem));

  PanelModeLoader loader(panel_name_);
  loader.LoadFiles(modes_manager_.get());
  if (loader.CanMerge()) {
    // Without the library the merges still run; gamut and PCC merges then fall back on their own.
    if (LoadVexaAlgoLib(panel_name_) != 0) {
      VKR_LOGE_AT(kLogLabel, kInitFunction, __LINE__, "gamut and pcc merge not supported for factory");
    }
    loader.MergeModes(algo_intf_, modes_manager_.get());
  }

  curr_mode_ = UnsetColorMode();
  PublishModes();
  init_done_ = true;
  return 0;
}

int32_t VexaJsonModeParser::DeInit() {
  std::lock_guard<std::mutex> lock(mutex_);
  // The algorithm object and its library stay for the next Init.
  if (algo_intf_ != nullptr) algo_intf_->DeInit();
  init_done_ = false;
  return 0;
}

int32_t VexaJsonModeParser::LoadVexaAlgoLib(const std::string& panel_name) {
  delete algo_intf_;
  algo_intf_ = nullptr;
  algo_lib_handle_.Close();
  if (!algo_lib_handle_.Open(algo_lib_name_)) {
    // The library is optional: its absence is not an error of the parser.
    VKR_LOGI(1, "Failed to load = %s", algo_lib_name_.c_str());
    return -ELIBACC;
  }
  auto factory = reinterpret_cast<AlgoFactory>(algo_lib_handle_.Symbol(algo_sym_name_));
  if (factory == nullptr) {
    VKR_LOGE("Failed to retrieve = %s from %s", algo_sym_name_.c_str(), algo_lib_name_.c_str());
    return -EINVAL;
  }
  algo_intf_ = factory(kKivInterfaceMajorVersion, kKivInterfaceMinorVersion);
  if (algo_intf_ == nullptr) {
    VKR_LOGE("Failed to get vexa algo intf from %s", algo_lib_name_.c_str());
    return -EINVAL;
  }
  const int32_t ret = algo_intf_->Init(panel_name);
  if (ret != 0) {
    VKR_LOGE("Failed to initialize vexa algo, ret = %d", ret);
    delete algo_intf_;
    algo_intf_ = nullptr;
    return -EINVAL;
  }
  return 0;
}

void VexaJsonModeParser::PublishModes() {
  const KivModeList& modes = modes_manager_->mode_list()->modes;
  if (modes.empty()) {
    VKR_LOGI_AT(1, kLogLabel, kInitFunction, __LINE__, "Warning: no modes were loaded");
    return;
  }
  WriteModesListToFile();
  for (const std::shared_ptr<KivMode>& mode : modes) PushMode(mode);
}

void VexaJsonModeParser::PushMode(const std::shared_ptr<KivMode>& mode) {
  if (!mode || !mode->descr()) return;
  ModeEntry& entry = modes_list_.emplace_back();
  if (!DescribePublishedMode(*mode, &entry.first, &entry.second)) {
    VKR_LOGI(2, "payloads retrieved were null or empty");
  }
}

void VexaJsonModeParser::WriteModesListToFile() {
  // Decided by the property as it reads now, not by the level cached at load.
  if (ReadLogLevelProperty() != kDebugModesLogLevel) return;
  const std::string path = PanelModeLoader::PanelFilePath(kDataDir, kDebugModesStem, panel_name_);
  WriteToFile(path, jsonWriteString(modes_manager_->GetModeListJV()));
}

}  // namespace vexa
