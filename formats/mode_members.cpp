#include "formats/mode_members.h"

#include <algorithm>
#include <vector>

#include "formats/keys.h"

namespace vexa {
namespace {

constexpr const char* kDescrMembers[] = {
    keys::kApplicability, keys::kWhitePoint, keys::kMergeId, keys::kDynamicRange,
};

// Every asset section name of the vocabulary. "PostBlendMixerGc", "PostBlendCWBDither" and
// "HwCapIgcDither" create no asset in a mode but are deliberate names, not slips.
constexpr const char* kSectionMembers[] = {
    keys::kPostBlendGamut,    keys::kPostBlendIGC,       keys::kPostBlendGC,
    keys::kPostBlendPCC,      keys::kPostBlendPa,        keys::kPostBlendDither,
    keys::kPostBlendPaDither, keys::kPostBlendDE,        keys::kPostBlendHdrBlob,
    keys::kPostBlendGameBlob, keys::kPostBlendMixerGc,   keys::kPostBlendCWBDither,
    keys::kHwCapIgcDither,
};

template <size_t N>
bool Contains(const char* const (&names)[N], const std::string& name) {
  return std::any_of(std::begin(names), std::end(names),
                     [&name](const char* known) { return name == known; });
}

// Levenshtein distance, one row at a time.
size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t substitution = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, substitution});
    }
  }
  return row[b.size()];
}

// Updates `best` when `candidate` is strictly nearer to `name` than anything seen so far.
template <size_t N>
void FindNearest(const char* const (&names)[N], const std::string& name, size_t* best_edits,
                 std::string* best) {
  for (const char* candidate : names) {
    const size_t edits = EditDistance(name, candidate);
    if (edits < *best_edits) {
      *best_edits = edits;
      *best = candidate;
    }
  }
}

}  // namespace

bool IsModeDescrMember(const std::string& name) { return Contains(kDescrMembers, name); }

bool IsKnownModeMember(const std::string& name) {
  return IsModeDescrMember(name) || Contains(kSectionMembers, name);
}

std::string NearestModeMember(const std::string& name) {
  size_t best_edits = kMaxMemberSuggestionEdits + 1;
  std::string best;
  FindNearest(kDescrMembers, name, &best_edits, &best);
  FindNearest(kSectionMembers, name, &best_edits, &best);
  return best;
}

}  // namespace vexa
