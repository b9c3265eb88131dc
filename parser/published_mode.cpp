#include "parser/published_mode.h"

#include <memory>

namespace vexa {
namespace {

// A wanted intent of 0 matches on gamut, gamma and intent 0 only.
constexpr int32_t kAnyAssetsIntent = 0;

}  // namespace

bool DescribePublishedMode(const KivMode& mode, ColorMode* color_mode,
                           std::vector<HwConfigPayload>* payloads) {
  if (!mode.descr()) return false;
  const KivModeDescr& descr = *mode.descr();
  color_mode->gamut = static_cast<int32_t>(descr.color_primaries);
  color_mode->gamma = static_cast<int32_t>(descr.gamma_transfer);
  color_mode->intent = descr.render_intent;
  color_mode->render_intent_name = descr.render_intent_name;

  std::shared_ptr<HwConfigPayloadList> list = mode.GetPayloads();
  if (!list) return false;
  for (const std::shared_ptr<HwConfigPayload>& payload : *list) {
    if (!payload) continue;
    color_mode->hw_assets.push_back(payload->name);
    payloads->push_back(*payload);  // shares the payload's record
  }
  return true;
}

bool MatchesModeRequest(const ColorMode& mode, int32_t gamut, int32_t gamma, int32_t intent,
                        size_t asset_count) {
  if (mode.gamut != gamut || mode.gamma != gamma || mode.intent != intent) return false;
  // Only the number of asset names counts, never the names themselves.
  return intent == kAnyAssetsIntent || mode.hw_assets.size() == asset_count;
}

}  // namespace vexa
