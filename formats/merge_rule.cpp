#include "formats/merge_rule.h"

#include "formats/keys.h"
#include "formats/word_table.h"

namespace vexa {
namespace {

using namespace kiv_mode_merge_caps;

// Every block knows identity, left and right; only gamut and PCC also compute a merge.
constexpr WordEntry<uint32_t> kThreeWords[] = {
    {keys::kOperandIdentity, kMergeOpIdentity},
    {keys::kOperandLeft, kMergeOpLeftOperand},
    {keys::kOperandRight, kMergeOpRightOperand},
};

constexpr WordEntry<uint32_t> kFourWords[] = {
    {keys::kOperandIdentity, kMergeOpIdentity},
    {keys::kOperandLeft, kMergeOpLeftOperand},
    {keys::kOperandRight, kMergeOpRightOperand},
    {keys::kOperandMerge, kMergeOpMergeOperand},
};

uint32_t ThreeWordMergeOp(const std::string& word) {
  return LookUpWord(kThreeWords, word, kMergeOpIdentity);
}

uint32_t FourWordMergeOp(const std::string& word) {
  return LookUpWord(kFourWords, word, kMergeOpIdentity);
}

}  // namespace

uint32_t GetIGCMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetGCMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetDEMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetDitherMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetPaDitherMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetPaGlobalMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetPaMemoryColorsMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetPaMultiZoneMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetGameBlobMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }
uint32_t GetHdrBlobMergeOp(const std::string& word) { return ThreeWordMergeOp(word); }

uint32_t GetGamutMergeOp(const std::string& word) { return FourWordMergeOp(word); }
uint32_t GetPCCMergeOp(const std::string& word) { return FourWordMergeOp(word); }

}  // namespace vexa
