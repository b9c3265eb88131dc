// Modes files and modes stated in tests as readable JSON.
//
// A modes file keeps each asset section of a mode and each "Common" table as hex text of its own
// JSON document. Tests write them as plain objects instead:
//
//   EncodeModesFile(ParseReadable(R"({"Version": 3,
//                     "Common": {"PostBlendGC": {"numEntries": 1024, "Predefined": {...}}},
//                     "panel": {"Vivid": {"Applicability": {"RenderIntent": 1},
//                                         "PostBlendDE": {"enable": true, "sharp": 3}}}})"),
//                   "panel");
//
// and every such object or array is encoded with the library's own EncodeData. Other values stay
// as written, so a test can still put a bad hex string or a wrong type where a section belongs.
#ifndef VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_
#define VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_

#include <json/json.h>

#include <memory>
#include <string>

#include "modes/kiv_mode.h"

namespace vexa::testing {

// Parses JSON written in a test; an unparsable text fails the running test and gives null.
Json::Value ParseReadable(const std::string& text);

// Compact one-line JSON text, as the library writes it.
std::string CompactText(const Json::Value& value);

// The modes file as stored: the "Common" tables and the asset sections of every mode under
// `panel_key` encoded as hex text; "Applicability" stays as written.
Json::Value EncodeModesFile(Json::Value readable, const std::string& panel_key);

// A mode with a copy of `descr` whose assets are made from the readable JSON object `assets`
// (asset version 0, no shared tables).
std::shared_ptr<KivMode> MakeMode(const KivModeDescr& descr, const std::string& assets = "{}");

// Every descriptor field on one line, so that one comparison shows which field differs.
std::string DescrText(const KivModeDescr& descr);

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_
