// An HDR blob that the display service interprets, passed through as text. It has no "enable":
// the record's enable stays 0 and no "enable" member is read or written.
#ifndef VEXA_ASSETS_HW_ASSET_HDR_H_
#define VEXA_ASSETS_HW_ASSET_HDR_H_

#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetHDR : public HwAssetBase<HwAssetHDR, HdrConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetHDR";
  static constexpr const char* kClassName = "HwAssetHDR";
  static constexpr const char* kMergeName = "HDR";
  static constexpr const char* kPayloadName = keys::kPostBlendHdrBlob;
  static constexpr uint32_t kRecordLen = kHdrConfigLen;

  HwAssetHDR(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetHDR(kiv_mode_merge_caps::KivPostBlendHdrBlobMergeOp op, std::shared_ptr<HwAssetHDR> left,
         std::shared_ptr<HwAssetHDR> right);

  using HwAssetBase::SetConfig;
  void SetConfig(const Json::Value& config) override;
  std::shared_ptr<Json::Value> AsJV() const override;

 private:
  friend class HwAssetBase<HwAssetHDR, HdrConfig>;
  ReadResult ReadJson(JsonFieldReader& reader, HdrConfig& fresh);
  void WriteJson(Json::Value& json) const;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_HDR_H_
