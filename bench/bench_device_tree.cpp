#include "bench/bench_device_tree.h"

#include <cstdio>
#include <system_error>

#include "examples/generator/example_device_tree.h"
#include "examples/generator/generator_words.h"
#include "examples/generator/panel_model.h"
#include "examples/generator/recipe_expander.h"
#include "formats/json_text.h"
#include "formats/keys.h"

namespace vexa::bench {
namespace {

namespace words = example::words;

using example::kCalibrationStem;
using example::kDataDir;
using example::kFactoryDir;
using example::kFactoryStem;
using example::kMergeRulesStem;
using example::kVendorDir;

constexpr uint32_t kFileVersionInline = 2;
constexpr uint32_t kFileVersionShared = 3;
constexpr uint32_t kIgcEntries = 257;
constexpr uint32_t kGcEntries = 1024;
constexpr uint32_t kGamutEntries = 4913;
constexpr uint32_t kSixZoneEntries = 384;
constexpr uint32_t kWhitePoint = 6500;
constexpr int kFirstFactoryIntent = 384;

// A measured panel slightly wider than sRGB, as a phone's OLED is.
constexpr example::Primaries kPanelPrimaries = {
    {0.6500, 0.3300}, {0.2950, 0.6150}, {0.1500, 0.0560}, {0.3100, 0.3270}};

// The colour space of factory mode j, shared by every calibration mode i with i % 4 == j.
struct ColourSpace {
  bool p3;
  bool gamma22;
  const char* Primaries() const { return p3 ? keys::kPrimariesP3 : keys::kPrimariesSrgb; }
  const char* Transfer() const { return gamma22 ? keys::kTransfer2p2 : keys::kTransferSrgb; }
  const char* Curve() const { return gamma22 ? words::kCurveGamma22 : words::kCurveSrgb; }
  const char* TableName() const { return gamma22 ? "gamma22" : "srgb"; }
  const char* GamutTarget() const { return Primaries(); }
};

ColourSpace SpaceOf(uint32_t index) {
  const uint32_t j = index % kFactoryModes;
  return {(j & 1u) != 0, (j & 2u) != 0};
}

std::string Numbered(const char* stem, uint32_t i) {
  char name[32];
  std::snprintf(name, sizeof(name), "%s_%03u", stem, i);
  return name;
}

std::string FactoryModeName(uint32_t j) { return Numbered("factory", j); }
std::string MergeId(uint32_t index) { return Numbered("panel", index % kFactoryModes); }

Json::Value GammaRecipe(const char* kind, const char* curve, uint32_t entries, const char* form) {
  Json::Value recipe(Json::objectValue);
  recipe[words::kGenerate] = kind;
  recipe[words::kCurve] = curve;
  recipe[words::kEntries] = entries;
  recipe[words::kForm] = form;
  return recipe;
}

Json::Value GamutRecipe(const char* target, const char* form) {
  Json::Value recipe(Json::objectValue);
  recipe[words::kGenerate] = words::kRecipeGamut;
  recipe[words::kTarget] = target;
  recipe[words::kForm] = form;
  return recipe;
}

Json::Value PccRecipe(double saturation) {
  Json::Value recipe(Json::objectValue);
  recipe[words::kGenerate] = words::kRecipePcc;
  recipe[words::kSaturation] = saturation;
  return recipe;
}

void SetDescriptor(Json::Value& mode, const ColourSpace& space, int intent, const char* intent_name,
                   const std::string& merge_id) {
  Json::Value& applicability = mode[keys::kApplicability];
  applicability[keys::kRenderIntent] = intent;
  applicability[keys::kGammaTransfer] = space.Transfer();
  applicability[keys::kColorPrimaries] = space.Primaries();
  applicability[keys::kRenderIntentName] = intent_name;
  mode[keys::kWhitePoint] = kWhitePoint;
  mode[keys::kMergeId] = merge_id;
  mode[keys::kDynamicRange] = keys::kRangeSdr;
}

// Inline tables: one JSON array per channel.
Json::Value InlineGammaSection(const char* kind, const char* curve, uint32_t entries) {
  Json::Value section(Json::objectValue);
  section[keys::kEnable] = true;
  for (const char* channel : {keys::kDitherLutR, keys::kDitherLutG, keys::kDitherLutB}) {
    section[channel] = GammaRecipe(kind, curve, entries, words::kFormArray);
  }
  return section;
}

Json::Value FactoryMode(uint32_t j) {
  const ColourSpace space = SpaceOf(j);
  Json::Value mode(Json::objectValue);
  SetDescriptor(mode, space, kFirstFactoryIntent + static_cast<int>(j), "factory", MergeId(j));
  mode[keys::kPostBlendIGC] = InlineGammaSection(words::kRecipeIgc, space.Curve(), kIgcEntries);
  mode[keys::kPostBlendGC] = InlineGammaSection(words::kRecipeGc, space.Curve(), kGcEntries);
  Json::Value& gamut = mode[keys::kPostBlendGamut];
  gamut[keys::kEnable] = true;
  gamut[keys::kGamutMapFine] = GamutRecipe(space.GamutTarget(), words::kFormArray);
  mode[keys::kPostBlendPCC] = PccRecipe(1.0);
  return mode;
}

// "Predefined" gamma tables use one list for all channels; "Custom" ones one list per channel.
Json::Value SharedGammaSection(const char* kind, uint32_t entries) {
  Json::Value section(Json::objectValue);
  section[keys::kNumEntries] = entries;
  for (const ColourSpace& space : {SpaceOf(0), SpaceOf(2)}) {
    section[keys::kPredefined][space.TableName()] =
        GammaRecipe(kind, space.Curve(), entries, words::kFormList);
  }
  const struct {
    const char* name;
    const char* curves[3];
  } kCustom[] = {{"warm", {words::kCurveSrgb, words::kCurveSrgb, words::kCurveGamma22}},
                 {"cool", {words::kCurveGamma22, words::kCurveSrgb, words::kCurveSrgb}}};
  for (const auto& table : kCustom) {
    Json::Value& channels = section[keys::kCustom][table.name];
    channels[keys::kDitherLutR] = GammaRecipe(kind, table.curves[0], entries, words::kFormList);
    channels[keys::kDitherLutG] = GammaRecipe(kind, table.curves[1], entries, words::kFormList);
    channels[keys::kDitherLutB] = GammaRecipe(kind, table.curves[2], entries, words::kFormList);
  }
  return section;
}

// Two tables per target: the plain one and a "vivid" variant of the same data.
std::string GamutTableName(uint32_t i) {
  const ColourSpace space = SpaceOf(i);
  return std::string(space.p3 ? "p3" : "srgb") + ((i / kFactoryModes) % 2 ? "_vivid" : "");
}

Json::Value SharedGamutSection() {
  Json::Value section(Json::objectValue);
  section[keys::kNumEntries] = kGamutEntries;
  for (uint32_t i = 0; i < 2 * kFactoryModes; ++i) {
    section[keys::kCustom][GamutTableName(i)] = GamutRecipe(SpaceOf(i).GamutTarget(), words::kFormList);
  }
  return section;
}

// 384 comma-separated values, different per mode and per curve.
std::string SixZoneCurve(uint32_t mode, uint32_t curve) {
  std::string text;
  for (uint32_t e = 0; e < kSixZoneEntries; ++e) {
    if (e > 0) text += ',';
    text += std::to_string((e * (curve + 3) + mode * 11) % 1024);
  }
  return text;
}

Json::Value MemoryColour(double hue_adj, const char* left_edge, const char* right_edge) {
  Json::Value region(Json::objectValue);
  region[keys::kEnable] = true;
  region[keys::kPaBlendingEnable] = true;
  region[keys::kPaProtectVsSixZone] = true;
  Json::Value& hue = region[keys::kPaHue];
  hue[keys::kPaAdj] = hue_adj;
  hue[keys::kPaMin] = 10;
  hue[keys::kPaMax] = 40;
  hue[keys::kPaMid] = 25;
  hue[keys::kPaProtect] = true;
  for (const char* key : {keys::kPaSat, keys::kPaVal}) {
    Json::Value& part = region[key];
    part[keys::kPaAdj] = 0.1;
    part[keys::kPaMin] = 0.2;
    part[keys::kPaMax] = 0.8;
    part[keys::kPaMid] = 3;
    part[keys::kPaTrapezoidEdgeLeft] = left_edge;
    part[keys::kPaTrapezoidEdgeRight] = right_edge;
  }
  return region;
}

Json::Value PaSection(uint32_t i) {
  Json::Value pa(Json::objectValue);
  pa[keys::kPaHue] = static_cast<int>(i % 7) - 3;
  pa[keys::kPaSat] = 0.05;
  pa[keys::kPaVal] = -0.02;
  pa[keys::kPaCont] = 0.1;
  pa[keys::kPaSatThresh] = 0.2;
  pa[keys::kPaMemColSkin] = MemoryColour(2, keys::kPaSlope, keys::kPaStep);
  pa[keys::kPaMemColSky] = MemoryColour(-4, keys::kPaStep, keys::kPaSlope);
  pa[keys::kPaMemColFol] = MemoryColour(6, keys::kPaSlope, keys::kPaSlope);
  Json::Value& six_zone = pa[keys::kPaSixZone];
  six_zone[keys::kEnable] = true;
  six_zone[keys::kNumEntries] = kSixZoneEntries;
  uint32_t curve = 0;
  for (const char* key : {keys::kPaHueCurve, keys::kPaSatCurve, keys::kPaValCurve}) {
    six_zone[key] = SixZoneCurve(i, curve++);
  }
  Json::Value& thresholds = pa[keys::kPaSixZoneThresholds];
  Json::Value& sat = thresholds[keys::kPaSat];
  sat[keys::kPaMin] = 5;
  sat[keys::kPaMax] = 60;
  sat[keys::kPaOffset] = 7;
  sat[keys::kPaTrapezoidEdgeLeft] = keys::kPaSlope;
  sat[keys::kPaTrapezoidEdgeRight] = keys::kPaSlope;
  sat[keys::kPaSvEnable] = true;
  thresholds[keys::kPaSatLow] = 11;
  thresholds[keys::kPaSatMid] = 22;
  thresholds[keys::kPaSatHigh] = 33;
  return pa;
}

Json::Value DitherSection(uint32_t i) {
  static const uint32_t kBayer4[] = {0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5};
  Json::Value dither(Json::objectValue);
  dither[keys::kEnable] = true;
  dither[keys::kDitherDitherMode] = i % 2 ? keys::kDitherModeInterleave : keys::kDitherModeLuma;
  for (const char* key : {keys::kDitherStrengthR, keys::kDitherStrengthG, keys::kDitherStrengthB}) {
    dither[key] = 2;
  }
  dither[keys::kDitherTemporalEnable] = 1;
  Json::Value& matrix = dither[keys::kDitherMatrix] = Json::Value(Json::arrayValue);
  for (uint32_t value : kBayer4) matrix.append(value);
  return dither;
}

Json::Value DeSection(uint32_t i) {
  Json::Value de(Json::objectValue);
  de[keys::kEnable] = true;
  de[keys::kDeFlags] = keys::kDeFlagSharpness;
  de[keys::kDeSharp] = 16 + i % 16;
  de[keys::kDeThrQuiet] = 8;
  de[keys::kDeThrDieout] = 400;
  de[keys::kDeThrLow] = 16;
  de[keys::kDeThrHigh] = 64;
  de[keys::kDeClip] = 512;
  de[keys::kDeQuality] = keys::kDeQualityHighGraphics;
  de[keys::kDeBlend] = 0;
  return de;
}

Json::Value GameBlobSection(uint32_t i) {
  Json::Value blob(Json::objectValue);
  blob[keys::kEnable] = true;
  blob[keys::kBlob] = "game;low_latency=1;frame_rate=120;profile=" + std::to_string(i);
  return blob;
}

const char* IntentName(uint32_t i) {
  static const char* const kNames[] = {keys::kIntentStandard, keys::kIntentVivid,
                                       keys::kIntentDisplayP3, keys::kIntentEnhanced};
  return kNames[i % std::size(kNames)];
}

Json::Value MergeOps() {
  Json::Value ops(Json::objectValue);
  ops[keys::kPostBlendGamutMergeOp] = keys::kOperandLeft;
  ops[keys::kPostBlendPCCMergeOp] = keys::kOperandLeft;
  for (const char* key : {keys::kPostBlendIGCMergeOp, keys::kPostBlendGCMergeOp,
                          keys::kPostBlendPaGlobalMergeOp, keys::kPostBlendPaMemoryColorMergeOp,
                          keys::kPostBlendPaMultiZoneMergeOp, keys::kPostBlendDitherMergeOp,
                          keys::kPostBlendDEMergeOp, keys::kPostBlendGameBlobMergeOp}) {
    ops[key] = keys::kOperandRight;
  }
  return ops;
}

Json::Value ModesFile(uint32_t version) {
  Json::Value file(Json::objectValue);
  file[keys::kCopyright] = "Benchmark device tree of vexa-json-mode-parser.";
  file[keys::kVersion] = version;
  return file;
}

}  // namespace

std::filesystem::path FactoryFilePath() {
  return std::filesystem::path(kFactoryDir) / (std::string(kFactoryStem) + "_" + kBenchPanel + ".json");
}
std::filesystem::path CalibrationFilePath() {
  return std::filesystem::path(kVendorDir) / (std::string(kCalibrationStem) + "_" + kBenchPanel + ".json");
}
std::filesystem::path MergeRulesFilePath() {
  return std::filesystem::path(kVendorDir) / (std::string(kMergeRulesStem) + "_" + kBenchPanel + ".json");
}
std::filesystem::path DataDirPath() { return kDataDir; }

std::string BenchDeviceTree::CalibrationModeName(uint32_t i) { return Numbered("mode", i); }

Json::Value BenchDeviceTree::FactoryDocument() const {
  Json::Value file = ModesFile(kFileVersionInline);
  for (uint32_t j = 0; j < kFactoryModes; ++j) {
    file[words::kPanelPlaceholder][FactoryModeName(j)] = FactoryMode(j);
  }
  return file;
}

Json::Value BenchDeviceTree::CalibrationMode(uint32_t i) const {
  const ColourSpace space = SpaceOf(i);
  Json::Value mode(Json::objectValue);
  SetDescriptor(mode, space, 1 + static_cast<int>(i), IntentName(i), MergeId(i));
  Json::Value& igc = mode[keys::kPostBlendIGC];
  igc[keys::kEnable] = true;
  igc[keys::kNumEntries] = kIgcEntries;
  igc[keys::kPredefined] = space.TableName();
  igc[keys::kIgcDitherEnable] = true;
  igc[keys::kIgcDitherStrength] = 4;
  Json::Value& gc = mode[keys::kPostBlendGC];
  gc[keys::kEnable] = true;
  gc[keys::kNumEntries] = kGcEntries;
  if (i % 8 < 4) {
    gc[keys::kPredefined] = space.TableName();
  } else {
    gc[keys::kCustom] = i % 2 ? "cool" : "warm";
  }
  Json::Value& gamut = mode[keys::kPostBlendGamut];
  gamut[keys::kEnable] = true;
  gamut[keys::kNumEntries] = kGamutEntries;
  gamut[keys::kCustom] = GamutTableName(i);
  if (HasGamutTuning(i)) gamut[keys::kGamutTuning] = GamutRecipe(space.GamutTarget(), words::kFormList);
  mode[keys::kPostBlendPCC] = PccRecipe(1.0 + 0.01 * (i % 10));
  mode[keys::kPostBlendPa] = PaSection(i);
  mode[keys::kPostBlendDither] = DitherSection(i);
  mode[keys::kPostBlendDE] = DeSection(i);
  mode[keys::kPostBlendGameBlob] = GameBlobSection(i);
  return mode;
}

Json::Value BenchDeviceTree::CalibrationDocument() const {
  Json::Value file = ModesFile(kFileVersionShared);
  Json::Value& common = file[keys::kCommon];
  common[keys::kPostBlendIGC] = SharedGammaSection(words::kRecipeIgc, kIgcEntries);
  common[keys::kPostBlendGC] = SharedGammaSection(words::kRecipeGc, kGcEntries);
  common[keys::kPostBlendGamut] = SharedGamutSection();
  for (uint32_t i = 0; i < calibration_modes_; ++i) {
    file[words::kPanelPlaceholder][CalibrationModeName(i)] = CalibrationMode(i);
  }
  return file;
}

// The merged mode has the calibration mode's descriptor, so it takes that mode's place.
Json::Value BenchDeviceTree::MergeRule(uint32_t i) const {
  Json::Value rule(Json::objectValue);
  rule[keys::kModeNameInputLeft] = FactoryModeName(i % kFactoryModes);
  rule[keys::kModeNameInputRight] = CalibrationModeName(i);
  SetDescriptor(rule, SpaceOf(i), 1 + static_cast<int>(i), IntentName(i), MergeId(i));
  rule[keys::kMergeOps] = MergeOps();
  return rule;
}

Json::Value BenchDeviceTree::MergeRulesDocument() const {
  Json::Value file(Json::objectValue);
  file[keys::kCopyright] = "Benchmark merge rules of vexa-json-mode-parser.";
  Json::Value& rules = file[words::kPanelPlaceholder][keys::kMergedModes];
  for (uint32_t i = 1; i < calibration_modes_; i += 2) rules[Numbered("merged", i)] = MergeRule(i);
  return file;
}

bool BenchDeviceTree::Write(const std::filesystem::path& root, std::string* error) const {
  const auto model = example::PanelModel::Create(kPanelPrimaries);
  if (!model) {
    *error = "degenerate benchmark panel";
    return false;
  }
  const example::RecipeExpander expander(*model);
  struct {
    std::filesystem::path path;
    Json::Value document;
    example::DeviceFileKind kind;
  } files[] = {
      {FactoryFilePath(), FactoryDocument(), example::DeviceFileKind::kModes},
      {CalibrationFilePath(), CalibrationDocument(), example::DeviceFileKind::kModes},
      {MergeRulesFilePath(), MergeRulesDocument(), example::DeviceFileKind::kMergeRules},
  };
  for (auto& file : files) {
    if (!example::PackDeviceDocument(file.document, file.kind, kBenchPanel, expander, error) ||
        !example::WriteTextFile(root / file.path, JsonToCompactText(file.document), error)) {
      *error = file.path.string() + ": " + *error;
      return false;
    }
  }
  std::error_code failure;
  std::filesystem::create_directories(root / DataDirPath(), failure);
  if (failure) {
    *error = "cannot create " + (root / DataDirPath()).string();
    return false;
  }
  return true;
}

}  // namespace vexa::bench
