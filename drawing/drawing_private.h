// Shared by the families of drawing: templates for the resources and their registries.
#pragma once

#include "drawing/drawing.h"
#include "drawing/wrapping.h"
#include "frame/memory.h"

#include <cstdint>

constexpr bool wqIsDirect(uint32_t colourValue) { return (colourValue & WQ_COLOR_DIRECT) == WQ_COLOR_DIRECT; }

// Deletes the object of a record, if there is one.
template <typename Record> void wqDelete(Record *record) {
  if (record->handle) DeleteObject(record->handle);
  record->handle = nullptr;
}

template <typename Record> Record *wqFindRecord(const WqHash *table, uint32_t id) {
  const WqHashEntry *entry = WqHash_FindData(table, id);
  return entry ? reinterpret_cast<Record *>(entry->data) : nullptr;
}

// Enters a copy of a record. The object of a replaced record is not deleted, since it may be selected somewhere.
template <typename Record> void wqInsertRecord(WqHash *table, uint32_t id, const Record *record) {
  auto *copy = static_cast<Record *>(WqMem_Alloc(sizeof(Record)));
  if (!copy) return;
  *copy = *record;
  Record *replaced = wqFindRecord<Record>(table, id);
  const bool entered = WqHash_Insert(table, id, reinterpret_cast<WqWord>(copy)) != 0;
  WqMem_Free(entered ? replaced : copy);
}

// The object of an id, made if necessary. create: makes the object of a record.
template <typename Record, typename Create> auto wqGetHandle(const WqHash *table, uint32_t id, Create create) {
  Record *record = wqFindRecord<Record>(table, id);
  if (record && !record->handle) create(record);
  return record ? record->handle : nullptr;
}

template <typename Record> void wqRemoveRecord(WqHash *table, uint32_t id) {
  Record *record = wqFindRecord<Record>(table, id);
  if (!record) return;
  wqDelete(record);
  WqMem_Free(record);
  WqHash_RemoveWith(table, id);
}
