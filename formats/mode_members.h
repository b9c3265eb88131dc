// The member names that a mode object of a modes file may hold: its descriptor members and the
// asset section names. The library ignores any other member of a mode; these helpers let the
// parser say so and name the member that was probably meant.
#ifndef VEXA_FORMATS_MODE_MEMBERS_H_
#define VEXA_FORMATS_MODE_MEMBERS_H_

#include <cstddef>
#include <string>

namespace vexa {

// A suggestion is offered only this close (insertions, deletions and substitutions): further
// away it is more likely a different word than a slip of the keyboard.
inline constexpr size_t kMaxMemberSuggestionEdits = 2;

// "Applicability", "WhitePoint", "MergeId" or "DynamicRange": the members that describe a mode.
bool IsModeDescrMember(const std::string& name);
// A descriptor member or an asset section name (including the sections that create no asset).
bool IsKnownModeMember(const std::string& name);
// The known member with the fewest edits from `name`, the first of them in declaration order on
// a tie; empty when none is within kMaxMemberSuggestionEdits.
std::string NearestModeMember(const std::string& name);

}  // namespace vexa

#endif  // VEXA_FORMATS_MODE_MEMBERS_H_
