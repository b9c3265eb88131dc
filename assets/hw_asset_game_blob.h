// A game-mode blob that the display service interprets, passed through as text. A disabled blob
// is kept (with enable 0) rather than cleared.
#ifndef VEXA_ASSETS_HW_ASSET_GAME_BLOB_H_
#define VEXA_ASSETS_HW_ASSET_GAME_BLOB_H_

#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetGameBlob : public HwAssetBase<HwAssetGameBlob, GameConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetGameBlob";
  static constexpr const char* kClassName = "HwAssetGameBlob";
  static constexpr const char* kMergeName = "Game Blob";
  static constexpr const char* kPayloadName = keys::kPostBlendGameBlob;
  static constexpr uint32_t kRecordLen = kGameConfigLen;

  HwAssetGameBlob(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetGameBlob(kiv_mode_merge_caps::KivPostBlendGameBlobMergeOp op, std::shared_ptr<HwAssetGameBlob> left,
         std::shared_ptr<HwAssetGameBlob> right);

  using HwAssetBase::SetConfig;
  void SetConfig(const Json::Value& config) override;

 private:
  friend class HwAssetBase<HwAssetGameBlob, GameConfig>;
  ReadResult ReadJson(JsonFieldReader& reader, GameConfig& fresh);
  void WriteJson(Json::Value& json) const;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_GAME_BLOB_H_
