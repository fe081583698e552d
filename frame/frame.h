/* The library's frame: start and end, the one global block, memory, version numbers, screen metrics. */
#ifndef WQ_FRAME_FRAME_H
#define WQ_FRAME_FRAME_H

#include "containers/containers.h"
#include "drawing/drawing.h"
#include "frame/types.h"
#include "windows/windows.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqMain: start and end --------------------------------------------------------------------------------------- */

/* The one block of the process: read by the library and the application, changed by the library. */
typedef struct WqMainBlock {
  HINSTANCE instance;  /* the application's instance handle */
  HWND mainWnd;        /* the application's main window; null until WqMain_Config */
  uint32_t allocCount; /* live blocks of WqMem; nothing in the library depends on it */
  WqList *wndList;     /* all window objects ever initialised, newest first */
  WqColorPal palette;  /* selected into the contexts that windows paint on */
  WqHash colorTbl;     /* the registries: of WqColorEntry, */
  WqHash fontTbl;      /* WqFont, */
  WqHash bmpTbl;       /* WqBmpFile, */
  WqHash brushTbl;     /* WqBrush */
  WqHash penTbl;       /* and WqPen; */
  WqHash mbbTbl;
  WqTimerState timer;
} WqMainBlock;

extern WQ_API WqMainBlock wqMain;

/* Starts the library: clears wqMain, registers the window class, and makes the palette and the registries, that of the
 * colours with the library's own. It comes before every call that touches wqMain. Failures are not reported; a
 * registry that could not be made holds nothing.
 * instance: the application's instance handle; null serves for a program without resources.
 * Threads: the thread that will run the message loop. */
WQ_API void WqMain_Init(HINSTANCE instance);

/* Tells the library the application's main window. Called once, after that window was made.
 * Result: 1.
 * Threads: that of WqMain_Init. */
WQ_API int WqMain_Config(HWND mainWnd);

/* Ends the library: frees the timers, which are not told, the registries with all they hold and have made, the
 * palette, and the list of window objects. Windows stay, and so does the window class. It is the last call, and comes after WqTimer_Stop.
 * Threads: that of WqMain_Init. */
WQ_API void WqMain_Term(void);

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
 * A pool hands out pieces of large chunks, in order, and takes them all back at once. A piece takes its size rounded up
 * to a multiple of 16, and is neither zeroed nor counted. A request of 0 gives an address that the next request gives
 * again. A WqMemBlockElem is one chunk, a WqMemBlock a chain of them that grows. */

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

/* ---- WqVer: version numbers -------------------------------------------------------------------------------------- */

/* Four numbers of 8 bits: 1.2.3.4 has 1 in the top byte and 4 in the bottom byte, so that versions compare as words. */
typedef struct WqVer {
  uint32_t value;
} WqVer;

/* Sets the version to 0. */
WQ_API void WqVer_Init(WqVer *version);

/* Does nothing. */
WQ_API void WqVer_Term(WqVer *version);

/* Reads "1.2.3.4"; white space may stand round the dots, and any text behind.
 * Result: 1; 0 when a dot is missing, with the numbers in front of it stored. */
WQ_API int WqVer_Str2Ver(WqVer *version, const char *text);

/* ---- WqSys: the screen ------------------------------------------------------------------------------------------- */

/* Store the width and height of a maximised window's client area, or those of the whole screen, in pixels.
 * Threads: any. */
WQ_API void WqSys_DesktopRect(SIZE *size);
WQ_API void WqSys_ScreenRes(SIZE *size);

#ifdef __cplusplus
}
#endif

#endif
