#include "support/desktop.h"

#include <utility>

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

using Key = std::pair<BYTE, BYTE>; // and its place on the keyboard
constexpr Key kA{'A', 0x1E}, kShift{VK_SHIFT, 0x2A}, kControl{VK_CONTROL, 0x1D}, kAlt{VK_MENU, 0x38},
    kLeft{VK_LEFT, 0x4B};

static void press(Key key, DWORD flags = 0) { keybd_event(key.first, key.second, flags, 0); }
static void release(Key key, DWORD flags = 0) { press(key, flags | KEYEVENTF_KEYUP); }
static void tap(Key key, DWORD flags = 0) { press(key, flags), release(key, flags); }
static void button(DWORD flags, int data = 0) { mouse_event(flags, 0, 0, static_cast<DWORD>(data), 0); }
static void click() { button(MOUSEEVENTF_LEFTDOWN), button(MOUSEEVENTF_LEFTUP); }
static void move(HWND window, int x, int y) {
  POINT point{x, y};
  if (ClientToScreen(window, &point)) SetCursorPos(point.x, point.y);
}

class WinInput : public DesktopTest {
 protected:
  const HWND b = make("B", kTop, 600, 100, 200, 200), a = make("A", kTop, 100, 100, 400, 300, nullptr, CS_DBLCLKS);
  const HWND c = make("C", kChild, 20, 20, 100, 80, a), d = make("D", kChild | WS_DISABLED, 150, 20, 80, 80, a);
  const HWND h = make("H", WS_CHILD, 20, 120, 80, 80, a);

  void SetUp() override { SetForegroundWindow(a), SetFocus(a), move(a, 300, 200), pump(100); }
};

TEST_F(WinInput, TheMouseTellsTheWindowUnderIt) {
  play("MHL", {{[&] { move(c, 60, 60); }, "C: CURSOR C 1 MOUSE\nA: CURSOR C 1 MOUSE\nC< MOUSE 60,60"},
               {[&] { button(MOUSEEVENTF_RIGHTDOWN); },
                "A: NOTIFY RDOWN 80,80\nC: MOUSEACTIVATE A 1 RDOWN\nA: MOUSEACTIVATE A 1 RDOWN\n"
                "C: CURSOR C 1 RDOWN\nA: CURSOR C 1 RDOWN\nC< RDOWN 2 60,60"}});
  play("M", {{[&] { button(MOUSEEVENTF_RIGHTUP), move(d, 40, 40); }, "C< RUP 60,60\nA< MOUSE 190,60"},
             {[&] { move(a, 3, 3), move(a, 4, 4), move(h, 10, 10); }, "A< MOUSE 30,130"}, // moves join
             {[&] { press(kShift), press(kControl), click(), release(kControl), move(a, 0, 0), release(kShift); },
              "A< LDOWN D 30,130\nA< LUP C 30,130\nA< MOUSE 4 0,0"},
             {[&] { SetFocus(c), move(c, 60, 60), button(MOUSEEVENTF_WHEEL, -WHEEL_DELTA); },
              "C< MOUSE 60,60\nC< WHEEL FF880000 184,203\nA: WHEEL FF880000 184,203"},
             {[&] { SetCapture(c), SetCursorPos(900, 700), click(); },
              "C< MOUSE 776,557\nC< LDOWN 1 776,557\nC< LUP 776,557"},
             {[&] { SetCapture(a), EnableWindow(a, FALSE), EnableWindow(a, TRUE); }, "C: CAPTURE A\nA: CAPTURE none"},
             {[&] { SetCursorPos(200, 110); }, "A< NCMOUSE 2 200,110"},
             {[&] { move(c, 60, 60); }, "C< MOUSE 60,60"}});
  TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, c, 0};
  EXPECT_TRUE(TrackMouseEvent(&track) && SetCursorPos(404, 323));
  EXPECT_EQ(pump(700), "A< MOUSE 300,200\nC< LEAVE");
}

TEST_F(WinInput, AClickActivatesAndTwoMakeADouble) {
  int reply = MA_ACTIVATE;
  answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT &result) {
    return result = reply, message == WM_MOUSEACTIVATE && window == a;
  };
  const std::string up = "A< LUP 300,200", both = "A< LDOWN 1 300,200\n" + up;
  const std::string active = "B: ACTIVATE A\nA: ACTIVATE 2 B\nB: KILLFOCUS A\nA: SETFOCUS B\n";
  const auto from = [&](int with) {
    return [&, with] { Sleep(GetDoubleClickTime() + 50), SetActiveWindow(b), record("FM"), reply = with, click(); };
  };
  play("FM", {{from(MA_ACTIVATE), active + both},
              {from(MA_NOACTIVATE), both},
              {from(MA_ACTIVATEANDEAT), active + up},
              {from(MA_NOACTIVATEANDEAT), up},
              {[&] { Sleep(GetDoubleClickTime() + 50), SetActiveWindow(a), record("M"), click(), click(), click(); },
               both + "\nA< LDOUBLE 1 300,200\n" + up + '\n' + both},
              {[&] { move(a, 320, 200), click(); }, "A< MOUSE 320,200\nA< LDOWN 1 320,200\nA< LUP 320,200"}});
}

TEST_F(WinInput, TheFrameMovesSizesAndCloses) {
  answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &) { return message == WM_CLOSE; };
  const auto drag = [](int x, int y, int toX, int toY) {
    return
        [=] { SetCursorPos(x, y), button(MOUSEEVENTF_LEFTDOWN), SetCursorPos(toX, toY), button(MOUSEEVENTF_LEFTUP); };
  };
  play("S", {{drag(250, 112, 280, 132), "A: MINMAX\nA: ENTER\nA: MOVING 130,120,530,420\nA: EXIT"},
             {drag(528, 300, 508, 310),
              "A: MINMAX\nA: ENTER\nA: SIZING 2 130,120,510,420\nA: MINMAX\nA: NCCALC 1\nA: EXIT"}});
  play("L", {{drag(497, 132, 498, 132), "A: COMMAND F060\nA: CLOSE"}});
}

TEST_F(WinInput, KeysFollowTheFocusAndBecomeCharacters) {
  play("K", {{[&] { press(kShift), press(kA), press(kA), release(kA), release(kShift); },
              "A< DOWN 10 2A0001\nA< DOWN 41 1E0001\nA< CHAR 41 1E0001\nA< DOWN 41 401E0001\nA< CHAR 41 401E0001\n"
              "A< UP 41 C01E0001\nA< UP 10 C02A0001"},
             {[&] { press(kAlt), tap(kA), release(kAlt); },
              "A< SYSDOWN 12 20380001\nA< SYSDOWN 41 201E0001\nA< SYSCHAR 61 201E0001\nA< SYSUP 41 E01E0001\n"
              "A< UP 12 C0380001"},
             {[&] { tap(kLeft, KEYEVENTF_EXTENDEDKEY); }, "A< DOWN 25 14B0001\nA< UP 25 C14B0001"},
             {[&] { tap(kA), SetFocus(c); }, "C< DOWN 41 1E0001\nC< CHAR 61 1E0001\nC< UP 41 C01E0001"}});
  std::string typed;
  answer = [&](HWND, UINT message, WPARAM letter, LPARAM, LRESULT &) {
    return message == WM_CHAR && (typed += std::to_string(letter) + ' ', true);
  };
  const Key keys[] = {{'7', 8},      {VK_RETURN, 28}, {VK_ESCAPE, 1}, {VK_TAB, 15},
                      {VK_BACK, 14}, {VK_DELETE, 83}, kControl,       kA};
  SetFocus(a);
  for (const Key &key : keys) press(key), pump();
  for (const Key &key : keys) release(key);
  EXPECT_EQ(typed, "55 13 27 9 8 1 ");
  // the first as of the last message taken
  EXPECT_TRUE(GetKeyState(VK_CONTROL) < 0 && GetAsyncKeyState(VK_CONTROL) >= 0);
}
