#include "formats/merge_caps.h"

#include "formats/file_utils.h"
#include "formats/json_access.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "platform/log.h"

namespace vexa {
namespace kiv_mode_merge_caps {
namespace {

constexpr uint16_t kCapsVersion = 1;

// Every block lists identity, left and right at version 1 (also gamut and PCC: the merge
// operation is not listed there) and nothing at any other version.
template <typename Op>
std::vector<Op> ThreeOps(uint16_t version) {
  if (version != kCapsVersion) return {};
  return {Op::kIdentity, Op::kLeftOperand, Op::kRightOperand};
}

}  // namespace

std::vector<KivMergeable> GetMergeables(uint16_t version) {
  if (version != kCapsVersion) return {};
  std::vector<KivMergeable> kinds;
  for (uint32_t kind = 0; kind <= static_cast<uint32_t>(KivMergeable::kGameBlob); ++kind) {
    kinds.push_back(static_cast<KivMergeable>(kind));
  }
  return kinds;
}

std::vector<KivPostBlendGamutMergeOp> GetPostBlendGamutMergeOps(uint16_t v) { return ThreeOps<KivPostBlendGamutMergeOp>(v); }
std::vector<KivPostBlendGCMergeOp> GetPostBlendGCMergeOps(uint16_t v) { return ThreeOps<KivPostBlendGCMergeOp>(v); }
std::vector<KivPostBlendPaGlobalMergeOp> GetPostBlendPaGlobalMergeOps(uint16_t v) { return ThreeOps<KivPostBlendPaGlobalMergeOp>(v); }
std::vector<KivPostBlendPaMultiZoneMergeOp> GetPostBlendPaMultiZoneMergeOps(uint16_t v) { return ThreeOps<KivPostBlendPaMultiZoneMergeOp>(v); }
std::vector<KivPostBlendPaMemoryColorsMergeOp> GetPostBlendPaMemoryColorsMergeOps(uint16_t v) { return ThreeOps<KivPostBlendPaMemoryColorsMergeOp>(v); }
std::vector<KivPostBlendPaDitherMergeOp> GetPostBlendPaDitherMergeOps(uint16_t v) { return ThreeOps<KivPostBlendPaDitherMergeOp>(v); }
std::vector<KivPostBlendIGCMergeOp> GetPostBlendIGCMergeOps(uint16_t v) { return ThreeOps<KivPostBlendIGCMergeOp>(v); }
std::vector<KivPostBlendPCCMergeOp> GetPostBlendPCCMergeOps(uint16_t v) { return ThreeOps<KivPostBlendPCCMergeOp>(v); }
std::vector<KivPostBlendDitherMergeOp> GetPostBlendDitherMergeOps(uint16_t v) { return ThreeOps<KivPostBlendDitherMergeOp>(v); }
std::vector<KivPostBlendDEMergeOp> GetPostBlendDEMergeOps(uint16_t v) { return ThreeOps<KivPostBlendDEMergeOp>(v); }
std::vector<KivPostBlendHdrBlobMergeOp> GetPostBlendHdrBlobMergeOps(uint16_t v) { return ThreeOps<KivPostBlendHdrBlobMergeOp>(v); }
std::vector<KivPostBlendGameBlobMergeOp> GetPostBlendGameBlobMergeOps(uint16_t v) { return ThreeOps<KivPostBlendGameBlobMergeOp>(v); }

}  // namespace kiv_mode_merge_caps

namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::KivModeMergeCaps";

using VersionField = uint16_t KivModeMergeVersionContext::*;

struct VersionKey {
  const char* key;
  VersionField field;
};

// The op keys in the order the device's versions are checked.
constexpr VersionKey kCheckedKeys[] = {
    {keys::kVersion, &KivModeMergeVersionContext::version},
    {keys::kPostBlendIGCMergeOp, &KivModeMergeVersionContext::igc},
    {keys::kPostBlendGCMergeOp, &KivModeMergeVersionContext::gc},
    {keys::kPostBlendGamutMergeOp, &KivModeMergeVersionContext::gamut},
    {keys::kPostBlendPCCMergeOp, &KivModeMergeVersionContext::pcc},
    {keys::kPostBlendDEMergeOp, &KivModeMergeVersionContext::de},
    {keys::kPostBlendDitherMergeOp, &KivModeMergeVersionContext::dither},
    {keys::kPostBlendPaDitherMergeOp, &KivModeMergeVersionContext::pa_dither},
    {keys::kPostBlendPaGlobalMergeOp, &KivModeMergeVersionContext::pa_global},
    {keys::kPostBlendPaMemoryColorMergeOp, &KivModeMergeVersionContext::pa_memory_colors},
    {keys::kPostBlendPaMultiZoneMergeOp, &KivModeMergeVersionContext::pa_multi_zone},
    {keys::kPostBlendGameBlobMergeOp, &KivModeMergeVersionContext::game_blob},
    {keys::kPostBlendHdrBlobMergeOp, &KivModeMergeVersionContext::hdr_blob},
};

const VersionKey* FindVersionKey(const std::string& name) {
  for (const VersionKey& entry : kCheckedKeys) {
    if (name == entry.key) return &entry;
  }
  return nullptr;
}

}  // namespace

std::shared_ptr<KivModeMergeVersionContext> GetModeMergeVersionContext(Json::Value mode_merge) {
  auto context = std::make_shared<KivModeMergeVersionContext>();
  ScopedJsonContext where(JsonScope::kMember, keys::kModeMerge,
                          std::string("\"") + keys::kModeMerge + "\"");
  JsonFieldReader block(mode_merge, kLogLabel, __func__);
  for (const std::string& name : MemberNames(mode_merge)) {
    const VersionKey* entry = FindVersionKey(name);
    if (entry == nullptr) continue;
    uint32_t value = 0;
    if (name == keys::kVersion) {
      value = block.Uint(keys::kVersion);
    } else {
      JsonFieldReader op_block(block.Object(entry->key), kLogLabel, __func__);
      value = op_block.Uint(keys::kVersion);
      if (!op_block.ok()) block.Refuse();
    }
    context.get()->*(entry->field) = static_cast<uint16_t>(value);
  }
  if (!block.ok()) return nullptr;
  return context;
}

bool MergeVersionCheck(const std::shared_ptr<KivModeMergeVersionContext>& context) {
  if (!context) {
    VKR_LOGI(2, "in_file is null");
    return false;
  }
  return !FirstNewerMergeVersion(*context);
}

std::optional<MergeVersionMismatch> FirstNewerMergeVersion(const KivModeMergeVersionContext& context) {
  const std::map<std::string, int>& device = DeviceMergeVersions();
  for (const VersionKey& entry : kCheckedKeys) {
    const int written = context.*(entry.field);
    const int supported = device.at(entry.key);
    if (written > supported) return MergeVersionMismatch{entry.key, written, supported};
  }
  return std::nullopt;
}

std::string ModeMergeVersionText() {
  Json::Value block(Json::objectValue);
  for (const auto& [key, version] : DeviceMergeVersions()) {
    if (key == keys::kVersion) {
      block[keys::kVersion] = version;
    } else {
      block[key][keys::kVersion] = version;
    }
  }
  Json::Value root(Json::objectValue);
  root[keys::kModeMerge] = block;
  return JsonToCompactText(root);
}

bool GenerateModeMergeVersionFile(const std::string& path) {
  auto text = std::make_shared<std::string>(ModeMergeVersionText());
  if (text->empty()) {
    VKR_LOGI(2, "Unable to create device mode merge version file. String was empty.");
    return false;
  }
  // Unchanged from the last start-up: the file is not rewritten and synced on every boot.
  if (FileHolds(path, *text)) return true;
  return WriteToFile(path, text);
}

}  // namespace vexa
