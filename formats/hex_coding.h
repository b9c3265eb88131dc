// Hexadecimal text for JSON documents carried inside JSON.
//
// The byte order is pairwise: when the byte count is odd the first byte stands alone, then the
// bytes go in pairs with the second byte of each pair written first (0x12 0x34 is "3412"), so
// the text reads each little-endian 16-bit word most significant byte first. Existing files
// depend on this order.
#ifndef VEXA_FORMATS_HEX_CODING_H_
#define VEXA_FORMATS_HEX_CODING_H_

#include <json/json.h>

#include <string>
#include <string_view>

#include "formats/byte_buffer.h"

namespace vexa {

// Upper-case hex text of `input`; empty for empty input.
void EncodeData(const std::string& input, std::string& output);

// The bytes of the hex text in `value`, cut at the first zero byte. Text that is not a string,
// shorter than two characters or of odd length gives an empty output; a character that is not a
// hex digit counts as 0.
void DecodeData(const Json::Value& value, std::string& output);

// The same bytes written into `buffer` (reused: grown when too small, never zero-filled); a view
// of them, empty where DecodeData's output is.
std::string_view DecodeDataInto(const Json::Value& value, ByteBuffer* buffer);

// The same for text at hand.
void DecodeHexText(std::string_view text, std::string& output);

// The same without the SSE2 path: what other targets run, and what that path is checked against.
void DecodeHexTextPortable(std::string_view text, std::string& output);

}  // namespace vexa

#endif  // VEXA_FORMATS_HEX_CODING_H_
