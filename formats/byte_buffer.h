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
  size_t capacity = 0;

  // `capacity` unset bytes (size 0 until the writer sets it); null data when they cannot be had.
  static ByteBuffer WithCapacity(size_t capacity) {
    ByteBuffer buffer;
    buffer.data.reset(new (std::nothrow) char[capacity]);
    buffer.capacity = buffer.data ? capacity : 0;
    return buffer;
  }

  // Room for at least `count` bytes, the contents dropped (size 0); false when it cannot be had.
  // Grows by at least half again, so a buffer reused for texts of rising sizes moves rarely.
  bool Reserve(size_t count) {
    size = 0;
    if (count <= capacity) return true;
    *this = WithCapacity(count > capacity + capacity / 2 ? count : capacity + capacity / 2);
    return data != nullptr;
  }

  std::string_view view() const { return std::string_view(data.get(), size); }
};

}  // namespace vexa

#endif  // VEXA_FORMATS_BYTE_BUFFER_H_
