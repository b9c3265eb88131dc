// Post-blend dither: mode (luma or interleaved), per-channel strengths, temporal dithering and a
// dither matrix of up to 16 entries.
#ifndef VEXA_ASSETS_HW_ASSET_DITHER_H_
#define VEXA_ASSETS_HW_ASSET_DITHER_H_

#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetDither : public HwAssetBase<HwAssetDither, DitherConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetDither";
  static constexpr const char* kClassName = "HwAssetDither";
  static constexpr const char* kMergeName = "Dither";
  static constexpr const char* kPayloadName = keys::kPostBlendDither;
  static constexpr uint32_t kRecordLen = kDitherConfigLen;

  HwAssetDither(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetDither(kiv_mode_merge_caps::KivPostBlendDitherMergeOp op, std::shared_ptr<HwAssetDither> left,
         std::shared_ptr<HwAssetDither> right);

  using HwAssetBase::SetConfig;

 private:
  friend class HwAssetBase<HwAssetDither, DitherConfig>;
  ReadResult ReadJson(JsonFieldReader& reader, DitherConfig& fresh);
  void WriteJson(Json::Value& json) const;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_DITHER_H_
