// Colour modes for tests: parsed from readable JSON of one mode, or a bare descriptor.
#ifndef VEXA_TESTS_SUPPORT_MODE_FIXTURES_H_
#define VEXA_TESTS_SUPPORT_MODE_FIXTURES_H_

#include <memory>
#include <string>

#include "modes/kiv_mode.h"

namespace vexa::testing {

// One mode object written as readable JSON (asset sections as plain objects), encoded as a modes
// file holds it and read by json_parser::parse_mode (asset version 0, no shared tables). A mode
// that does not parse fails the test.
std::shared_ptr<KivMode> ParseReadableMode(const std::string& name, const std::string& readable_mode);

// A mode without assets whose descriptor is a copy of `descr`.
std::shared_ptr<KivMode> ModeWithDescr(const KivModeDescr& descr);

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_MODE_FIXTURES_H_
