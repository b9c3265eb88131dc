// Colour modes for tests: parsed from readable JSON of one mode, or bare descriptors.
#ifndef VEXA_TESTS_SUPPORT_MODE_FIXTURES_H_
#define VEXA_TESTS_SUPPORT_MODE_FIXTURES_H_

#include <cstdint>
#include <memory>
#include <string>

#include "formats/common_data.h"
#include "modes/kiv_mode.h"

namespace vexa::testing {

// One mode object written as readable JSON (asset sections as plain objects), encoded as a modes
// file holds it and read by json_parser::parse_mode. A mode that does not parse fails the test.
std::shared_ptr<KivMode> ParseReadableMode(const std::string& name, const std::string& readable_mode,
                                           uint32_t version = 0,
                                           const std::shared_ptr<HwAssetsCommonData>& common = nullptr);

// A mode without assets whose descriptor is a copy of `descr`.
std::shared_ptr<KivMode> ModeWithDescr(const KivModeDescr& descr);

// A descriptor with the identity fields given and the rest default.
KivModeDescr Descr(const std::string& name, ColorPrimaries primaries, GammaTransfer transfer,
                   int32_t intent, uint32_t white_point = 0, DynamicRange range = kSdr,
                   const std::string& merge_id = "");

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_MODE_FIXTURES_H_
