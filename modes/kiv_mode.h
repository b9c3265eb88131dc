// One colour mode: a descriptor plus one hardware asset per pipeline block, keyed by asset key.
#ifndef VEXA_MODES_KIV_MODE_H_
#define VEXA_MODES_KIV_MODE_H_

#include <json/json.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "assets/hw_asset.h"
#include "formats/common_data.h"
#include "formats/merge_rule.h"
#include "modes/kiv_mode_descr.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa {

class HwAssetIGC;
class HwAssetGC;
class HwAssetPCC;
class HwAssetGamut;
class HwAssetDither;
class HwAssetDE;
class HwAssetPA;
class HwAssetGameBlob;
class HwAssetPADither;
class HwAssetHDR;

using HwAssetMap = std::map<std::string, std::shared_ptr<HwAsset>>;
using HwConfigPayloadList = std::vector<std::shared_ptr<HwConfigPayload>>;

class KivMode {
 public:
  // From a parsed definition: one asset per known asset key of the definition's JSON.
  KivMode(std::shared_ptr<KivModeDef> def, std::shared_ptr<HwAssetsCommonData> common);
  // A merged mode: the rule's descriptor, each block merged from the two operands.
  KivMode(VexaKivInterface* intf, std::shared_ptr<KivModeMergeDef> rule,
          std::shared_ptr<KivMode> left, std::shared_ptr<KivMode> right);

  void SetHwAsset(const std::string& key, const Json::Value& config);
  std::shared_ptr<HwAsset> MakeHwAsset(const std::string& key) const;

  std::shared_ptr<HwAssetIGC> GetIgc() const;
  std::shared_ptr<HwAssetGC> GetGc() const;
  std::shared_ptr<HwAssetPCC> GetPcc() const;
  std::shared_ptr<HwAssetGamut> GetGamut() const;
  std::shared_ptr<HwAssetDither> GetDither() const;
  std::shared_ptr<HwAssetDE> GetDe() const;
  std::shared_ptr<HwAssetPA> GetPa() const;
  std::shared_ptr<HwAssetGameBlob> GetGameBlob() const;
  std::shared_ptr<HwAssetPADither> GetPaDither() const;
  std::shared_ptr<HwAssetHDR> GetHdr() const;
  void SetIgc(std::shared_ptr<HwAssetIGC> asset);
  void SetGc(std::shared_ptr<HwAssetGC> asset);
  void SetPcc(std::shared_ptr<HwAssetPCC> asset);
  void SetGamut(std::shared_ptr<HwAssetGamut> asset);
  void SetDither(std::shared_ptr<HwAssetDither> asset);
  void SetDe(std::shared_ptr<HwAssetDE> asset);
  void SetPa(std::shared_ptr<HwAssetPA> asset);
  void SetGameBlob(std::shared_ptr<HwAssetGameBlob> asset);
  void SetPaDither(std::shared_ptr<HwAssetPADither> asset);
  void SetHdr(std::shared_ptr<HwAssetHDR> asset);

  // Payloads in byte-wise key order. Each asset's AsPayload is called twice when it yields a
  // payload: the first call decides, the second's fresh payload is kept.
  std::shared_ptr<HwConfigPayloadList> GetPayloads() const;
  // The assets' JSON by key; computed once, then cached even if assets change.
  Json::Value& GetHwAssetsJV();

  const std::shared_ptr<KivModeDescr>& descr() const { return descr_; }
  const HwAssetMap& assets() const { return *assets_; }
  uint32_t asset_version() const { return asset_version_; }
  const std::shared_ptr<HwAssetsCommonData>& common_data() const { return common_data_; }

 private:
  struct PaParts;

  template <typename Asset>
  std::shared_ptr<Asset> GetAsset(const char* key) const;
  void PutAsset(const char* key, std::shared_ptr<HwAsset> asset);

  // Merging: one block per mergeable kind, the PA parts assembled last.
  void MergeKind(kiv_mode_merge_caps::KivMergeable kind, VexaKivInterface* intf,
                 const KivModeMergeDef& rule, const std::shared_ptr<KivMode>& left,
                 const std::shared_ptr<KivMode>& right, PaParts* pa);
  void StoreMergedPa(const PaParts& pa);

  std::shared_ptr<HwAssetMap> assets_;
  std::shared_ptr<KivModeDescr> descr_;
  Json::Value assets_json_;
  uint32_t asset_version_ = 0;
  std::shared_ptr<HwAssetsCommonData> common_data_;
};

using KivModeList = std::vector<std::shared_ptr<KivMode>>;

}  // namespace vexa

#endif  // VEXA_MODES_KIV_MODE_H_
