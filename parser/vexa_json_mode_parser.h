// The object behind VexaKivInterface: it reads a panel's modes, merge rules and calibration files
// at Init, merges modes with the optional colour-algorithm library, and answers the display
// service's property and operation requests from the published mode list.
//
// Requests are dispatched through three tables of member functions keyed by property or
// operation. One mutex serialises every public operation, handlers included.
#ifndef VEXA_PARSER_VEXA_JSON_MODE_PARSER_H_
#define VEXA_PARSER_VEXA_JSON_MODE_PARSER_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "formats/merge_rule.h"
#include "modes/kiv_mode.h"
#include "modes/kiv_modes_manager.h"
#include "platform/dynamic_library.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa {

// The interface version that GetVexaKivInterface serves and that the algorithm library is asked
// for.
constexpr int32_t kKivInterfaceMajorVersion = 2;
constexpr int32_t kKivInterfaceMinorVersion = 0;

class VexaJsonModeParser : public VexaKivInterface {
 public:
  VexaJsonModeParser();
  ~VexaJsonModeParser() override;
  VexaJsonModeParser(const VexaJsonModeParser&) = delete;
  VexaJsonModeParser& operator=(const VexaJsonModeParser&) = delete;

  // Always 0. Loads the panel's files once; a second call only stores the panel name.
  int32_t Init(const std::string& panel_name) override;
  // Always 0. De-initialises the algorithm library; the published modes stay.
  int32_t DeInit() override;
  int32_t SetProperty(const VexaKivPayload& payload) override;
  int32_t GetProperty(VexaKivPayload* payload) override;
  int32_t ProcessOps(VexaKivOps op, const VexaKivPayload& input, VexaKivPayload* output) override;

 private:
  using SetPropHandler = int32_t (VexaJsonModeParser::*)(const VexaKivPayload&);
  using GetPropHandler = int32_t (VexaJsonModeParser::*)(VexaKivPayload*);
  using OpsHandler = int32_t (VexaJsonModeParser::*)(const VexaKivPayload&, VexaKivPayload*);
  // A published mode: what the service sees, and the payloads that program it.
  using ModeEntry = std::pair<ColorMode, std::vector<HwConfigPayload>>;

  // Which payloads of a mode an operation hands out.
  enum class PayloadKind { kHardware, kSoftware };

  // Property and operation handlers.
  int32_t GetModesList(VexaKivPayload* payload);
  int32_t GetPbDitheHwConfig(VexaKivPayload* payload);
  int32_t SetPostBlendGammaConfig(const VexaKivPayload& payload);
  int32_t SetPostBlendInvGammaConfig(const VexaKivPayload& payload);
  int32_t SetPostBlendGamutConfig(const VexaKivPayload& payload);
  int32_t ProcessModeRenderIntent(const VexaKivPayload& input, VexaKivPayload* output);
  int32_t ProcessModeSwAssets(const VexaKivPayload& input, VexaKivPayload* output);

  // Shared steps of the handlers. `func` names the handler in log lines.
  int32_t ServeModeRequest(const VexaKivPayload& input, VexaKivPayload* output, PayloadKind kind,
                           const char* func);
  int32_t SetGammaCaps(const VexaKivPayload& payload, PostBlendHwCaps* caps,
                       std::atomic<uint32_t>& class_lut_size, const char* func);
  const ModeEntry* FindMode(int32_t gamut, int32_t gamma, int32_t intent,
                            size_t asset_count) const;
  bool IsSoftwareAsset(const std::string& name) const;
  template <typename Record>
  int32_t VersionCheck(const Record* record) const;

  // Start-up steps.
  int32_t LoadVexaAlgoLib(const std::string& panel_name);
  void PublishModes();
  void PushMode(const std::shared_ptr<KivMode>& mode);
  void WriteModesListToFile();
  // Destroys everything that modes and merges created, before the algorithm library goes.
  void ReleaseModes();

  const std::string algo_lib_name_;
  const std::string algo_sym_name_;
  DynamicLibrary algo_lib_handle_;
  VexaKivInterface* algo_intf_ = nullptr;
  std::map<VexaKivProperty, SetPropHandler> set_prop_handlers_;
  std::map<VexaKivProperty, GetPropHandler> get_prop_handlers_;
  std::map<VexaKivOps, OpsHandler> ops_handlers_;
  std::mutex mutex_;
  bool init_done_ = false;
  std::vector<ModeEntry> modes_list_;
  const std::unordered_set<std::string> sw_asset_names_;
  ColorMode curr_mode_;
  PostBlendHwCaps pb_igc_config_;
  PostBlendHwCaps pb_gc_config_;
  PostBlendHwCaps pb_gamut_config_;
  std::unique_ptr<KivModesManager> modes_manager_;
  std::string panel_name_;
};

}  // namespace vexa

#endif  // VEXA_PARSER_VEXA_JSON_MODE_PARSER_H_
