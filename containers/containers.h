/* Containers: chains of nodes, tables by key, maps of rows and cells, trees, a stack, a ring of bytes. */
#ifndef WQ_CONTAINERS_CONTAINERS_H
#define WQ_CONTAINERS_CONTAINERS_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqList: a doubly linked chain -------------------------------------------------------------------------------
 *
 * The caller keeps a list by its head, the address of the first node. The head of an empty list is null. Neither the
 * tail nor a count is kept. So adding at the front is quick, while adding at the end walks along all nodes. The same
 * data may stand in a list any number of times.
 *
 * In the names, N stands for the side behind a position, and P for the side before it. Add makes a new node; Connect
 * links an existing one. DisConnect unlinks a node, which lives on; Remove frees it as well. With: the data are freed
 * too, and must be a block from WqMem. Element: the caller gives the data, and the node is searched.
 *
 * Nodes and positions must belong to the list of the given head. */

typedef struct WqList {
  WqWord data;         /* the caller's; only functions with With in their name free it */
  struct WqList *prev; /* null at the first node */
  struct WqList *next; /* null at the last node */
} WqList;

/* Clears a node's three fields.
 * node: may be null; then nothing happens. */
WQ_API void WqList_Init(WqList *node);

/* Does nothing; an unlinked node owns nothing. */
WQ_API void WqList_Term(WqList *node);

/* Makes a node directly behind a position.
 * position: null makes an unlinked node.
 * Result: the new node, owned by the list; null if memory is short, and the list stays as it was. */
WQ_API WqList *WqList_AddN(WqList *position, WqWord data);

/* Makes a node directly before a position. If the position is the head, the result is the new head.
 * position: null makes an unlinked node.
 * Result: the new node, owned by the list; null if memory is short, and the list stays as it was. */
WQ_API WqList *WqList_AddP(WqList *position, WqWord data);

/* Makes a node at the end.
 * head: null for an empty list, whose new head is then the result.
 * Result: the new node, not the head; null if memory is short, and the list stays as it was. */
WQ_API WqList *WqList_AddTail(WqList *head, WqWord data);

/* Links a node at the end. Both its links are set, whatever they held.
 * head: null for an empty list, whose new head is then the node.
 * Result: the node. */
WQ_API WqList *WqList_ConnectTail(WqList *head, WqList *node);

/* Links a node directly behind a position.
 * position: null stands for the last node.
 * head: null makes the node stand alone.
 * Result: the head; for a null head the node. */
WQ_API WqList *WqList_ConnectN(WqList *node, WqList *position, WqList *head);

/* Links a node directly before a position.
 * position: null stands for the first node.
 * head: null makes the node stand alone.
 * Result: the head, which is the node whenever the node is now the first. */
WQ_API WqList *WqList_ConnectP(WqList *node, WqList *position, WqList *head);

/* Unlinks a node and clears its links. The node belongs to the caller afterwards.
 * Result: the head after the operation, null if the list is now empty. */
WQ_API WqList *WqList_DisConnect(WqList *node, WqList *head);

/* Unlinks the first node that holds the data and clears its links. The node belongs to the caller afterwards.
 * head: may be null.
 * Result: the head after the operation. Data that no node holds changes nothing. */
WQ_API WqList *WqList_DisConnectElement(WqList *head, WqWord data);

/* Unlinks and frees a node; its data stays the caller's.
 * Result: the head after the operation, null if the list is now empty. */
WQ_API WqList *WqList_Remove(WqList *node, WqList *head);

/* Unlinks and frees a node and its data.
 * Result: the head after the operation, null if the list is now empty. */
WQ_API WqList *WqList_RemoveWith(WqList *node, WqList *head);

/* Unlinks and frees every node that holds the data, which stays the caller's.
 * head: may be null.
 * Result: the head after the operation. Data that no node holds changes nothing. */
WQ_API WqList *WqList_RemoveElement(WqList *head, WqWord data);

/* Unlinks and frees every node that holds the data, and frees the data, once.
 * head: may be null.
 * Result: the head after the operation. Data that no node holds changes nothing and is not freed. */
WQ_API WqList *WqList_RemoveElementWith(WqList *head, WqWord data);

/* Frees the given node and all nodes behind it. Their data stays the caller's.
 * head: may be null.
 * Result: null, to be stored as the new head. */
WQ_API WqList *WqList_RemoveAll(WqList *head);

/* Frees the given node, all nodes behind it, and the data of all these nodes.
 * head: may be null. No two nodes may hold the same block. */
WQ_API void WqList_RemoveAllWith(WqList *head);

/* Finds the first node that holds the data. Only the words are compared.
 * head: may be null.
 * Result: the node, or null. */
WQ_API WqList *WqList_Find(WqList *head, WqWord data);

/* ---- WqHash: a table on 32-bit keys ------------------------------------------------------------------------------
 *
 * A fixed number of buckets, each a list. The bucket of a key is the remainder of key / number of buckets, so small ids
 * have their own buckets. A bucket's nodes hold entries of value and key, the newest first. A key stands in a table
 * once. With means more here: WqHash_RemoveWith frees node and entry, and only WqHash_RemoveAllWith frees the callers'
 * values. */

typedef struct WqHash {
  WqList **buckets; /* the heads */
  uint32_t bucketCount;
} WqHash;

typedef struct WqHashEntry {
  WqWord data; /* the caller's value */
  uint32_t key;
} WqHashEntry;

/* Makes an empty table.
 * bucketCount: at least 1.
 * Bad input: with a count of 0, or if memory is short, the table holds nothing: look-ups answer null and insertions 0.
 */
WQ_API void WqHash_Init(WqHash *hash, uint32_t bucketCount);

/* Frees the bucket array. The table is emptied first, with WqHash_RemoveAll or WqHash_RemoveAllWith. */
WQ_API void WqHash_Term(WqHash *hash);

/* Result: the index of a key's bucket; 0 for a table without buckets. */
WQ_API uint32_t WqHash_Ix(const WqHash *hash, uint32_t key);

/* Result: the node of a key, whose data is the WqHashEntry; null for an absent key. Both stay the table's. */
WQ_API WqList *WqHash_FindList(const WqHash *hash, uint32_t key);

/* Result: the entry of a key, whose data is the caller's value; null for an absent key. The entry stays the table's. */
WQ_API WqHashEntry *WqHash_FindData(const WqHash *hash, uint32_t key);

/* Stores a value under a key. An older value of the key is replaced and not freed.
 * data: the value; only WqHash_RemoveAllWith frees it.
 * Result: 1 when the value is stored; 0 if memory is short, and the table stays as it was. */
WQ_API int WqHash_Insert(WqHash *hash, uint32_t key, WqWord data);

/* Takes a key's node out of the table and frees only the node. The entry belongs to the caller, who has got it from
 * WqHash_FindData before and frees it with WqMem_Free. An absent key does nothing. */
WQ_API void WqHash_Remove(WqHash *hash, uint32_t key);

/* Takes a key's node out and frees node and entry, but not the value. An absent key does nothing. */
WQ_API void WqHash_RemoveWith(WqHash *hash, uint32_t key);

/* Empties the table: frees all nodes and entries, but no values. */
WQ_API void WqHash_RemoveAll(WqHash *hash);

/* Empties the table: frees all nodes and entries, and every value with WqMem_Free. */
WQ_API void WqHash_RemoveAllWith(WqHash *hash);

/* ---- WqMap, WqElems, WqElem: a table of rows ---------------------------------------------------------------------
 *
 * A map holds rows in a list with two ends. All rows have the same number of cells. A row carries a row number, counted
 * from 1, and a word of state bits. An index is a position in the list, counted from 0. It differs from the row number
 * after rows were exchanged. Cell 0 of a row belongs to the map, which writes the row number into its value, unless the
 * cell owns a block. */

#define WQ_ELEM_OWNED 0x00000001u /* WqElem.kind: value is a block from WqMem that the cell owns */

#define WQ_ELEMS_ACTIVE 0x00008000u   /* WqElems.state */
#define WQ_ELEMS_SELECTED 0x00080000u /* WqElems.state */

typedef struct WqElem {
  uint32_t kind; /* WQ_ELEM_OWNED; the other bits are the caller's */
  WqWord user;   /* the caller's */
  WqWord value;  /* a number or, with WQ_ELEM_OWNED, a block */
  WqWord extra;  /* the caller's second value */
  WqWord user2;  /* the caller's */
} WqElem;

typedef struct WqElems {
  WqElem *cells;
  uint32_t state;  /* WQ_ELEMS_ACTIVE, WQ_ELEMS_SELECTED; the other bits are free for WqMap_BitOn and WqMap_BitOff */
  uint32_t number; /* row number from 1; 0 until the row is in a map */
  uint32_t cellCount;
} WqElems;

typedef struct WqMap {
  WqList *head; /* the first row's node, null if empty */
  WqList *tail; /* the last row's node, null if empty */
  uint32_t count;
} WqMap;

/* Clears the record. */
WQ_API void WqMap_Init(WqMap *map);

/* Releases every row with its cells and the blocks they own, and empties the map. The map can be used again. */
WQ_API void WqMap_Term(WqMap *map);

/* Adds a row at one end. At the head, all rows are numbered again. At the tail, the new row's number is the count, and
 * its cell 0 stays as the caller has set it.
 * row: from WqElems_Init, with at least one cell; belongs to the map afterwards.
 * atHead: not 0 for the head, 0 for the tail.
 * Result: 1; 0 if memory is short: the map stays as it was and the row stays the caller's. */
WQ_API int WqMap_Add(WqMap *map, WqElems *row, int32_t atHead);

/* Takes out and releases the row at an index. The rows behind it and the values of their cells 0 count down by 1. A row
 * that stands in the map several times is only taken out here, and released with its last place.
 * Bad input: an index past the end changes nothing. */
WQ_API void WqMap_Remove(WqMap *map, uint32_t index);

/* Result: the node at an index; null past the end. The node stays with its row when rows are exchanged. */
WQ_API WqList *WqMap_GetList(const WqMap *map, uint32_t index);

/* Result: the row at an index; null past the end. */
WQ_API WqElems *WqMap_Get(const WqMap *map, uint32_t index);

/* Exchanges the places of two rows. Row numbers and cells stay as they are.
 * Bad input: an index past the end changes nothing. */
WQ_API void WqMap_Swap(WqMap *map, uint32_t index, uint32_t otherIndex);

/* Sets or clears the mask's bits in the state of every row. */
WQ_API void WqMap_BitOn(WqMap *map, uint32_t mask);
WQ_API void WqMap_BitOff(WqMap *map, uint32_t mask);

/* Sets or clears the selected or the active bit of the row at an index.
 * Bad input: an index past the end changes nothing. */
WQ_API void WqMap_SelectIx(WqMap *map, uint32_t index);
WQ_API void WqMap_UnselectIx(WqMap *map, uint32_t index);
WQ_API void WqMap_ActiveIx(WqMap *map, uint32_t index);
WQ_API void WqMap_InactiveIx(WqMap *map, uint32_t index);

/* Sets or clears the selected or the active bit of a row, found in the map by its pointer.
 * Bad input: a row that is not in the map stays as it is. */
WQ_API void WqMap_Select(WqMap *map, const WqElems *row);
WQ_API void WqMap_Unselect(WqMap *map, const WqElems *row);
WQ_API void WqMap_Active(WqMap *map, const WqElems *row);
WQ_API void WqMap_Inactive(WqMap *map, const WqElems *row);

/* Clears the selected bit, or the active bit, of every row. */
WQ_API void WqMap_UnselectAll(WqMap *map);
WQ_API void WqMap_InactiveAll(WqMap *map);

/* Makes a row with zeroed cells, state and number.
 * cellCount: number of cells. With 0 the row has no cells and must not go into a map.
 * Result: the row; null if memory is short. The caller frees a row that never goes into a map with WqElems_Term and
 * WqMem_Free. */
WQ_API WqElems *WqElems_Init(uint32_t cellCount);

/* Releases the blocks that cells own, and the cells. The row record itself stays. */
WQ_API void WqElems_Term(WqElems *row);

/* Copies all five words into the cell at an index. A block that the overwritten cell owns is not released.
 * Bad input: an index of cellCount or more changes nothing. */
WQ_API void WqElems_Set(WqElems *row, const WqElem *cell, uint32_t index);

/* Both clear the cell's five words; a block that the cell owns is not released. */
WQ_API void WqElem_Init(WqElem *cell);
WQ_API void WqElem_Term(WqElem *cell);

/* Sets three fields and leaves the others. */
WQ_API void WqElem_Set(WqElem *cell, uint32_t kind, WqWord value, WqWord extra);

/* ---- WqTree: an intrusive tree -----------------------------------------------------------------------------------
 *
 * The caller owns every node. The functions only link and unlink nodes, and never allocate. A root is a node without a
 * parent. A subtree moves with its top node. */

typedef struct WqTree {
  WqWord data; /* the caller's */
  struct WqTree *parent;
  struct WqTree *firstChild;
  struct WqTree *lastChild;
  struct WqTree *prev; /* the sibling in front, null for a first child */
  struct WqTree *next; /* the sibling behind, null for a last child */
  uint32_t childCount; /* direct children */
} WqTree;

/* Clears all fields.
 * node: may be null; then nothing happens. */
WQ_API void WqTree_Init(WqTree *node);

/* Does nothing; a tree owns no memory. */
WQ_API void WqTree_Term(WqTree *node);

/* Place a node directly in front of or behind a reference node, under the same parent.
 * reference: a node with a parent.
 * node: not linked; may be null, then nothing happens.
 * Bad input: a reference without a parent has no siblings, and nothing happens. */
WQ_API void WqTree_AddPrev(WqTree *reference, WqTree *node);
WQ_API void WqTree_AddNext(WqTree *reference, WqTree *node);

/* Place a node as first or as last child of a parent.
 * node: not linked; may be null, then nothing happens. */
WQ_API void WqTree_AddTop(WqTree *parent, WqTree *node);
WQ_API void WqTree_AddBottom(WqTree *parent, WqTree *node);

/* Takes a node out of its parent's children. The node's own parent, prev and next keep their values. A root stays as
 * it is. */
WQ_API void WqTree_Disconnect(WqTree *node);

/* Exchanges the places of two nodes, each with its subtree.
 * a, b: neither may lie in the other's subtree. Only a child is refused; deeper levels aren't checked, so that the
 * depth costs nothing.
 * Result: 1. 0, and nothing has changed, for null, a root, a node that its parent doesn't hold any more, a node and
 * itself, and a node and its own parent. */
WQ_API int WqTree_Swap(WqTree *a, WqTree *b);

/* Result: the number of ancestors of a node. A root has 0, its children have 1. */
WQ_API uint32_t WqTree_NofParent(const WqTree *node);

/* ---- WqStack: words, last in, first out -------------------------------------------------------------------------- */

typedef struct WqStack {
  WqList *head; /* the top */
  uint32_t count;
} WqStack;

/* Clears the record. */
WQ_API void WqStack_Init(WqStack *stack);

/* Frees all nodes, but not the memory that values may point to. The record keeps its fields and needs WqStack_Init
 * before further use. */
WQ_API void WqStack_Term(WqStack *stack);

/* Puts a value on top.
 * Result: 1; 0 if memory is short, and the stack stays as it was. */
WQ_API int WqStack_Push(WqStack *stack, WqWord value);

/* Takes the top value.
 * value: receives the top value.
 * Result: 1; 0 if the stack is empty, and value stays as it was. */
WQ_API int WqStack_Pop(WqStack *stack, WqWord *value);

/* ---- WqRingBuf: a byte ring of fixed capacity -------------------------------------------------------------------- */

typedef struct WqRingBuf {
  uint8_t *buffer;   /* capacity bytes, null if there is none */
  uint32_t count;    /* bytes held; decides between empty and full if both indexes are equal */
  uint32_t writeIx;  /* where the next byte goes */
  uint32_t readIx;   /* the next byte to read */
  uint32_t capacity; /* size of buffer; 0 if there is none */
} WqRingBuf;

/* Makes an empty ring.
 * capacity: in bytes.
 * Bad input: with 0, or if memory is short, the ring has no buffer. It accepts no bytes and gives none. */
WQ_API void WqRingBuf_Init(WqRingBuf *ring, uint32_t capacity);

/* Frees the buffer. The ring accepts and gives no bytes until WqRingBuf_Init. */
WQ_API void WqRingBuf_Term(WqRingBuf *ring);

/* Removes all bytes; the buffer stays. */
WQ_API void WqRingBuf_Flush(WqRingBuf *ring);

/* Takes the next byte.
 * Result: 0 to 255; -1 if the ring is empty. */
WQ_API int32_t WqRingBuf_Getc(WqRingBuf *ring);

/* Appends a byte.
 * Result: 1; 0 if the ring is full, and it stays as it was. */
WQ_API int WqRingBuf_Putc(WqRingBuf *ring, uint8_t byte);

/* Puts back a byte: the next read gets it. It needn't be the byte that was read last.
 * Result: 1; 0 if the ring is full, and it stays as it was. */
WQ_API int WqRingBuf_Ungetc(WqRingBuf *ring, uint8_t byte);

/* Appends a whole block or nothing. A block must be smaller than the free space, so that at least a byte stays free. A
 * full ring refuses even a block of 0 bytes.
 * bytes: may be null if size is 0. size: in bytes.
 * Result: 1; 0 if refused, and the ring stays as it was. */
WQ_API int WqRingBuf_PutBlock(WqRingBuf *ring, const void *bytes, uint32_t size);

#ifdef __cplusplus
}
#endif

#endif
