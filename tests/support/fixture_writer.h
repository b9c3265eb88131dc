// Test fixtures stated as readable JSON and turned into the texts the library reads.
//
// A modes file keeps each asset section of a mode and each "Common" table as hex text of its own
// JSON document. Tests write them as plain JSON objects instead:
//
//   ModesFileText(R"({"Version": 3,
//                     "Common": {"PostBlendGC": {"numEntries": 1024, "Predefined": {...}}},
//                     "panel": {"Vivid": {"Applicability": {"RenderIntent": 1},
//                                         "PostBlendDE": {"enable": true, "sharp": 3}}}})",
//                 "panel");
//
// and the writer encodes every such object (or array) with the library's own EncodeData. Values
// that are not objects or arrays stay as written, so a test can still place a bad hex string or a
// wrong type where a section belongs.
#ifndef VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_
#define VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_

#include <json/json.h>

#include <string>

namespace vexa::testing {

// Parses JSON written in a test; an unparsable text fails the running test and gives null.
Json::Value ParseReadable(const std::string& text);

// Compact JSON text of a value (one line, ending in a newline).
std::string CompactText(const Json::Value& value);

// The hex text under which a document travels inside a modes file.
std::string HexOf(const Json::Value& document);

// The modes file as stored: "Common" tables and the asset sections of every mode under
// `panel_key` encoded as hex text (see above). The descriptor members of a mode stay as written.
Json::Value EncodeModesFile(Json::Value readable, const std::string& panel_key);
std::string ModesFileText(const Json::Value& readable, const std::string& panel_key);
std::string ModesFileText(const std::string& readable, const std::string& panel_key);
std::string ModesFileText(const char* readable, const std::string& panel_key);

// A merge-rules file holds plain JSON; the text is its compact form.
std::string RulesFileText(const Json::Value& readable);
std::string RulesFileText(const std::string& readable);
std::string RulesFileText(const char* readable);

// Writes `text` to `path`, creating missing directories; false when it cannot.
bool WriteTextFile(const std::string& path, const std::string& text);

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_FIXTURE_WRITER_H_
