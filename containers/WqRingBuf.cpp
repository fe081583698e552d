// A byte ring. Both indexes stay below the capacity. They are equal in an empty ring and in a full one; the count tells
// which.

#include "containers/containers.h"

#include "frame/memory.h"

#include <algorithm>

namespace {

bool isFull(const WqRingBuf *ring) { return !ring->buffer || ring->count >= ring->capacity; }

// The next index, with the wrap.
uint32_t behind(const WqRingBuf *ring, uint32_t index) { return index + 1 == ring->capacity ? 0 : index + 1; }

} // namespace

void WqRingBuf_Init(WqRingBuf *ring, uint32_t capacity) {
  *ring = {};
  ring->buffer = static_cast<uint8_t *>(WqMem_Alloc(capacity));
  if (ring->buffer) ring->capacity = capacity;
}

void WqRingBuf_Term(WqRingBuf *ring) {
  WqMem_Free(ring->buffer);
  ring->buffer = nullptr;
  ring->count = 0;
  ring->capacity = 0;
}

void WqRingBuf_Flush(WqRingBuf *ring) {
  ring->count = 0;
  ring->writeIx = 0;
  ring->readIx = 0;
}

int32_t WqRingBuf_Getc(WqRingBuf *ring) {
  if (!ring->buffer || ring->count == 0) return -1;
  const uint32_t index = ring->readIx;
  const uint8_t byte = ring->buffer[index];
  ring->readIx = behind(ring, index);
  --ring->count;
  return byte;
}

int WqRingBuf_Putc(WqRingBuf *ring, uint8_t byte) {
  if (isFull(ring)) return 0;
  const uint32_t index = ring->writeIx; // a local copy: for the compiler, storing a byte may change any field
  ring->writeIx = behind(ring, index);
  ++ring->count;
  ring->buffer[index] = byte;
  return 1;
}

int WqRingBuf_Ungetc(WqRingBuf *ring, uint8_t byte) {
  if (isFull(ring)) return 0;
  ring->readIx = ring->readIx == 0 ? ring->capacity - 1 : ring->readIx - 1;
  ring->buffer[ring->readIx] = byte;
  ++ring->count;
  return 1;
}

int WqRingBuf_PutBlock(WqRingBuf *ring, const void *bytes, uint32_t size) {
  if (!ring->buffer || size >= ring->capacity - ring->count) return 0;
  if (size == 0) return 1; // bytes may be null
  const auto *source = static_cast<const uint8_t *>(bytes);
  const uint32_t upToEnd = std::min(size, ring->capacity - ring->writeIx);
  WqMem_Copy(ring->buffer + ring->writeIx, source, upToEnd);
  WqMem_Copy(ring->buffer, source + upToEnd, size - upToEnd);
  ring->writeIx = upToEnd < ring->capacity - ring->writeIx ? ring->writeIx + size : size - upToEnd;
  ring->count += size;
  return 1;
}
