// The dither matrix that the dither and PA-dither blocks share: up to kDitherMatrixCapacity
// entries in row order, with the count of valid entries beside them.
#ifndef VEXA_ASSETS_DITHER_MATRIX_H_
#define VEXA_ASSETS_DITHER_MATRIX_H_

#include <json/json.h>

#include <cstdint>

#include "formats/json_access.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa {

using DitherMatrix = uint32_t[kDitherMatrixCapacity];

// Reads "matrix" (array of unsigned) into `matrix` and its length into `size`. A longer array is
// cut to the first kDitherMatrixCapacity entries, with an error line; a wrong type refuses the
// reader's unit.
void ReadDitherMatrix(JsonFieldReader& reader, const char* log_label, uint32_t* size,
                      DitherMatrix& matrix);

// Writes "matrix" with the first `size` entries, never more than the matrix holds.
void WriteDitherMatrix(uint32_t size, const DitherMatrix& matrix, Json::Value& json);

}  // namespace vexa

#endif  // VEXA_ASSETS_DITHER_MATRIX_H_
