// Bars that go while they are in use.

#include "buttonbar/bars.h"
#include "support/input.h"

#include <set>

class BarRemovalTest : public BarTest {
 protected:
  // The mouse goes over two windows, presses, rests and leaves; button 10 repeats.
  void play(Window &a, Window &b) {
    const auto step = [this](const Window &wnd, uint32_t msg, int x, int y) {
      if (!wnd.hwnd) return;
      POINT at = {x, y};
      ClientToScreen(wnd.hwnd, &at), SetCursorPos(at.x, at.y), send(wnd, msg, x, y);
    };
    for (const uint32_t msg : {WM_MOUSEMOVE, WM_LBUTTONDOWN}) step(a, msg, 15, 15);
    tick(), tick(), step(a, WM_MOUSEMOVE, 35, 15), step(a, WM_LBUTTONUP, 35, 15), tick();
    for (const uint32_t msg : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK}) step(b, msg, 15, 15);
    step(a, WM_MOUSEMOVE, 15, 55), step(a, WM_LBUTTONUP, 15, 55), SetCursorPos(900, 700), tick(), tick();
    for (const Window *wnd : {&a, &b})
      if (wnd->hwnd) UpdateWindow(wnd->hwnd);
  }
  // Whether a button is in a bar of the registry.
  bool isLive(const WqMbbBtn *button) const {
    for (const HWND hwnd : hwnds_)
      for (const uint16_t id : {uint16_t{10}, uint16_t{11}, uint16_t{20}})
        if (WqMbbBtn_Get(hwnd, id / 10, id) == button) return true;
    return false;
  }
  // Lets a deed happen at the n-th notification or paint.
  // Result: whether there were so many.
  bool run(int n, const std::function<void(HWND)> &deed) {
    int count = INT_MIN; // until the windows are there
    Window *all[2];
    std::set<HWND> over;
    for (int i = 0; i < 2; ++i) {
      Window &wnd = *(all[i] = &simple('a', {100 + 300 * i, 100, 300 + 300 * i, 200}));
      hwnds_[i] = wnd.hwnd;
      wnd.on = [&](const WqMsg &msg) {
        EXPECT_EQ(over.count(msg.hwnd), 0u) << "after the last word: " << msg.msg;
        if (msg.msg == WM_DESTROY) over.insert(msg.hwnd);
        if (msg.msg == WQM_MBB_NOTIFY) {
          auto *button = reinterpret_cast<WqMbbBtn *>(msg.lParam);
          EXPECT_TRUE(isLive(button)) << "told of a button that has gone, by event " << msg.wParam;
          if (msg.wParam == WQ_MBB_EVENT_PRESS && button->id == 10) WqMbbBtn_Down(button);
        }
        if ((msg.msg == WQM_MBB_NOTIFY || msg.msg == WQM_MBB_PRESS || msg.msg == WQM_PAINT) && ++count == n)
          for (const HWND hwnd : hwnds_) deed(hwnd);
        return 0;
      };
    }
    WqWnd_WaitQueEmpty(), count = 0;
    play(*all[0], *all[1]);
    for (const HWND hwnd : hwnds_) WqMbbTbl_Remove(hwnd);
    EXPECT_EQ(timers(), "") << "the timers have gone with the bars";
    tick(), endAll();
    return count >= n;
  }

  HWND hwnds_[2] = {};
};

TEST_F(BarRemovalTest, AnyNotificationAndPaintMayEndEverything) {
  WqTimer_Start();
  const uint32_t blocks = wqMain.allocCount;
  const std::function<void(HWND)> deeds[] = {
      [](HWND hwnd) { WqMbbTbl_Remove(hwnd); }, [](HWND hwnd) { DestroyWindow(hwnd); },
      [](HWND hwnd) { WqMbbTbl_Remove(hwnd), DestroyWindow(hwnd); },
      [](HWND hwnd) { WqMbbTbl_Remove(hwnd), build(hwnd); },
      [](HWND hwnd) { WqTimer_Remove(WQ_MBB_TIMER_HOVER), WqMbb_RepeatEnd(), WqMbbTbl_Remove(hwnd); },
      [](HWND hwnd) { WqTimer_Stop(), WqMbbTbl_Remove(hwnd), WqTimer_Start(); },
      // the mouse goes on from inside
      [](HWND hwnd) { SendMessageA(hwnd, WM_MOUSEMOVE, 0, MAKELPARAM(35, 15)), WqMbbTbl_Remove(hwnd); },
      [](HWND hwnd) { SendMessageA(hwnd, WM_LBUTTONDOWN, 0, MAKELPARAM(15, 15)); }};
  for (const auto &deed : deeds) {
    SCOPED_TRACE(&deed - deeds);
    int n = 1;
    while (run(n, deed)) ++n;
    EXPECT_GE(n, 12) << "notifications and paints";
    for (Window &wnd : windows_) EXPECT_EQ(wnd.hwnd, nullptr);
  }
  const auto nodes = static_cast<uint32_t>(windows_.size()); // of the window objects, which stay
  EXPECT_EQ(wqMain.allocCount, blocks + nodes);
}

TEST_F(BarRemovalTest, TheTimersOfAGoneBarAreSilent) {
  Window &a = simple('a', {100, 100, 300, 200}), &b = simple('b', {400, 100, 600, 200});
  deeds["a10 press"] = [&] { WqMbbBtn_Down(WqMbbBtn_Get(a.hwnd, 1, 10)); };
  deeds["b10 press"] = [&] { WqMbbBtn_Down(WqMbbBtn_Get(b.hwnd, 1, 10)); };
  const auto hoverAndPress = [&] { point(a, 15, 35), point(a, 15, 15), click(), settle(), take(); };
  const auto leave = [&] { SetCursorPos(900, 700), settle(), tick(), tick(); };
  WqTimer_Start(), hoverAndPress();
  EXPECT_EQ(timers(), "repeat hover ");
  WqMbbTbl_Remove(b.hwnd);
  EXPECT_EQ(timers(), "repeat hover ") << "they hold no button of the other bar";
  WqMbbTbl_Remove(a.hwnd);
  EXPECT_EQ(take() + timers(), "") << "at once, and nothing is told";
  leave();
  EXPECT_EQ(take(), "");

  build(a.hwnd), hoverAndPress(), WqTimer_Stop(), WqMbbTbl_Remove(a.hwnd);
  EXPECT_EQ(timers(), "") << "also while the timers are stopped";
  WqTimer_Start(), leave();
  EXPECT_EQ(take(), "");

  build(a.hwnd), hoverAndPress();
  WqMbb *const old = WqMbbTbl_Get(a.hwnd);
  build(a.hwnd), leave();
  EXPECT_EQ(take() + '|' + timers(), "a10 repeat; a10 leave|repeat ") << "a bar that was replaced lives on";
  WqMbbTbl_Remove(a.hwnd), WqMbbTbl_Insert(a.hwnd, old), WqMbbTbl_Remove(a.hwnd);
  EXPECT_EQ(timers(), "");

  build(a.hwnd), build(b.hwnd), hoverAndPress(), WqTimer_Stop(), send(b, WM_LBUTTONDOWN, 15, 15), WqTimer_Start();
  take(), WqMbbTbl_Remove(b.hwnd), leave();
  EXPECT_EQ(take() + timers(), "a10 leave")
      << "the button that was pressed last has gone, and its timer is the other's";
}
