// The pool: chunks of memory straight from the C library. Pieces are cut off them in order.

#include "frame/memory.h"

#include <algorithm>
#include <cstdlib>

namespace {

// 64 bits, so that a size just below 4 GiB doesn't wrap to a small one.
uint64_t rounded(uint32_t size) { return (static_cast<uint64_t>(size) + 15) & ~UINT64_C(15); }

void freeNode(WqMemBlockNode *node) {
  WqMemBlockElem_Term(node->elem);
  std::free(node->elem);
  std::free(node);
}

// A node with a chunk; null if memory is short.
WqMemBlockNode *makeNode(uint64_t size) {
  if (size > UINT32_MAX) return nullptr;
  auto *node = static_cast<WqMemBlockNode *>(std::calloc(1, sizeof(WqMemBlockNode)));
  auto *elem = static_cast<WqMemBlockElem *>(std::malloc(sizeof(WqMemBlockElem)));
  if (node && elem) {
    node->elem = elem;
    WqMemBlockElem_Init(elem, static_cast<uint32_t>(size));
    if (elem->base) return node;
  }
  std::free(node);
  std::free(elem);
  return nullptr;
}

// Adds a chunk behind the last one and makes it the current one.
bool grow(WqMemBlock *block, uint64_t size) {
  WqMemBlockNode *node = makeNode(size);
  if (!node) return false;
  node->prev = block->last;
  (block->last ? block->last->next : block->first) = node;
  block->last = node;
  block->current = node;
  return true;
}

// A piece from a later chunk or a new one. It is a separate function, so that the usual request stays small.
[[gnu::noinline]] void *allocBehind(WqMemBlock *block, uint32_t size) {
  for (WqMemBlockNode *node = block->current ? block->current->next : nullptr; node; node = node->next) {
    void *piece = WqMemBlockElem_Alloc(node->elem, size);
    if (!piece) continue;
    block->current = node;
    return piece;
  }
  if (!grow(block, std::max<uint64_t>(block->elemSize, rounded(size)))) return nullptr;
  return WqMemBlockElem_Alloc(block->current->elem, size);
}

} // namespace

void WqMemBlockElem_Init(WqMemBlockElem *elem, uint32_t size) {
  elem->base = static_cast<uint8_t *>(std::malloc(size));
  elem->cursor = elem->base;
  elem->size = size;
}

void WqMemBlockElem_Term(WqMemBlockElem *elem) { std::free(elem->base); }

void *WqMemBlockElem_Alloc(WqMemBlockElem *elem, uint32_t size) {
  const uint64_t piece = rounded(size);
  uint8_t *start = elem->cursor;
  if (!start || piece > elem->size - static_cast<size_t>(start - elem->base)) return nullptr;
  elem->cursor = start + piece;
  return start;
}

void WqMemBlockElem_Clear(WqMemBlockElem *elem) { elem->cursor = elem->base; }

void WqMemBlock_Init(WqMemBlock *block, uint32_t elemSize) {
  *block = {};
  block->elemSize = elemSize;
  grow(block, elemSize);
}

void WqMemBlock_Term(WqMemBlock *block) {
  for (WqMemBlockNode *node = block->first; node;) {
    WqMemBlockNode *next = node->next;
    freeNode(node);
    node = next;
  }
}

void *WqMemBlock_Alloc(WqMemBlock *block, uint32_t size) {
  void *piece = block->current ? WqMemBlockElem_Alloc(block->current->elem, size) : nullptr;
  return piece ? piece : allocBehind(block, size);
}

void WqMemBlock_Clear(WqMemBlock *block) {
  for (const WqMemBlockNode *node = block->first; node; node = node->next) WqMemBlockElem_Clear(node->elem);
  block->current = block->first;
}

void WqMemBlcok_Dispose(WqMemBlock *block) {
  WqMemBlock_Term(block);
  block->first = nullptr;
  block->last = nullptr;
  block->current = nullptr;
}
