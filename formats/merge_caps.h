// Merge operations, the device's merge capabilities by version, the version context that every
// merge rule carries, and the file through which the device publishes its merge versions.
#ifndef VEXA_FORMATS_MERGE_CAPS_H_
#define VEXA_FORMATS_MERGE_CAPS_H_

#include <json/json.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vexa {
namespace kiv_mode_merge_caps {

// Each block has its own operation type; the values are those of the rule words "IDENTITY" (0),
// "LEFT_OPERAND" (1), "RIGHT_OPERAND" (2) and, for gamut and PCC only, "MERGE_OPERAND" (3).
enum class KivPostBlendGamutMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2, kMergeOperand = 3 };
enum class KivPostBlendGCMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendPaGlobalMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendPaMultiZoneMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendPaMemoryColorsMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendPaDitherMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendIGCMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendPCCMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2, kMergeOperand = 3 };
enum class KivPostBlendDitherMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendDEMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendHdrBlobMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };
enum class KivPostBlendGameBlobMergeOp : uint32_t { kIdentity = 0, kLeftOperand = 1, kRightOperand = 2 };

// Numeric operation values shared by all the types above.
constexpr uint32_t kMergeOpIdentity = 0;
constexpr uint32_t kMergeOpLeftOperand = 1;
constexpr uint32_t kMergeOpRightOperand = 2;
constexpr uint32_t kMergeOpMergeOperand = 3;

// The twelve mergeable blocks, in the order a merge walks them.
enum class KivMergeable : uint32_t {
  kGamut = 0,
  kPaGlobal = 1,
  kPaMultiZone = 2,
  kPaMemoryColors = 3,
  kPaDither = 4,
  kGC = 5,
  kIGC = 6,
  kPCC = 7,
  kDither = 8,
  kDE = 9,
  kHdrBlob = 10,
  kGameBlob = 11,
};

std::vector<KivMergeable> GetMergeables(uint16_t version);
std::vector<KivPostBlendGamutMergeOp> GetPostBlendGamutMergeOps(uint16_t version);
std::vector<KivPostBlendGCMergeOp> GetPostBlendGCMergeOps(uint16_t version);
std::vector<KivPostBlendPaGlobalMergeOp> GetPostBlendPaGlobalMergeOps(uint16_t version);
std::vector<KivPostBlendPaMultiZoneMergeOp> GetPostBlendPaMultiZoneMergeOps(uint16_t version);
std::vector<KivPostBlendPaMemoryColorsMergeOp> GetPostBlendPaMemoryColorsMergeOps(uint16_t version);
std::vector<KivPostBlendPaDitherMergeOp> GetPostBlendPaDitherMergeOps(uint16_t version);
std::vector<KivPostBlendIGCMergeOp> GetPostBlendIGCMergeOps(uint16_t version);
std::vector<KivPostBlendPCCMergeOp> GetPostBlendPCCMergeOps(uint16_t version);
std::vector<KivPostBlendDitherMergeOp> GetPostBlendDitherMergeOps(uint16_t version);
std::vector<KivPostBlendDEMergeOp> GetPostBlendDEMergeOps(uint16_t version);
std::vector<KivPostBlendHdrBlobMergeOp> GetPostBlendHdrBlobMergeOps(uint16_t version);
std::vector<KivPostBlendGameBlobMergeOp> GetPostBlendGameBlobMergeOps(uint16_t version);

}  // namespace kiv_mode_merge_caps

// The merge versions a rules file was written for; 0 where the file names none.
struct KivModeMergeVersionContext {
  uint16_t version = 0;  // the rule set's "Version"
  uint16_t gamut = 0;
  uint16_t gc = 0;
  uint16_t pa_global = 0;
  uint16_t pa_multi_zone = 0;
  uint16_t pa_memory_colors = 0;
  uint16_t pa_dither = 0;
  uint16_t igc = 0;
  uint16_t pcc = 0;
  uint16_t dither = 0;
  uint16_t de = 0;
  uint16_t hdr_blob = 0;
  uint16_t game_blob = 0;
};

// The context of a "ModeMerge" block; null (with an error line naming the member) when a version
// has a type that is not an unsigned number.
std::shared_ptr<KivModeMergeVersionContext> GetModeMergeVersionContext(Json::Value mode_merge);

// True when this device's merging code can honour every version of the context.
bool MergeVersionCheck(const std::shared_ptr<KivModeMergeVersionContext>& context);

// The first key, in the order of the check, whose version in `context` is newer than the
// device's; empty when the device honours them all.
struct MergeVersionMismatch {
  const char* key;
  int written;
  int supported;
};
std::optional<MergeVersionMismatch> FirstNewerMergeVersion(const KivModeMergeVersionContext& context);

// The device's merge versions as the one-line JSON document of the merge-version file.
std::string ModeMergeVersionText();

// Writes the merge-version file; false when it could not be written.
bool GenerateModeMergeVersionFile(const std::string& path);

}  // namespace vexa

#endif  // VEXA_FORMATS_MERGE_CAPS_H_
