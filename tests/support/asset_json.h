// JSON sections and raw record words for the asset tests.
#ifndef VEXA_TESTS_SUPPORT_ASSET_JSON_H_
#define VEXA_TESTS_SUPPORT_ASSET_JSON_H_

#include <gtest/gtest.h>
#include <json/json.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "formats/json_text.h"
#include "support/log_lines.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::testing {

// The parsed text; a test failure when it does not parse.
inline Json::Value ParseJson(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << text;
  return value;
}

// The compact text of a JSON text or value, so that an unsigned 1 and a parsed (signed) 1 compare
// equal, as they do on disk.
inline std::string CompactText(const std::string& text) { return JsonToCompactText(ParseJson(text)); }
inline std::string Compact(const Json::Value& value) { return JsonToCompactText(value); }

// The 32-bit word at `offset` bytes into a payload's record.
inline uint32_t RecordWord(const HwConfigPayload& payload, size_t offset) {
  uint32_t word = 0;
  std::memcpy(&word, static_cast<const char*>(payload.config.get()) + offset, sizeof(word));
  return word;
}

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_ASSET_JSON_H_
