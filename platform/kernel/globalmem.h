// Blocks of global memory, for what of the layer keeps them longer than the program does.
#pragma once

#include "platform/kernel/handles.h"

#include <span>

namespace platform {

// The bytes of a block. Whoever holds them may go on reading when the program has freed the block.
struct BlockBytes {
  std::shared_ptr<void> at; // null for none
  size_t size = 0;

  std::span<const uint8_t> span() const { return {static_cast<const uint8_t *>(at.get()), size}; }
};

// None for a handle that is none, and for a discarded block.
BlockBytes bytesOf(HGLOBAL block);
// Frees a block, unless the program has done so and the handle stands for another one now.
void freeBlock(HGLOBAL block, const BlockBytes &bytes);
// How many there are.
size_t countBlocks();

} // namespace platform
