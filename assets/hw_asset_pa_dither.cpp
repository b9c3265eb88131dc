#include "assets/hw_asset_pa_dither.h"

#include "assets/dither_matrix.h"

namespace vexa {

HwAssetPADither::HwAssetPADither(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {}

HwAssetPADither::HwAssetPADither(kiv_mode_merge_caps::KivPostBlendPaDitherMergeOp op,
                                 std::shared_ptr<HwAssetPADither> left,
                                 std::shared_ptr<HwAssetPADither> right)
    : HwAssetBase(0, nullptr) {
  MergeFromOperands(static_cast<uint32_t>(op), left, right);
}

// The block has a single dither mode, so `mode` stays 0.
ReadResult HwAssetPADither::ReadJson(JsonFieldReader& reader, PaDitherConfig& fresh) {
  fresh.offset_enable = reader.Uint(keys::kPaDitherOffsetEn);
  fresh.strength = reader.Uint(keys::kPaDitherStrength);
  ReadDitherMatrix(reader, kLogLabel, &fresh.matrix_size, fresh.matrix);
  return ReadResult::kStore;
}

void HwAssetPADither::WriteJson(Json::Value& json) const {
  json[keys::kPaDitherStrength] = Json::UInt(record_.strength);
  json[keys::kPaDitherOffsetEn] = Json::UInt(record_.offset_enable);
  WriteDitherMatrix(record_.matrix_size, record_.matrix, json);
}

}  // namespace vexa
