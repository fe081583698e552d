// The mouse over bars: what is hit, which messages go out in which order, and what becomes of the mouse message.

#include "buttonbar/bars.h"
#include "support/input.h"

using BarMouseTest = BarTest;

TEST_F(BarMouseTest, EdgesAndOverlaps) {
  Window &wnd = simple('a', {100, 100, 300, 200});
  WqMbbField *field = WqMbb_Get(WqMbbTbl_Get(wnd.hwnd), 1);
  for (const auto &[id, rect] : {std::pair{12, RECT{15, 5, 24, 14}}, std::pair{13, RECT{-60, -30, -41, -11}}})
    WqMbbBtn_Create(field, static_cast<uint16_t>(id), 0, 0, &rect, "", 0);
  // clang-format off
  const struct { int x, y; std::string hit; } rows[] = {
      {10, 10, "a10"}, {9, 10, ""}, {10, 9, ""}, {28, 10, "a10"}, {29, 10, ""}, {10, 28, "a10"}, {10, 29, ""},
      {30, 10, "a11"}, {48, 28, "a11"}, {49, 10, ""}, {10, 50, "a20"}, {28, 68, "a20"}, {29, 68, ""},
      {25, 15, "a12"}, {33, 23, "a12"}, {34, 23, "a11"}, {33, 24, "a11"}, // over both
      {-50, -20, "a13"}, {-32, -2, "a13"}, {-31, -2, ""}, // as a captured mouse tells
      {199, 99, ""}, {0, 0, ""}, {-1, -1, ""}, {10, -32768, ""}, {32767, 10, ""}};
  // clang-format on
  for (const auto &row : rows) {
    send(wnd, WM_LBUTTONUP, row.x, row.y);
    EXPECT_EQ(take(), row.hit.empty() ? "" : row.hit + " release") << row.x << ',' << row.y;
  }
  field->rect = {0, 0, 5, 5}, send(wnd, WM_LBUTTONUP, 15, 15);
  EXPECT_EQ(take(), "") << "beside the field's rectangle nobody looks for buttons";
}

TEST_F(BarMouseTest, MessagesGoThroughOrNot) {
  Window &wnd = simple('a', {100, 100, 300, 200}), &empty = barred('b', {400, 100, 500, 200}),
         &none = barred('c', {400, 300, 500, 400});
  WqMbb_Create(empty.hwnd);
  // clang-format off
  const struct { const Window &wnd; uint32_t msg; POINT at; LRESULT answer; std::string expected; } rows[] = {
      {wnd, WM_MOUSEMOVE, {13, 14}, 1, "a10 over 3,4"}, {wnd, WM_MOUSEMOVE, {11, 52}, 1, "a20 over 1,2"}, // disabled
      {wnd, WM_MOUSEMOVE, {99, 99}, 1, ""},
      {wnd, WM_LBUTTONDOWN, {13, 14}, 0, "a10 press; a down"}, {wnd, WM_LBUTTONDOWN, {11, 52}, 0, "a down"},
      {wnd, WM_LBUTTONDOWN, {99, 99}, 0, "a down"},
      {wnd, WM_LBUTTONDBLCLK, {13, 14}, 0, "a10 press; a double"}, {wnd, WM_LBUTTONDBLCLK, {33, 14}, 1, ""},
      {wnd, WM_LBUTTONDBLCLK, {11, 52}, 0, "a double"}, {wnd, WM_LBUTTONDBLCLK, {99, 99}, 0, "a double"},
      {wnd, WM_LBUTTONUP, {13, 14}, 1, "a10 release"}, {wnd, WM_LBUTTONUP, {11, 52}, 1, "a20 release"},
      {wnd, WM_LBUTTONUP, {99, 99}, 1, ""},
      {empty, WM_MOUSEMOVE, {1, 1}, 1, ""}, {empty, WM_LBUTTONDOWN, {1, 1}, 0, "b down"},
      {empty, WM_LBUTTONUP, {1, 1}, 1, ""},
      {none, WM_MOUSEMOVE, {1, 1}, 0, "c move"}, {none, WM_LBUTTONUP, {1, 1}, 0, "c up"}};
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(&row - rows);
    EXPECT_EQ(send(row.wnd, row.msg, row.at.x, row.at.y), row.answer);
    EXPECT_EQ(take(), row.expected);
  }
  WqMbbBtn_Update(WqMbbBtn_Get(wnd.hwnd, 1, 11), WQ_MBB_DISABLED);
  EXPECT_EQ(send(wnd, WM_LBUTTONDBLCLK, 33, 14), 1) << "a double click is dropped for disabled buttons too";
  wnd.flags &= ~WQ_DS_MBB, send(wnd, WM_MOUSEMOVE, 13, 14), send(wnd, WM_LBUTTONUP, 13, 14);
  EXPECT_EQ(take(), "a move; a up") << "without the bit";
}

TEST_F(BarMouseTest, TheHoverGoesFromButtonToButton) {
  Window &wnd = simple('a', {100, 100, 300, 200}), &other = simple('b', {400, 100, 600, 200});
  const auto selected = [&] {
    std::string all;
    for (const Window *one : {&wnd, &other})
      for (const uint16_t id : {uint16_t{10}, uint16_t{11}, uint16_t{20}})
        if (WqMbbBtn_Get(one->hwnd, id / 10, id)->flags & WQ_MBB_SELECTED)
          all += (one == &wnd ? 'a' : 'b') + std::to_string(id);
    return all;
  };
  std::string meanwhile = "?";
  deeds["a10 leave"] = [&] { meanwhile = selected(); };
  const struct {
    const Window &wnd;
    int x, y;
    std::string told, selected;
  } rows[] = {{wnd, 15, 15, "a10 over 5,5", "a10"},
              {wnd, 16, 15, "a10 over 6,5", "a10"}, // within a button nobody leaves
              {wnd, 35, 15, "a11 over 25,5; a10 leave", "a11"},
              {wnd, 15, 55, "a20 over 5,5; a11 leave", "a20"},    // a disabled one too
              {other, 15, 15, "b10 over 5,5; a20 leave", "b10"}}; // one hover for all windows
  WqTimer_Start();
  for (const auto &row : rows) {
    point(row.wnd, row.x, row.y);
    EXPECT_EQ(take() + '|' + timers() + selected(), row.told + "|hover " + row.selected);
  }
  EXPECT_EQ(meanwhile, "") << "the old one is unselected before it is told, and the new one selected after that";
}

TEST_F(BarMouseTest, ATickNoticesThatThePointerHasLeft) {
  Window &wnd = simple('a', {100, 100, 300, 200});
  WqMbbField *field = WqMbb_Get(WqMbbTbl_Get(wnd.hwnd), 1);
  WqTimer_Start(), point(wnd, 15, 15), take(), tick(), tick(), tick();
  EXPECT_EQ(take() + timers(), "hover ") << "as long as the pointer rests";
  point(wnd, 25, 35);
  EXPECT_EQ(take(), "") << "a move beside the buttons does nothing";
  EXPECT_EQ(WqMbbField_Get(field, 10)->flags, WQ_MBB_SELECTED);
  tick();
  EXPECT_EQ(take() + timers(), "a10 leave");
  EXPECT_EQ(WqMbbField_Get(field, 10)->flags, 0u);

  // The right and bottom edges of a button are outside; of a window they are inside.
  for (const RECT &beyond : {RECT{180, 80, 300, 300}, RECT{-40, 60, 0, 80}, RECT{60, -40, 80, 0}})
    WqMbbBtn_Create(field, 13, 0, 0, &beyond, "", 0);
  // clang-format off
  const struct { POINT over, to; bool leaves; } rows[] = {
      {{15, 15}, {28, 28}, false}, {{15, 15}, {29, 28}, true}, {{15, 15}, {10, 10}, false}, {{15, 15}, {9, 10}, true},
      {{5, 75}, {0, 75}, false}, {{5, 75}, {-1, 75}, true}, {{75, 5}, {75, 0}, false}, {{75, 5}, {75, -1}, true},
      {{195, 95}, {200, 100}, false}, {{195, 95}, {201, 95}, true}, {{195, 95}, {195, 101}, true}};
  // clang-format on
  for (const auto &row : rows) {
    point(wnd, row.over.x, row.over.y), tick(), point(wnd, row.to.x, row.to.y), tick();
    EXPECT_EQ(timers(), row.leaves ? "" : "hover ") << &row - rows;
  }
  point(wnd, 15, 15), take(), field->originX = -100, tick(), tick();
  EXPECT_EQ(take(), "a10 leave") << "the buttons have moved";
}

TEST_F(BarMouseTest, AButtonThatIsDownRepeats) {
  Window &wnd = simple('a', {100, 100, 300, 200});
  const auto btn = [&](uint16_t id) { return WqMbbBtn_Get(wnd.hwnd, 1, id); };
  const auto press = [&](int x, int y = 15) { send(wnd, WM_LBUTTONDOWN, x, y); };
  const auto told = [&] { return take() + '|' + timers(); };
  WqTimer_Start(), press(15), tick();
  EXPECT_EQ(told(), "a10 press; a down|repeat ") << "the first tick only starts the count";
  tick();
  EXPECT_EQ(told(), "|") << "an owner that lets it be up gets no repeats";

  deeds = {{"a10 press", [&] { WqMbbBtn_Down(btn(10)); }}, {"a11 press", [&] { WqMbbBtn_Down(btn(11)); }}};
  press(15), tick(), tick(), tick(), send(wnd, WM_LBUTTONUP, 15, 15), tick();
  EXPECT_EQ(take(), "a10 press; a down; a10 repeat; a10 repeat; a10 release; a10 repeat") << "whatever the mouse does";
  press(35), tick(), tick(), press(15, 55), tick();
  EXPECT_EQ(told(), "a11 press; a down; a11 repeat; a down; a11 repeat|repeat ")
      << "one for the library, of the last press, and a disabled button doesn't stop it";
  deeds["a11 repeat"] = [&] { WqMbbBtn_Up(btn(11)); };
  tick(), tick();
  EXPECT_EQ(told(), "a11 repeat|");
  deeds.erase("a11 repeat"), press(35), tick(), tick(), WqMbb_RepeatEnd(), tick();
  EXPECT_EQ(told(), "a11 press; a down; a11 repeat|");
  EXPECT_EQ(btn(11)->flags, WQ_MBB_DOWN) << "the bit stays";
}

TEST_F(BarMouseTest, WithoutTimersNobodyLeavesOrRepeats) {
  Window &wnd = simple('a', {100, 100, 300, 200});
  point(wnd, 15, 15), point(wnd, 35, 15), click(), settle();
  EXPECT_EQ(take() + timers(), "a10 over 5,5; a11 over 25,5; a11 press; a down; a11 release");
  EXPECT_EQ(WqMbbBtn_Get(wnd.hwnd, 1, 10)->flags, WQ_MBB_SELECTED);
}

TEST_F(BarMouseTest, TheUserClicksTwiceAndDrags) {
  Window &wnd = simple('a', {100, 100, 300, 200});
  WqTimer_Start(), point(wnd, 15, 15), click(), click(), settle();
  EXPECT_EQ(take(), "a10 over 5,5; a10 press; a down; a10 release; a10 press; a double; a10 release");
  button(MOUSEEVENTF_LEFTDOWN), settle(), point(wnd, 35, 15), button(MOUSEEVENTF_LEFTUP), settle();
  EXPECT_EQ(take(), "a10 press; a down; a11 over 25,5; a10 leave; a11 release");
  point(wnd, 35, 45);
  for (int i = 0; i < 2000 && !timers().empty(); ++i) Sleep(1), WqWnd_WaitQueEmpty();
  EXPECT_EQ(take(), "a11 leave") << "by the timer, which comes with the messages";
}

// The whole window, with its frame, is what the place of the pointer is measured in.
TEST_F(BarMouseTest, AFrameShiftsTheTestOfTheTimer) {
  Window &wnd = object(nullptr, {100, 100, 399, 299});
  WqWnd_Style(&wnd, WS_OVERLAPPEDWINDOW), WqWnd_Ds(&wnd, WQ_DS_MBB);
  ASSERT_NE(WqWnd_Create(&wnd), nullptr);
  WqWnd_WaitQueEmpty(), build(wnd.hwnd);
  RECT outer = {};
  POINT corner = {};
  GetWindowRect(wnd.hwnd, &outer), ClientToScreen(wnd.hwnd, &corner);
  ASSERT_GT(corner.y - outer.top, 20);
  const auto pointer = [&](LONG x, LONG y) {
    SetCursorPos(x + 15, y + 15), settle(), send(wnd, WM_MOUSEMOVE, 15, 15), tick(), tick();
    return timers();
  };
  WqTimer_Start();
  EXPECT_EQ(pointer(corner.x, corner.y), "") << "below a caption, the button isn't where it is drawn";
  EXPECT_EQ(pointer(outer.left, outer.top), "hover ");
}
