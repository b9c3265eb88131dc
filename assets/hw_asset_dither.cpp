#include "assets/hw_asset_dither.h"

#include "assets/dither_matrix.h"

namespace vexa {

namespace {
constexpr uint32_t kDitherModeLumaBit = 0x1;
}  // namespace

HwAssetDither::HwAssetDither(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {}

HwAssetDither::HwAssetDither(kiv_mode_merge_caps::KivPostBlendDitherMergeOp op,
                             std::shared_ptr<HwAssetDither> left,
                             std::shared_ptr<HwAssetDither> right)
    : HwAssetBase(0, nullptr) {
  MergeFromOperands(static_cast<uint32_t>(op), left, right);
}

ReadResult HwAssetDither::ReadJson(JsonFieldReader& reader, DitherConfig& fresh) {
  const std::string mode = reader.String(keys::kDitherDitherMode);
  if (mode == keys::kDitherModeLuma) {
    fresh.mode = kDitherModeLumaBit;
  } else if (mode != keys::kDitherModeInterleave) {
    // Anything but the two words falls back to interleaved dithering; the section still counts.
    VKR_LOGI_AT(2, kLogLabel, "SetConfig", __LINE__, "Dither Mode (%s) is not LUMA or INTERLEAVE",
                mode.c_str());
  }
  fresh.strength_r = reader.Uint(keys::kDitherStrengthR);
  fresh.strength_g = reader.Uint(keys::kDitherStrengthG);
  fresh.strength_b = reader.Uint(keys::kDitherStrengthB);
  fresh.temporal_enable = reader.Uint(keys::kDitherTemporalEnable);
  ReadDitherMatrix(reader, kLogLabel, &fresh.matrix_size, fresh.matrix);
  return ReadResult::kStore;
}

void HwAssetDither::WriteJson(Json::Value& json) const {
  json[keys::kDitherStrengthR] = Json::UInt(record_.strength_r);
  json[keys::kDitherStrengthG] = Json::UInt(record_.strength_g);
  json[keys::kDitherStrengthB] = Json::UInt(record_.strength_b);
  json[keys::kDitherTemporalEnable] = Json::UInt(record_.temporal_enable);
  json[keys::kDitherDitherMode] =
      (record_.mode & kDitherModeLumaBit) ? keys::kDitherModeLuma : keys::kDitherModeInterleave;
  WriteDitherMatrix(record_.matrix_size, record_.matrix, json);
}

}  // namespace vexa
