// Modes and rules files stated in tests as readable JSON.
//
// A modes file keeps each asset section of a mode and each "Common" table as hex text of its own
// JSON document. Tests write them as plain objects instead:
//
//   ModesFileText(R"({"Version": 3,
//                     "Common": {"PostBlendGC": {"numEntries": 1024, "Predefined": {...}}},
//                     "panel": {"Vivid": {"Applicability": {"RenderIntent": 1},
//                                         "PostBlendDE": {"enable": true, "sharp": 3}}}})",
//                 "panel");
//
// and every such object or array is encoded with the library's own EncodeData. Other values stay
// as written, so a test can still put a bad hex string or a wrong type where a section belongs.
#ifndef VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_
#define VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_

#include <json/json.h>

#include <string>

namespace vexa::testing {

// Parses JSON written in a test; an unparsable text fails the running test and gives null.
Json::Value ParseReadable(const std::string& text);

// Compact one-line JSON text, as the library writes it.
std::string CompactText(const Json::Value& value);

// The modes file as stored: the "Common" tables and the asset sections of every mode under
// `panel_key` encoded as hex text; the descriptor members of a mode stay as written.
Json::Value EncodeModesFile(Json::Value readable, const std::string& panel_key);
std::string ModesFileText(const std::string& readable, const std::string& panel_key);

// A merge-rules file holds plain JSON: its compact text.
std::string RulesFileText(const std::string& readable);

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_
