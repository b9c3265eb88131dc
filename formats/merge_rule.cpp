#include "formats/merge_rule.h"

#include "formats/keys.h"

namespace vexa {
namespace {

using namespace kiv_mode_merge_caps;

struct OperandWord {
  const char* word;
  uint32_t op;
};

// Every block knows identity, left and right; only gamut and PCC also compute a merge.
constexpr OperandWord kThreeWords[] = {
    {keys::kOperandIdentity, kMergeOpIdentity},
    {keys::kOperandLeft, kMergeOpLeftOperand},
    {keys::kOperandRight, kMergeOpRightOperand},
};

constexpr OperandWord kFourWords[] = {
    {keys::kOperandIdentity, kMergeOpIdentity},
    {keys::kOperandLeft, kMergeOpLeftOperand},
    {keys::kOperandRight, kMergeOpRightOperand},
    {keys::kOperandMerge, kMergeOpMergeOperand},
};

template <size_t N>
uint32_t LookUpOperand(const OperandWord (&words)[N], const std::string& word) {
  for (const OperandWord& entry : words) {
    if (word == entry.word) return entry.op;
  }
  return kMergeOpIdentity;
}

uint32_t ThreeWordMergeOp(const std::string& word) { return LookUpOperand(kThreeWords, word); }
uint32_t FourWordMergeOp(const std::string& word) { return LookUpOperand(kFourWords, word); }

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
