#include "assets/gamma_lut.h"

#include <algorithm>

namespace vexa {
namespace {

constexpr char kSetConfig[] = "SetConfig";

// A payload never holds more than the hardware takes, whatever the class-wide length says, so
// that a stray length cannot make a payload of gigabytes.
uint32_t PayloadEntries(uint32_t entries) { return std::min(entries, kMaxGammaEntries); }

// Walked with iterators: jsoncpp's arrays are ordered maps, where indexing costs a search. An
// element that is not a plain unsigned number goes through the reader (conversion or refusal).
void ReadChannel(JsonFieldReader& reader, const Json::Value& entries, const char* member,
                 std::vector<uint32_t>& out) {
  out.resize(entries.size());
  Json::ArrayIndex i = 0;
  for (auto it = entries.begin(), end = entries.end(); it != end; ++it, ++i) {
    out[i] = it->isUInt() ? it->asUInt() : reader.ElementUint(entries, i, member);
  }
}

Json::Value ChannelJson(const std::vector<uint32_t>& channel) {
  Json::Value json(Json::arrayValue);
  for (uint32_t entry : channel) json.append(Json::UInt(entry));
  return json;
}

void FitChannel(const std::vector<uint32_t>& from, uint32_t entries, std::vector<uint32_t>& out) {
  const uint32_t pad = from.empty() ? 0 : from.back();
  const size_t copied = std::min<size_t>(entries, from.size());
  out.assign(from.begin(), from.begin() + static_cast<std::ptrdiff_t>(copied));
  out.resize(entries, pad);
}

}  // namespace

ReadResult GammaLut::Read(JsonFieldReader& reader, uint32_t asset_version,
                          HwAssetsCommonData* common, GammaPostBlendConfig& fresh) const {
  return asset_version < kSharedTablesAssetVersion ? ReadInline(reader, fresh)
                                                   : ReadShared(reader, common, fresh);
}

ReadResult GammaLut::ReadInline(JsonFieldReader& reader, GammaPostBlendConfig& fresh) const {
  const Json::Value& lut_r = reader.Array(keys::kDitherLutR);
  const Json::Value& lut_g = reader.Array(keys::kDitherLutG);
  const Json::Value& lut_b = reader.Array(keys::kDitherLutB);
  if (!reader.ok()) return ReadResult::kIdentity;
  const Json::ArrayIndex entries = lut_r.size();
  if (lut_g.size() != entries || lut_b.size() != entries) {
    VKR_LOGE_AT(log_label_, kSetConfig, __LINE__, "Lut size in Json does not match");
    return ReadResult::kLeaveUnchanged;
  }
  if (entries == 0 || entries > kMaxGammaEntries) {
    VKR_LOGE_AT(log_label_, kSetConfig, __LINE__, "Invalid number of entries %d",
                static_cast<int>(entries));
    return ReadResult::kLeaveUnchanged;
  }
  ReadChannel(reader, lut_r, keys::kDitherLutR, fresh.lut_r);
  ReadChannel(reader, lut_g, keys::kDitherLutG, fresh.lut_g);
  ReadChannel(reader, lut_b, keys::kDitherLutB, fresh.lut_b);
  return ReadResult::kStore;
}

// "Predefined" wins over "Custom" even when only the custom name would resolve.
ReadResult GammaLut::ReadShared(JsonFieldReader& reader, HwAssetsCommonData* common,
                                GammaPostBlendConfig& fresh) const {
  const uint32_t entries = reader.Uint(keys::kNumEntries);
  if (!reader.ok()) return ReadResult::kIdentity;
  if (required_entries_ != 0 && entries != required_entries_) {
    VKR_LOGE_AT(log_label_, kSetConfig, __LINE__, "Unexpected number of entries %d, expecting %d",
                static_cast<int>(entries), static_cast<int>(required_entries_));
    return ReadResult::kIdentity;
  }
  const char* name_key = reader.Has(keys::kPredefined) ? keys::kPredefined
                         : reader.Has(keys::kCustom)   ? keys::kCustom
                                                       : nullptr;
  if (name_key == nullptr || common == nullptr) return LookupFailed();
  const std::string name = reader.String(name_key);
  if (!reader.ok()) return ReadResult::kIdentity;
  const std::shared_ptr<GammaPostBlendConfig> table = (common->*lookup_)(name);
  if (!table) return LookupFailed();
  fresh.lut_r = table->lut_r;
  fresh.lut_g = table->lut_g;
  fresh.lut_b = table->lut_b;
  return ReadResult::kStore;
}

ReadResult GammaLut::LookupFailed() const {
  VKR_LOGE_AT(log_label_, kSetConfig, __LINE__, "Failed to retrieve %s LUTs from common data",
              block_);
  return ReadResult::kIdentity;
}

void GammaLut::Write(const GammaPostBlendConfig& record, Json::Value& json) {
  json[keys::kDitherLutR] = ChannelJson(record.lut_r);
  json[keys::kDitherLutG] = ChannelJson(record.lut_g);
  json[keys::kDitherLutB] = ChannelJson(record.lut_b);
}

void GammaLut::CopyTables(const GammaPostBlendConfig& from, GammaPostBlendConfig& to) {
  to.enable = from.enable;
  to.lut_r = from.lut_r;
  to.lut_g = from.lut_g;
  to.lut_b = from.lut_b;
}

void GammaLut::FillPayload(const GammaPostBlendConfig& from, uint32_t entries,
                           GammaPostBlendConfig& out) {
  const uint32_t count = PayloadEntries(entries);
  out.enable = from.enable;
  FitChannel(from.lut_r, count, out.lut_r);
  FitChannel(from.lut_g, count, out.lut_g);
  FitChannel(from.lut_b, count, out.lut_b);
}

void GammaLut::Reserve(GammaPostBlendConfig& record, uint32_t entries) {
  const uint32_t count = PayloadEntries(entries);
  record.lut_r.reserve(count);
  record.lut_g.reserve(count);
  record.lut_b.reserve(count);
}

}  // namespace vexa
