// What a colour mode is for (its descriptor) and the parsed definition of one mode.
#ifndef VEXA_MODES_KIV_MODE_DESCR_H_
#define VEXA_MODES_KIV_MODE_DESCR_H_

#include <json/json.h>

#include <cstdint>
#include <memory>
#include <string>

#include "formats/color_words.h"

namespace vexa {

// Value-initialised by std::make_shared<KivModeDescr>(): numbers 0, strings empty.
// color_primaries, gamma_transfer, render_intent, white_point, dynamic_range and merge_id form
// the mode's identity; name and render_intent_name take no part in it.
struct KivModeDescr {
  std::string name;
  ColorPrimaries color_primaries;
  GammaTransfer gamma_transfer;
  int32_t render_intent;
  std::string render_intent_name;
  uint32_t white_point;
  DynamicRange dynamic_range;
  std::string merge_id;
};

// One parsed mode, consumed once by the KivMode constructor. `assets` points into the parsed
// modes file, which must outlive the construction.
struct KivModeDef {
  std::shared_ptr<KivModeDescr> descr;
  Json::Value* assets = nullptr;
  uint32_t asset_version = 0;
};

}  // namespace vexa

#endif  // VEXA_MODES_KIV_MODE_DESCR_H_
