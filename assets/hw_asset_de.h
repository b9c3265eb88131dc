// Detail enhancement: feature flags, sharpening, thresholds, quality and low-pass blending.
#ifndef VEXA_ASSETS_HW_ASSET_DE_H_
#define VEXA_ASSETS_HW_ASSET_DE_H_

#include <atomic>
#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetDE : public HwAssetBase<HwAssetDE, DETuningConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetDE";
  static constexpr const char* kClassName = "HwAssetDE";
  static constexpr const char* kMergeName = "DE";
  static constexpr const char* kPayloadName = keys::kPostBlendDE;
  static constexpr uint32_t kRecordLen = kDETuningConfigLen;

  HwAssetDE(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetDE(kiv_mode_merge_caps::KivPostBlendDEMergeOp op, std::shared_ptr<HwAssetDE> left,
         std::shared_ptr<HwAssetDE> right);

  using HwAssetBase::SetConfig;
  // The quality word written back for a level and a content type; "INVALID" when none fits.
  static std::string MapQuality(uint32_t level, uint32_t content_type);

 private:
  friend class HwAssetBase<HwAssetDE, DETuningConfig>;
  ReadResult ReadJson(JsonFieldReader& reader, DETuningConfig& fresh);
  void WriteJson(Json::Value& json) const;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_DE_H_
