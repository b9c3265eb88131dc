// Polynomial colour correction: per output channel eleven coefficients of the input components.
// Besides its main record the asset keeps a tuning record; a merge combines the left operand's
// main record with the right operand's tuning record through the colour-algorithm library,
// clipping every coefficient into the hardware's range before and after.
#ifndef VEXA_ASSETS_HW_ASSET_PCC_H_
#define VEXA_ASSETS_HW_ASSET_PCC_H_

#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetPCC : public HwAssetBase<HwAssetPCC, PccConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetPCC";
  static constexpr const char* kClassName = "HwAssetPCC";
  static constexpr const char* kMergeName = "PCC";
  static constexpr const char* kPayloadName = keys::kPostBlendPCC;
  static constexpr uint32_t kRecordLen = kPccConfigLen;

  // Byte lengths of the records exchanged with the algorithm library.
  static constexpr uint32_t kMergeInputLen = 552;
  static constexpr uint32_t kMergeOutputLen = kPccConfigLen;

  // Inclusive coefficient limits, a hair inside the hardware's fixed-point ranges.
  struct ClipRange {
    double min;
    double max;
  };

  HwAssetPCC(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetPCC(VexaKivInterface* algo, kiv_mode_merge_caps::KivPostBlendPCCMergeOp op,
             std::shared_ptr<HwAssetPCC> left, std::shared_ptr<HwAssetPCC> right);

  using HwAssetBase::SetConfig;
  // Main record disabled with identity coefficients; the tuning record is kept.
  void SetIdentity() override;

  void SetTuningConfig(const PccConfig& record);
  const PccConfig& tuning_config() const { return tuning_; }

  // Combines `left` (main) and `right` (tuning) into this asset's main record. Clips both
  // operands in place first.
  void Merge(VexaKivInterface* algo, PccConfig& left, PccConfig& right);
  // Clip the three channels / one channel; true when anything was clipped. NaN is left alone.
  bool ClipPccCoeffData(pcc_coeff_data& data);
  bool ClipPccCoeffs(pcc_coeff& coeff);

 private:
  friend class HwAssetBase<HwAssetPCC, PccConfig>;
  // Reads the main coefficients into `fresh` and, when "Tuning" is present, the tuning record
  // (stored only when the whole section is accepted).
  ReadResult ReadJson(JsonFieldReader& reader, PccConfig& fresh);
  void WriteJson(Json::Value& json) const;

  PccConfig tuning_;
  ClipRange clip_constant_{-256.0, 255.9921875};           // c
  ClipRange clip_linear_{-4.0, 3.99996948};                // r, g, b
  ClipRange clip_quadratic_{-0.015625, 0.01562488};        // rr, gg, bb, rg, gb, rb
  ClipRange clip_cubic_{-6.10351563e-05, 6.10346906e-05};  // rgb
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_PCC_H_
