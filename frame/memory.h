/* Memory: counted blocks, and pools of pieces. */
#ifndef WQ_FRAME_MEMORY_H
#define WQ_FRAME_MEMORY_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqMem: blocks, zeroed and counted ---------------------------------------------------------------------------
 *
 * The front to the C library's allocator. The functions may run on several threads at once; the count of live blocks
 * is then not exact. */

/* Sets the count of live blocks to 0. */
WQ_API void WqMem_Init(void);

/* Frees nothing; blocks not yet freed stay. */
WQ_API void WqMem_Term(void);

/* Fills bytes with 0.
 * size: in bytes. */
WQ_API void WqMem_Zero(void *bytes, size_t size);

/* Copies bytes in ascending order. The ranges may overlap where the destination lies below the source.
 * size: in bytes.
 * Result: the destination. */
WQ_API void *WqMem_Copy(void *destination, const void *source, size_t size);

/* Makes a zeroed block.
 * size: in bytes.
 * Result: the block, given back with WqMem_Free; null for a size of 0 and when memory is short. */
WQ_API void *WqMem_Alloc(size_t size);

/* Makes a zeroed block for an array.
 * Result: the block, given back with WqMem_Free; null when either number is 0, when the product is too large, and when
 * memory is short. */
WQ_API void *WqMem_AllocArray(size_t elementSize, size_t count);

/* Resizes a block. Added bytes are not zeroed. The count of live blocks never changes here.
 * block: null makes a new block.
 * size: in bytes; 0 releases the block and gives null.
 * Result: the block at its new address; null when memory is short, and the old block stays. */
WQ_API void *WqMem_Realloc(void *block, size_t size);

/* Frees a block.
 * block: null does nothing. */
WQ_API void WqMem_Free(void *block);

/* ---- WqMemBlock, WqMemBlockElem: a pool --------------------------------------------------------------------------
 *
 * A pool cuts pieces off large chunks, one behind the other. They can't be given back but all together. A piece takes
 * its size rounded up to a multiple of 16, and is neither zeroed nor counted. A request of 0 gives an address that the
 * next request gives again. A WqMemBlockElem is one chunk, a WqMemBlock a chain of them that grows. */

typedef struct WqMemBlockElem {
  uint8_t *base;   /* the storage; null when there is none */
  uint8_t *cursor; /* the next free byte */
  uint32_t size;   /* of the storage, in bytes */
} WqMemBlockElem;

typedef struct WqMemBlockNode {
  WqMemBlockElem *elem;
  struct WqMemBlockNode *prev;
  struct WqMemBlockNode *next;
} WqMemBlockNode;

typedef struct WqMemBlock {
  uint32_t elemSize;     /* storage of a new chunk, in bytes */
  WqMemBlockNode *first; /* all three null when there is no chunk */
  WqMemBlockNode *last;
  WqMemBlockNode *current; /* where allocation goes on */
} WqMemBlock;

/* Makes a chunk. If memory is short, or for a size of 0 where the allocator gives nothing, base and cursor are null. */
WQ_API void WqMemBlockElem_Init(WqMemBlockElem *elem, uint32_t size);

/* Frees the storage; the fields keep their values. */
WQ_API void WqMemBlockElem_Term(WqMemBlockElem *elem);

/* Takes a piece.
 * size: in bytes.
 * Result: the piece; null when it doesn't fit, and nothing changes. */
WQ_API void *WqMemBlockElem_Alloc(WqMemBlockElem *elem, uint32_t size);

/* Takes all pieces back; the storage stays. */
WQ_API void WqMemBlockElem_Clear(WqMemBlockElem *elem);

/* Makes a pool with one chunk. If memory is short the pool has none, and the first request tries again.
 * elemSize: storage of each chunk, in bytes. A larger request gets a chunk of its own size. */
WQ_API void WqMemBlock_Init(WqMemBlock *block, uint32_t elemSize);

/* Frees everything. The fields keep their values, and the record is dead until WqMemBlock_Init. */
WQ_API void WqMemBlock_Term(WqMemBlock *block);

/* Takes a piece. Space left at the end of a full chunk is not used again before WqMemBlock_Clear.
 * size: in bytes.
 * Result: the piece; null when memory is short, and the pool stays as it was. */
WQ_API void *WqMemBlock_Alloc(WqMemBlock *block, uint32_t size);

/* Takes all pieces back and keeps all chunks for reuse. */
WQ_API void WqMemBlock_Clear(WqMemBlock *block);

/* Frees everything and leaves an empty record: WqMemBlock_Init or WqMemBlock_Term may follow. */
WQ_API void WqMemBlcok_Dispose(WqMemBlock *block);

#ifdef __cplusplus
}
#endif

#endif
