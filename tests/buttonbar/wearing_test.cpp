// Endurance: bars built and removed, and steps of the hover.

#include "buttonbar/bars.h"
#include "support/wear.h"

using BarWearTest = BarTest;

TEST_F(BarWearTest, NothingIsLeftBehind) {
  const int times = wearTimes(2000);
  Window &wnd = barred('a', {100, 100, 300, 200});
  int hovers = 0;
  wnd.on = [&](const WqMsg &msg) { return hovers += msg.msg == WQM_MBB_PRESS, 0; };
  WqTimer_Start(), point(wnd, 15, 15), hovers = 0;
  wear(times, [&](int i) {
    build(wnd.hwnd), send(wnd, WM_MOUSEMOVE, 15, 15);
    if (i % 3 == 0) send(wnd, WM_LBUTTONDOWN, 35, 15);
    if (i % 10 == 0) UpdateWindow(wnd.hwnd);
    WqMbbTbl_Remove(wnd.hwnd);
  });
  build(wnd.hwnd);
  wear(10 * times, [&](int i) {
    send(wnd, WM_MOUSEMOVE, i % 2 ? 15 : 35, 15);
    if (i % 100 == 0) WqWnd_WaitQueEmpty();
  });
  EXPECT_EQ(hovers, 11 * times);
}
