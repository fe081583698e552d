// Windows of one thread that other threads call. The recorder says so where a message reaches the wrong thread.
#include "support/aside.h"
#include "support/desktop.h"
#include "support/input.h"

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPopup = WS_POPUP | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

enum Pace { kAtOnce, kWaits }; // for the thread of the window

class WinThreads : public DesktopTest {
 protected:
  const HWND b = make("B", kTop, 600, 100, 300, 200), a = make("A", kTop, 100, 100, 300, 200);
  const HWND c = make("C", kChild, 20, 20, 100, 80, a);

  struct Call {
    const char *name;
    std::function<INT_PTR()> call;
    Pace pace;
    INT_PTR result;
    std::string lines;
    DWORD error = ERROR_SUCCESS; // where the call fails
  };

  // Calls from a second thread, and takes messages meanwhile when it waits.
  static void check(const std::string &groups, const Call &call) {
    SCOPED_TRACE(call.name);
    pump(40), record(groups);
    const std::shared_ptr<Outcome> outcome = aside(call.call);
    EXPECT_EQ(outcome->within(call.pace == kWaits ? 60 : 2000), call.pace == kAtOnce);
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
      {"hide", [&] { return ShowWindow(a, SW_HIDE); }, kWaits, TRUE,
       "A: SHOW\nA: CHANGING 0,0 0x0 83\nA: CHANGED 100,100 300x200\nA: ACTIVATE B\nB: ACTIVATE 1 A\nA: KILLFOCUS B\n"
       "B: SETFOCUS A"},
      {"show", [&] { return ShowWindow(a, SW_SHOW); }, kWaits, FALSE,
       "A: SHOW 1\nA: CHANGING 0,0 0x0 43\nB: ACTIVATE A\nA: ACTIVATE 1 B\nB: KILLFOCUS A\nA: SETFOCUS B\n"
       "A: CHANGED 100,100 300x200"},
      {"place", [&] { return SetWindowPos(b, nullptr, 610, 110, 310, 210, SWP_NOZORDER | SWP_NOACTIVATE); }, kWaits,
       TRUE,
       "B: CHANGING 610,110 310x210 14\nB: MINMAX\nB: NCCALC 1\nB: CHANGED 610,110 310x210\nB: MOVE 614,133\n"
       "B: SIZE 302,183"},
      {"move", [&] { return MoveWindow(c, 30, 30, 100, 80, TRUE); }, kWaits, TRUE,
       "C: CHANGING 30,30 100x80 14\nC: CHANGED 30,30 100x80\nC: MOVE 30,30"},
      {"parent", [&] { return number(SetParent(c, b)); }, kWaits, number(a), from},
      {"back", [&] { return number(SetParent(c, a)); }, kWaits, number(b), from},
      {"style", [&] { return SetWindowLongA(a, GWL_STYLE, kNew); }, kWaits, static_cast<LONG>(kTop | WS_CLIPSIBLINGS),
       "A: STYLED 14CF0000>14CE0000"},
      {"set text", [&] { return SetWindowTextA(a, "text"); }, kWaits, TRUE, "A: TEXT"},
      {"get text",
       [&] {
         char text[9];
         return GetWindowTextA(a, text, 9);
       },
       kWaits, 4, ""},
      {"disable", [&] { return EnableWindow(c, FALSE); }, kWaits, FALSE, "C: CANCEL\nC: ENABLE"},
      {"enable", [&] { return EnableWindow(c, TRUE); }, kWaits, TRUE, "C: ENABLE 1"},
      {"data", [&] { return SetWindowLongPtrA(a, GWLP_USERDATA, 5); }, kAtOnce, 0, ""}};
  for (const Call &call : calls) check("LSFX", call);
  EXPECT_EQ(GetWindowLongPtrA(a, GWLP_USERDATA), 5);
}

TEST_F(WinThreads, FocusAndCaptureBelongToAThread) {
  SetCapture(a);
  const Call calls[] = {{"focus", [&] { return number(SetFocus(c)); }, kAtOnce, 0, "", ERROR_ACCESS_DENIED},
                        {"activate", [&] { return number(SetActiveWindow(b)); }, kAtOnce, 0, "", ERROR_ACCESS_DENIED},
                        {"capture", [&] { return number(SetCapture(c)); }, kAtOnce, 0, ""},
                        {"release", [] { return ReleaseCapture(); }, kAtOnce, TRUE, ""},
                        {"destroy", [&] { return DestroyWindow(c); }, kAtOnce, FALSE, "", ERROR_ACCESS_DENIED},
                        {"has focus", [] { return number(GetFocus()); }, kAtOnce, 0, ""},
                        {"is active", [] { return number(GetActiveWindow()); }, kAtOnce, 0, ""},
                        {"has capture", [] { return number(GetCapture()); }, kAtOnce, 0, ""},
                        {"is in front", [] { return number(GetForegroundWindow()); }, kAtOnce, number(a), ""},
                        {"to front", [&] { return SetForegroundWindow(b); }, kAtOnce, TRUE,
                         "A: ACTIVATE B\nB: ACTIVATE 1 A\nA: KILLFOCUS B\nB: SETFOCUS A"},
                        {"is in front", [] { return number(GetForegroundWindow()); }, kAtOnce, number(b), ""}};
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
  check("P", {"spoil", spoil, kAtOnce, TRUE, "B< PAINT 0,0,292,173"});
  check("P", {"update", [&] { return spoil() && UpdateWindow(b); }, kWaits, TRUE, "B: PAINT 0,0,292,173"});
  check("PE", {"paint", paint, kWaits, TRUE, "B: ERASE"}); // which the caller has done then
  check("PE", {"draw", draw, kAtOnce, RGB(1, 2, 3), ""});
  check("", {"timer", [&] { return static_cast<INT_PTR>(SetTimer(b, 3, 10, nullptr)); }, kAtOnce, 3, ""});
  record("O");
  EXPECT_EQ(pump(100).substr(0, 10), "B< TIMER 3");
  check("O", {"no timer", [&] { return pump(), KillTimer(b, 3); }, kAtOnce, TRUE, ""});
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
