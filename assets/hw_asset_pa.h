// Picture adjustment: global hue, saturation, value and contrast, three memory-colour regions
// (skin, sky, foliage) and the six-zone curves. The feature-flag word `ops` records which parts
// are in force; the block is enabled exactly when it is non-zero.
//
// JSON form (no top-level "enable"; AsJV writes one, SetConfig ignores it):
//   "hue" (integer), "sat", "val", "cont", "satThresh" (numbers): the global adjustments.
//   "MemColSkin", "MemColSky", "MemColFol": objects with "enable", "protectContrast",
//     "protectVsSixZone", "blendingEnable" and the objects "hue" ("adj", "min", "max" integers),
//     "sat" and "val" ("adj", "min", "max" numbers, "trapezoidEdgeLeft", "trapezoidEdgeRight"),
//     each with "mid" (unsigned) and "protect". A region that is absent reads as a neutral region
//     (every flag off, blending on) and sets no feature bit; within a present region a missing
//     member reads as false or 0, so a present region without "blendingEnable" disables blending.
//   "SixZone": "enable", "numEntries" (must be 384), the curves "hueCurve", "satCurve",
//     "valCurve", "satCurveMid", "satCurveHigh" (the last two fall back to "satCurve"). From asset
//     version 3 a curve is a string of comma-separated unsigned numbers; below 3 it is an array of
//     unsigned numbers (a string is accepted too). A curve supplies the first 384 values; a
//     missing curve leaves its values 0, a shorter or malformed one refuses the section. Absent
//     "SixZone": the six-zone section stays zero and numEntries is not checked.
//   "SixZoneThresholds": "sat" ("min", "max" integers, "offset" unsigned, the two edge names,
//     "svEnable") beside "satLow", "satMid", "satHigh" (unsigned).
// Edge names: "SLOPE" sets the edge's bit, any other name counts as "STEP". Edges are read only
// when present; deliberately, the skin region's "sat" tests "trapezoidEdgeRight" for presence but
// takes its text from "trapezoidEdgeLeft" (the right edge repeats the left), as the files expect.
//
// AsJV writes every member above (the "SixZone" object only once it was read), in the form the
// asset version selects, so SetConfig(AsJV()) gives back an enabled record read from JSON (or
// assembled from such records) unchanged; a disabled one is written as "enable": false alone.
#ifndef VEXA_ASSETS_HW_ASSET_PA_H_
#define VEXA_ASSETS_HW_ASSET_PA_H_

#include <string>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetPA : public HwAssetBase<HwAssetPA, PaConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetPA";
  static constexpr const char* kClassName = "HwAssetPA";
  static constexpr const char* kPayloadName = keys::kPostBlendPa;
  static constexpr uint32_t kRecordLen = kPaConfigLen;

  // Names of the three merges in their error lines.
  static constexpr const char* kGlobalMergeName = "PaGlobal";
  static constexpr const char* kMemoryColorsMergeName = "PaMemoryColors";
  static constexpr const char* kMultiZoneMergeName = "PaMultiZone";

  // Feature bits that each merged part contributes to an assembled asset.
  static constexpr uint32_t kGlobalPartBits = kPaGlobal;
  static constexpr uint32_t kMemoryColorsPartBits =
      kPaMemColHueProtect | kPaMemColSatProtect | kPaMemColValProtect | kPaMemColContrastProtect |
      kPaMemColSkin | kPaMemColSky | kPaMemColFoliage | kPaMemColSixZoneProtect |
      kPaMemColBlendDisable;
  static constexpr uint32_t kMultiZonePartBits = kPaSixZone;

  HwAssetPA(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  // Op 1 copies the left operand's whole record, op 2 the right's, any other op leaves identity.
  // The three merges differ only in their error lines.
  HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaGlobalMergeOp op, std::shared_ptr<HwAssetPA> left,
            std::shared_ptr<HwAssetPA> right);
  HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaMemoryColorsMergeOp op,
            std::shared_ptr<HwAssetPA> left, std::shared_ptr<HwAssetPA> right);
  HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaMultiZoneMergeOp op,
            std::shared_ptr<HwAssetPA> left, std::shared_ptr<HwAssetPA> right);

  using HwAssetBase::SetConfig;
  // Reads the JSON form above into a fresh record; a wrong member type, a bad curve or a bad
  // "numEntries" sets identity instead.
  void SetConfig(const Json::Value& config) override;
  // Disables the block: enable, ops and the reserved word cleared, the sections kept.
  void SetIdentity() override;

  // Replaces the record with one assembled from the results of the three PA merges (any may be
  // null): the global section from `global_part`, the three memory-colour regions from
  // `memory_colors_part` (neutral regions when null), the six-zone section and its thresholds
  // from `multi_zone_part`. ops is (global ops & kGlobalPartBits) | (memory-colour ops &
  // kMemoryColorsPartBits) | (multi-zone ops & kMultiZonePartBits); enabled when non-zero.
  void Assemble(const std::shared_ptr<HwAssetPA>& global_part,
                const std::shared_ptr<HwAssetPA>& memory_colors_part,
                const std::shared_ptr<HwAssetPA>& multi_zone_part);

  // Trapezoid edge type of two edge names: "STEP"/"STEP" 0, "SLOPE"/"STEP" 1, "STEP"/"SLOPE" 2,
  // "SLOPE"/"SLOPE" 3; a name other than "SLOPE" counts as "STEP".
  static uint32_t Map(const std::string& left, const std::string& right);
  // The edge names back; "INVALID" for a type above 3.
  static std::string MapLeftEdge(uint32_t trapezoid_edge_type);
  static std::string MapRightEdge(uint32_t trapezoid_edge_type);

 private:
  friend class HwAssetBase<HwAssetPA, PaConfig>;
  // The merge shared by the three public merge constructors; `merge_name` names it in errors.
  HwAssetPA(uint32_t op, const std::shared_ptr<HwAssetPA>& left,
            const std::shared_ptr<HwAssetPA>& right, const char* merge_name);
  // kIdentity when the section is refused (wrong type, bad curve, bad "numEntries").
  ReadResult ReadJson(JsonFieldReader& reader, PaConfig& fresh) const;
  void WriteJson(Json::Value& json) const;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_PA_H_
