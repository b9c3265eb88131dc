#include "formats/mode_descr_json.h"

#include "formats/color_words.h"
#include "formats/keys.h"

namespace vexa {

void ReadModeDescrFields(JsonFieldReader& reader, const char* log_label, KivModeDescr* descr) {
  JsonFieldReader applicability(reader.Object(keys::kApplicability), log_label);
  descr->render_intent = static_cast<int32_t>(applicability.Uint(keys::kRenderIntent));
  descr->gamma_transfer = GetGammaTransfer(applicability.String(keys::kGammaTransfer));
  descr->color_primaries = GetColorPrimary(applicability.String(keys::kColorPrimaries));
  descr->render_intent_name = applicability.String(keys::kRenderIntentName);
  if (!applicability.ok()) reader.Refuse();
  descr->white_point = reader.Uint(keys::kWhitePoint);
  descr->merge_id = reader.String(keys::kMergeId);
  descr->dynamic_range = GetDynamicRange(reader.String(keys::kDynamicRange));
}

}  // namespace vexa
