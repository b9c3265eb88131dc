// One merge rule of the merge-rules file: which two modes combine into a new mode, and how
// each block is combined.
#ifndef VEXA_FORMATS_MERGE_RULE_H_
#define VEXA_FORMATS_MERGE_RULE_H_

#include <memory>
#include <string>
#include <vector>

#include "formats/merge_caps.h"
#include "modes/kiv_mode_descr.h"

namespace vexa {

struct KivModeMergeDef {
  std::shared_ptr<KivModeMergeVersionContext> version_context;
  std::string left_mode_name;   // "ModeNameInputLeft"; rewritten to the left operand actually used
  std::string right_mode_name;  // "ModeNameInputRight"
  kiv_mode_merge_caps::KivPostBlendGamutMergeOp gamut_op{};
  kiv_mode_merge_caps::KivPostBlendGCMergeOp gc_op{};
  kiv_mode_merge_caps::KivPostBlendPaGlobalMergeOp pa_global_op{};
  kiv_mode_merge_caps::KivPostBlendPaMultiZoneMergeOp pa_multi_zone_op{};
  kiv_mode_merge_caps::KivPostBlendPaMemoryColorsMergeOp pa_memory_colors_op{};
  kiv_mode_merge_caps::KivPostBlendPaDitherMergeOp pa_dither_op{};
  kiv_mode_merge_caps::KivPostBlendIGCMergeOp igc_op{};
  kiv_mode_merge_caps::KivPostBlendPCCMergeOp pcc_op{};
  kiv_mode_merge_caps::KivPostBlendDitherMergeOp dither_op{};
  kiv_mode_merge_caps::KivPostBlendDEMergeOp de_op{};
  kiv_mode_merge_caps::KivPostBlendHdrBlobMergeOp hdr_blob_op{};
  kiv_mode_merge_caps::KivPostBlendGameBlobMergeOp game_blob_op{};
  // The merged mode's descriptor (name = the rule's name); also the pattern operands must match.
  std::shared_ptr<KivModeDescr> descr;
};

using KivModeMergeDefList = std::vector<std::shared_ptr<KivModeMergeDef>>;

// Operand words to operation values; an unknown word (and "MERGE_OPERAND" for all but gamut and
// PCC) gives 0, "IDENTITY", silently.
uint32_t GetIGCMergeOp(const std::string& word);
uint32_t GetGCMergeOp(const std::string& word);
uint32_t GetGamutMergeOp(const std::string& word);
uint32_t GetPCCMergeOp(const std::string& word);
uint32_t GetDEMergeOp(const std::string& word);
uint32_t GetDitherMergeOp(const std::string& word);
uint32_t GetPaDitherMergeOp(const std::string& word);
uint32_t GetPaGlobalMergeOp(const std::string& word);
uint32_t GetPaMemoryColorsMergeOp(const std::string& word);
uint32_t GetPaMultiZoneMergeOp(const std::string& word);
uint32_t GetGameBlobMergeOp(const std::string& word);
uint32_t GetHdrBlobMergeOp(const std::string& word);

}  // namespace vexa

#endif  // VEXA_FORMATS_MERGE_RULE_H_
