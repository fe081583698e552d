// Shared by the families of button bars.
#pragma once

#include "buttonbar/buttonbar.h"
#include "frame/memory.h"

template <typename Record> Record *wqRecord(const WqList *node) { return reinterpret_cast<Record *>(node->data); }

// The first record of a list with an id, or null.
template <typename Record> Record *wqFindId(const WqList *node, uint16_t id) {
  while (node && wqRecord<Record>(node)->id != id) node = node->next;
  return node ? wqRecord<Record>(node) : nullptr;
}

// Adds a record at the head of a list, or frees it if memory is short.
// Result: the record; null if it was freed.
template <typename Record> Record *wqAddRecord(WqList **list, Record *record) {
  WqList *node = WqList_AddP(*list, reinterpret_cast<WqWord>(record));
  if (!node) {
    WqMem_Free(record);
    return nullptr;
  }
  *list = node;
  return record;
}

// Ends everything that goes on with the buttons of a bar. The bar is about to be freed.
void wqForgetBar(const WqMbb *bar);
