// Picture adjustment: global hue, saturation, value and contrast, three memory-colour regions
// (skin, sky, foliage) and the six-zone curves. The feature-flag word `ops` records which parts
// are in force; the block is enabled exactly when it is non-zero.
#ifndef VEXA_ASSETS_HW_ASSET_PA_H_
#define VEXA_ASSETS_HW_ASSET_PA_H_

#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetPA : public HwAssetBase<HwAssetPA, PaConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetPA";
  static constexpr const char* kClassName = "HwAssetPA";
  static constexpr const char* kMergeName = "PaGlobal";
  static constexpr const char* kPayloadName = keys::kPostBlendPa;
  static constexpr uint32_t kRecordLen = kPaConfigLen;

  HwAssetPA(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaGlobalMergeOp op, std::shared_ptr<HwAssetPA> left,
            std::shared_ptr<HwAssetPA> right);
  HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaMemoryColorsMergeOp op,
            std::shared_ptr<HwAssetPA> left, std::shared_ptr<HwAssetPA> right);
  HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaMultiZoneMergeOp op,
            std::shared_ptr<HwAssetPA> left, std::shared_ptr<HwAssetPA> right);

  using HwAssetBase::SetConfig;
  void SetConfig(const Json::Value& config) override;
  void SetIdentity() override;

  // Trapezoid edge type of two edge names ("STEP" or "SLOPE"), and the names back.
  static uint32_t Map(const std::string& left, const std::string& right);
  static std::string MapLeftEdge(uint32_t trapezoid_edge_type);
  static std::string MapRightEdge(uint32_t trapezoid_edge_type);

 private:
  friend class HwAssetBase<HwAssetPA, PaConfig>;
  void WriteJson(Json::Value& json) const;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_PA_H_
