#include "assets/hw_asset_hdr.h"

namespace vexa {

HwAssetHDR::HwAssetHDR(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {}

HwAssetHDR::HwAssetHDR(kiv_mode_merge_caps::KivPostBlendHdrBlobMergeOp op,
                       std::shared_ptr<HwAssetHDR> left, std::shared_ptr<HwAssetHDR> right)
    : HwAssetBase(0, nullptr) {
  MergeFromOperands(static_cast<uint32_t>(op), left, right);
}

// The blob alone: "enable" is neither read nor written, and the record's enable stays 0.
void HwAssetHDR::SetConfig(const Json::Value& config) {
  JsonFieldReader reader(config, kLogLabel);
  auto fresh = NewRecord();
  ReadJson(reader, *fresh);
  if (!reader.ok()) {
    SetIdentity();
    return;
  }
  record_.blob = std::move(fresh->blob);
}

std::shared_ptr<Json::Value> HwAssetHDR::AsJV() const {
  auto json = std::make_shared<Json::Value>(Json::objectValue);
  WriteJson(*json);
  return json;
}

ReadResult HwAssetHDR::ReadJson(JsonFieldReader& reader, HdrConfig& fresh) {
  fresh.blob = reader.String(keys::kBlob);
  return ReadResult::kStore;
}

void HwAssetHDR::WriteJson(Json::Value& json) const { json[keys::kBlob] = record_.blob; }

}  // namespace vexa
