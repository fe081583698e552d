// Cursors: which window is asked for one, and with what.
#include "support/desktop.h"
#include "support/input.h"

#include <algorithm>

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

static std::string cursor() {
  const HCURSOR now = SetCursor(nullptr); // tells which one there was
  SetCursor(now);
  const std::pair<LPCSTR, const char *> cursors[] = {{IDC_ARROW, "arrow"},   {IDC_SIZEWE, "WE"},
                                                     {IDC_SIZENS, "NS"},     {IDC_SIZENWSE, "NWSE"},
                                                     {IDC_SIZENESW, "NESW"}, {nullptr, "another"}};
  const auto *const found = std::find_if(std::begin(cursors), std::end(cursors) - 1,
                                         [&](const auto &entry) { return now == LoadCursorA(nullptr, entry.first); });
  return found->second;
}

class WinCursor : public DesktopTest {
 protected:
  const HWND a = make("A", kTop, 100, 100, 400, 300, nullptr, CS_DBLCLKS);
  const HWND c = make("C", kChild, 20, 20, 100, 80, a, 0, IDC_SIZEWE);
  const HWND n = make("N", kChild, 20, 120, 100, 80, a, 0, nullptr); // without a cursor
  const HWND d = make("D", kChild | WS_DISABLED, 150, 20, 80, 80, a, 0, IDC_SIZENS);
  const HWND g = make("G", kChild, 150, 120, 80, 80, a),
             k = make("K", kChild | WS_THICKFRAME, 10, 10, 50, 50, g, 0, IDC_SIZENS);

  void SetUp() override { SetForegroundWindow(a), SetFocus(a), move(a, 300, 200), pump(100); }

  // What is told of the cursor, and which one there is then.
  void expect(const char *what, const std::string &lines, const char *shape, const std::function<void()> &act) {
    SCOPED_TRACE(what);
    play("H", {{act, lines}});
    EXPECT_EQ(cursor(), shape);
  }
};

TEST_F(WinCursor, FollowsTheWindowUnderThePointer) {
  expect("own", "C: CURSOR C 1 MOUSE\nA: CURSOR C 1 MOUSE", "WE", [&] { move(c, 50, 40); });
  expect("none", "N: CURSOR N 1 MOUSE\nA: CURSOR N 1 MOUSE", "WE", [&] { move(n, 50, 40); });
  expect("top level", "A: CURSOR A 1 MOUSE", "arrow", [&] { move(a, 300, 200); });
  expect("disabled", "A: CURSOR A 1 MOUSE", "arrow", [&] { move(d, 50, 40); });
  expect("grandchild", "K: CURSOR K 1 MOUSE\nG: CURSOR K 1 MOUSE\nA: CURSOR K 1 MOUSE", "NS", [&] { move(k, 20, 20); });
  move(a, 300, 200), pump();
  expect("its border", "K: CURSOR K 12 MOUSE", "NS", [&] { move(k, 20, -2); }); // borders that size ask nobody else
  expect("its corner", "K: CURSOR K 13 MOUSE", "NWSE", [&] { SetCursorPos(264, 253); });
  expect("caption", "A: CURSOR A 2 MOUSE", "arrow", [&] { SetCursorPos(200, 112); });
  expect("left", "A: CURSOR A 10 MOUSE", "WE", [&] { SetCursorPos(101, 250); });
  expect("top", "A: CURSOR A 12 MOUSE", "NS", [&] { SetCursorPos(250, 101); });
  expect("top right", "A: CURSOR A 14 MOUSE", "NESW", [&] { SetCursorPos(498, 101); });
  expect("close", "A: CURSOR A 20 MOUSE", "arrow", [&] { SetCursorPos(490, 112); });
  SetCapture(c);
  expect("captured", "", "arrow", [&] { move(a, 300, 200), click(); }); // nobody is asked
  ReleaseCapture(), pump(50);
  HWND taker = a;
  answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT &result) {
    if (message != WM_SETCURSOR || window != taker) return false;
    SetCursor(LoadCursorA(nullptr, IDC_SIZENESW));
    return result = TRUE, true;
  };
  expect("parent takes", "C: CURSOR C 1 MOUSE\nA: CURSOR C 1 MOUSE", "NESW", [&] { move(c, 50, 40); });
  taker = c;
  expect("child takes", "C: CURSOR C 1 MOUSE", "NESW", [&] { move(c, 51, 40); });
  EnableWindow(a, FALSE);
  expect("all disabled", "A: CURSOR A -2 LDOWN\nA: CURSOR A -2 LUP", "arrow",
         [&] { move(a, 300, 200), pump(), click(); });
}

TEST_F(WinCursor, IsAskedForWithThePlainMessage) {
  const std::string in = "A: CURSOR A 1 ", press = in + "LDOWN\n" + in + "LUP";
  expect("press", press, "arrow", click);
  expect("double click", press, "arrow", click); // the window gets WM_LBUTTONDBLCLK
  expect("right", in + "RDOWN\n" + in + "RUP", "arrow",
         [] { button(MOUSEEVENTF_RIGHTDOWN), button(MOUSEEVENTF_RIGHTUP); });
  expect("middle", in + "MDOWN\n" + in + "MUP", "arrow",
         [] { button(MOUSEEVENTF_MIDDLEDOWN), button(MOUSEEVENTF_MIDDLEUP); });
  expect("wheel", in + "WHEEL", "arrow", [] { button(MOUSEEVENTF_WHEEL, WHEEL_DELTA); });
  answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &) {
    return message == WM_NCLBUTTONDOWN || message == WM_NCLBUTTONDBLCLK; // that would move it
  };
  SetCursorPos(200, 112), pump(static_cast<DWORD>(GetDoubleClickTime()) + 50);
  for (const char *name : {"NCLDOWN", "NCLDOUBLE"})
    play("MH", {{click, "A: CURSOR A 2 LDOWN\nA< " + std::string(name) +
                            " 2 200,112\nA: CURSOR A 2 LUP\nA< NCLUP 2 200,112"}});
}
