#include "assets/hw_asset_gc.h"

#include "assets/gamma_lut.h"

namespace vexa {
namespace {

// A shared gamma table must have exactly as many entries as the block takes.
constexpr GammaLut kGcLut(HwAssetGC::kLogLabel, HwAssetGC::kMergeName, &HwAssetsCommonData::GetGc,
                          kMaxGammaEntries);

}  // namespace

std::atomic<uint32_t> HwAssetGC::size_{0};

HwAssetGC::HwAssetGC(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {
  GammaLut::Reserve(record_, size_);
}

HwAssetGC::HwAssetGC(kiv_mode_merge_caps::KivPostBlendGCMergeOp op, std::shared_ptr<HwAssetGC> left,
                     std::shared_ptr<HwAssetGC> right)
    : HwAssetBase(0, nullptr) {
  GammaLut::Reserve(record_, size_);
  MergeFromOperands(static_cast<uint32_t>(op), left, right);
}

// The tables stay, so that a later typed SetConfig or merge finds them.
void HwAssetGC::SetIdentity() { record_.enable = false; }

ReadResult HwAssetGC::ReadJson(JsonFieldReader& reader, GammaPostBlendConfig& fresh) {
  return kGcLut.Read(reader, asset_version_, common_data_.get(), fresh);
}

void HwAssetGC::WriteJson(Json::Value& json) const { GammaLut::Write(record_, json); }

// The gamma block has no dither: the payload's dither fields stay 0.
void HwAssetGC::FillPayload(GammaPostBlendConfig& out) const {
  GammaLut::FillPayload(record_, size_, out);
}

void HwAssetGC::CopyFromOperand(const HwAssetGC& source) {
  GammaLut::CopyTables(source.config(), record_);
}

}  // namespace vexa
