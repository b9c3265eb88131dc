#include "assets/hw_asset_igc.h"

#include "assets/gamma_lut.h"

namespace vexa {
namespace {

// Shared inverse-gamma tables may have any length.
constexpr GammaLut kIgcLut(HwAssetIGC::kLogLabel, HwAssetIGC::kMergeName,
                           &HwAssetsCommonData::GetIgc, 0);

}  // namespace

std::atomic<uint32_t> HwAssetIGC::size_{0};

HwAssetIGC::HwAssetIGC(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {
  GammaLut::Reserve(record_, size_);
}

HwAssetIGC::HwAssetIGC(kiv_mode_merge_caps::KivPostBlendIGCMergeOp op,
                       std::shared_ptr<HwAssetIGC> left, std::shared_ptr<HwAssetIGC> right)
    : HwAssetBase(0, nullptr) {
  GammaLut::Reserve(record_, size_);
  MergeFromOperands(static_cast<uint32_t>(op), left, right);
}

// The tables stay, so that a later typed SetConfig or merge finds them.
void HwAssetIGC::SetIdentity() {
  record_.enable = false;
  record_.dither_enable = false;
  record_.dither_strength = 0;
}

ReadResult HwAssetIGC::ReadJson(JsonFieldReader& reader, GammaPostBlendConfig& fresh) {
  const ReadResult result = kIgcLut.Read(reader, asset_version_, common_data_.get(), fresh);
  if (result == ReadResult::kStore) {
    fresh.dither_strength = reader.Uint(keys::kIgcDitherStrength);
    fresh.dither_enable = reader.Bool(keys::kIgcDitherEnable);
  }
  return result;
}

void HwAssetIGC::WriteJson(Json::Value& json) const {
  GammaLut::Write(record_, json);
  json[keys::kIgcDitherStrength] = Json::UInt(record_.dither_strength);
  json[keys::kIgcDitherEnable] = record_.dither_enable;
}

void HwAssetIGC::FillPayload(GammaPostBlendConfig& out) const {
  GammaLut::FillPayload(record_, size_, out);
  out.dither_enable = record_.dither_enable;
  out.dither_strength = record_.dither_strength;
}

void HwAssetIGC::CopyFromOperand(const HwAssetIGC& source) {
  GammaLut::CopyTables(source.config(), record_);
  record_.dither_enable = source.config().dither_enable;
  record_.dither_strength = source.config().dither_strength;
}

}  // namespace vexa
