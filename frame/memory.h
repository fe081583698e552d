/* Memory: counted blocks, and pools of pieces. */
#ifndef WQ_FRAME_MEMORY_H
#define WQ_FRAME_MEMORY_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqMem: blocks, zeroed and counted ---------------------------------------------------------------------------
 *
 * Blocks from the C library's allocator. The functions may run on several threads at once; the count of live blocks may
 * be wrong then. */

/* Sets the count of live blocks to 0. */
WQ_API void WqMem_Init(void);

/* Frees nothing; live blocks stay. */
WQ_API void WqMem_Term(void);

/* Fills bytes with 0.
 * size: in bytes. */
WQ_API void WqMem_Zero(void *bytes, size_t size);

/* Copies bytes in ascending order. The ranges may overlap if the destination lies below the source.
 * size: in bytes.
 * Result: the destination. */
WQ_API void *WqMem_Copy(void *destination, const void *source, size_t size);

/* Makes a zeroed block.
 * size: in bytes.
 * Result: the block, to be freed with WqMem_Free; null for a size of 0 and if memory is short. */
WQ_API void *WqMem_Alloc(size_t size);

/* Makes a zeroed block for an array.
 * Result: the block, to be freed with WqMem_Free; null if either number is 0, the product is too large, or memory is
 * short. */
WQ_API void *WqMem_AllocArray(size_t elementSize, size_t count);

/* Resizes a block. Added bytes are not zeroed. The count of live blocks doesn't change.
 * block: null makes a new block.
 * size: in bytes; 0 frees the block and gives null.
 * Result: the block at its new address; null if memory is short, and the old block stays. */
WQ_API void *WqMem_Realloc(void *block, size_t size);

/* Frees a block.
 * block: null does nothing. */
WQ_API void WqMem_Free(void *block);

/* ---- WqMemBlock, WqMemBlockElem: a pool --------------------------------------------------------------------------
 *
 * A pool cuts pieces off large chunks, one behind the other. Pieces can only be freed all together. The size of a piece
 * is rounded up to a multiple of 16. Pieces are neither zeroed nor counted. A request of 0 gives an address that the
 * next request gives again. A WqMemBlockElem is one chunk, a WqMemBlock a growing chain of chunks. */

typedef struct WqMemBlockElem {
  uint8_t *base;   /* the storage; null if there is none */
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
  WqMemBlockNode *first; /* this and the next two are null if there is no chunk */
  WqMemBlockNode *last;
  WqMemBlockNode *current; /* the chunk for the next piece */
} WqMemBlock;

/* Makes a chunk. Base and cursor are null if memory is short, or if the allocator gives null for a size of 0. */
WQ_API void WqMemBlockElem_Init(WqMemBlockElem *elem, uint32_t size);

/* Frees the storage; the fields keep their values. */
WQ_API void WqMemBlockElem_Term(WqMemBlockElem *elem);

/* Takes a piece.
 * size: in bytes.
 * Result: the piece; null if it doesn't fit, and nothing changes. */
WQ_API void *WqMemBlockElem_Alloc(WqMemBlockElem *elem, uint32_t size);

/* Frees all pieces; the storage stays. */
WQ_API void WqMemBlockElem_Clear(WqMemBlockElem *elem);

/* Makes a pool with one chunk. If memory is short the pool has no chunk, and the first request tries again.
 * elemSize: storage of each chunk, in bytes. A larger request gets a chunk of its own size. */
WQ_API void WqMemBlock_Init(WqMemBlock *block, uint32_t elemSize);

/* Frees everything. The fields keep their values, and the record needs WqMemBlock_Init before further use. */
WQ_API void WqMemBlock_Term(WqMemBlock *block);

/* Takes a piece. Free space at the end of a full chunk stays unused until WqMemBlock_Clear.
 * size: in bytes.
 * Result: the piece; null if memory is short, and the pool stays as it was. */
WQ_API void *WqMemBlock_Alloc(WqMemBlock *block, uint32_t size);

/* Frees all pieces and keeps all chunks for reuse. */
WQ_API void WqMemBlock_Clear(WqMemBlock *block);

/* Frees everything and empties the record: WqMemBlock_Init or WqMemBlock_Term may follow. */
WQ_API void WqMemBlcok_Dispose(WqMemBlock *block);

#ifdef __cplusplus
}
#endif

#endif
