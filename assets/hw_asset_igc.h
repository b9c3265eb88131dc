// Inverse gamma (linearising) LUT, one table per channel, inline below asset version 3 and a
// named shared table from 3 on; carries the dither fields of the block.
#ifndef VEXA_ASSETS_HW_ASSET_IGC_H_
#define VEXA_ASSETS_HW_ASSET_IGC_H_

#include <atomic>
#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetIGC : public HwAssetBase<HwAssetIGC, GammaPostBlendConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetIGC";
  static constexpr const char* kClassName = "HwAssetIGC";
  static constexpr const char* kMergeName = "IGC";
  static constexpr const char* kPayloadName = keys::kPostBlendIGC;
  static constexpr uint32_t kRecordLen = kGammaConfigLen;

  HwAssetIGC(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetIGC(kiv_mode_merge_caps::KivPostBlendIGCMergeOp op, std::shared_ptr<HwAssetIGC> left,
         std::shared_ptr<HwAssetIGC> right);

  using HwAssetBase::SetConfig;
  // Entries per channel of every IGC payload, set by the display service; no lock needed.
  static std::atomic<uint32_t> size_;

  void SetIdentity() override;

 private:
  friend class HwAssetBase<HwAssetIGC, GammaPostBlendConfig>;
  ReadResult ReadJson(JsonFieldReader& reader, GammaPostBlendConfig& fresh);
  void WriteJson(Json::Value& json) const;
  void FillPayload(GammaPostBlendConfig& out) const;
  void CopyFromOperand(const HwAssetIGC& source);
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_IGC_H_
