// Blocks of global memory, for parts of the layer that keep a block's bytes after the program has freed the block.
#pragma once

#include "platform/kernel/handles.h"

#include <span>

namespace platform {

// The bytes of a block. They stay readable for their holders after the program has freed the block.
struct BlockBytes {
  std::shared_ptr<void> at; // null for no bytes
  size_t size = 0;

  std::span<const uint8_t> span() const { return {static_cast<const uint8_t *>(at.get()), size}; }
};

// The bytes of a block; empty for an invalid handle and for a discarded block.
BlockBytes bytesOf(HGLOBAL block);
// Frees a block, unless the program has already freed it and the handle stands for another block now.
void freeBlock(HGLOBAL block, const BlockBytes &bytes);
// The number of blocks.
size_t countBlocks();

} // namespace platform
