// Bytes in a heap buffer that is not zero-filled when made: what a file read or a hex decode
// overwrites anyway (megabytes per start-up).
#ifndef VEXA_FORMATS_BYTE_BUFFER_H_
#define VEXA_FORMATS_BYTE_BUFFER_H_

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>

namespace vexa {

struct ByteBuffer {
  std::unique_ptr<char[]> data;
  size_t size = 0;

  // `capacity` unset bytes (size 0 until the writer sets it); null data when they cannot be had.
  static ByteBuffer WithCapacity(size_t capacity) {
    ByteBuffer buffer;
    buffer.data.reset(new (std::nothrow) char[capacity]);
    return buffer;
  }

  std::string_view view() const { return std::string_view(data.get(), size); }
};

}  // namespace vexa

#endif  // VEXA_FORMATS_BYTE_BUFFER_H_
