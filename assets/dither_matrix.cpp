#include "assets/dither_matrix.h"

#include <algorithm>
#include <string>

#include "formats/keys.h"
#include "platform/log.h"

namespace vexa {

void ReadDitherMatrix(JsonFieldReader& reader, const char* log_label, uint32_t* size,
                      DitherMatrix& matrix) {
  const Json::Value& entries = reader.Array(keys::kDitherMatrix);
  const Json::ArrayIndex count = entries.isArray() ? entries.size() : 0;
  if (count > kDitherMatrixCapacity) {
    VKR_LOGE_AT(log_label, "SetConfig", __LINE__,
                "\"%s\" has %u entries%s; only the first %u are used", keys::kDitherMatrix, count,
                JsonContextSuffix().c_str(), kDitherMatrixCapacity);
  }
  *size = std::min<uint32_t>(count, kDitherMatrixCapacity);
  for (uint32_t i = 0; i < *size; ++i) {
    matrix[i] = reader.ElementUint(entries, i, keys::kDitherMatrix);
  }
}

void WriteDitherMatrix(uint32_t size, const DitherMatrix& matrix, Json::Value& json) {
  Json::Value entries(Json::arrayValue);
  const uint32_t count = std::min<uint32_t>(size, kDitherMatrixCapacity);
  for (uint32_t i = 0; i < count; ++i) entries.append(Json::UInt(matrix[i]));
  json[keys::kDitherMatrix] = std::move(entries);
}

}  // namespace vexa
