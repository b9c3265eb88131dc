// JSON values and raw record words for the asset tests.
#ifndef VEXA_TESTS_SUPPORT_ASSET_JSON_H_
#define VEXA_TESTS_SUPPORT_ASSET_JSON_H_

#include <gtest/gtest.h>
#include <json/json.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "formats/json_text.h"
#include "support/log_capture.h"
#include "support/log_lines.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::testing {

// Any JSON value, scalars included; a test failure when the text does not parse.
inline Json::Value ParseJson(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue("[" + text + "]", value)) << text;
  return value[0];
}

// `count` numbers from `first` on, as an array or as one text.
inline Json::Value Numbers(uint32_t count, uint32_t first, bool as_text = false) {
  Json::Value array(Json::arrayValue);
  std::string text;
  for (uint32_t i = 0; i < count; ++i) {
    text += (i ? "," : "") + std::to_string(first + i);
    array.append(first + i);
  }
  return as_text ? Json::Value(text) : array;
}

// The compact text of a value, so that an unsigned 1 and a parsed (signed) 1 compare equal.
inline std::string Compact(const Json::Value& value) { return JsonToCompactText(value); }
inline std::string Compact(const char* text) { return Compact(ParseJson(text)); }

// The value of type T at `offset` bytes into raw record bytes, or into a payload's record.
template <typename T = uint32_t>
T LoadAt(const void* bytes, size_t offset) {
  T value;
  std::memcpy(&value, static_cast<const char*>(bytes) + offset, sizeof(T));
  return value;
}
inline uint32_t RecordWord(const HwConfigPayload& payload, size_t offset) {
  return LoadAt(payload.config.get(), offset);
}

// No line of `kind` ("E": error lines; "I": any line) when `text` is empty, else exactly one:
// "<function>(): <message>" is matched exactly as a line of `where` ("<label>::<class>"), any
// other text as a part of the line.
inline void ExpectOneLine(const LogCapture& log, const char* kind, const std::string& where,
                          const std::string& text) {
  const std::vector<std::string> lines = *kind == 'E' ? log.Errors() : log.Lines();
  ASSERT_EQ(lines.size(), text.empty() ? 0u : 1u) << log.Dump();
  const size_t split = text.find("(): ");
  if (text.empty()) return;
  if (split == std::string::npos) {
    EXPECT_NE(lines[0].find(text), std::string::npos) << lines[0];
  } else {
    EXPECT_TRUE(IsLogLine(lines[0], kind, where + "::" + text.substr(0, split), text.substr(split + 4)))
        << lines[0];
  }
}

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_ASSET_JSON_H_
