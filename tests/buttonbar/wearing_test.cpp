// Endurance: bars built and removed, and steps of the hover, a great many times. WQ_WEAR sets how many bars, and ten
// times as many steps.

#include "buttonbar/bars.h"
#include "support/handles.h"

#include <cstdlib>

class BarWearTest : public BarTest {
 protected:
  // Runs something so often, and checks that the second half of the runs left nothing.
  static void wear(int times, const std::function<void(int)> &run) {
    for (int i = 0; i < times / 2; ++i) run(i);
    const size_t resident = residentBytes();
    const std::vector<size_t> handles = openHandles();
    const uint32_t blocks = wqMain.allocCount;
    for (int i = 0; i < times / 2; ++i) run(i);
    EXPECT_EQ(openHandles(), handles);
    EXPECT_EQ(wqMain.allocCount, blocks);
    EXPECT_LE(residentBytes(), resident + (1u << 20));
  }
  const int times_ = std::getenv("WQ_WEAR") ? std::atoi(std::getenv("WQ_WEAR")) : 2000;
};

TEST_F(BarWearTest, NothingIsLeftBehind) {
  Window &wnd = barred('a', {100, 100, 300, 200});
  int hovers = 0;
  wnd.on = [&](const WqMsg &msg) { return hovers += msg.msg == WQM_MBB_PRESS, 0; };
  WqTimer_Start(), point(wnd, 15, 15), hovers = 0;
  wear(times_, [&](int i) {
    build(wnd.hwnd), send(wnd, WM_MOUSEMOVE, 15, 15);
    if (i % 3 == 0) send(wnd, WM_LBUTTONDOWN, 35, 15);
    if (i % 10 == 0) UpdateWindow(wnd.hwnd);
    WqMbbTbl_Remove(wnd.hwnd);
  });
  EXPECT_EQ(hovers, times_ / 2 * 2);
  build(wnd.hwnd), hovers = 0;
  wear(10 * times_, [&](int i) {
    send(wnd, WM_MOUSEMOVE, i % 2 ? 15 : 35, 15);
    if (i % 100 == 0) WqWnd_WaitQueEmpty();
  });
  EXPECT_EQ(hovers, 10 * times_ / 2 * 2);
}
