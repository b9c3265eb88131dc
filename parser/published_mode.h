// How a mode is published to the display service, and which published mode answers a request:
// shared by the parser's mode list and by host tools that reason about that list.
#ifndef VEXA_PARSER_PUBLISHED_MODE_H_
#define VEXA_PARSER_PUBLISHED_MODE_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "modes/kiv_mode.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa {

// Fills `color_mode` from the mode's descriptor and appends the mode's payloads (and their
// names to `color_mode->hw_assets`). False when the mode has no descriptor or its payload list
// is null; `color_mode` then holds what the descriptor gave.
bool DescribePublishedMode(const KivMode& mode, ColorMode* color_mode,
                           std::vector<HwConfigPayload>* payloads);

// Whether a published mode matches a request: gamut, gamma and intent equal and, for a non-zero
// intent, as many asset names as the request carries (the names themselves are not compared).
bool MatchesModeRequest(const ColorMode& mode, int32_t gamut, int32_t gamma, int32_t intent,
                        size_t asset_count);

}  // namespace vexa

#endif  // VEXA_PARSER_PUBLISHED_MODE_H_
