#include "formats/merge_rule.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

using Lookup = uint32_t (*)(const std::string&);

struct NamedLookup {
  const char* name;
  Lookup lookup;
  bool knows_merge;  // gamut and PCC only
};

constexpr NamedLookup kLookups[] = {
    {"IGC", &GetIGCMergeOp, false},
    {"GC", &GetGCMergeOp, false},
    {"Gamut", &GetGamutMergeOp, true},
    {"PCC", &GetPCCMergeOp, true},
    {"DE", &GetDEMergeOp, false},
    {"Dither", &GetDitherMergeOp, false},
    {"PaDither", &GetPaDitherMergeOp, false},
    {"PaGlobal", &GetPaGlobalMergeOp, false},
    {"PaMemoryColors", &GetPaMemoryColorsMergeOp, false},
    {"PaMultiZone", &GetPaMultiZoneMergeOp, false},
    {"GameBlob", &GetGameBlobMergeOp, false},
    {"HdrBlob", &GetHdrBlobMergeOp, false},
};

TEST(MergeRuleWordsTest, OperandWordsGiveTheirValuesExactlyAndOnlyGamutAndPccMerge) {
  for (const NamedLookup& l : kLookups) {
    SCOPED_TRACE(l.name);
    EXPECT_EQ(l.lookup("IDENTITY"), 0u);
    EXPECT_EQ(l.lookup("LEFT_OPERAND"), 1u);
    EXPECT_EQ(l.lookup("RIGHT_OPERAND"), 2u);
    EXPECT_EQ(l.lookup("MERGE_OPERAND"), l.knows_merge ? 3u : 0u);
    // Case-sensitive, whole-word, silent fallback to identity.
    for (const char* word : {"left_operand", "Right_Operand", "LEFT_OPERAND ", "", "LEFT", "MERGE"}) {
      EXPECT_EQ(l.lookup(word), 0u) << '"' << word << '"';
    }
  }
}

}  // namespace
}  // namespace vexa
