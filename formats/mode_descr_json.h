// The descriptor members that a mode of a modes file and a rule of the merge-rules file share.
#ifndef VEXA_FORMATS_MODE_DESCR_JSON_H_
#define VEXA_FORMATS_MODE_DESCR_JSON_H_

#include "formats/json_access.h"
#include "modes/kiv_mode_descr.h"

namespace vexa {

// Reads "Applicability" ("RenderIntent", "GammaTransfer", "ColorPrimaries", "RenderIntentName"),
// "WhitePoint", "MergeId" and "DynamicRange", in that order, into `descr` (the name is left
// alone). Missing members give the defaults and the word tables' fallbacks; a member of the wrong
// type logs an error naming it and marks `reader` refused.
void ReadModeDescrFields(JsonFieldReader& reader, const char* log_label, KivModeDescr* descr);

}  // namespace vexa

#endif  // VEXA_FORMATS_MODE_DESCR_JSON_H_
