#include "modes/kiv_mode.h"

#include <new>
#include <utility>

#include "assets/hw_asset_de.h"
#include "assets/hw_asset_dither.h"
#include "assets/hw_asset_game_blob.h"
#include "assets/hw_asset_gamut.h"
#include "assets/hw_asset_gc.h"
#include "assets/hw_asset_hdr.h"
#include "assets/hw_asset_igc.h"
#include "assets/hw_asset_pa.h"
#include "assets/hw_asset_pa_dither.h"
#include "assets/hw_asset_pcc.h"
#include "formats/json_access.h"
#include "formats/keys.h"
#include "platform/log.h"

namespace vexa {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::KivMode";
// Line numbers that these two messages always carry, so that existing log filters keep matching.
constexpr int kDescrNullLine = 40;
constexpr int kPaMergedNullLine = 177;

using AssetMaker = std::shared_ptr<HwAsset> (*)(uint32_t, std::shared_ptr<HwAssetsCommonData>);

template <typename Asset>
std::shared_ptr<HwAsset> MakeAsset(uint32_t asset_version,
                                   std::shared_ptr<HwAssetsCommonData> common) {
  return std::make_shared<Asset>(asset_version, std::move(common));
}

struct AssetKind {
  const char* key;
  AssetMaker make;
};

// Keys are tested in this order; other keys (mixer GC, CWB dither, ...) make no asset.
constexpr AssetKind kAssetKinds[] = {
    {keys::kPostBlendIGC, &MakeAsset<HwAssetIGC>},
    {keys::kPostBlendGC, &MakeAsset<HwAssetGC>},
    {keys::kPostBlendPCC, &MakeAsset<HwAssetPCC>},
    {keys::kPostBlendGamut, &MakeAsset<HwAssetGamut>},
    {keys::kPostBlendDither, &MakeAsset<HwAssetDither>},
    {keys::kPostBlendDE, &MakeAsset<HwAssetDE>},
    {keys::kPostBlendPa, &MakeAsset<HwAssetPA>},
    {keys::kPostBlendGameBlob, &MakeAsset<HwAssetGameBlob>},
    {keys::kPostBlendPaDither, &MakeAsset<HwAssetPADither>},
    {keys::kPostBlendHdrBlob, &MakeAsset<HwAssetHDR>},
};

// A new asset, or null when it cannot be allocated.
template <typename Asset, typename... Args>
std::shared_ptr<Asset> NewAsset(Args&&... args) {
  return std::shared_ptr<Asset>(new (std::nothrow) Asset(std::forward<Args>(args)...));
}

// The two modes of a merge; either may lack the asset being merged.
struct Operands {
  const std::shared_ptr<KivMode>& left;
  const std::shared_ptr<KivMode>& right;

  // The asset class's merge constructor over the two modes' assets of one kind; `leading` are
  // its arguments before the operands (the algorithm interface, the operation).
  template <typename Asset, typename... Leading>
  std::shared_ptr<Asset> Merge(std::shared_ptr<Asset> (KivMode::*getter)() const,
                               Leading... leading) const {
    return NewAsset<Asset>(leading..., Of(left, getter), Of(right, getter));
  }

  template <typename Asset>
  static std::shared_ptr<Asset> Of(const std::shared_ptr<KivMode>& mode,
                                   std::shared_ptr<Asset> (KivMode::*getter)() const) {
    return mode ? ((*mode).*getter)() : nullptr;
  }
};

}  // namespace

// The results of the three PA merges, assembled into one PA asset after all kinds are merged.
struct KivMode::PaParts {
  std::shared_ptr<HwAssetPA> global;
  std::shared_ptr<HwAssetPA> memory_colors;
  std::shared_ptr<HwAssetPA> multi_zone;

  bool any() const { return global || memory_colors || multi_zone; }
};

KivMode::KivMode(std::shared_ptr<KivModeDef> def, std::shared_ptr<HwAssetsCommonData> common)
    : assets_(std::make_shared<HwAssetMap>()), common_data_(std::move(common)) {
  if (!def) return;
  descr_ = def->descr;
  asset_version_ = def->asset_version;
  if (def->assets == nullptr) return;
  const Json::Value& assets = *def->assets;
  for (const std::string& key : MemberNames(assets)) SetHwAsset(key, assets[key]);
}

void KivMode::SetHwAsset(const std::string& key, const Json::Value& config) {
  std::shared_ptr<HwAsset> asset = MakeHwAsset(key);
  if (!asset) return;
  ScopedJsonContext where(JsonScope::kSection, key, "section \"" + key + "\"");
  asset->SetConfig(config);
  (*assets_)[key] = std::move(asset);
}

std::shared_ptr<HwAsset> KivMode::MakeHwAsset(const std::string& key) const {
  for (const AssetKind& kind : kAssetKinds) {
    if (key == kind.key) return kind.make(asset_version_, common_data_);
  }
  return nullptr;
}

template <typename Asset>
std::shared_ptr<Asset> KivMode::GetAsset(const char* key) const {
  auto it = assets_->find(key);
  if (it == assets_->end()) return nullptr;
  // Only SetHwAsset and the typed setters store under a key, always the key's own class.
  return std::static_pointer_cast<Asset>(it->second);
}

void KivMode::PutAsset(const char* key, std::shared_ptr<HwAsset> asset) {
  (*assets_)[key] = std::move(asset);
}

std::shared_ptr<HwAssetIGC> KivMode::GetIgc() const { return GetAsset<HwAssetIGC>(keys::kPostBlendIGC); }
std::shared_ptr<HwAssetGC> KivMode::GetGc() const { return GetAsset<HwAssetGC>(keys::kPostBlendGC); }
std::shared_ptr<HwAssetPCC> KivMode::GetPcc() const { return GetAsset<HwAssetPCC>(keys::kPostBlendPCC); }
std::shared_ptr<HwAssetGamut> KivMode::GetGamut() const { return GetAsset<HwAssetGamut>(keys::kPostBlendGamut); }
std::shared_ptr<HwAssetDither> KivMode::GetDither() const { return GetAsset<HwAssetDither>(keys::kPostBlendDither); }
std::shared_ptr<HwAssetDE> KivMode::GetDe() const { return GetAsset<HwAssetDE>(keys::kPostBlendDE); }
std::shared_ptr<HwAssetPA> KivMode::GetPa() const { return GetAsset<HwAssetPA>(keys::kPostBlendPa); }
std::shared_ptr<HwAssetGameBlob> KivMode::GetGameBlob() const { return GetAsset<HwAssetGameBlob>(keys::kPostBlendGameBlob); }
std::shared_ptr<HwAssetPADither> KivMode::GetPaDither() const { return GetAsset<HwAssetPADither>(keys::kPostBlendPaDither); }
std::shared_ptr<HwAssetHDR> KivMode::GetHdr() const { return GetAsset<HwAssetHDR>(keys::kPostBlendHdrBlob); }

void KivMode::SetIgc(std::shared_ptr<HwAssetIGC> asset) { PutAsset(keys::kPostBlendIGC, std::move(asset)); }
void KivMode::SetGc(std::shared_ptr<HwAssetGC> asset) { PutAsset(keys::kPostBlendGC, std::move(asset)); }
void KivMode::SetPcc(std::shared_ptr<HwAssetPCC> asset) { PutAsset(keys::kPostBlendPCC, std::move(asset)); }
void KivMode::SetGamut(std::shared_ptr<HwAssetGamut> asset) { PutAsset(keys::kPostBlendGamut, std::move(asset)); }
void KivMode::SetDither(std::shared_ptr<HwAssetDither> asset) { PutAsset(keys::kPostBlendDither, std::move(asset)); }
void KivMode::SetDe(std::shared_ptr<HwAssetDE> asset) { PutAsset(keys::kPostBlendDE, std::move(asset)); }
void KivMode::SetPa(std::shared_ptr<HwAssetPA> asset) { PutAsset(keys::kPostBlendPa, std::move(asset)); }
void KivMode::SetGameBlob(std::shared_ptr<HwAssetGameBlob> asset) { PutAsset(keys::kPostBlendGameBlob, std::move(asset)); }
void KivMode::SetPaDither(std::shared_ptr<HwAssetPADither> asset) { PutAsset(keys::kPostBlendPaDither, std::move(asset)); }
void KivMode::SetHdr(std::shared_ptr<HwAssetHDR> asset) { PutAsset(keys::kPostBlendHdrBlob, std::move(asset)); }

std::shared_ptr<HwConfigPayloadList> KivMode::GetPayloads() const {
  auto payloads = std::make_shared<HwConfigPayloadList>();
  for (const auto& [key, asset] : *assets_) {
    if (!asset || !asset->AsPayload()) continue;
    // The first call only decides; the list always gets a payload of its own.
    std::shared_ptr<HwConfigPayload> payload = asset->AsPayload();
    if (payload) payloads->push_back(std::move(payload));
  }
  return payloads;
}

Json::Value& KivMode::GetHwAssetsJV() {
  if (!assets_json_.empty()) return assets_json_;
  for (const auto& [key, asset] : *assets_) {
    if (!asset) continue;
    std::shared_ptr<Json::Value> json = asset->AsJV();
    if (json) assets_json_[key] = *json;
  }
  return assets_json_;
}

KivMode::KivMode(VexaKivInterface* intf, std::shared_ptr<KivModeMergeDef> rule,
                 std::shared_ptr<KivMode> left, std::shared_ptr<KivMode> right)
    : assets_(std::make_shared<HwAssetMap>()), descr_(new (std::nothrow) KivModeDescr()) {
  if (!descr_) {
    VKR_LOG_PRINT(ANDROID_LOG_INFO, kLogLabel, "KivMode", kDescrNullLine, "descr_ is null");
    return;
  }
  if (!rule) return;
  if (rule->descr) *descr_ = *rule->descr;  // named and classified by the rule, not the operands
  const uint16_t version = rule->version_context ? rule->version_context->version : 0;
  PaParts pa;
  for (kiv_mode_merge_caps::KivMergeable kind : kiv_mode_merge_caps::GetMergeables(version)) {
    MergeKind(kind, intf, *rule, left, right, &pa);
  }
  if (pa.any()) StoreMergedPa(pa);
}

void KivMode::MergeKind(kiv_mode_merge_caps::KivMergeable kind, VexaKivInterface* intf,
                        const KivModeMergeDef& rule, const std::shared_ptr<KivMode>& left,
                        const std::shared_ptr<KivMode>& right, PaParts* pa) {
  using kiv_mode_merge_caps::KivMergeable;
  const Operands operands{left, right};
  switch (kind) {
    case KivMergeable::kGamut:
      PutAsset(keys::kPostBlendGamut, operands.Merge(&KivMode::GetGamut, intf, rule.gamut_op));
      break;
    case KivMergeable::kPaGlobal:
      pa->global = operands.Merge(&KivMode::GetPa, rule.pa_global_op);
      break;
    case KivMergeable::kPaMultiZone:
      pa->multi_zone = operands.Merge(&KivMode::GetPa, rule.pa_multi_zone_op);
      break;
    case KivMergeable::kPaMemoryColors:
      pa->memory_colors = operands.Merge(&KivMode::GetPa, rule.pa_memory_colors_op);
      break;
    case KivMergeable::kPaDither:
      PutAsset(keys::kPostBlendPaDither, operands.Merge(&KivMode::GetPaDither, rule.pa_dither_op));
      break;
    case KivMergeable::kGC:
      PutAsset(keys::kPostBlendGC, operands.Merge(&KivMode::GetGc, rule.gc_op));
      break;
    case KivMergeable::kIGC:
      PutAsset(keys::kPostBlendIGC, operands.Merge(&KivMode::GetIgc, rule.igc_op));
      break;
    case KivMergeable::kPCC:
      PutAsset(keys::kPostBlendPCC, operands.Merge(&KivMode::GetPcc, intf, rule.pcc_op));
      break;
    case KivMergeable::kDither:
      PutAsset(keys::kPostBlendDither, operands.Merge(&KivMode::GetDither, rule.dither_op));
      break;
    case KivMergeable::kDE:
      PutAsset(keys::kPostBlendDE, operands.Merge(&KivMode::GetDe, rule.de_op));
      break;
    case KivMergeable::kHdrBlob:
      // An identity HDR operation leaves the merged mode without an HDR blob at all.
      if (rule.hdr_blob_op == kiv_mode_merge_caps::KivPostBlendHdrBlobMergeOp::kIdentity) break;
      PutAsset(keys::kPostBlendHdrBlob, operands.Merge(&KivMode::GetHdr, rule.hdr_blob_op));
      break;
    case KivMergeable::kGameBlob:
      PutAsset(keys::kPostBlendGameBlob, operands.Merge(&KivMode::GetGameBlob, rule.game_blob_op));
      break;
    default:
      break;  // a kind this code does not know
  }
}

void KivMode::StoreMergedPa(const PaParts& pa) {
  std::shared_ptr<HwAssetPA> merged = NewAsset<HwAssetPA>(asset_version_, common_data_);
  if (!merged) {
    VKR_LOGE_AT(kLogLabel, "KivMode", kPaMergedNullLine, "pa_merged is null");
    return;
  }
  merged->Assemble(pa.global, pa.memory_colors, pa.multi_zone);
  PutAsset(keys::kPostBlendPa, std::move(merged));
}

}  // namespace vexa
