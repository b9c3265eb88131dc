// Picture-adjustment dither: strength, offset enable and a dither matrix of up to 16 entries.
#ifndef VEXA_ASSETS_HW_ASSET_PA_DITHER_H_
#define VEXA_ASSETS_HW_ASSET_PA_DITHER_H_

#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetPADither : public HwAssetBase<HwAssetPADither, PaDitherConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetPADither";
  static constexpr const char* kClassName = "HwAssetPADither";
  static constexpr const char* kMergeName = "PaDither";
  static constexpr const char* kPayloadName = keys::kPostBlendPaDither;
  static constexpr uint32_t kRecordLen = kPaDitherConfigLen;

  HwAssetPADither(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetPADither(kiv_mode_merge_caps::KivPostBlendPaDitherMergeOp op, std::shared_ptr<HwAssetPADither> left,
         std::shared_ptr<HwAssetPADither> right);

  using HwAssetBase::SetConfig;

 private:
  friend class HwAssetBase<HwAssetPADither, PaDitherConfig>;
  ReadResult ReadJson(JsonFieldReader& reader, PaDitherConfig& fresh);
  void WriteJson(Json::Value& json) const;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_PA_DITHER_H_
