// The registry of bars, which owns them.

#include "buttonbar/buttonbar_private.h"

#include "frame/main.h"

namespace {

uint32_t keyOf(HWND window) { return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(window)); }

// An entry of the registry that holds a bar; null if there is none.
const WqHashEntry *findBar(const WqMbb *bar) {
  const WqHash &table = wqMain.mbbTbl;
  for (uint32_t ix = 0; table.buckets && ix < table.bucketCount; ++ix)
    for (const WqList *node = table.buckets[ix]; node; node = node->next)
      if (wqRecord<WqHashEntry>(node)->data == reinterpret_cast<WqWord>(bar)) return wqRecord<WqHashEntry>(node);
  return nullptr;
}

void freeBar(WqMbb *bar) {
  for (const WqList *node = bar->fields; node; node = node->next)
    WqList_RemoveAllWith(wqRecord<WqMbbField>(node)->buttons);
  WqList_RemoveAllWith(bar->fields);
  WqMem_Free(bar);
}

} // namespace

WqMbb *WqMbbTbl_Get(HWND window) {
  const WqHashEntry *entry = WqHash_FindData(&wqMain.mbbTbl, keyOf(window));
  return entry ? reinterpret_cast<WqMbb *>(entry->data) : nullptr;
}

void WqMbbTbl_Insert(HWND, WqMbb *bar) {
  WqHash_Insert(&wqMain.mbbTbl, keyOf(bar->window), reinterpret_cast<WqWord>(bar));
}

void WqMbbTbl_Remove(HWND window) {
  WqMbb *bar = WqMbbTbl_Get(window);
  if (!bar) return;
  wqForgetBar(bar);
  // A bar whose window field was changed may have several entries.
  while (const WqHashEntry *entry = findBar(bar)) WqHash_RemoveWith(&wqMain.mbbTbl, entry->key);
  freeBar(bar);
}
