// The JSON vocabulary: every member name and word that the modes files, the merge-rules file and
// the merge-version file use, defined once. Lookups are exact and case-sensitive. A word used in
// two roles is two constants with the same text.
#ifndef VEXA_FORMATS_KEYS_H_
#define VEXA_FORMATS_KEYS_H_

#include <map>
#include <string>

namespace vexa {
namespace keys {

// File and mode structure.
inline constexpr char kCopyright[] = "COPYRIGHT";
inline constexpr char kVersion[] = "Version";
inline constexpr char kCommon[] = "Common";
inline constexpr char kPredefined[] = "Predefined";
inline constexpr char kCustom[] = "Custom";
inline constexpr char kInvalid[] = "INVALID";
inline constexpr char kDisplayId[] = "displayID";
inline constexpr char kEnable[] = "enable";
inline constexpr char kBlob[] = "blob";
inline constexpr char kApplicability[] = "Applicability";
inline constexpr char kPanel[] = "Panel";
inline constexpr char kRenderIntent[] = "RenderIntent";
inline constexpr char kRenderIntentName[] = "RenderIntentName";
inline constexpr char kColorPrimaries[] = "ColorPrimaries";
inline constexpr char kGammaTransfer[] = "GammaTransfer";
inline constexpr char kDynamicRange[] = "DynamicRange";
inline constexpr char kWhitePoint[] = "WhitePoint";
inline constexpr char kMergeId[] = "MergeId";
inline constexpr char kNumEntries[] = "numEntries";

// Asset sections (also the payload names).
inline constexpr char kPostBlendGamut[] = "PostBlendGamut";
inline constexpr char kPostBlendIGC[] = "PostBlendIGC";
inline constexpr char kPostBlendGC[] = "PostBlendGC";
inline constexpr char kPostBlendPCC[] = "PostBlendPCC";
inline constexpr char kPostBlendPa[] = "PostBlendPa";
inline constexpr char kPostBlendDither[] = "PostBlendDither";
inline constexpr char kPostBlendPaDither[] = "PostBlendPaDither";
inline constexpr char kPostBlendDE[] = "PostBlendDE";
inline constexpr char kPostBlendHdrBlob[] = "PostBlendHdrBlob";
inline constexpr char kPostBlendGameBlob[] = "PostBlendGameBlob";
inline constexpr char kPostBlendMixerGc[] = "PostBlendMixerGc";
inline constexpr char kPostBlendCWBDither[] = "PostBlendCWBDither";
inline constexpr char kHwCapIgcDither[] = "HwCapIgcDither";

// Picture adjustment.
inline constexpr char kPaCont[] = "cont";
inline constexpr char kPaSat[] = "sat";
inline constexpr char kPaSatThresh[] = "satThresh";
inline constexpr char kPaHue[] = "hue";
inline constexpr char kPaVal[] = "val";
inline constexpr char kPaMemColSkin[] = "MemColSkin";
inline constexpr char kPaMemColSky[] = "MemColSky";
inline constexpr char kPaMemColFol[] = "MemColFol";
inline constexpr char kPaProtect[] = "protect";
inline constexpr char kPaBlendingEnable[] = "blendingEnable";
inline constexpr char kPaProtectEnable[] = "protectEnable";
inline constexpr char kPaProtectContrast[] = "protectContrast";
inline constexpr char kPaProtectVsSixZone[] = "protectVsSixZone";
inline constexpr char kPaTrapezoidEdgeLeft[] = "trapezoidEdgeLeft";
inline constexpr char kPaTrapezoidEdgeRight[] = "trapezoidEdgeRight";
inline constexpr char kPaSlope[] = "SLOPE";
inline constexpr char kPaStep[] = "STEP";
inline constexpr char kPaAdj[] = "adj";
inline constexpr char kPaMin[] = "min";
inline constexpr char kPaMid[] = "mid";
inline constexpr char kPaMax[] = "max";
inline constexpr char kPaOffset[] = "offset";
inline constexpr char kPaSixZone[] = "SixZone";
inline constexpr char kPaSixZoneThresholds[] = "SixZoneThresholds";
inline constexpr char kPaHueCurve[] = "hueCurve";
inline constexpr char kPaSatCurve[] = "satCurve";
inline constexpr char kPaValCurve[] = "valCurve";
inline constexpr char kPaSatCurveMid[] = "satCurveMid";
inline constexpr char kPaSatCurveHigh[] = "satCurveHigh";
inline constexpr char kPaSatLow[] = "satLow";
inline constexpr char kPaSatMid[] = "satMid";
inline constexpr char kPaSatHigh[] = "satHigh";
inline constexpr char kPaSvEnable[] = "svEnable";

// Polynomial colour correction.
inline constexpr char kPccR[] = "R";
inline constexpr char kPccG[] = "G";
inline constexpr char kPccB[] = "B";
inline constexpr char kPccCoeffR[] = "r";
inline constexpr char kPccCoeffG[] = "g";
inline constexpr char kPccCoeffB[] = "b";
inline constexpr char kPccCoeffRR[] = "rr";
inline constexpr char kPccCoeffGG[] = "gg";
inline constexpr char kPccCoeffBB[] = "bb";
inline constexpr char kPccCoeffRG[] = "rg";
inline constexpr char kPccCoeffGB[] = "gb";
inline constexpr char kPccCoeffRB[] = "rb";
inline constexpr char kPccCoeffRGB[] = "rgb";
inline constexpr char kPccCoeffC[] = "c";
inline constexpr char kPccDisableBeforeUpload[] = "disableBeforeUpload";
inline constexpr char kPccTuning[] = "Tuning";

// Dither and PA dither.
inline constexpr char kDitherStrengthR[] = "strengthR";
inline constexpr char kDitherStrengthG[] = "strengthG";
inline constexpr char kDitherStrengthB[] = "strengthB";
inline constexpr char kDitherMode[] = "mode";
inline constexpr char kDitherMatrix[] = "matrix";
inline constexpr char kDitherDitherMode[] = "ditherMode";
inline constexpr char kDitherTemporalEnable[] = "temporalEnable";
inline constexpr char kDitherLutR[] = "lutR";
inline constexpr char kDitherLutG[] = "lutG";
inline constexpr char kDitherLutB[] = "lutB";
inline constexpr char kPaDitherStrength[] = "strength";
inline constexpr char kPaDitherOffsetEn[] = "offsetEn";
inline constexpr char kDitherModeLuma[] = "LUMA";
inline constexpr char kDitherModeInterleave[] = "INTERLEAVE";

// Gamut.
inline constexpr char kGamutMapFine[] = "mapFine";
inline constexpr char kGamutMapCoarse[] = "mapCoarse";
inline constexpr char kGamutTuning[] = "Tuning";
inline constexpr char kPrimariesSrgb[] = "sRGB";
inline constexpr char kPrimariesP3[] = "P3";
inline constexpr char kPrimariesMax[] = "ColorPrimaries_MAX";
inline constexpr char kRangeSdr[] = "SDR";
inline constexpr char kRangeHdr[] = "HDR";

// Gamma.
inline constexpr char kGammaBitsRounding[] = "bitsRounding";
inline constexpr char kTransferSrgb[] = "sRGB";
inline constexpr char kTransfer2p2[] = "2p2";
inline constexpr char kTransferMax[] = "Transfer_MAX";
inline constexpr char kGcLinear[] = "Linear";
inline constexpr char kGcRec709[] = "Rec709";
inline constexpr char kGcSrgb8bitRd[] = "sRGB8bitRd";
inline constexpr char kGcSrgb10bitRd[] = "sRGB10bitRd";
inline constexpr char kGcRec6018bitRd[] = "Rec6018bitRd";
inline constexpr char kGcRec60110bitRd[] = "Rec60110bitRd";
inline constexpr char kGcRec709WithDither[] = "Rec709withDither";
inline constexpr char kGcRec709NoDither[] = "Rec709noDither";
inline constexpr char kGcSrgbWithDither[] = "sRGBwithDither";
inline constexpr char kGcSrgbNoDither[] = "sRGBnoDither";
inline constexpr char kGcRec601WithDither[] = "Rec601withDither";
inline constexpr char kGcRec601NoDither[] = "Rec601noDither";
inline constexpr char kIgcDitherStrength[] = "ditherStrength";
inline constexpr char kIgcDitherEnable[] = "ditherEnable";
inline constexpr char kIgcLinear[] = "Linear";
inline constexpr char kIgcRec709[] = "Rec709";
inline constexpr char kIgcSrgb[] = "sRGB";
inline constexpr char kIgcRec601[] = "Rec601";

// Detail enhancement.
inline constexpr char kDeFlags[] = "flags";
inline constexpr char kDeFlagNone[] = "NONE";
inline constexpr char kDeFlagSharpness[] = "SHARPNESS";
inline constexpr char kDeFlagUpscaling[] = "UPSCALING";
inline constexpr char kDeFlagTransferCurve[] = "TRANSFER_CURVE";
inline constexpr char kDeFlagDeRing[] = "DE_RING";
inline constexpr char kDeFlagDeBlend[] = "DE_BLEND";
inline constexpr char kDeFlagAll[] = "ALL";
inline constexpr char kDeSharp[] = "sharp";
inline constexpr char kDeThrQuiet[] = "thrQuiet";
inline constexpr char kDeThrDieout[] = "thrDieout";
inline constexpr char kDeThrLow[] = "thrLow";
inline constexpr char kDeThrHigh[] = "thrHigh";
inline constexpr char kDeClip[] = "clip";
inline constexpr char kDeQuality[] = "quality";
inline constexpr char kDeQualityLowPower[] = "LOW_POWER";
inline constexpr char kDeQualityHighVideo[] = "HIGH_QUALITY_VIDEO";
inline constexpr char kDeQualityMediumVideo[] = "MEDIUM_QUALITY_VIDEO";
inline constexpr char kDeQualityHighGraphics[] = "HIGH_QUALITY_GRAPHICS";
inline constexpr char kDeQualityMediumGraphics[] = "MEDIUM_QUALITY_GRAPHICS";
inline constexpr char kDeBlend[] = "deBlend";
inline constexpr char kDeFlagDeLpfBlend[] = "DE_LPF_BLEND";
inline constexpr char kDeLpfHigh[] = "deLpfHigh";
inline constexpr char kDeLpfMid[] = "deLpfMid";
inline constexpr char kDeLpfLow[] = "deLpfLow";

// Merge rules.
inline constexpr char kModeMerge[] = "ModeMerge";
inline constexpr char kMergedModes[] = "MergedModes";
inline constexpr char kMergeOps[] = "MergeOps";
inline constexpr char kModeNameInputLeft[] = "ModeNameInputLeft";
inline constexpr char kModeNameInputRight[] = "ModeNameInputRight";
inline constexpr char kPostBlendGamutMergeOp[] = "PostBlendGamutMergeOp";
inline constexpr char kPostBlendPaGlobalMergeOp[] = "PostBlendPaGlobalMergeOp";
inline constexpr char kPostBlendPaMultiZoneMergeOp[] = "PostBlendPaMultiZoneMergeOp";
inline constexpr char kPostBlendPaMemoryColorMergeOp[] = "PostBlendPaMemoryColorMergeOp";
inline constexpr char kPostBlendPaDitherMergeOp[] = "PostBlendPaDitherMergeOp";
inline constexpr char kPostBlendGCMergeOp[] = "PostBlendGCMergeOp";
inline constexpr char kPostBlendIGCMergeOp[] = "PostBlendIGCMergeOp";
inline constexpr char kPostBlendPCCMergeOp[] = "PostBlendPCCMergeOp";
inline constexpr char kPostBlendDitherMergeOp[] = "PostBlendDitherMergeOp";
inline constexpr char kPostBlendDEMergeOp[] = "PostBlendDEMergeOp";
inline constexpr char kPostBlendHdrBlobMergeOp[] = "PostBlendHdrBlobMergeOp";
inline constexpr char kPostBlendGameBlobMergeOp[] = "PostBlendGameBlobMergeOp";
inline constexpr char kOperandIdentity[] = "IDENTITY";
inline constexpr char kOperandLeft[] = "LEFT_OPERAND";
inline constexpr char kOperandRight[] = "RIGHT_OPERAND";
inline constexpr char kOperandMerge[] = "MERGE_OPERAND";

// Mode flags and render-intent words.
inline constexpr char kFlagDynamicRange[] = "DynamicRange";
inline constexpr char kFlagColorGamut[] = "ColorGamut";
inline constexpr char kFlagPictureQuality[] = "PictureQuality";
inline constexpr char kFlagGammaTransfer[] = "GammaTransfer";
inline constexpr char kFlagRenderIntent[] = "RenderIntent";
inline constexpr char kIntentHdr[] = "hdr";
inline constexpr char kIntentSdr[] = "sdr";
inline constexpr char kIntentNative[] = "native";
inline constexpr char kIntentDcip3[] = "dcip3";
inline constexpr char kIntentSrgb[] = "srgb";
inline constexpr char kIntentDisplayP3[] = "display_p3";
inline constexpr char kIntentBt2020[] = "bt2020";
inline constexpr char kIntentHlg[] = "hlg";
inline constexpr char kIntentSt2084[] = "st2084";
inline constexpr char kIntentGamma22[] = "gamma2_2";
inline constexpr char kIntentVivid[] = "vivid";
inline constexpr char kIntentSharp[] = "sharp";
inline constexpr char kIntentStandard[] = "standard";
inline constexpr char kIntentAmazon[] = "amazon";
inline constexpr char kIntentNetflix[] = "netflix";
inline constexpr char kIntentEnhanced[] = "enhanced";

}  // namespace keys

// The merge versions that this device's merging code supports, by "ModeMerge" key.
inline const std::map<std::string, int>& DeviceMergeVersions() {
  static const std::map<std::string, int> kVersions = {
      {keys::kVersion, 1},
      {keys::kPostBlendGamutMergeOp, 2},
      {keys::kPostBlendPaGlobalMergeOp, 1},
      {keys::kPostBlendPaMultiZoneMergeOp, 1},
      {keys::kPostBlendPaMemoryColorMergeOp, 1},
      {keys::kPostBlendPaDitherMergeOp, 1},
      {keys::kPostBlendGCMergeOp, 1},
      {keys::kPostBlendIGCMergeOp, 1},
      {keys::kPostBlendPCCMergeOp, 2},
      {keys::kPostBlendDitherMergeOp, 1},
      {keys::kPostBlendDEMergeOp, 1},
      {keys::kPostBlendHdrBlobMergeOp, 1},
      {keys::kPostBlendGameBlobMergeOp, 1},
  };
  return kVersions;
}

}  // namespace vexa

#endif  // VEXA_FORMATS_KEYS_H_
