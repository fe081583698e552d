// Global memory. A movable block has a place in a table of handles. Such a handle is even but no multiple of 4, so that
// no address equals it. A fixed block is known by its address.

#include "platform/kernel/globalmem.h"

#include "platform/kernel/errors.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>

namespace platform {

namespace {

constexpr UINT kKept = GMEM_DISCARDABLE | GMEM_DDESHARE; // flags of a movable block that GlobalFlags returns
constexpr uintptr_t kMovableBit = 2;

struct Block final : Object {
  BlockBytes bytes; // empty while the block is discarded
  HGLOBAL handle = nullptr;
  UINT flags = 0;
  UINT locks = 0;

  bool movable() const { return reinterpret_cast<uintptr_t>(handle) & kMovableBit; }
  bool inUse() const { return !movable() || locks > 0; }
  void *address() const { return bytes.at.get(); }
};
using BlockRef = std::shared_ptr<Block>;

// All blocks, by handle and by address.
class Memory {
 public:
  std::mutex mutex;

  BlockRef find(HGLOBAL handle) {
    const auto value = reinterpret_cast<uintptr_t>(handle);
    if (value & kMovableBit) return movable_.get<Block>(reinterpret_cast<HANDLE>(value - kMovableBit));
    const auto at = byAddress_.find(handle);
    return at == byAddress_.end() ? nullptr : at->second;
  }
  BlockRef findOrFail(HGLOBAL handle) {
    BlockRef block = find(handle);
    if (!block) SetLastError(ERROR_INVALID_HANDLE);
    return block;
  }

  // Gives a block its bytes, and a new block its handle.
  // Result: the handle; null on failure, and nothing is changed then.
  HGLOBAL open(const BlockRef &block, BlockBytes bytes, bool movable) {
    void *const address = bytes.at.get();
    const bool isNew = address && byAddress_.emplace(address, block).second;
    if (movable && !block->movable()) {
      const HANDLE place = movable_.open(block);
      if (!place) {
        if (isNew) byAddress_.erase(address);
        return nullptr;
      }
      block->handle = reinterpret_cast<HANDLE>(reinterpret_cast<uintptr_t>(place) | kMovableBit);
    }
    if (block->address() != address) byAddress_.erase(block->address());
    block->bytes = std::move(bytes);
    if (!block->movable()) block->handle = address;
    return block->handle;
  }

  void close(const BlockRef &block) {
    byAddress_.erase(block->address());
    if (block->movable())
      movable_.close<Block>(reinterpret_cast<HANDLE>(reinterpret_cast<uintptr_t>(block->handle) - kMovableBit));
  }

  size_t count() { // a discarded block has a handle but no address
    return movable_.count() +
           static_cast<size_t>(std::count_if(byAddress_.begin(), byAddress_.end(),
                                             [](const auto &one) { return !one.second->movable(); }));
  }

 private:
  Handles movable_{1};
  std::unordered_map<const void *, BlockRef> byAddress_;
};

Memory &memory() {
  static auto *one = new Memory; // outlives every thread
  return *one;
}

// Runs a body on the table of blocks, and answers failure if memory runs out.
template <typename Result, typename Body> Result withMemory(Result failure, Body body) {
  return guarded(failure, [&]() -> Result {
    const std::lock_guard lock(memory().mutex);
    return body(memory());
  });
}

// Allocates the bytes of a block. Result: empty, with the last error set, if memory is short.
BlockBytes makeBytes(size_t size, bool cleared) {
  const size_t room = size > PTRDIFF_MAX ? 0 : std::max<size_t>(size, 1);
  void *const at = room == 0 ? nullptr : cleared ? std::calloc(1, room) : std::malloc(room);
  if (!at) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return {{at, std::free}, size};
}

HGLOBAL move(Memory &all, const BlockRef &block, size_t size, UINT flags) {
  BlockBytes moved = makeBytes(size, flags & GMEM_ZEROINIT);
  if (!moved.at) return nullptr;
  if (block->bytes.size > 0) std::memcpy(moved.at.get(), block->address(), std::min(size, block->bytes.size));
  return all.open(block, std::move(moved), block->movable());
}

HGLOBAL discard(Memory &all, const BlockRef &block, UINT flags) {
  if (block->locks > 0) return nullptr;
  if (flags & GMEM_MOVEABLE) return all.open(block, {}, true);
  SetLastError(ERROR_INVALID_PARAMETER);
  return nullptr;
}

HGLOBAL changeSize(Memory &all, const BlockRef &block, size_t size, UINT flags) {
  if (size == 0 && block->movable()) return discard(all, block, flags);
  if (!block->inUse() || (flags & GMEM_MOVEABLE)) return move(all, block, size, flags);
  if (size > block->bytes.size) { // the block may have no room behind it
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  block->bytes.size = size;
  return block->handle;
}

HGLOBAL changeFlags(Memory &all, const BlockRef &block, UINT flags) {
  if (!block->movable()) return flags & GMEM_MOVEABLE ? all.open(block, block->bytes, true) : block->handle;
  block->flags |= flags & GMEM_DISCARDABLE;
  return block->handle;
}

} // namespace

BlockBytes bytesOf(HGLOBAL handle) {
  const std::lock_guard lock(memory().mutex);
  const BlockRef block = memory().find(handle);
  return block ? block->bytes : BlockBytes();
}

void freeBlock(HGLOBAL handle, const BlockBytes &bytes) {
  const std::lock_guard lock(memory().mutex);
  const BlockRef block = memory().find(handle);
  if (block && block->bytes.at == bytes.at) memory().close(block);
}

size_t countBlocks() {
  const std::lock_guard lock(memory().mutex);
  return memory().count();
}

} // namespace platform

using namespace platform;

HGLOBAL GlobalAlloc(UINT flags, SIZE_T size) {
  return withMemory<HGLOBAL>(nullptr, [&](Memory &all) -> HGLOBAL {
    const bool movable = flags & GMEM_MOVEABLE;
    const auto block = std::make_shared<Block>();
    block->flags = movable ? flags & kKept : 0;
    if (movable && size == 0) return all.open(block, {}, true);
    BlockBytes bytes = makeBytes(size, flags & GMEM_ZEROINIT);
    return bytes.at ? all.open(block, std::move(bytes), movable) : nullptr;
  });
}

HGLOBAL GlobalReAlloc(HGLOBAL handle, SIZE_T size, UINT flags) {
  return withMemory<HGLOBAL>(nullptr, [&](Memory &all) -> HGLOBAL {
    const BlockRef block = all.findOrFail(handle);
    if (!block) return nullptr;
    return flags & GMEM_MODIFY ? changeFlags(all, block, flags) : changeSize(all, block, size, flags);
  });
}

LPVOID GlobalLock(HGLOBAL handle) {
  if (!handle) return nullptr; // no error is set, unlike for other invalid handles
  return withMemory<LPVOID>(nullptr, [&](Memory &all) -> LPVOID {
    const BlockRef block = all.findOrFail(handle);
    if (!block) return nullptr;
    if (!block->address()) {
      SetLastError(ERROR_DISCARDED);
      return nullptr;
    }
    if (block->movable() && block->locks < GMEM_LOCKCOUNT) ++block->locks;
    return block->address();
  });
}

BOOL GlobalUnlock(HGLOBAL handle) {
  return withMemory<BOOL>(FALSE, [&](Memory &all) -> BOOL {
    const BlockRef block = all.findOrFail(handle);
    if (!block) return FALSE;
    if (!block->movable()) return TRUE;
    if (block->locks == 0) return failWith(ERROR_NOT_LOCKED);
    return --block->locks > 0 ? TRUE : failWith(ERROR_SUCCESS);
  });
}

SIZE_T GlobalSize(HGLOBAL handle) {
  return withMemory<SIZE_T>(0, [&](Memory &all) -> SIZE_T {
    const BlockRef block = all.findOrFail(handle);
    return block ? block->bytes.size : 0;
  });
}

UINT GlobalFlags(HGLOBAL handle) {
  return withMemory<UINT>(GMEM_INVALID_HANDLE, [&](Memory &all) -> UINT {
    const BlockRef block = all.findOrFail(handle);
    if (!block) return GMEM_INVALID_HANDLE;
    return block->flags | block->locks | (block->address() ? 0 : GMEM_DISCARDED);
  });
}

HGLOBAL GlobalHandle(LPCVOID address) {
  return withMemory<HGLOBAL>(nullptr, [&](Memory &all) -> HGLOBAL {
    const BlockRef block = all.find(const_cast<void *>(address));
    if (block && address && block->address() == address) return block->handle;
    SetLastError(address ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
    return nullptr;
  });
}

HGLOBAL GlobalFree(HGLOBAL handle) {
  if (!handle) return nullptr;
  return withMemory<HGLOBAL>(handle, [&](Memory &all) -> HGLOBAL {
    const BlockRef block = all.findOrFail(handle);
    if (!block) return handle;
    all.close(block);
    return nullptr;
  });
}

HLOCAL LocalAlloc(UINT flags, SIZE_T size) { return GlobalAlloc(flags, size); }
HLOCAL LocalReAlloc(HLOCAL block, SIZE_T size, UINT flags) { return GlobalReAlloc(block, size, flags); }
LPVOID LocalLock(HLOCAL block) { return GlobalLock(block); }
BOOL LocalUnlock(HLOCAL block) { return GlobalUnlock(block); }
SIZE_T LocalSize(HLOCAL block) { return GlobalSize(block); }
UINT LocalFlags(HLOCAL block) { return GlobalFlags(block); }
HLOCAL LocalHandle(LPCVOID address) { return GlobalHandle(address); }
HLOCAL LocalFree(HLOCAL block) { return GlobalFree(block); }
