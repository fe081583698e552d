// The library's start and end. The order of the steps matters: the block is cleared first, because everything else
// relies on zeros. Blocks are counted from WqMem_Init on.

#include "frame/main.h"

#include "buttonbar/buttonbar.h"
#include "files/files.h"
#include "frame/memory.h"

#include <cstring>

namespace {

constexpr uint32_t kBuckets = 255; // of each registry

// In the order of their start and end.
constexpr WqHash WqMainBlock::*kRegistries[] = {&WqMainBlock::bmpTbl, &WqMainBlock::fontTbl, &WqMainBlock::brushTbl,
                                                &WqMainBlock::penTbl, &WqMainBlock::mbbTbl};

// Deletes the drawing object of every record. Its handle is the record's first field.
void deleteObjects(const WqHash *table) {
  for (uint32_t ix = 0; table->buckets && ix < table->bucketCount; ++ix)
    for (const WqList *node = table->buckets[ix]; node; node = node->next) {
      HGDIOBJ handle;
      std::memcpy(&handle, reinterpret_cast<const void *>(reinterpret_cast<const WqHashEntry *>(node->data)->data),
                  sizeof handle);
      if (handle) DeleteObject(handle);
    }
}

// Removes the button bars, which own several blocks each. Their keys are windows.
void removeBars(const WqHash *table) {
  for (uint32_t ix = 0; table->buckets && ix < table->bucketCount; ++ix)
    while (const WqList *node = table->buckets[ix])
      WqMbbTbl_Remove(reinterpret_cast<HWND>(uintptr_t{reinterpret_cast<const WqHashEntry *>(node->data)->key}));
}

void endRegistry(WqHash *table) {
  if (table == &wqMain.mbbTbl)
    removeBars(table);
  else
    deleteObjects(table);
  WqHash_RemoveAllWith(table);
  WqHash_Term(table);
}

} // namespace

WqMainBlock wqMain;

void WqMain_Init(HINSTANCE instance) {
  wqMain = {};
  wqMain.instance = instance;
  InitCommonControls(); // also registers the tooltip
  CoInitialize(nullptr);
  WqWnd_RegClass(instance);
  WqMem_Init();
  WqColorPal_Init(&wqMain.palette, 0);
  WqColorPal_Create(&wqMain.palette);
  WqColorTbl_Init(&wqMain.colorTbl, kBuckets);
  for (const auto registry : kRegistries) WqHash_Init(&(wqMain.*registry), kBuckets);
  WqLog_Init();
}

int WqMain_Config(HWND mainWnd) {
  wqMain.mainWnd = mainWnd;
  WqTooltip_Init(&wqMain.tooltip);
  WqTooltip_Create(&wqMain.tooltip);
  return 1;
}

void WqMain_Term() {
  WqList_RemoveAllWith(wqMain.timer.list);
  wqMain.timer.list = nullptr; // a tick may still come if nobody has stopped the timer
  WqTooltip_Term(0);
  for (const auto registry : kRegistries) endRegistry(&(wqMain.*registry));
  WqColorTbl_Term(&wqMain.colorTbl);
  WqColorPal_Term(&wqMain.palette);
  WqPrinter_Term(&wqMain.printer);
  wqMain.wndList = WqList_RemoveAll(wqMain.wndList); // open windows go on without a layout
  WqLog_Term();
  WqMem_Term();
  CoUninitialize();
}
