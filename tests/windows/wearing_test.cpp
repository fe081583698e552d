// Endurance: windows made and ended, messages posted and dispatched, timers inserted and removed.

#include "support/wear.h"
#include "windows/objects.h"

using WearingTest = ObjectTest;

TEST_F(WearingTest, NothingIsLeftBehind) {
  const int times = wearTimes(2000);
  int ended = 0, came = 0;
  Window &frame = made(nullptr, {100, 100, 400, 300}, [&](const WqMsg &msg) {
    return ended += msg.msg == WQM_CHILD_DESTROYED, came += msg.msg == WM_APP, 0;
  });
  WqWnd wnd;
  WqTimerElem elem;
  static int calls;
  const auto count = [](uint32_t, uint32_t, WqWord) { return int32_t{++calls}; };
  WqTimerElem_Init(&elem), WqTimerElem_Param(&elem, 1, count, 0, 100000), calls = 0;
  const auto run = [&](int i) {
    WqWnd_Init(&wnd), WqWnd_Parent(&wnd, &frame), WqWnd_Style(&wnd, WS_CHILD | WS_VISIBLE);
    if (i < 500) WqWnd_SnapL(&wnd, nullptr), WqWnd_SnapR(&wnd, nullptr); // a layout looks at all objects there were
    ASSERT_TRUE(WqWnd_Show(&wnd, 1) && ReleaseDC(wnd.hwnd, WqWnd_GetDC(&wnd)));
    for (int post = 0; post < 10; ++post) ASSERT_TRUE(PostMessageA(frame.hwnd, WM_APP, 0, 0));
    WqWnd_SetMsgReq(&wnd, 1), WqWnd_Layered(&wnd, 50), WqWnd_Show(&wnd, 0);
    WqTimer_Start(), WqTimer_Insert(&elem), WqTimer_Insert(&elem), WqTimer_Remove(1);
    if (i % 50 == 49) WqTimer_Stop(), WqWnd_WaitQueEmpty();
  };
  wear(times, run, 1); // the node of an object stays
  EXPECT_EQ(std::tuple(ended, came, calls), std::tuple(times, times * 10, times * 4));
  EXPECT_EQ(placeOf(made(&frame, {1, 2, 30, 40})), (Edges{1, 2, 30, 40}));
}
