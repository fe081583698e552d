// The state of buttons, and what of a window is to be painted after a change.

#include "buttonbar/bars.h"

class BarStateTest : public BarTest {
 protected:
  // The part of a window that is to be painted, all of which isn't before.
  static std::string dirtied(HWND hwnd, const std::function<void()> &act) {
    RECT part = {};
    ValidateRect(hwnd, nullptr), act();
    return GetUpdateRect(hwnd, &part, FALSE) ? rectText(part) : "none";
  }
};

TEST_F(BarStateTest, ChangesSetBitsAndDirtyThePlace) {
  constexpr uint32_t kOwn = 0x9F01FFF5, kDown = WQ_MBB_DOWN, kSelected = WQ_MBB_SELECTED, kDisabled = WQ_MBB_DISABLED;
  const HWND hwnd = made(nullptr, {100, 100, 300, 200}).hwnd;
  WqWnd_WaitQueEmpty(), build(hwnd);
  WqMbbBtn *button = WqMbbBtn_Get(hwnd, 1, 11);
  const std::string place = "30,10,50,30"; // origin 10,10; from 20,0 to 39,19, the edges painted too
  using Act = void (*)(WqMbbBtn *);
  const Act enable = [](WqMbbBtn *btn) { WqMbbBtn_Enable(btn, -1); };
  const Act disable = [](WqMbbBtn *btn) { WqMbbBtn_Enable(btn, 0); };
  // clang-format off
  const struct { Act act; uint32_t before, after; bool dirties; } rows[] = {
      {WqMbbBtn_Select, 0, kSelected, true}, {WqMbbBtn_Select, kSelected, kSelected, false},
      {WqMbbBtn_UnSelect, kSelected, 0, true}, {WqMbbBtn_UnSelect, 0, 0, false},
      {WqMbbBtn_Down, 0, kDown, true}, {WqMbbBtn_Down, kDown, kDown, false},
      {WqMbbBtn_Up, kDown, 0, true}, {WqMbbBtn_Up, kSelected, kSelected, false},
      {enable, kDisabled, 0, true}, {enable, 0, 0, true}, {disable, kDown, kDown | kDisabled, true},
      {disable, kDisabled, kDisabled, true}, {WqMbbBtn_UpdatePaint, kDown, kDown, true}};
  // clang-format on
  for (const auto &row : rows) {
    SCOPED_TRACE(&row - rows);
    button->flags = row.before | kOwn;
    EXPECT_EQ(dirtied(hwnd, [&] { row.act(button); }), row.dirties ? place : "none");
    EXPECT_EQ(button->flags, row.after | kOwn) << "and the owner's bits";
  }
  for (int again = 0; again < 2; ++again) { // whether it changes anything or not
    EXPECT_EQ(dirtied(hwnd, [&] { WqMbbBtn_Update(button, 0); }), place);
    EXPECT_EQ(button->flags, 0u);
  }
}

TEST_F(BarStateTest, WithoutAWindowOnlyUpdatePaintPaints) {
  const HWND hwnd = made(nullptr, {100, 100, 300, 200}).hwnd;
  WqWnd_WaitQueEmpty(), build(nullptr);
  WqMbbBtn *button = WqMbbBtn_Get(nullptr, 1, 10);
  EXPECT_EQ(dirtied(hwnd, [&] { WqMbbBtn_Select(button), WqMbbBtn_Enable(button, 0), WqMbbBtn_Update(button, 1); }),
            "none");
  EXPECT_EQ(button->flags, 1u);
  EXPECT_EQ(dirtied(hwnd, [&] { WqMbbBtn_UpdatePaint(button); }), "0,0,200,100");
}

TEST_F(BarStateTest, FarOriginsAndDeadWindowsDoNoHarm) {
  Window &wnd = simple('a', {100, 100, 300, 200});
  WqWnd_WaitQueEmpty();
  WqMbbBtn *button = WqMbbBtn_Get(wnd.hwnd, 1, 11);
  for (const int32_t origin : {INT_MAX, INT_MAX - 19, INT_MIN, INT_MIN + 1, -40}) {
    button->field->originX = origin;
    EXPECT_EQ(dirtied(wnd.hwnd, [&] { WqMbbBtn_UpdatePaint(button); }), "none") << origin;
    send(wnd, WM_MOUSEMOVE, 15, 15), send(wnd, WM_LBUTTONUP, -0x8000, 0x7FFF);
    EXPECT_EQ(take(), "") << origin;
  }
  button->rect = button->field->rect = {INT_MIN, INT_MIN, INT_MAX, INT_MAX};
  button->field->originX = button->field->originY = 0;
  send(wnd, WM_LBUTTONUP, 0x7FFF, -0x8000), WqMbbBtn_UpdatePaint(button);
  EXPECT_EQ(take(), "a11 release");
  const HWND hwnd = wnd.hwnd;
  DestroyWindow(hwnd), WqMbbBtn_Select(button), WqMbbBtn_UpdatePaint(button);
  EXPECT_EQ(WqMbbBtn_Get(hwnd, 1, 11), button) << "the bar stays when its window ends";
}
