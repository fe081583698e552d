#include "support/allocation.h"

#include "wq.h"

#include <gtest/gtest.h>

namespace {

constexpr WqHash WqMainBlock::*kRegistries[] = {&WqMainBlock::colorTbl, &WqMainBlock::fontTbl, &WqMainBlock::bmpTbl,
                                                &WqMainBlock::brushTbl, &WqMainBlock::penTbl,  &WqMainBlock::mbbTbl};

// Gives every registry two values, of keys that share a bucket and that the library itself never uses.
// Result: the number of values that were taken.
int fillRegistries() {
  int taken = 0;
  for (const auto registry : kRegistries)
    for (const uint32_t key : {1000u, 1000u + 255u}) {
      void *value = WqMem_Alloc(64);
      const int done = WqHash_Insert(&(wqMain.*registry), key, reinterpret_cast<WqWord>(value));
      if (!done) WqMem_Free(value);
      taken += done;
    }
  return taken;
}

TEST(MainTest, ARunStartsCleanAndEndsEmpty) {
  const auto instance = reinterpret_cast<HINSTANCE>(uintptr_t{0x400000});
  const auto mainWnd = reinterpret_cast<HWND>(uintptr_t{0x10020});
  for (int run = 0; run < 2; ++run) { // the second finds the traces of the first
    WqMain_Init(instance);
    EXPECT_EQ(std::tuple(wqMain.instance, wqMain.mainWnd, wqMain.wndList), std::tuple(instance, nullptr, nullptr));
    EXPECT_EQ(WqMain_Config(mainWnd), 1);
    EXPECT_EQ(wqMain.mainWnd, mainWnd);
    for (const auto registry : kRegistries) EXPECT_EQ((wqMain.*registry).bucketCount, 255u);
    EXPECT_EQ(fillRegistries(), 12);
    for (WqWord window : {1, 2}) wqMain.wndList = WqList_AddP(wqMain.wndList, window); // their owners' records
    WqMain_Term();
    EXPECT_EQ(wqMain.allocCount, 0u);
  }
}

// A window that is left open is sized, painted and ended after the library's end, and the end comes twice.
TEST(MainTest, WindowsMayOutliveTheLibrary) {
  WqMain_Init(nullptr);
  WqWnd frame, part;
  for (WqWnd *wnd : {&frame, &part}) {
    WqWnd_Init(wnd);
    WqWnd_Style(wnd, WS_VISIBLE | (wnd == &part ? DWORD{WS_CHILD} : WS_POPUP));
    wnd->rect = {10, 10, 109, 109};
  }
  WqWnd_Parent(&part, &frame);
  WqWnd_Ds(&part, WQ_DS_LAYOUT | WQ_DS_SNAP_R | WQ_DS_KEEP_W);
  ASSERT_NE(WqWnd_Create(&frame), nullptr);
  ASSERT_NE(WqWnd_Create(&part), nullptr);
  WqLog_Comment("text");
  WqMain_Term();
  EXPECT_EQ(wqMain.wndList, nullptr);

  SetWindowPos(frame.hwnd, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
  SetWindowPos(part.hwnd, nullptr, 0, 0, 50, 50, SWP_NOMOVE | SWP_NOZORDER);
  InvalidateRect(frame.hwnd, nullptr, TRUE);
  WqWnd_WaitQueEmpty();
  WqLog_Comment("text");
  DestroyWindow(frame.hwnd);
  EXPECT_EQ(part.hwnd, nullptr);
  WqMain_Term();
  EXPECT_EQ(wqMain.allocCount, 0u);
}

TEST(MainTest, ARegistryThatCouldNotBeMadeHoldsNothing) {
  int refused = 0;
  bool failed = true;
  for (int n = 1; failed; ++n) {
    AllocationFailure failure(n);
    WqMain_Init(nullptr);
    failed = failure.happened();
    refused += 12 - fillRegistries();
    WqMain_Term();
    EXPECT_EQ(wqMain.allocCount, 0u) << n;
  }
  EXPECT_EQ(refused, 12); // each registry in its turn, and no other with it
}

} // namespace
