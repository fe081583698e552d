// The library's start and end. The order of the steps matters: the block is cleared first, because everything after it
// relies on zeros, and allocation is counted from WqMem_Init on.

#include "frame/frame.h"

#include "files/files.h"

namespace {

constexpr uint32_t kBuckets = 255; // of each registry

// In the order in which they begin. The colours, on which others rest, begin first and end last.
constexpr WqHash WqMainBlock::*kRegistries[] = {&WqMainBlock::bmpTbl, &WqMainBlock::fontTbl, &WqMainBlock::brushTbl,
                                                &WqMainBlock::penTbl, &WqMainBlock::mbbTbl};

void endRegistry(WqHash *table) {
  WqHash_RemoveAllWith(table);
  WqHash_Term(table);
}

} // namespace

WqMainBlock wqMain;

void WqMain_Init(HINSTANCE instance) {
  wqMain = {};
  wqMain.instance = instance;
  WqWnd_RegClass(instance);
  WqMem_Init();
  WqHash_Init(&wqMain.colorTbl, kBuckets);
  for (const auto registry : kRegistries) WqHash_Init(&(wqMain.*registry), kBuckets);
  WqLog_Init();
}

int WqMain_Config(HWND mainWnd) {
  wqMain.mainWnd = mainWnd;
  return 1;
}

void WqMain_Term() {
  WqList_RemoveAllWith(wqMain.timer.list);
  wqMain.timer.list = nullptr; // for a tick that nobody stopped
  for (const auto registry : kRegistries) endRegistry(&(wqMain.*registry));
  endRegistry(&wqMain.colorTbl);
  WqList_RemoveAll(wqMain.wndList);
  WqLog_Term();
  WqMem_Term();
}
