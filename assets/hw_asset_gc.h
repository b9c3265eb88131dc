// Gamma (re-encoding) LUT, one table per channel, inline below asset version 3 and a named
// shared table of 1024 entries from 3 on.
#ifndef VEXA_ASSETS_HW_ASSET_GC_H_
#define VEXA_ASSETS_HW_ASSET_GC_H_

#include <atomic>
#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetGC : public HwAssetBase<HwAssetGC, GammaPostBlendConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetGC";
  static constexpr const char* kClassName = "HwAssetGC";
  static constexpr const char* kMergeName = "GC";
  static constexpr const char* kPayloadName = keys::kPostBlendGC;
  static constexpr uint32_t kRecordLen = kGammaConfigLen;

  HwAssetGC(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetGC(kiv_mode_merge_caps::KivPostBlendGCMergeOp op, std::shared_ptr<HwAssetGC> left,
         std::shared_ptr<HwAssetGC> right);

  using HwAssetBase::SetConfig;
  // Entries per channel of every GC payload, set by the display service; no lock needed.
  static std::atomic<uint32_t> size_;

  void SetIdentity() override;

 private:
  friend class HwAssetBase<HwAssetGC, GammaPostBlendConfig>;
  ReadResult ReadJson(JsonFieldReader& reader, GammaPostBlendConfig& fresh);
  void WriteJson(Json::Value& json) const;
  void FillPayload(GammaPostBlendConfig& out) const;
  void CopyFromOperand(const HwAssetGC& source);
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_GC_H_
