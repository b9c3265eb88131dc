#include "bench/heap_counter.h"

#include <errno.h>
#include <link.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstring>

// glibc's own allocator, under the names it exports for programs that replace malloc.
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);
}

namespace vexa::bench {
namespace {

// Sits just before every block handed out; 16 bytes keep malloc's alignment.
struct alignas(16) BlockHeader {
  uintptr_t base;  // what glibc returned; bit 0 marks a block allocated by jsoncpp
  size_t size;
};
constexpr uintptr_t kJsonBit = 1;
constexpr size_t kHeaderSize = sizeof(BlockHeader);
static_assert(kHeaderSize == 16, "the header must keep 16-byte alignment");

std::atomic<size_t> g_live{0};
std::atomic<size_t> g_json_live{0};
std::atomic<size_t> g_peak{0};
std::atomic<uintptr_t> g_json_begin{0};
std::atomic<uintptr_t> g_json_end{0};

bool FromJsonLibrary(const void* caller) {
  const auto address = reinterpret_cast<uintptr_t>(caller);
  return address >= g_json_begin.load(std::memory_order_relaxed) &&
         address < g_json_end.load(std::memory_order_relaxed);
}

void Count(size_t size, bool json) {
  const size_t live = g_live.fetch_add(size, std::memory_order_relaxed) + size;
  if (json) g_json_live.fetch_add(size, std::memory_order_relaxed);
  size_t peak = g_peak.load(std::memory_order_relaxed);
  while (live > peak && !g_peak.compare_exchange_weak(peak, live, std::memory_order_relaxed)) {
  }
}

BlockHeader* HeaderOf(void* block) {
  return reinterpret_cast<BlockHeader*>(static_cast<char*>(block) - kHeaderSize);
}

// `raw` holds at least `offset` + size bytes, offset >= kHeaderSize.
void* Track(void* raw, size_t offset, size_t size, const void* caller) {
  if (raw == nullptr) return nullptr;
  void* block = static_cast<char*>(raw) + offset;
  const bool json = FromJsonLibrary(caller);
  *HeaderOf(block) = {reinterpret_cast<uintptr_t>(raw) | (json ? kJsonBit : 0), size};
  Count(size, json);
  return block;
}

void* Allocate(size_t size, const void* caller) {
  if (size > SIZE_MAX - kHeaderSize) return nullptr;
  return Track(__libc_malloc(size + kHeaderSize), kHeaderSize, size, caller);
}

void* AllocateAligned(size_t alignment, size_t size, const void* caller) {
  if (alignment <= kHeaderSize) return Allocate(size, caller);
  if (size > SIZE_MAX - alignment) return nullptr;
  return Track(__libc_memalign(alignment, size + alignment), alignment, size, caller);
}

void Release(void* block) {
  if (block == nullptr) return;
  const BlockHeader header = *HeaderOf(block);
  g_live.fetch_sub(header.size, std::memory_order_relaxed);
  if (header.base & kJsonBit) g_json_live.fetch_sub(header.size, std::memory_order_relaxed);
  __libc_free(reinterpret_cast<void*>(header.base & ~kJsonBit));
}

void* Resize(void* block, size_t size, const void* caller) {
  if (block == nullptr) return Allocate(size, caller);
  if (size == 0) {
    Release(block);
    return nullptr;
  }
  void* moved = Allocate(size, caller);
  if (moved == nullptr) return nullptr;
  const size_t old_size = HeaderOf(block)->size;
  std::memcpy(moved, block, old_size < size ? old_size : size);
  Release(block);
  return moved;
}

bool Multiply(size_t count, size_t size, size_t* total) {
  return !__builtin_mul_overflow(count, size, total);
}

int NoteJsonLibrary(dl_phdr_info* info, size_t, void*) {
  if (info->dlpi_name == nullptr || std::strstr(info->dlpi_name, "libjsoncpp") == nullptr) return 0;
  for (int i = 0; i < info->dlpi_phnum; ++i) {
    const ElfW(Phdr)& segment = info->dlpi_phdr[i];
    if (segment.p_type != PT_LOAD || !(segment.p_flags & PF_X)) continue;
    g_json_begin.store(info->dlpi_addr + segment.p_vaddr);
    g_json_end.store(info->dlpi_addr + segment.p_vaddr + segment.p_memsz);
    return 1;
  }
  return 0;
}

}  // namespace

bool HeapCounter::FindJsonLibrary() { return dl_iterate_phdr(&NoteJsonLibrary, nullptr) != 0; }
size_t HeapCounter::LiveBytes() { return g_live.load(); }
size_t HeapCounter::JsonLiveBytes() { return g_json_live.load(); }
size_t HeapCounter::PeakBytes() { return g_peak.load(); }
void HeapCounter::ResetPeak() { g_peak.store(g_live.load()); }

}  // namespace vexa::bench

// The replacements. Every one records its caller, so that a block asked for by jsoncpp's code is
// marked as JSON storage.
using vexa::bench::Allocate;
using vexa::bench::AllocateAligned;
using vexa::bench::Release;
using vexa::bench::Resize;

extern "C" {

void* malloc(size_t size) noexcept { return Allocate(size, __builtin_return_address(0)); }

void free(void* block) noexcept { Release(block); }

void* calloc(size_t count, size_t size) noexcept {
  size_t total = 0;
  if (!vexa::bench::Multiply(count, size, &total)) return nullptr;
  void* block = Allocate(total, __builtin_return_address(0));
  if (block != nullptr) std::memset(block, 0, total);
  return block;
}

void* realloc(void* block, size_t size) noexcept { return Resize(block, size, __builtin_return_address(0)); }

void* reallocarray(void* block, size_t count, size_t size) noexcept {
  size_t total = 0;
  if (!vexa::bench::Multiply(count, size, &total)) {
    errno = ENOMEM;
    return nullptr;
  }
  return Resize(block, total, __builtin_return_address(0));
}

void* memalign(size_t alignment, size_t size) noexcept {
  return AllocateAligned(alignment, size, __builtin_return_address(0));
}

void* aligned_alloc(size_t alignment, size_t size) noexcept {
  return AllocateAligned(alignment, size, __builtin_return_address(0));
}

int posix_memalign(void** out, size_t alignment, size_t size) noexcept {
  if (alignment < sizeof(void*) || (alignment & (alignment - 1)) != 0) return EINVAL;
  void* block = AllocateAligned(alignment, size, __builtin_return_address(0));
  if (block == nullptr) return ENOMEM;
  *out = block;
  return 0;
}

void* valloc(size_t size) noexcept {
  return AllocateAligned(static_cast<size_t>(sysconf(_SC_PAGESIZE)), size, __builtin_return_address(0));
}

void* pvalloc(size_t size) noexcept {
  const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  return AllocateAligned(page, (size + page - 1) / page * page, __builtin_return_address(0));
}

size_t malloc_usable_size(void* block) noexcept { return block == nullptr ? 0 : vexa::bench::HeaderOf(block)->size; }

}  // extern "C"
