// One decoded asset section as a mode hands it to an asset: the first byte chooses the asset kind
// and the asset version, the second the merge operation; the rest is the section's JSON text.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "assets/hw_asset.h"
#include "formats/common_data.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "fuzz/fuzz_support.h"
#include "modes/kiv_mode.h"
#include "modes/kiv_mode_descr.h"

namespace {

const char* const kAssetKeys[] = {
    vexa::keys::kPostBlendIGC,     vexa::keys::kPostBlendGC,        vexa::keys::kPostBlendPCC,
    vexa::keys::kPostBlendGamut,   vexa::keys::kPostBlendDither,    vexa::keys::kPostBlendDE,
    vexa::keys::kPostBlendPa,      vexa::keys::kPostBlendGameBlob,  vexa::keys::kPostBlendPaDither,
    vexa::keys::kPostBlendHdrBlob,
};
constexpr size_t kAssetKinds = sizeof(kAssetKeys) / sizeof(kAssetKeys[0]);

// Small shared tables so that sections of asset version 3 can name something that exists.
std::shared_ptr<vexa::HwAssetsCommonData> FixedCommonData() {
  static const std::shared_ptr<vexa::HwAssetsCommonData> common = [] {
    Json::Value value;
    vexa::PopulateJsonValue(
        R"({"PostBlendIGC":{"numEntries":3,"Predefined":{"a":"0,512,1023"}},)"
        R"("PostBlendGC":{"numEntries":2,"Custom":{"a":{"lutR":"1,2","lutG":"3,4","lutB":"5,6"}}},)"
        R"("PostBlendGamut":{"numEntries":2,"Custom":{"a":"1,2,3,4,5,6"}}})",
        value);
    return std::make_shared<vexa::HwAssetsCommonData>(value);
  }();
  return common;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  vexa::fuzz::InitFuzzing();
  if (size < 2) return 0;
  const char* key = kAssetKeys[data[0] % kAssetKinds];
  const uint32_t asset_version = (data[0] / kAssetKinds) % 5;
  Json::Value section;
  if (!vexa::PopulateJsonValue(vexa::fuzz::AsText(data + 2, size - 2), section)) return 0;

  // A mode holding the one asset, built as the modes parser builds it.
  Json::Value assets(Json::objectValue);
  assets[key] = section;
  auto def = std::make_shared<vexa::KivModeDef>();
  def->descr = std::make_shared<vexa::KivModeDescr>();
  def->assets = &assets;
  def->asset_version = asset_version;
  auto mode = std::make_shared<vexa::KivMode>(def, FixedCommonData());
  mode->GetPayloads();
  Json::Value written = mode->GetHwAssetsJV();

  // Read back what was written, then merge the mode with itself by the chosen operation.
  if (written.isObject()) {
    auto copy_def = std::make_shared<vexa::KivModeDef>(*def);
    copy_def->assets = &written;
    auto copy = std::make_shared<vexa::KivMode>(copy_def, FixedCommonData());
    copy->GetPayloads();
  }
  auto rule = std::make_shared<vexa::KivModeMergeDef>();
  rule->version_context = std::make_shared<vexa::KivModeMergeVersionContext>();
  rule->version_context->version = 1;
  rule->descr = std::make_shared<vexa::KivModeDescr>();
  const uint32_t op = data[1] % 5;
  rule->gamut_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendGamutMergeOp>(op);
  rule->gc_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendGCMergeOp>(op);
  rule->igc_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendIGCMergeOp>(op);
  rule->pcc_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendPCCMergeOp>(op);
  rule->pa_global_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendPaGlobalMergeOp>(op);
  rule->pa_memory_colors_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendPaMemoryColorsMergeOp>(op);
  rule->pa_multi_zone_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendPaMultiZoneMergeOp>(op);
  rule->pa_dither_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendPaDitherMergeOp>(op);
  rule->dither_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendDitherMergeOp>(op);
  rule->de_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendDEMergeOp>(op);
  rule->hdr_blob_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendHdrBlobMergeOp>(op);
  rule->game_blob_op = static_cast<vexa::kiv_mode_merge_caps::KivPostBlendGameBlobMergeOp>(op);
  vexa::KivMode merged(nullptr, rule, mode, (data[1] & 0x80) ? nullptr : mode);
  merged.GetPayloads();
  merged.GetHwAssetsJV();
  return 0;
}
