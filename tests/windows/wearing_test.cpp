// Endurance: what is made and ended, posted and dispatched, inserted and removed a great many times leaves nothing
// behind. WQ_WEAR sets how many windows, a tenth of the messages.

#include "support/handles.h"
#include "windows/objects.h"

#include <cstdlib>

using WearingTest = ObjectTest;

TEST_F(WearingTest, NothingIsLeftBehind) {
  const char *wear = std::getenv("WQ_WEAR");
  const int times = wear ? std::atoi(wear) : 2000;
  size_t warm = 0;
  int ended = 0, came = 0;
  Window &frame = made(nullptr, {100, 100, 400, 300}, [&](const WqMsg &msg) {
    return ended += msg.msg == WQM_CHILD_DESTROYED, came += msg.msg == WM_APP, 0;
  });
  const uint32_t blocks = wqMain.allocCount;
  WqWnd wnd;
  WqTimerElem elem;
  static int calls;
  const auto count = [](uint32_t, uint32_t, WqWord) { return int32_t{++calls}; };
  WqTimerElem_Init(&elem), WqTimerElem_Param(&elem, 1, count, 0, 100000), calls = 0;
  for (int i = 0; i < times; ++i) {
    WqWnd_Init(&wnd), WqWnd_Parent(&wnd, &frame), WqWnd_Style(&wnd, WS_CHILD | WS_VISIBLE);
    if (i < 500) WqWnd_SnapL(&wnd, nullptr), WqWnd_SnapR(&wnd, nullptr); // a layout looks at all objects there were
    ASSERT_TRUE(WqWnd_Show(&wnd, 1) && ReleaseDC(wnd.hwnd, WqWnd_GetDC(&wnd)));
    for (int post = 0; post < 10; ++post) ASSERT_TRUE(PostMessageA(frame.hwnd, WM_APP, 0, 0));
    WqWnd_SetMsgReq(&wnd, 1), WqWnd_Layered(&wnd, 50), WqWnd_Show(&wnd, 0);
    WqTimer_Start(), WqTimer_Insert(&elem), WqTimer_Insert(&elem), WqTimer_Remove(1);
    if (i % 100 == 99 || i == times - 1) WqTimer_Stop(), WqWnd_WaitQueEmpty();
    if (i == times / 10) warm = residentBytes();
  }
  // beside the records that stay, 24 bytes and the allocator's own for each
  const size_t grown = residentBytes() > warm ? residentBytes() - warm : 0;
  EXPECT_LE(grown, static_cast<size_t>(times) * 64 + (2u << 20));
  EXPECT_TRUE(ended == times && came == times * 10 && calls == times * 4) << ended << " " << came << " " << calls;
  EXPECT_EQ(wqMain.allocCount, blocks + static_cast<uint32_t>(times)) << "the nodes of the objects stay";
  EXPECT_EQ(placeOf(made(&frame, {1, 2, 30, 40})), (Edges{1, 2, 30, 40}));
}
