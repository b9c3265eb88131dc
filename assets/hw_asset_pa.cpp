#include "assets/hw_asset_pa.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "formats/decimal_list.h"

namespace vexa {
namespace {

constexpr const char* kLogLabel = HwAssetPA::kLogLabel;
// Section errors are reported as the reading function's.
constexpr char kSetConfig[] = "SetConfig";

// From this asset version the six-zone curves are comma-separated text.
constexpr uint32_t kCurveTextAssetVersion = 3;
constexpr uint32_t kEdgeTypeMax = kPaEdgeLeftSlope | kPaEdgeRightSlope;

struct MemColRegionSlot {
  const char* key;
  PaMemColRegion PaConfig::*region;
  uint32_t enable_bit;
  bool sat_right_repeats_left;  // the skin "sat" edge oddity
};

constexpr MemColRegionSlot kMemColRegions[] = {
    {keys::kPaMemColSkin, &PaConfig::skin, kPaMemColSkin, true},
    {keys::kPaMemColSky, &PaConfig::sky, kPaMemColSky, false},
    {keys::kPaMemColFol, &PaConfig::foliage, kPaMemColFoliage, false},
};

struct SixZoneCurve {
  const char* key;
  const char* fallback;  // read instead when `key` is absent
  uint32_t PaSixZoneEntry::*field;
};

constexpr SixZoneCurve kSixZoneCurves[] = {
    {keys::kPaHueCurve, nullptr, &PaSixZoneEntry::hue},
    {keys::kPaSatCurve, nullptr, &PaSixZoneEntry::sat},
    {keys::kPaValCurve, nullptr, &PaSixZoneEntry::val},
    {keys::kPaSatCurveMid, keys::kPaSatCurve, &PaSixZoneEntry::sat_mid},
    {keys::kPaSatCurveHigh, keys::kPaSatCurve, &PaSixZoneEntry::sat_high},
};
constexpr size_t kCurveCount = std::size(kSixZoneCurves);

// A region that is not there: nothing enabled or protected, blending on, so no feature bit.
PaMemColRegion NeutralRegion() {
  PaMemColRegion region{};
  region.blending_enable = 1;
  return region;
}

// ---------------------------------------------------------------------------------------------
// Reading
// ---------------------------------------------------------------------------------------------

// Reads the object member `key` with a reader of its own, whose error lines name the object.
// False when the member is not an object or `read` or a member inside is refused.
template <typename ReadFn>
bool ReadObject(JsonFieldReader& outer, const char* key, ReadFn&& read) {
  const Json::Value& object = outer.Object(key);
  ScopedJsonContext scope(JsonScope::kMember, key, std::string("member \"") + key + "\"");
  JsonFieldReader inner(object, kLogLabel);
  const bool read_ok = read(inner);
  return read_ok && inner.ok() && outer.ok();
}

// Edges are read only when present. With `right_repeats_left` the presence of the right edge is
// tested but its text comes from the left edge: the skin "sat" range is read so on purpose.
uint32_t ReadEdges(JsonFieldReader& reader, bool right_repeats_left) {
  std::string left = keys::kPaStep;
  std::string right = keys::kPaStep;
  if (reader.Has(keys::kPaTrapezoidEdgeLeft)) left = reader.String(keys::kPaTrapezoidEdgeLeft);
  if (reader.Has(keys::kPaTrapezoidEdgeRight)) {
    right = reader.String(keys::kPaTrapezoidEdgeRight);
    if (right_repeats_left) right = reader.String(keys::kPaTrapezoidEdgeLeft);
  }
  return HwAssetPA::Map(left, right);
}

void ReadGlobal(JsonFieldReader& reader, PaGlobalAdjust* global) {
  global->cont = reader.Float(keys::kPaCont);
  global->hue = reader.Int(keys::kPaHue);
  global->sat = reader.Float(keys::kPaSat);
  global->sat_thresh = reader.Float(keys::kPaSatThresh);
  global->val = reader.Float(keys::kPaVal);
}

// The members that hue, saturation and value share: "adj", "min", "max" (integers for hue,
// numbers for the others, read by `read_number`), "mid" and "protect".
template <typename Component, typename Number>
bool ReadComponent(JsonFieldReader& reader, Number (JsonFieldReader::*read_number)(const char*),
                   Component* component) {
  component->adj = (reader.*read_number)(keys::kPaAdj);
  component->min = (reader.*read_number)(keys::kPaMin);
  component->max = (reader.*read_number)(keys::kPaMax);
  component->mid = reader.Uint(keys::kPaMid);
  component->protect = reader.Bool(keys::kPaProtect);
  return true;
}

bool ReadRange(JsonFieldReader& reader, bool right_repeats_left, PaMemColRange* range) {
  ReadComponent(reader, &JsonFieldReader::Float, range);
  range->trapezoid_edge_type = ReadEdges(reader, right_repeats_left);
  return true;
}

bool ReadRegion(JsonFieldReader& reader, const MemColRegionSlot& slot, PaMemColRegion* region) {
  region->enable = reader.Bool(keys::kEnable);
  region->protect_contrast = reader.Bool(keys::kPaProtectContrast);
  region->protect_vs_six_zone = reader.Bool(keys::kPaProtectVsSixZone);
  region->blending_enable = reader.Bool(keys::kPaBlendingEnable);
  return ReadObject(reader, keys::kPaHue,
                    [&](JsonFieldReader& hue) {
                      return ReadComponent(hue, &JsonFieldReader::Int, &region->hue);
                    }) &&
         ReadObject(reader, keys::kPaSat,
                    [&](JsonFieldReader& sat) {
                      return ReadRange(sat, slot.sat_right_repeats_left, &region->sat);
                    }) &&
         ReadObject(reader, keys::kPaVal,
                    [&](JsonFieldReader& val) { return ReadRange(val, false, &region->val); });
}

// The first kPaSixZoneEntries values of the curve member `key` into `values`, left empty when
// the member is missing. False (with an error line) for a wrong type, or a curve that is short
// or holds something other than an unsigned number among those values.
bool ReadCurve(JsonFieldReader& reader, const char* key, std::vector<uint32_t>* values) {
  values->clear();
  const Json::Value& curve = reader.Raw(key);
  if (curve.isNull()) return true;
  if (curve.isString()) {
    if (ParseDecimalList(curve.asString(), kPaSixZoneEntries, values)) return true;
  } else if (curve.isArray()) {
    if (curve.size() >= kPaSixZoneEntries) {
      for (Json::ArrayIndex i = 0; i < kPaSixZoneEntries; ++i) {
        const uint32_t value = reader.ElementUint(curve, i, key);
        if (!reader.ok()) return false;
        values->push_back(value);
      }
      return true;
    }
  } else {
    LogWrongType(kLogLabel, key, "string or array of unsigned integers", curve);
    reader.Refuse();
    return false;
  }
  VKR_LOGE_AT(kLogLabel, kSetConfig, __LINE__,
              "Invalid six-zone curve \"%s\"%s: expected %u unsigned numbers", key,
              JsonContextSuffix().c_str(), kPaSixZoneEntries);
  reader.Refuse();
  return false;
}

bool ReadSixZone(JsonFieldReader& reader, uint32_t asset_version, PaSixZone* six_zone) {
  const char* sources[kCurveCount];
  for (size_t i = 0; i < kCurveCount; ++i) {
    const SixZoneCurve& curve = kSixZoneCurves[i];
    const bool own = curve.fallback == nullptr || reader.Has(curve.key);
    sources[i] = own ? curve.key : curve.fallback;
  }
  if (asset_version >= kCurveTextAssetVersion) {
    for (const char* source : sources) {
      if (reader.Has(source) && !reader.Raw(source).isString()) {
        VKR_LOGI_AT(2, kLogLabel, kSetConfig, __LINE__,
                    "Incompatible PA Six-zone JSON Data String");
        return false;
      }
    }
  }
  const int32_t num_entries = reader.Int(keys::kNumEntries);
  if (!reader.ok()) return false;
  if (num_entries != static_cast<int32_t>(kPaSixZoneEntries)) {
    VKR_LOGI_AT(2, kLogLabel, kSetConfig, __LINE__,
                "Unexpected number of entries size %d, expecting %d", num_entries,
                static_cast<int>(kPaSixZoneEntries));
    return false;
  }
  six_zone->enable = reader.Bool(keys::kEnable);
  six_zone->num_entries = kPaSixZoneEntries;
  std::vector<uint32_t> values;
  for (size_t i = 0; i < kCurveCount; ++i) {
    if (!ReadCurve(reader, sources[i], &values)) return false;
    const size_t count = std::min<size_t>(values.size(), kPaSixZoneEntries);
    for (size_t e = 0; e < count; ++e) six_zone->entries[e].*kSixZoneCurves[i].field = values[e];
  }
  return reader.ok();
}

bool ReadThresholds(JsonFieldReader& reader, PaSixZoneThresholds* thresholds) {
  const bool sat_ok = ReadObject(reader, keys::kPaSat, [&](JsonFieldReader& sat) {
    thresholds->sat_min = sat.Int(keys::kPaMin);
    thresholds->sat_max = sat.Int(keys::kPaMax);
    thresholds->sat_offset = sat.Uint(keys::kPaOffset);
    thresholds->trapezoid_edge_type = ReadEdges(sat, false);
    thresholds->sv_enable = sat.Bool(keys::kPaSvEnable);
    return true;
  });
  thresholds->sat_low = reader.Uint(keys::kPaSatLow);
  thresholds->sat_mid = reader.Uint(keys::kPaSatMid);
  thresholds->sat_high = reader.Uint(keys::kPaSatHigh);
  return sat_ok && reader.ok();
}

// ---------------------------------------------------------------------------------------------
// Feature bits
// ---------------------------------------------------------------------------------------------

uint32_t GlobalBits(const PaGlobalAdjust& global) {
  const bool any = global.hue != 0 || global.sat != 0.0f || global.val != 0.0f ||
                   global.cont != 0.0f || global.sat_thresh != 0.0f;
  return any ? kPaGlobal : 0u;
}

uint32_t RegionBits(const PaMemColRegion& region, uint32_t enable_bit) {
  uint32_t bits = 0;
  if (region.hue.protect) bits |= kPaMemColHueProtect;
  if (region.sat.protect) bits |= kPaMemColSatProtect;
  if (region.val.protect) bits |= kPaMemColValProtect;
  if (region.protect_contrast) bits |= kPaMemColContrastProtect;
  if (region.enable) bits |= enable_bit;
  if (region.protect_vs_six_zone) bits |= kPaMemColSixZoneProtect;
  if (!region.blending_enable) bits |= kPaMemColBlendDisable;
  return bits;
}

uint32_t FeatureBits(const PaConfig& config) {
  uint32_t ops = GlobalBits(config.global);
  for (const MemColRegionSlot& slot : kMemColRegions) {
    ops |= RegionBits(config.*slot.region, slot.enable_bit);
  }
  if (config.six_zone.enable) ops |= kPaSixZone;
  return ops;
}

// ---------------------------------------------------------------------------------------------
// Writing
// ---------------------------------------------------------------------------------------------

Json::Value Number(int32_t value) { return Json::Value(value); }
Json::Value Number(float value) { return Json::Value(static_cast<double>(value)); }
Json::Value Flag(uint32_t value) { return Json::Value(value != 0); }

template <typename Component>
Json::Value ComponentJson(const Component& component) {
  Json::Value json(Json::objectValue);
  json[keys::kPaAdj] = Number(component.adj);
  json[keys::kPaMin] = Number(component.min);
  json[keys::kPaMax] = Number(component.max);
  json[keys::kPaMid] = component.mid;
  json[keys::kPaProtect] = Flag(component.protect);
  return json;
}

// The edges as names. Where the right edge's text is read from the left edge, the right edge is
// written only when it equals the left: an absent right edge reads back as "STEP".
void WriteEdges(uint32_t edge_type, bool right_repeats_left, Json::Value& json) {
  const std::string left = HwAssetPA::MapLeftEdge(edge_type);
  const std::string right = HwAssetPA::MapRightEdge(edge_type);
  json[keys::kPaTrapezoidEdgeLeft] = left;
  if (!right_repeats_left || right == left) json[keys::kPaTrapezoidEdgeRight] = right;
}

Json::Value RangeJson(const PaMemColRange& range, bool right_repeats_left) {
  Json::Value json = ComponentJson(range);
  WriteEdges(range.trapezoid_edge_type, right_repeats_left, json);
  return json;
}

Json::Value RegionJson(const PaMemColRegion& region, const MemColRegionSlot& slot) {
  Json::Value json(Json::objectValue);
  json[keys::kEnable] = Flag(region.enable);
  json[keys::kPaProtectContrast] = Flag(region.protect_contrast);
  json[keys::kPaProtectVsSixZone] = Flag(region.protect_vs_six_zone);
  json[keys::kPaBlendingEnable] = Flag(region.blending_enable);
  json[keys::kPaHue] = ComponentJson(region.hue);
  json[keys::kPaSat] = RangeJson(region.sat, slot.sat_right_repeats_left);
  json[keys::kPaVal] = RangeJson(region.val, false);
  return json;
}

Json::Value CurveJson(const PaSixZone& six_zone, uint32_t PaSixZoneEntry::*field, bool as_text) {
  if (as_text) {
    std::string text;
    for (const PaSixZoneEntry& entry : six_zone.entries) {
      if (!text.empty()) text += ',';
      text += std::to_string(entry.*field);
    }
    return Json::Value(text);
  }
  Json::Value array(Json::arrayValue);
  for (const PaSixZoneEntry& entry : six_zone.entries) array.append(entry.*field);
  return array;
}

Json::Value SixZoneJson(const PaSixZone& six_zone, bool curves_as_text) {
  Json::Value json(Json::objectValue);
  json[keys::kEnable] = Flag(six_zone.enable);
  json[keys::kNumEntries] = six_zone.num_entries;
  for (const SixZoneCurve& curve : kSixZoneCurves) {
    json[curve.key] = CurveJson(six_zone, curve.field, curves_as_text);
  }
  return json;
}

Json::Value ThresholdsJson(const PaSixZoneThresholds& thresholds) {
  Json::Value sat(Json::objectValue);
  sat[keys::kPaMin] = thresholds.sat_min;
  sat[keys::kPaMax] = thresholds.sat_max;
  sat[keys::kPaOffset] = thresholds.sat_offset;
  WriteEdges(thresholds.trapezoid_edge_type, false, sat);
  sat[keys::kPaSvEnable] = Flag(thresholds.sv_enable);
  Json::Value json(Json::objectValue);
  json[keys::kPaSat] = sat;
  json[keys::kPaSatLow] = thresholds.sat_low;
  json[keys::kPaSatMid] = thresholds.sat_mid;
  json[keys::kPaSatHigh] = thresholds.sat_high;
  return json;
}

std::string EdgeName(uint32_t edge_type, uint32_t slope_bit) {
  if (edge_type > kEdgeTypeMax) return keys::kInvalid;
  return (edge_type & slope_bit) != 0 ? keys::kPaSlope : keys::kPaStep;
}

}  // namespace

HwAssetPA::HwAssetPA(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {}

HwAssetPA::HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaGlobalMergeOp op,
                     std::shared_ptr<HwAssetPA> left, std::shared_ptr<HwAssetPA> right)
    : HwAssetPA(static_cast<uint32_t>(op), left, right, kGlobalMergeName) {}

HwAssetPA::HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaMemoryColorsMergeOp op,
                     std::shared_ptr<HwAssetPA> left, std::shared_ptr<HwAssetPA> right)
    : HwAssetPA(static_cast<uint32_t>(op), left, right, kMemoryColorsMergeName) {}

HwAssetPA::HwAssetPA(kiv_mode_merge_caps::KivPostBlendPaMultiZoneMergeOp op,
                     std::shared_ptr<HwAssetPA> left, std::shared_ptr<HwAssetPA> right)
    : HwAssetPA(static_cast<uint32_t>(op), left, right, kMultiZoneMergeName) {}

HwAssetPA::HwAssetPA(uint32_t op, const std::shared_ptr<HwAssetPA>& left,
                     const std::shared_ptr<HwAssetPA>& right, const char* merge_name)
    : HwAssetBase(0, nullptr) {
  MergeFromOperands(op, left, right, merge_name);
}

void HwAssetPA::SetConfig(const Json::Value& config) {
  JsonFieldReader reader(config, kLogLabel);
  std::unique_ptr<PaConfig> fresh = NewRecord();
  if (ReadJson(reader, *fresh) != ReadResult::kStore) {
    SetIdentity();
    return;
  }
  fresh->ops = FeatureBits(*fresh);
  fresh->enable = fresh->ops != 0;
  StoreRecord(std::move(fresh));
}

ReadResult HwAssetPA::ReadJson(JsonFieldReader& reader, PaConfig& fresh) const {
  ReadGlobal(reader, &fresh.global);
  for (const MemColRegionSlot& slot : kMemColRegions) {
    PaMemColRegion& region = fresh.*slot.region;
    region = NeutralRegion();
    if (!reader.Has(slot.key)) continue;
    const bool read_ok = ReadObject(reader, slot.key, [&](JsonFieldReader& region_reader) {
      return ReadRegion(region_reader, slot, &region);
    });
    if (!read_ok) return ReadResult::kIdentity;
  }
  if (reader.Has(keys::kPaSixZone)) {
    const bool read_ok = ReadObject(reader, keys::kPaSixZone, [&](JsonFieldReader& six_zone) {
      return ReadSixZone(six_zone, asset_version_, &fresh.six_zone);
    });
    if (!read_ok) return ReadResult::kIdentity;
  }
  const bool read_ok =
      ReadObject(reader, keys::kPaSixZoneThresholds, [&](JsonFieldReader& thresholds) {
        return ReadThresholds(thresholds, &fresh.six_zone.thresholds);
      });
  return read_ok && reader.ok() ? ReadResult::kStore : ReadResult::kIdentity;
}

void HwAssetPA::SetIdentity() {
  PaConfig* record = mutable_record();
  if (record == nullptr) return;
  record->enable = false;
  record->ops = 0;
  record->reserved = 0;
}

void HwAssetPA::Assemble(const std::shared_ptr<HwAssetPA>& global_part,
                         const std::shared_ptr<HwAssetPA>& memory_colors_part,
                         const std::shared_ptr<HwAssetPA>& multi_zone_part) {
  std::unique_ptr<PaConfig> assembled = NewRecord();
  uint32_t ops = 0;
  if (global_part) {
    assembled->global = global_part->record().global;
    ops |= global_part->record().ops & kGlobalPartBits;
  }
  for (const MemColRegionSlot& slot : kMemColRegions) {
    (*assembled).*slot.region =
        memory_colors_part ? memory_colors_part->record().*slot.region : NeutralRegion();
  }
  if (memory_colors_part) ops |= memory_colors_part->record().ops & kMemoryColorsPartBits;
  if (multi_zone_part) {
    assembled->six_zone = multi_zone_part->record().six_zone;
    ops |= multi_zone_part->record().ops & kMultiZonePartBits;
  }
  assembled->ops = ops;
  assembled->enable = ops != 0;
  StoreRecord(std::move(assembled));
}

void HwAssetPA::WriteJson(Json::Value& json) const {
  const PaConfig& record = this->record();
  json[keys::kPaCont] = Number(record.global.cont);
  json[keys::kPaHue] = record.global.hue;
  json[keys::kPaSat] = Number(record.global.sat);
  json[keys::kPaSatThresh] = Number(record.global.sat_thresh);
  json[keys::kPaVal] = Number(record.global.val);
  for (const MemColRegionSlot& slot : kMemColRegions) {
    json[slot.key] = RegionJson(record.*slot.region, slot);
  }
  // The curves exist only once a "SixZone" section with the right entry count was read.
  if (record.six_zone.num_entries == kPaSixZoneEntries) {
    json[keys::kPaSixZone] =
        SixZoneJson(record.six_zone, asset_version_ >= kCurveTextAssetVersion);
  }
  json[keys::kPaSixZoneThresholds] = ThresholdsJson(record.six_zone.thresholds);
}

uint32_t HwAssetPA::Map(const std::string& left, const std::string& right) {
  return (left == keys::kPaSlope ? kPaEdgeLeftSlope : 0u) |
         (right == keys::kPaSlope ? kPaEdgeRightSlope : 0u);
}

std::string HwAssetPA::MapLeftEdge(uint32_t trapezoid_edge_type) {
  return EdgeName(trapezoid_edge_type, kPaEdgeLeftSlope);
}

std::string HwAssetPA::MapRightEdge(uint32_t trapezoid_edge_type) {
  return EdgeName(trapezoid_edge_type, kPaEdgeRightSlope);
}

}  // namespace vexa
