// The library's allocator, on the C library's: every block is zeroed and counted.

#include "frame/memory.h"

#include "frame/main.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace {

// Load and store are separate: an update may be lost, which is allowed, and the cost is that of a plain word.
void count(uint32_t change) {
  const std::atomic_ref<uint32_t> live(wqMain.allocCount);
  live.store(live.load(std::memory_order_relaxed) + change, std::memory_order_relaxed);
}

void *counted(void *block) {
  if (block) count(1);
  return block;
}

} // namespace

void WqMem_Init() { wqMain.allocCount = 0; }

void WqMem_Term() {}

void WqMem_Zero(void *bytes, size_t size) { std::memset(bytes, 0, size); }

void *WqMem_Copy(void *destination, const void *source, size_t size) { return std::memmove(destination, source, size); }

void *WqMem_Alloc(size_t size) { return size ? counted(std::calloc(1, size)) : nullptr; }

void *WqMem_AllocArray(size_t elementSize, size_t count) {
  return elementSize && count ? counted(std::calloc(count, elementSize)) : nullptr;
}

void *WqMem_Realloc(void *block, size_t size) {
  if (size > 0) return std::realloc(block, size);
  std::free(block);
  return nullptr;
}

void WqMem_Free(void *block) {
  if (!block) return;
  std::free(block);
  count(0u - 1);
}
