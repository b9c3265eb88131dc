#include "assets/hw_asset_game_blob.h"

namespace vexa {

HwAssetGameBlob::HwAssetGameBlob(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {}

HwAssetGameBlob::HwAssetGameBlob(kiv_mode_merge_caps::KivPostBlendGameBlobMergeOp op,
                                 std::shared_ptr<HwAssetGameBlob> left,
                                 std::shared_ptr<HwAssetGameBlob> right)
    : HwAssetBase(0, nullptr) {
  MergeFromOperands(static_cast<uint32_t>(op), left, right);
}

// Unlike the other blocks, a false "enable" does not clear the record: the blob text is kept
// beside enable 0 and still travels in the payload.
void HwAssetGameBlob::SetConfig(const Json::Value& config) {
  JsonFieldReader reader(config, kLogLabel);
  const bool enable = reader.Bool(keys::kEnable);
  auto fresh = NewRecord();
  ReadJson(reader, *fresh);
  if (!reader.ok()) {
    SetIdentity();
    return;
  }
  record_.enable = enable;
  record_.blob = std::move(fresh->blob);
}

ReadResult HwAssetGameBlob::ReadJson(JsonFieldReader& reader, GameConfig& fresh) {
  fresh.blob = reader.String(keys::kBlob);
  return ReadResult::kStore;
}

void HwAssetGameBlob::WriteJson(Json::Value& json) const { json[keys::kBlob] = record_.blob; }

}  // namespace vexa
