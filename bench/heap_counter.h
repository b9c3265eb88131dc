// Counts every heap byte of the process: this file replaces malloc and its relatives (glibc lets
// a program do so), so the library's operator new, jsoncpp's own string storage and the C
// library's buffers are all seen. Each block carries a small header with its size and whether
// jsoncpp's code asked for it, which tells the bytes of JSON trees apart from the rest.
//
// Linked only into the memory measurement, never into the timed benchmarks.
#ifndef VEXA_BENCH_HEAP_COUNTER_H_
#define VEXA_BENCH_HEAP_COUNTER_H_

#include <cstddef>

namespace vexa::bench {

class HeapCounter {
 public:
  // Notes the code range of the loaded jsoncpp library; blocks asked for from it count as JSON.
  static bool FindJsonLibrary();
  // Bytes of live blocks (as requested, headers not counted).
  static size_t LiveBytes();
  // Of those, the blocks that jsoncpp's code allocated (string values and member names).
  static size_t JsonLiveBytes();
  // The highest LiveBytes() since the last ResetPeak().
  static size_t PeakBytes();
  static void ResetPeak();
};

}  // namespace vexa::bench

#endif  // VEXA_BENCH_HEAP_COUNTER_H_
