#include "support/desktop.h"
#include "support/input.h"

#include <map>

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

constexpr Key kLeft{VK_LEFT, 0x4B};

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
  EXPECT_TRUE(TrackMouseEvent(&track));
  SetCursorPos(404, 323);
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
  play("L", {{drag(497, 132, 497, 132), "A: COMMAND F060 8401F1\nA: CLOSE"}});
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
  EXPECT_LT(GetKeyState(VK_CONTROL), 0) << "as of the last message taken";
  EXPECT_GE(GetAsyncKeyState(VK_CONTROL), 0);
}

// The next message: the window's title and a short name; "- " when there is none.
static std::string peek(HWND window = nullptr, UINT first = 0, UINT last = 0, UINT remove = PM_REMOVE) {
  static const std::map<UINT, const char *> kNames = {
      {WM_MOUSEMOVE, "move"},    {WM_LBUTTONDOWN, "press"}, {WM_LBUTTONDBLCLK, "press"},
      {WM_LBUTTONUP, "release"}, {WM_RBUTTONDOWN, "right"}, {WM_RBUTTONUP, "left"},
      {WM_KEYDOWN, "down"},      {WM_KEYUP, "up"},          {WM_USER, "user"}};
  MSG message{};
  if (!PeekMessageA(&message, window, first, last, remove)) return "- ";
  const auto found = kNames.find(message.message);
  if (found == kNames.end()) return std::to_string(message.message) + ' ';
  return DesktopTest::names[message.hwnd] + found->second + ' ';
}

static std::string peekAll() {
  std::string all;
  while (all.size() < 1000 && (all.size() < 2 || all.substr(all.size() - 2) != "- ")) all += peek();
  return all;
}

TEST_F(WinInput, MixedInputIsTakenThroughAnyFilter) {
  struct Filter {
    HWND window;
    UINT first, last, remove;
  };
  struct Row {
    std::vector<Filter> filters;
    std::string got; // through the filters, and then the rest
  };
  const Row rows[] = {
      {{}, "| Cmove Cpress Crelease Cdown Cup Cright Cleft Bmove - "},
      {{{nullptr, WM_KEYFIRST, WM_KEYLAST, PM_NOREMOVE},
        {nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE},
        {nullptr, WM_LBUTTONUP, WM_LBUTTONUP, PM_NOREMOVE},
        {nullptr, WM_LBUTTONUP, WM_LBUTTONUP, PM_REMOVE}},
       "Cdown Cdown Crelease Crelease | Cmove Cpress Cup Cright Cleft Bmove - "},
      {{{b, 0, 0, PM_REMOVE}, {a, 0, 0, PM_REMOVE}, {c, 0, 0, PM_REMOVE}, {b, 0, 0, PM_NOREMOVE}},
       "Bmove Cmove Cpress - | Crelease Cdown Cup Cright Cleft - "}, // children are taken with their parents
      {{{c, WM_RBUTTONDOWN, WM_RBUTTONUP, PM_REMOVE},
        {c, WM_RBUTTONDOWN, WM_RBUTTONUP, PM_REMOVE},
        {c, WM_RBUTTONDOWN, WM_RBUTTONUP, PM_REMOVE}},
       "Cright Cleft - | Cmove Cpress Crelease Cdown Cup Bmove - "},
      {{{nullptr, WM_USER, WM_APP, PM_REMOVE},
        {nullptr, WM_MOUSEMOVE, WM_MOUSEMOVE, PM_REMOVE},
        {nullptr, WM_MOUSEMOVE, WM_MOUSEMOVE, PM_REMOVE},
        {nullptr, WM_MOUSEMOVE, WM_MOUSEMOVE, PM_REMOVE}},
       "- Cmove Bmove - | Cpress Crelease Cdown Cup Cright Cleft - "}};
  SetFocus(c);
  for (const Row &row : rows) {
    move(a, 300, 200), pump(50);
    move(c, 50, 40), click(), tap(kA), button(MOUSEEVENTF_RIGHTDOWN), button(MOUSEEVENTF_RIGHTUP), move(b, 50, 50);
    Sleep(20);
    std::string got;
    for (const Filter &filter : row.filters) got += peek(filter.window, filter.first, filter.last, filter.remove);
    EXPECT_EQ(got + "| " + peekAll(), row.got);
  }
}

TEST_F(WinInput, AHandlerMayTakeInputWhileInputIsLookedAt) {
  const std::function<std::string()> handlers[] = {
      [] { return peek(nullptr, WM_MOUSEFIRST, WM_MBUTTONDBLCLK); },
      [] { return peek() + peek(); },
      [] { return peek(nullptr, WM_LBUTTONUP, WM_LBUTTONUP); },
      [] { return peek(nullptr, WM_KEYFIRST, WM_KEYLAST); },
      [] { return peekAll(); },
      [] { return peek(nullptr, 0, 0, PM_NOREMOVE), peek(nullptr, WM_MOUSEFIRST, WM_MBUTTONDBLCLK, PM_NOREMOVE), ""; },
      [&] { return PostMessageA(a, WM_USER, 0, 0), ""; },
      [&] { return SendMessageA(a, WM_USER, 0, 0), SetCursorPos(9, 9), move(a, 300, 200), ""; }};
  for (const UINT when : {UINT{WM_NCHITTEST}, UINT{WM_SETCURSOR}, UINT{WM_MOUSEACTIVATE}})
    for (size_t i = 0; i < std::size(handlers); ++i) {
      if (onWine() && when == WM_NCHITTEST && (i < 2 || i == 4)) continue; // Wine gives out the message twice here
      SetActiveWindow(b), pump(30);
      std::string got; // by the handler and by the loop
      int calls = 0;
      answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT &) {
        const bool own = message == when && ++calls == 1; // not in what the handler itself looks at
        if (own) got += handlers[i]();
        return false;
      };
      click(), tap(kA), Sleep(20);
      for (int tries = 0; tries < 3; ++tries, Sleep(10)) got += peekAll();
      answer = nullptr;
      for (const char *once : {"press", "release", "down", "up "}) {
        size_t times = 0;
        for (size_t at = 0; (at = got.find(once, at)) != std::string::npos; ++at) ++times;
        EXPECT_EQ(times, 1u) << once << " in " << got << "by handler " << i << " of " << when;
      }
      EXPECT_GT(calls, 0) << i << " of " << when;
    }
}

TEST_F(WinInput, ARestingPointerTellsTheWindowThatComesUnderIt) {
  HWND p = make("P", WS_POPUP, 350, 250, 120, 120);
  struct Change {
    std::function<void()> act;
    const char *expected;
    bool onlyWindows = false; // Wine tells no window that moves with the pointer in it, and no child
  };
  const auto place = [](HWND window, int x, int y, int width, int height) {
    return [=] { MoveWindow(window, x, y, width, height, TRUE); };
  };
  const auto order = [&](HWND after) {
    return [=] { SetWindowPos(p, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); };
  };
  const Change changes[] = {{[&] { ShowWindow(p, SW_SHOWNA); }, "P< MOUSE 54,73"},
                            {[&] { ShowWindow(p, SW_HIDE); }, "A< MOUSE 300,200"},
                            {[&] { ShowWindow(p, SW_SHOWNA), SetWindowTextA(p, "p"); }, "P< MOUSE 54,73"},
                            {place(p, 900, 260, 120, 120), "A< MOUSE 300,200"},
                            {place(p, 360, 260, 120, 120), "P< MOUSE 44,63"},
                            {place(p, 360, 260, 130, 130), ""}, // nothing changes for the pointer
                            {place(p, 350, 250, 120, 120), "P< MOUSE 54,73", true},
                            {order(HWND_BOTTOM), "A< MOUSE 300,200", true},
                            {order(HWND_TOP), "P< MOUSE 54,73", true},
                            {[&] { DestroyWindow(p); }, "A< MOUSE 300,200"},
                            {place(c, 250, 180, 100, 80), "C< MOUSE 50,20", true},
                            {[&] { ShowWindow(c, SW_HIDE); }, "A< MOUSE 300,200", true},
                            {[&] { ShowWindow(c, SW_SHOW); }, "C< MOUSE 50,20", true},
                            {[&] { DestroyWindow(c); }, "A< MOUSE 300,200", true},
                            {place(a, 110, 90, 400, 300), "A< MOUSE 290,210", true},
                            {[&] { ShowWindow(b, SW_MAXIMIZE); }, "B< MOUSE 404,304"},
                            {[&] { ShowWindow(b, SW_RESTORE); }, "A< MOUSE 290,210"},
                            {[&] { p = make("P", kTop | WS_MAXIMIZE, 0, 0, 99, 99); }, "P< MOUSE 404,304"}};
  for (size_t i = 0; i < std::size(changes); ++i) {
    pump(60), record("M"), changes[i].act();
    const std::string told = pump(60);
    if (changes[i].onlyWindows && onWine()) continue;
    EXPECT_EQ(told, changes[i].expected) << "change " << i;
  }
}

TEST_F(WinInput, TheCaptureIsToldToWhoeverLosesIt) {
  play("MX", {{[&] { EXPECT_EQ(SetCapture(a), nullptr); }, ""},
              {[&] { EXPECT_EQ(SetCapture(a), a); }, "A: CAPTURE A"}, // to the one that gets it again too
              {[&] { EXPECT_EQ(SetCapture(c), a); }, "A: CAPTURE C"},
              {[&] { EXPECT_EQ(SetCapture(nullptr), c); }, "C: CAPTURE none"},
              {[&] { EXPECT_TRUE(ReleaseCapture()); }, ""},
              {[&] { SetCapture(c), EnableWindow(c, FALSE); }, "C: CANCEL\nC: CAPTURE none"},
              {[&] { SetCapture(a), SendMessageA(a, WM_CANCELMODE, 0, 0); }, "A: CANCEL\nA: CAPTURE none"},
              {[&] { EXPECT_FALSE(SetCapture(reinterpret_cast<HWND>(INT_PTR{0x1234}))); }, ""}});
  EXPECT_EQ(GetCapture(), nullptr);
}
