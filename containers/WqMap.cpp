// Tables of rows: a double-ended list whose rows carry their number and state bits.

#include "containers/containers.h"

#include "frame/memory.h"

#include <utility>

namespace {

WqElems *rowOf(const WqList *node) { return reinterpret_cast<WqElems *>(node->data); }

// Cell 0 shows the row number, unless its value is a block: WqElems_Term would free the number as a block.
bool showsNumber(const WqElems *row) {
  return row->cells && row->cellCount > 0 && !(row->cells[0].kind & WQ_ELEM_OWNED);
}

void setNumber(WqElems *row, uint32_t number) {
  row->number = number;
  if (showsNumber(row)) row->cells[0].value = number;
}

void countDown(WqElems *row) {
  --row->number;
  if (showsNumber(row)) --row->cells[0].value;
}

void changeBits(WqElems *row, uint32_t off, uint32_t on) {
  if (row) row->state = (row->state & ~off) | on;
}

void changeAllBits(WqMap *map, uint32_t off, uint32_t on) {
  for (WqList *node = map->head; node; node = node->next) changeBits(rowOf(node), off, on);
}

void changeBitsOf(WqMap *map, const WqElems *row, uint32_t off, uint32_t on) {
  const WqList *node = WqList_Find(map->head, reinterpret_cast<WqWord>(row));
  if (node) changeBits(rowOf(node), off, on);
}

void releaseRow(WqElems *row) {
  WqElems_Term(row);
  WqMem_Free(row);
}

// Puts an unlinked node behind another one, or first for null.
void placeBehind(WqMap *map, WqList *position, WqList *node) {
  map->head = position ? WqList_ConnectN(node, position, map->head) : WqList_ConnectP(node, nullptr, map->head);
  if (!node->next) map->tail = node;
}

void takeOut(WqMap *map, WqList *node) {
  if (node == map->tail) map->tail = node->prev;
  map->head = WqList_DisConnect(node, map->head);
}

} // namespace

void WqMap_Init(WqMap *map) { *map = {}; }

// A row may stand in the map more than once, but is released once: at its last place, found by numbering.
void WqMap_Term(WqMap *map) {
  uint32_t place = 0;
  for (const WqList *node = map->head; node; node = node->next) rowOf(node)->number = place++;
  place = 0;
  for (const WqList *node = map->head; node; node = node->next)
    if (rowOf(node)->number == place++) releaseRow(rowOf(node));
  WqList_RemoveAll(map->head);
  *map = {};
}

int WqMap_Add(WqMap *map, WqElems *row, int32_t atHead) {
  const auto data = reinterpret_cast<WqWord>(row);
  WqList *node = atHead ? WqList_AddP(map->head, data) : WqList_AddN(map->tail, data);
  if (!node) return 0;
  if (atHead || !map->head) map->head = node;
  if (!atHead || !map->tail) map->tail = node;
  ++map->count;
  if (!atHead) {
    row->number = map->count;
    return 1;
  }
  uint32_t number = 0;
  for (node = map->head; node; node = node->next) setNumber(rowOf(node), ++number);
  return 1;
}

void WqMap_Remove(WqMap *map, uint32_t index) {
  WqList *node = WqMap_GetList(map, index);
  if (!node) return;
  WqElems *row = rowOf(node);
  WqList *behind = node->next;
  takeOut(map, node);
  if (!WqList_Find(map->head, node->data)) releaseRow(row);
  WqMem_Free(node);
  for (; behind; behind = behind->next) countDown(rowOf(behind));
  --map->count;
}

// Walks from the nearer end.
WqList *WqMap_GetList(const WqMap *map, uint32_t index) {
  if (index >= map->count) return nullptr;
  WqList *node;
  if (index <= map->count / 2) {
    for (node = map->head; node && index > 0; --index) node = node->next;
  } else {
    for (node = map->tail; node && ++index < map->count;) node = node->prev;
  }
  return node;
}

WqElems *WqMap_Get(const WqMap *map, uint32_t index) {
  const WqList *node = WqMap_GetList(map, index);
  return node ? rowOf(node) : nullptr;
}

void WqMap_Swap(WqMap *map, uint32_t index, uint32_t otherIndex) {
  WqList *a = WqMap_GetList(map, index);
  WqList *b = WqMap_GetList(map, otherIndex);
  if (!a || !b || a == b) return;
  if (b->next == a) std::swap(a, b);
  WqList *oldPlace = a->prev;
  const bool neighbours = a->next == b;
  takeOut(map, a);
  placeBehind(map, b, a);
  if (neighbours) return;
  takeOut(map, b);
  placeBehind(map, oldPlace, b);
}

void WqMap_BitOn(WqMap *map, uint32_t mask) { changeAllBits(map, 0, mask); }
void WqMap_BitOff(WqMap *map, uint32_t mask) { changeAllBits(map, mask, 0); }

void WqMap_SelectIx(WqMap *map, uint32_t index) { changeBits(WqMap_Get(map, index), 0, WQ_ELEMS_SELECTED); }
void WqMap_UnselectIx(WqMap *map, uint32_t index) { changeBits(WqMap_Get(map, index), WQ_ELEMS_SELECTED, 0); }
void WqMap_ActiveIx(WqMap *map, uint32_t index) { changeBits(WqMap_Get(map, index), 0, WQ_ELEMS_ACTIVE); }
void WqMap_InactiveIx(WqMap *map, uint32_t index) { changeBits(WqMap_Get(map, index), WQ_ELEMS_ACTIVE, 0); }

void WqMap_Select(WqMap *map, const WqElems *row) { changeBitsOf(map, row, 0, WQ_ELEMS_SELECTED); }
void WqMap_Unselect(WqMap *map, const WqElems *row) { changeBitsOf(map, row, WQ_ELEMS_SELECTED, 0); }
void WqMap_Active(WqMap *map, const WqElems *row) { changeBitsOf(map, row, 0, WQ_ELEMS_ACTIVE); }
void WqMap_Inactive(WqMap *map, const WqElems *row) { changeBitsOf(map, row, WQ_ELEMS_ACTIVE, 0); }

void WqMap_UnselectAll(WqMap *map) { WqMap_BitOff(map, WQ_ELEMS_SELECTED); }
void WqMap_InactiveAll(WqMap *map) { WqMap_BitOff(map, WQ_ELEMS_ACTIVE); }

WqElems *WqElems_Init(uint32_t cellCount) {
  auto *row = static_cast<WqElems *>(WqMem_Alloc(sizeof(WqElems)));
  if (!row) return nullptr;
  row->cells = static_cast<WqElem *>(WqMem_AllocArray(sizeof(WqElem), cellCount));
  if (cellCount > 0 && !row->cells) {
    WqMem_Free(row);
    return nullptr;
  }
  row->cellCount = cellCount;
  return row;
}

void WqElems_Term(WqElems *row) {
  for (uint32_t ix = 0; row->cells && ix < row->cellCount; ++ix) {
    WqElem &cell = row->cells[ix];
    if (!(cell.kind & WQ_ELEM_OWNED)) continue;
    WqMem_Free(reinterpret_cast<void *>(cell.value));
    cell.value = 0;
  }
  WqMem_Free(row->cells);
  row->cells = nullptr;
}

void WqElems_Set(WqElems *row, const WqElem *cell, uint32_t index) {
  if (row->cells && index < row->cellCount) row->cells[index] = *cell;
}

void WqElem_Init(WqElem *cell) { *cell = {}; }
void WqElem_Term(WqElem *cell) { *cell = {}; }

void WqElem_Set(WqElem *cell, uint32_t kind, WqWord value, WqWord extra) {
  cell->kind = kind;
  cell->value = value;
  cell->extra = extra;
}
