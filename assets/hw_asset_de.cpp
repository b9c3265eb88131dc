#include "assets/hw_asset_de.h"

#include "modes/mode_words.h"

namespace vexa {
namespace {

constexpr uint32_t kContentTypeVideo = 1;
constexpr uint32_t kContentTypeGraphics = 2;
constexpr uint32_t kQualityLevels = 3;  // 1 low power, 2 medium, 3 high

// Quality words by content type (video, graphics) and level (1 to 3).
constexpr const char* kQualityWords[2][kQualityLevels] = {
    {keys::kDeQualityLowPower, keys::kDeQualityMediumVideo, keys::kDeQualityHighVideo},
    {keys::kDeQualityLowPower, keys::kDeQualityMediumGraphics, keys::kDeQualityHighGraphics},
};

}  // namespace

HwAssetDE::HwAssetDE(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {}

HwAssetDE::HwAssetDE(kiv_mode_merge_caps::KivPostBlendDEMergeOp op, std::shared_ptr<HwAssetDE> left,
                     std::shared_ptr<HwAssetDE> right)
    : HwAssetBase(0, nullptr) {
  MergeFromOperands(static_cast<uint32_t>(op), left, right);
}

std::string HwAssetDE::MapQuality(uint32_t level, uint32_t content_type) {
  const bool known_type = content_type == kContentTypeVideo || content_type == kContentTypeGraphics;
  if (!known_type || level < 1 || level > kQualityLevels) return keys::kInvalid;
  return kQualityWords[content_type - 1][level - 1];
}

ReadResult HwAssetDE::ReadJson(JsonFieldReader& reader, DETuningConfig& fresh) {
  fresh.fill_marker = 1;
  fresh.flags = StringToFlag(reader.String(keys::kDeFlags));
  // Low-pass blending has no flag word of its own in the files: the three filter strengths
  // together switch it on.
  if (reader.Has(keys::kDeLpfHigh) && reader.Has(keys::kDeLpfMid) && reader.Has(keys::kDeLpfLow)) {
    fresh.flags |= kDeFlagLpfBlendBits;
  }
  fresh.sharp = reader.Int(keys::kDeSharp);
  // The hardware thresholds are 16-bit; larger values wrap.
  fresh.thr_quiet = static_cast<uint16_t>(reader.Uint(keys::kDeThrQuiet));
  fresh.thr_dieout = static_cast<uint16_t>(reader.Uint(keys::kDeThrDieout));
  fresh.thr_low = static_cast<uint16_t>(reader.Uint(keys::kDeThrLow));
  fresh.thr_high = static_cast<uint16_t>(reader.Uint(keys::kDeThrHigh));
  fresh.clip = static_cast<uint16_t>(reader.Uint(keys::kDeClip));
  // One quality word gives both the level and the content type.
  const std::string quality = reader.String(keys::kDeQuality);
  fresh.quality = StringToQuality(quality);
  fresh.content_type = MapContentType(quality);
  fresh.de_blend = reader.Uint(keys::kDeBlend);
  fresh.de_lpf_high = reader.Uint(keys::kDeLpfHigh);
  fresh.de_lpf_mid = reader.Uint(keys::kDeLpfMid);
  fresh.de_lpf_low = reader.Uint(keys::kDeLpfLow);
  return ReadResult::kStore;
}

// "deBlend" is read but deliberately not written back.
void HwAssetDE::WriteJson(Json::Value& json) const {
  json[keys::kDeFlags] = FlagToString(record_.flags);
  json[keys::kDeSharp] = Json::Int(record_.sharp);
  json[keys::kDeThrQuiet] = Json::UInt(record_.thr_quiet);
  json[keys::kDeThrDieout] = Json::UInt(record_.thr_dieout);
  json[keys::kDeThrLow] = Json::UInt(record_.thr_low);
  json[keys::kDeThrHigh] = Json::UInt(record_.thr_high);
  json[keys::kDeClip] = Json::UInt(record_.clip);
  json[keys::kDeLpfHigh] = Json::UInt(record_.de_lpf_high);
  json[keys::kDeLpfMid] = Json::UInt(record_.de_lpf_mid);
  json[keys::kDeLpfLow] = Json::UInt(record_.de_lpf_low);
  json[keys::kDeQuality] = MapQuality(record_.quality, record_.content_type);
}

}  // namespace vexa
