// Windows of one thread that other threads call, and calls that don't wait for that thread, or not for long. The
// recorder says so where a message reaches the wrong thread.
#include "platform/errors.h"
#include "support/aside.h"
#include "support/desktop.h"
#include "support/input.h"

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPopup = WS_POPUP | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

class WinThreads : public DesktopTest {
 protected:
  const HWND b = make("B", kTop, 600, 100, 300, 200), a = make("A", kTop, 100, 100, 300, 200);
  const HWND c = make("C", kChild, 20, 20, 100, 80, a);

  struct Call {
    const char *name;
    std::function<INT_PTR()> call;
    bool waits; // for the thread of the window
    INT_PTR result;
    std::string lines;
    DWORD error = ERROR_SUCCESS; // where the call fails
  };

  // Calls from a second thread, and takes messages meanwhile when it waits.
  static void check(const std::string &groups, const Call &call) {
    SCOPED_TRACE(call.name);
    pump(40), record(groups);
    const std::shared_ptr<Outcome> outcome = aside(call.call);
    EXPECT_NE(outcome->within(call.waits ? 60 : 2000), call.waits);
    EXPECT_EQ(pumpUntil(outcome->done), call.lines);
    ASSERT_TRUE(outcome->done);
    EXPECT_EQ(outcome->result, call.result);
    EXPECT_EQ(call.error ? outcome->error : 0, call.error);
  }

  // Takes messages until another thread is done, and a little longer.
  static std::string pumpUntil(const std::atomic<bool> &done) {
    std::string lines;
    const auto add = [&](const std::string &more) { lines += (lines.empty() || more.empty() ? "" : "\n") + more; };
    for (int i = 0; !done && i < 5000; ++i) add(pump());
    add(pump(30));
    return lines;
  }
};

static INT_PTR number(HWND window) { return reinterpret_cast<INT_PTR>(window); }

TEST_F(WinThreads, AChangeIsMadeByTheThreadOfTheWindow) {
  const std::string from =
      "C: SHOW\nC: CHANGING 0,0 0x0 97\nC: CHANGED 30,30 100x80\nC: CHANGING 30,30 0x0 1\nC: CHILD\n"
      "C: CHANGED 30,30 100x80\nC: MOVE 30,30\nC: SHOW 1\nC: CHANGING 0,0 0x0 57\n"
      "C: CHANGED 30,30 100x80";
  constexpr LONG kNew = static_cast<LONG>(kTop & ~DWORD{WS_MAXIMIZEBOX});
  const Call calls[] = {
      {"hide", [&] { return ShowWindow(a, SW_HIDE); }, true, TRUE,
       "A: SHOW\nA: CHANGING 0,0 0x0 83\nA: CHANGED 100,100 300x200\nA: ACTIVATE B\nB: ACTIVATE 1 A\nA: KILLFOCUS B\n"
       "B: SETFOCUS A"},
      {"show", [&] { return ShowWindow(a, SW_SHOW); }, true, FALSE,
       "A: SHOW 1\nA: CHANGING 0,0 0x0 43\nB: ACTIVATE A\nA: ACTIVATE 1 B\nB: KILLFOCUS A\nA: SETFOCUS B\n"
       "A: CHANGED 100,100 300x200"},
      {"place", [&] { return SetWindowPos(b, nullptr, 610, 110, 310, 210, SWP_NOZORDER | SWP_NOACTIVATE); }, true, TRUE,
       "B: CHANGING 610,110 310x210 14\nB: MINMAX\nB: NCCALC 1\nB: CHANGED 610,110 310x210\nB: MOVE 614,133\n"
       "B: SIZE 302,183"},
      {"move", [&] { return MoveWindow(c, 30, 30, 100, 80, TRUE); }, true, TRUE,
       "C: CHANGING 30,30 100x80 14\nC: CHANGED 30,30 100x80\nC: MOVE 30,30"},
      {"parent", [&] { return number(SetParent(c, b)); }, true, number(a), from},
      {"back", [&] { return number(SetParent(c, a)); }, true, number(b), from},
      {"style", [&] { return SetWindowLongA(a, GWL_STYLE, kNew); }, true, static_cast<LONG>(kTop | WS_CLIPSIBLINGS),
       "A: STYLED 14CF0000>14CE0000"},
      {"set text", [&] { return SetWindowTextA(a, "text"); }, true, TRUE, "A: TEXT"},
      {"get text", [&, text = std::string(9, ' ')]() mutable { return GetWindowTextA(a, text.data(), 9); }, true, 4,
       ""},
      {"disable", [&] { return EnableWindow(c, FALSE); }, true, FALSE, "C: CANCEL\nC: ENABLE"},
      {"enable", [&] { return EnableWindow(c, TRUE); }, true, TRUE, "C: ENABLE 1"},
      {"data", [&] { return SetWindowLongPtrA(a, GWLP_USERDATA, 5); }, false, 0, ""}};
  for (const Call &call : calls) check("LSFX", call);
  EXPECT_EQ(GetWindowLongPtrA(a, GWLP_USERDATA), 5);
}

TEST_F(WinThreads, FocusAndCaptureBelongToAThread) {
  SetCapture(a);
  const Call calls[] = {{"focus", [&] { return number(SetFocus(c)); }, false, 0, "", ERROR_ACCESS_DENIED},
                        {"activate", [&] { return number(SetActiveWindow(b)); }, false, 0, "", ERROR_ACCESS_DENIED},
                        {"capture", [&] { return number(SetCapture(c)); }, false, 0, ""},
                        {"release", [] { return ReleaseCapture(); }, false, TRUE, ""},
                        {"destroy", [&] { return DestroyWindow(c); }, false, FALSE, "", ERROR_ACCESS_DENIED},
                        {"has focus", [] { return number(GetFocus()); }, false, 0, ""},
                        {"is active", [] { return number(GetActiveWindow()); }, false, 0, ""},
                        {"has capture", [] { return number(GetCapture()); }, false, 0, ""},
                        {"is in front", [] { return number(GetForegroundWindow()); }, false, number(a), ""},
                        {"to front", [&] { return SetForegroundWindow(b); }, false, TRUE,
                         "A: ACTIVATE B\nB: ACTIVATE 1 A\nA: KILLFOCUS B\nB: SETFOCUS A"},
                        {"is in front", [] { return number(GetForegroundWindow()); }, false, number(b), ""}};
  for (const Call &call : calls) check("LFX", call);
  EXPECT_EQ(GetCapture(), a);
  EXPECT_TRUE(IsWindow(c));
  EXPECT_EQ(GetFocus(), b);
}

TEST_F(WinThreads, PaintingAndTimersGoToTheThreadOfTheWindow) {
  const auto spoil = [this] { return InvalidateRect(b, nullptr, TRUE); };
  const auto paint = [&] {
    PAINTSTRUCT record{};
    const bool any = spoil() && BeginPaint(b, &record);
    return any && EndPaint(b, &record);
  };
  const auto draw = [this] {
    const HDC dc = GetDC(b);
    SetPixel(dc, 5, 5, RGB(1, 2, 3));
    const COLORREF pixel = GetPixel(dc, 5, 5);
    return ReleaseDC(b, dc) ? static_cast<INT_PTR>(pixel) : -1;
  };
  check("P", {"spoil", spoil, false, TRUE, "B< PAINT 0,0,292,173"});
  check("P", {"update", [&] { return spoil() && UpdateWindow(b); }, true, TRUE, "B: PAINT 0,0,292,173"});
  check("PE", {"paint", paint, true, TRUE, "B: ERASE"}); // which the caller has done then
  check("PE", {"draw", draw, false, RGB(1, 2, 3), ""});
  check("", {"timer", [&] { return static_cast<INT_PTR>(SetTimer(b, 3, 10, nullptr)); }, false, 3, ""});
  record("O");
  EXPECT_EQ(pump(100).substr(0, 10), "B< TIMER 3");
  check("O", {"no timer", [&] { return pump(), KillTimer(b, 3); }, false, TRUE, ""});
}

TEST_F(WinThreads, AChildOfAnotherThreadTellsItsParent) {
  record("L");
  const auto life = aside([this] {
    const HWND x = make("X", kChild, 1, 1, 20, 20, a);
    return ShowWindow(x, SW_HIDE) && DestroyWindow(x);
  });
  EXPECT_EQ(pumpUntil(life->done),
            "X: NCCREATE 1,1 20x20\nX: CREATE 1,1 20x20\nX: SIZE 20,20\nX: MOVE 1,1\n"
            "A: NOTIFY CREATE 0 X\nX: SHOW 1\nX: CHANGING 0,0 0x0 57\nX: CHANGED 1,1 20x20\nX: SHOW\n"
            "X: CHANGING 0,0 0x0 97\nX: CHANGED 1,1 20x20\nA: NOTIFY DESTROY 0 X\nX: DESTROY\n"
            "X: NCDESTROY");
  EXPECT_TRUE(life->done);
  EXPECT_TRUE(life->result);
}

TEST_F(WinThreads, WhoWaitsIsLetGoWhenTheThreadEnds) {
  const std::pair<const char *, std::function<INT_PTR(HWND)>> calls[] = {
      {"send", [](HWND window) { return SendMessageA(window, WM_USER, 0, 0); }},
      {"show", [](HWND window) { return ShowWindow(window, SW_SHOW); }},
      {"place", [](HWND window) { return SetWindowPos(window, nullptr, 1, 1, 9, 9, SWP_NOZORDER); }},
      {"text", [](HWND window) { return SetWindowTextA(window, "text"); }}};
  for (const auto &[name, call] : calls) {
    std::atomic<HWND> window{};
    std::thread owner([&] { window = make("X", WS_POPUP, 0, 0, 9, 9), Sleep(200); }); // and takes no message
    while (!window) Sleep(1);
    const auto outcome = aside([call = call, at = window.load()] { return call(at); });
    owner.join();
    ASSERT_TRUE(outcome->within(2000)) << name;
    EXPECT_EQ(outcome->result, 0) << name;
    EXPECT_FALSE(IsWindow(window)) << name;
  }
}

TEST_F(WinThreads, WindowsOfASecondThreadGetInput) {
  std::atomic<HWND> window{};
  std::thread owner([&] {
    const HWND x = make("X", kPopup, 200, 500, 100, 100);
    MSG message{};
    for (SetForegroundWindow(x), window = x; GetMessageA(&message, nullptr, 0, 0) > 0 && message.message != WM_USER;
         DispatchMessageA(&message))
      TranslateMessage(&message);
  });
  while (!window) Sleep(1);
  pump(100), record("M"), move(window, 50, 50), click();
  const std::string clicked = pump(200); // the activation may bring another move
  EXPECT_NE(clicked.find("X: MOUSE 50,50\nX: LDOWN 1 50,50\nX: LUP 50,50"), std::string::npos) << clicked;
  EXPECT_EQ(GetForegroundWindow(), window);
  record("K"), tap(kA);
  EXPECT_EQ(pump(100), "X: DOWN 41 1E0001\nX: CHAR 61 1E0001\nX: UP 41 C01E0001");
  SetForegroundWindow(a), pump(50), tap(kA);
  EXPECT_EQ(pump(100), "A< DOWN 41 1E0001\nA< CHAR 61 1E0001\nA< UP 41 C01E0001");
  PostMessageA(window, WM_USER, 0, 0), owner.join();
}

TEST_F(WinThreads, SomeCallsDontWait) {
  answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &result) { return result = 42, message == WM_USER; };
  const auto place = [this] {
    return SetWindowPos(a, nullptr, 110, 110, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
  };
  ULONG_PTR reply = 77;
  const auto timed = [&](UINT milliseconds) {
    return [&, milliseconds] { return SendMessageTimeoutA(a, WM_USER, 1, 2, SMTO_NORMAL, milliseconds, &reply); };
  };
  const DWORD start = GetTickCount();
  const Call calls[] = {
      {"place", place, false, TRUE, "A: CHANGING 110,110 0x0 15\nA: CHANGED 110,110 300x200\nA: MOVE 114,133"},
      {"hide", [this] { return ShowWindowAsync(b, SW_HIDE); }, false, TRUE,
       "B: SHOW\nB: CHANGING 0,0 0x0 83\nB: CHANGED 600,100 300x200"},
      {"notify", [this] { return SendNotifyMessageA(a, WM_USER, 1, 2); }, false, TRUE, "A: USER+0 1 2"},
      {"give up", timed(100), false, 0, "", ERROR_TIMEOUT},
      {"have time", timed(5000), true, 1, "A: USER+0 1 2"}};
  SetActiveWindow(a);
  for (const Call &call : calls) check("LXO", call);
  EXPECT_EQ(reply, 42u);
  EXPECT_GE(GetTickCount() - start, 90u) << "the one that gave up";
  // on a window of its own a thread does them at once
  record("O"), SendNotifyMessageA(a, WM_USER, 1, 2), SendMessageTimeoutA(a, WM_USER, 3, 4, SMTO_NORMAL, 10, &reply);
  EXPECT_EQ(take(), "A: USER+0 1 2\nA: USER+0 3 4");
  for (const HWND gone : {HWND{}, reinterpret_cast<HWND>(INT_PTR{0x1234})})
    expectErrors(
        {{"notify", [=] { return !SendNotifyMessageA(gone, WM_USER, 0, 0); }, ERROR_INVALID_WINDOW_HANDLE},
         {"timeout", [&] { return !SendMessageTimeoutA(gone, WM_USER, 0, 0, SMTO_NORMAL, 10, &reply); },
          ERROR_INVALID_WINDOW_HANDLE},
         {"show", [=] { return !ShowWindowAsync(gone, SW_HIDE); }, ERROR_INVALID_WINDOW_HANDLE},
         {"thread", [=] { return GetWindowThreadProcessId(gone, nullptr) == 0; }, ERROR_INVALID_WINDOW_HANDLE}});
}

TEST_F(WinThreads, AWindowNamesItsThread) {
  DWORD process = 0, again = 0, maker = 0, told = 0;
  EXPECT_EQ(GetWindowThreadProcessId(a, &process), GetCurrentThreadId());
  std::thread([&] {
    const HWND x = make("X", WS_POPUP, 0, 0, 9, 9);
    maker = GetCurrentThreadId(), told = GetWindowThreadProcessId(x, &again);
    DestroyWindow(x);
  }).join();
  EXPECT_EQ(told, maker);
  EXPECT_NE(maker, GetCurrentThreadId());
  EXPECT_EQ(process, again);
  EXPECT_NE(process, 0u);
}
