#include "support/desktop.h"

#include <memory>
#include <set>
#include <utility>

using WinLife = DesktopTest;

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPopup = WS_POPUP | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

TEST_F(WinLife, CreationShowingAndTheEndTellInOrder) {
  HWND top{}, child{};
  int seen = 0; // records of creation that hold what was given
  const auto menu = reinterpret_cast<HMENU>(INT_PTR{11});
  answer = [&](HWND window, UINT message, WPARAM, LPARAM lParam, LRESULT &) {
    const auto *how = reinterpret_cast<const CREATESTRUCTA *>(lParam);
    if (names[window] == "C" && (message == WM_NCCREATE || message == WM_CREATE))
      seen += how->lpCreateParams == &seen && how->hwndParent == top && how->hMenu == menu;
    return false;
  };
  play("LSFPE",
       {{[&] { top = make("A", WS_OVERLAPPEDWINDOW, 100, 100, 300, 200); },
         "new: MINMAX\nA: NCCREATE 100,100 300x200\nA: NCCALC\nA: CREATE 100,100 300x200"},
        {[&] { ShowWindow(top, SW_SHOWNORMAL); },
         "A: SHOW 1\nA: CHANGING 0,0 0x0 43\nA: ACTIVATE 1 none\nA: SETFOCUS none\nA: ERASE\n"
         "A: CHANGED 100,100 300x200\nA: SIZE 292,173\nA: MOVE 104,123\nA< PAINT 0,0,292,173"},
        {[&] { EXPECT_TRUE(ShowWindow(top, SW_SHOWNORMAL) && UpdateWindow(top)); }, ""},
        {[&] { child = CreateWindowExA(0, "Recorded 0", "C", kChild, 10, 20, 30, 40, top, menu, nullptr, &seen); },
         "C: NCCREATE 10,20 30x40\nC: NCCALC\nC: CREATE 10,20 30x40\nC: SIZE 30,40\nC: MOVE 10,20\n"
         "A: NOTIFY CREATE 11 C\nC: SHOW 1\nC: CHANGING 0,0 0x0 57\nC: ERASE\nC: CHANGED 10,20 30x40\n"
         "C< PAINT 0,0,30,40"}});
  EXPECT_EQ(seen, 2);
  EXPECT_EQ(GetDlgItem(top, 11), child);
  make("P", WS_POPUP, 0, 0, 9, 9, top);
  play("L", {{[&] { SendMessageA(top, WM_SYSCOMMAND, SC_CLOSE, 0); },
              "A: COMMAND F060 0\nA: CLOSE\nA: CHANGING 0,0 0x0 97\nA: CHANGED 100,100 300x200\n"
              "P: DESTROY\nP: NCDESTROY\nA: DESTROY\nC: DESTROY\nC: NCDESTROY\nA: NCDESTROY"}});
  UINT refused = WM_NCCREATE;
  answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT &result) {
    return result = refused == WM_CREATE ? -1 : 0, message == refused;
  };
  play("L", {{[&] { EXPECT_FALSE(make("D", kPopup, 0, 0, 9, 9)); }, "D: NCCREATE 0,0 9x9\nD: NCDESTROY"},
             {[&] { refused = WM_CREATE, make("D", kPopup, 0, 0, 9, 9); },
              "D: NCCREATE 0,0 9x9\nD: CREATE 0,0 9x9\nD: NCDESTROY"}});
}

TEST_F(WinLife, PlacementTellsWhatChanges) {
  const HWND top = make("A", kTop, 100, 100, 300, 200), child = make("C", kChild, 10, 10, 100, 80, top);
  const auto place = [](HWND window, int x, int y, int width, int height, UINT flags) {
    return [=] { EXPECT_TRUE(SetWindowPos(window, nullptr, x, y, width, height, flags | SWP_NOZORDER)); };
  };
  play("LS",
       {{place(top, 120, 110, 0, 0, SWP_NOSIZE),
         "A: CHANGING 120,110 0x0 5\nA: CHANGED 120,110 300x200\nA: MOVE 124,133"},
        {place(top, 0, 0, 320, 220, SWP_NOMOVE | SWP_NOREDRAW),
         "A: CHANGING 0,0 320x220 E\nA: MINMAX\nA: NCCALC 1\nA: CHANGED 120,110 320x220\nA: SIZE 312,193"},
        {place(top, 120, 110, 320, 220, 0), "A: CHANGING 120,110 320x220 4\nA: MINMAX"},
        {place(top, 110, 100, 0, 0, SWP_NOSIZE | SWP_NOSENDCHANGING), "A: CHANGED 110,100 320x220\nA: MOVE 114,123"},
        {[&] { EXPECT_TRUE(MoveWindow(child, 20, 10, 90, 70, FALSE)); },
         "C: CHANGING 20,10 90x70 1C\nC: NCCALC 1\nC: CHANGED 20,10 90x70\nC: MOVE 20,10\nC: SIZE 90,70"},
        {[&] { EXPECT_TRUE(ShowWindow(top, SW_HIDE)); }, "A: SHOW\nA: CHANGING 0,0 0x0 83\nA: CHANGED 110,100 320x220"},
        // in a hidden parent a child has no place that shows
        {[&] { ShowWindow(child, SW_HIDE), ShowWindow(child, SW_SHOW), DestroyWindow(child); },
         "C: SHOW\nC: SHOW 1\nA: NOTIFY DESTROY 0 C\nC: SHOW\nC: DESTROY\nC: NCDESTROY"}});
}

TEST_F(WinLife, StyleLimitsAndStateDecideThePlace) {
  RECT rect{};
  AdjustWindowRectEx(&rect, kTop, FALSE, WS_EX_CLIENTEDGE);
  EXPECT_EQ(rectText(rect), "-6,-25,6,6");
  const HWND top = make("A", kTop, 100, 100, 300, 200), popup = make("P", WS_POPUP, 0, 0, 9, 9);
  const std::pair<int, const char *> commands[] = {{SW_MAXIMIZE, "was visible zoomed"},
                                                   {SW_MINIMIZE, "was visible iconic"},
                                                   {SW_RESTORE, "was visible zoomed"},
                                                   {SW_RESTORE, "was visible"},
                                                   {SW_SHOWMINNOACTIVE, "was visible iconic"},
                                                   {SW_SHOWNORMAL, "was visible"},
                                                   {SW_HIDE, "was"},
                                                   {SW_SHOWMAXIMIZED, " visible zoomed"},
                                                   {SW_RESTORE, "was visible"}};
  for (size_t i = 0; i < std::size(commands); ++i) {
    std::string state = ShowWindow(top, commands[i].first) ? "was" : "";
    state += IsWindowVisible(top) ? " visible" : "";
    state += IsIconic(top) ? " iconic" : IsZoomed(top) ? " zoomed" : "";
    EXPECT_EQ(state, commands[i].second) << "command " << i;
  }
  EXPECT_EQ(screenRect(top), "100,100,400,300");
  MoveWindow(top, 10, 10, 0, 0, TRUE), MoveWindow(popup, 40000, -40000, 70000, -5, TRUE);
  EXPECT_EQ(screenRect(top) + ' ' + screenRect(popup), "10,10,122,37 32767,-32768,65534,-32768");
  answer = [](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT &) {
    auto *sizes = reinterpret_cast<MINMAXINFO *>(lParam);
    if (message == WM_WINDOWPOSCHANGING) reinterpret_cast<WINDOWPOS *>(lParam)->x = 77;
    if (message == WM_GETMINMAXINFO) sizes->ptMinTrackSize = {200, 150}, sizes->ptMaxTrackSize = {400, 300};
    return message == WM_GETMINMAXINFO;
  };
  MoveWindow(top, 0, 0, 20, 500, TRUE);
  EXPECT_EQ(screenRect(top), "77,0,277,300");
}

TEST_F(WinLife, FocusAndActivationMoveInOrder) {
  const HWND top = make("A", kPopup, 0, 0, 200, 100), child = make("C", kChild, 0, 0, 20, 20, top);
  const HWND dead = make("D", kChild | WS_DISABLED, 20, 0, 20, 20, top), other = make("B", kPopup, 300, 0, 200, 100);
  const auto focus = [](std::string from, std::string to) {
    return from + ": KILLFOCUS " + to + "\n" + to + ": SETFOCUS " + from;
  };
  const auto active = [=](std::string from, std::string to, std::string had) {
    return from + ": ACTIVATE " + to + "\n" + to + ": ACTIVATE 1 " + from + "\n" + focus(had, to);
  };
  HWND owned{};
  play("F", {{[&] { SetFocus(child); }, active("B", "A", "B") + "\n" + focus("A", "C")},
             {[&] { EXPECT_EQ(SetFocus(child), child); }, ""},
             {[&] { EXPECT_EQ(SetFocus(dead), nullptr); }, ""},
             {[&] { EXPECT_EQ(SetActiveWindow(other), top); }, active("A", "B", "C")},
             {[&] { SetWindowPos(top, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); }, ""},
             {[&] { SetWindowPos(top, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE); }, active("B", "A", "B")},
             {[&] { SetFocus(child), ShowWindow(child, SW_HIDE); }, focus("A", "C") + "\n" + focus("C", "A")},
             {[&] { EnableWindow(top, FALSE); }, "A: KILLFOCUS none"},
             {[&] { EnableWindow(top, TRUE), SetFocus(child); }, "C: SETFOCUS none"},
             {[&] { ShowWindow(child, SW_SHOW), DestroyWindow(child); }, focus("C", "A")},
             {[&] { owned = make("P", kPopup, 0, 0, 9, 9, top); }, active("A", "P", "A")},
             {[&] { DestroyWindow(owned); }, active("P", "A", "P")},
             {[&] { ShowWindow(top, SW_HIDE), ShowWindow(top, SW_SHOWNA); }, active("A", "B", "A")},
             {[&] { DestroyWindow(other); }, active("B", "A", "B")}});
}

TEST_F(WinLife, AStaleHandleFailsEverywhere) {
  const HWND top = make("A", kTop, 0, 0, 99, 99), gone = make("B", kTop, 0, 0, 99, 99);
  RECT r{};
  POINT p{};
  PAINTSTRUCT s{};
  int call = 0;
  const auto no = [&](auto result) {
    EXPECT_FALSE(result) << "call " << call;
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE) << "call " << call;
    ++call, SetLastError(ERROR_SUCCESS);
  };
  DestroyWindow(gone);
  for (const HWND w : {gone, reinterpret_cast<HWND>(INT_PTR{0x1234})}) {
    no(SetWindowPos(w, nullptr, 0, 0, 1, 1, 0)), no(MoveWindow(w, 0, 0, 1, 1, TRUE)), no(ShowWindow(w, SW_SHOW)),
        no(GetWindowRect(w, &r)), no(GetClientRect(w, &r)), no(GetWindowLongA(w, GWL_STYLE)),
        no(SetWindowLongA(w, GWL_STYLE, 0)), no(SetWindowTextA(w, "")), no(SetFocus(w)), no(SetActiveWindow(w)),
        no(SendMessageA(w, WM_USER, 0, 0)), no(PostMessageA(w, WM_USER, 0, 0)), no(SetParent(w, top)),
        no(SetParent(top, w)), no(GetParent(w)), no(ScreenToClient(w, &p)), no(MapWindowPoints(w, top, &p, 1)),
        no(GetDC(w)), no(IsWindowVisible(w)), no(IsWindowEnabled(w)), no(GetWindow(w, GW_CHILD)),
        no(ValidateRect(w, &r)), no(InvalidateRect(w, &r, TRUE)), no(GetUpdateRect(w, &r, FALSE)),
        no(RedrawWindow(w, &r, nullptr, RDW_INVALIDATE)), no(BeginPaint(w, &s)), no(make("C", WS_CHILD, 0, 0, 9, 9, w));
    EXPECT_FALSE(DestroyWindow(w));
    EXPECT_FALSE(EnableWindow(w, TRUE));
    EXPECT_FALSE(SetTimer(w, 1, 99, nullptr));
    EXPECT_FALSE(KillTimer(w, 1));
    EXPECT_FALSE(IsWindow(w));
    EXPECT_FALSE(SetCapture(w));
    EXPECT_FALSE(IsChild(w, top));
  }
}

TEST_F(WinLife, AWindowMayEndInsideAnyMessage) {
  make("base", kPopup, 300, 0, 9, 9); // takes the activation each time
  const UINT messages[] = {
      WM_CREATE,     WM_SIZE,     WM_MOVE,      WM_SHOWWINDOW, WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED,
      WM_NCCALCSIZE, WM_SETFOCUS, WM_KILLFOCUS, WM_ENABLE,     WM_SETTEXT,           WM_STYLECHANGED,
      WM_ERASEBKGND, WM_PAINT,    WM_TIMER,     WM_USER,       WM_CAPTURECHANGED,    WM_CLOSE,
      WM_DESTROY};
  for (const UINT message : messages)
    for (const char *victim : {"A", "C", "S"}) { // its parent, itself, its sibling
      std::map<std::string, HWND> named;
      std::multiset<std::string> ended;
      answer = [&, done = std::make_shared<bool>()](HWND window, UINT at, WPARAM, LPARAM, LRESULT &) {
        named[names[window]] = window;
        if (at == WM_NCDESTROY) ended.insert(names[window]);
        if (at == message && names[window] == "C" && !std::exchange(*done, true))
          ended.insert(DestroyWindow(named[victim]) ? "!" : "?");
        return false;
      };
      const HWND parent = make("A", kPopup, 0, 0, 99, 99), sibling = make("S", kChild, 50, 0, 40, 40, parent);
      const HWND c = make("C", WS_CHILD, 0, 0, 40, 40, parent);
      if (c)
        ShowWindow(c, SW_SHOW), MoveWindow(c, 1, 1, 30, 30, TRUE), SetFocus(c), SetFocus(sibling),
            SetWindowTextA(c, "x"), EnableWindow(c, FALSE), EnableWindow(c, TRUE),
            SetWindowLongA(c, GWL_STYLE, LONG{kChild}), SetCapture(c), ReleaseCapture(),
            InvalidateRect(c, nullptr, TRUE), UpdateWindow(c), SetTimer(c, 1, 10, nullptr),
            PostMessageA(c, WM_USER, 0, 0);
      pump(message == WM_TIMER ? 400 : 0), PostMessageA(c, WM_CLOSE, 0, 0), pump(), DestroyWindow(parent);
      EXPECT_EQ(ended, (std::multiset<std::string>{"!", "A", "C", "S"})) << message << victim;
    }
}
