// What the families of button bars share.
#pragma once

#include "buttonbar/buttonbar.h"
#include "frame/memory.h"

template <typename Record> Record *wqRecord(const WqList *node) { return reinterpret_cast<Record *>(node->data); }

// The first record of a list that has an id.
template <typename Record> Record *wqFindId(const WqList *node, uint16_t id) {
  while (node && wqRecord<Record>(node)->id != id) node = node->next;
  return node ? wqRecord<Record>(node) : nullptr;
}

// Adds a record at the head of a list, or frees it if memory is short.
// Result: the record, null when it was freed.
template <typename Record> Record *wqAddRecord(WqList **list, Record *record) {
  WqList *node = WqList_AddP(*list, reinterpret_cast<WqWord>(record));
  if (!node) {
    WqMem_Free(record);
    return nullptr;
  }
  *list = node;
  return record;
}

// Tells the running side that a bar is about to be freed: nothing may go on with its buttons.
void wqForgetBar(const WqMbb *bar);
