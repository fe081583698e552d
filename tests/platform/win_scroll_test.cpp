#include "support/aside.h"
#include "support/desktop.h"
#include "support/input.h"

constexpr DWORD kBoth = WS_VSCROLL | WS_HSCROLL;

class WinScroll : public DesktopTest {
 protected:
  const HWND top = make("T", WS_POPUP | WS_VISIBLE, 100, 100, 400, 400);
  const int wide = GetSystemMetrics(SM_CXVSCROLL), high = GetSystemMetrics(SM_CYHSCROLL);

  void SetUp() override { SetForegroundWindow(top), pump(50); }

  HWND child(DWORD bars, int width = 200, int height = 200) {
    return make("C", WS_CHILD | WS_VISIBLE | bars, 0, 0, width, height, top);
  }
};

using Size = std::pair<LONG, LONG>;

static int set(HWND window, int bar, UINT mask, int min, int max, UINT page, int pos) {
  const SCROLLINFO info = {sizeof info, mask, min, max, page, pos, 0};
  return SetScrollInfo(window, bar, &info, TRUE);
}

// "shown" or "hidden", range, page and position of the vertical bar.
static std::string told(HWND window) {
  SCROLLINFO info = {sizeof info, SIF_ALL, -1, -1, 0, -1, -1};
  if (!GetScrollInfo(window, SB_VERT, &info)) return "none";
  int min = -1, max = -1;
  GetScrollRange(window, SB_VERT, &min, &max);
  EXPECT_EQ(std::make_pair(min, max), std::make_pair(info.nMin, info.nMax));
  EXPECT_EQ(GetScrollPos(window, SB_VERT), info.nPos);
  EXPECT_EQ(info.nTrackPos, info.nPos);
  const bool shown = GetWindowLongA(window, GWL_STYLE) & static_cast<LONG>(WS_VSCROLL);
  return (shown ? "shown " : "hidden ") + std::to_string(info.nMin) + ".." + std::to_string(info.nMax) + " page " +
         std::to_string(info.nPage) + " at " + std::to_string(info.nPos);
}

TEST_F(WinScroll, NumbersStayInTheRangeAndABarHidesThatHasNothingToScroll) {
  const HWND plain = child(0), window = child(kBoth);
  EXPECT_EQ(told(plain), "none");
  struct Step {
    const char *what;
    UINT mask;
    int min, max;
    UINT page;
    int pos, result;
    const char *expected;
  };
  constexpr UINT kSpan = SIF_RANGE | SIF_PAGE;
  const Step steps[] = {
      {"all", SIF_ALL, 0, 50, 10, 20, 20, "shown 0..50 page 10 at 20"},
      {"too far", SIF_POS, 0, 0, 0, 45, 41, "shown 0..50 page 10 at 41"},
      {"too near", SIF_POS, 0, 0, 0, -5, 0, "shown 0..50 page 10 at 0"},
      {"all on a page", SIF_PAGE, 0, 0, 200, 0, 0, "hidden 0..50 page 51 at 0"},
      {"a page alone", SIF_PAGE, 0, 0, 10, 0, 0, "hidden 0..50 page 10 at 0"}, // doesn't bring it back
      {"no range", SIF_RANGE, 10, 5, 0, 0, 0, "hidden 0..0 page 1 at 0"},
      {"both", kSpan, 0, 99, 10, 0, 0, "shown 0..99 page 10 at 0"},
      {"kept", kSpan | SIF_DISABLENOSCROLL, 0, 9, 10, 0, 0, "shown 0..9 page 10 at 0"},
      {"from elsewhere", SIF_RANGE, 5, 60, 0, 0, 5, "shown 5..60 page 10 at 5"}};
  EXPECT_EQ(told(window), "shown 0..100 page 0 at 0");
  for (const Step &step : steps) {
    EXPECT_EQ(set(window, SB_VERT, step.mask, step.min, step.max, step.page, step.pos), step.result) << step.what;
    EXPECT_EQ(told(window), step.expected) << step.what;
  }
  EXPECT_EQ(SetScrollPos(window, SB_VERT, 500, TRUE), 5);
  EXPECT_EQ(SetScrollPos(window, SB_VERT, 50, TRUE), 51) << "the last one";
  EXPECT_TRUE(SetScrollRange(window, SB_VERT, 0, 0, TRUE));
  EXPECT_EQ(told(window), "hidden 0..0 page 1 at 0");
  EXPECT_TRUE(ShowScrollBar(window, SB_VERT, TRUE));
  EXPECT_EQ(told(window), "shown 0..0 page 1 at 0");
  if (!onWine()) { // whose sums overflow
    SetScrollRange(window, SB_VERT, -2147483647, 2147483647, TRUE);
    EXPECT_EQ(told(window), "shown -2147483647..2147483647 page 1 at 0");
  }
  const UINT kArrows[] = {ESB_DISABLE_BOTH, ESB_DISABLE_BOTH, ESB_DISABLE_UP, ESB_ENABLE_BOTH, ESB_ENABLE_BOTH};
  std::string changed;
  for (const UINT arrows : kArrows) changed += EnableScrollBar(window, SB_VERT, arrows) ? 'y' : 'n';
  EXPECT_EQ(changed, "ynyyn");
  for (const auto &[size, mask] : {std::pair{5u, UINT{SIF_ALL}}, {UINT{sizeof(SCROLLINFO)}, 0x4000u}}) {
    SCROLLINFO bad = {size, mask, 7, 7, 7, 7, 7};
    EXPECT_FALSE(GetScrollInfo(window, SB_VERT, &bad)) << size;
    EXPECT_EQ(bad.nPos, 7) << size;
  }
}

TEST_F(WinScroll, AnotherThreadSetsABarToo) {
  const HWND window = child(kBoth);
  const auto outcome = aside([window] { return set(window, SB_VERT, SIF_ALL, 0, 9, 20, 0); });
  for (const DWORD start = GetTickCount(); !outcome->done && GetTickCount() - start < 5000;) pump(1);
  ASSERT_TRUE(outcome->done);
  EXPECT_EQ(told(window), "hidden 0..9 page 10 at 0");
}

TEST_F(WinScroll, BarsTakeTheirPartOfTheFrame) {
  const auto size = [](HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    return Size(area.right, area.bottom);
  };
  const HWND window = child(kBoth | WS_BORDER, 100, 60);
  EXPECT_EQ(size(window), Size(98 - wide, 58 - high));
  const HWND small = child(kBoth, wide, high);
  EXPECT_EQ(size(small), Size(0, high)); // a bar below needs a row above it
  EXPECT_EQ(size(child(kBoth, wide - 1, high + 1)), Size(wide - 1, 1));
  const HWND framed = make("F", WS_OVERLAPPEDWINDOW | kBoth, 0, 0, 300, 200);
  RECT around{0, 0, 0, 0};
  AdjustWindowRectEx(&around, WS_OVERLAPPEDWINDOW | kBoth, FALSE, 0); // which doesn't know of them
  EXPECT_EQ(size(framed), Size(300 - around.right + around.left - wide, 200 - around.bottom + around.top - high));

  const auto hit = [&](HWND of, int x, int y) {
    POINT point{x, y};
    ClientToScreen(of, &point);
    return SendMessageA(of, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
  };
  for (const HWND one : {window, framed}) {
    const auto [x, y] = size(one);
    EXPECT_EQ(hit(one, x - 1, y - 1), HTCLIENT);
    EXPECT_EQ(hit(one, x, 5), HTVSCROLL);
    EXPECT_EQ(hit(one, x + wide - 1, y - 1), HTVSCROLL);
    EXPECT_EQ(hit(one, 5, y), HTHSCROLL);
    EXPECT_EQ(hit(one, x - 1, y + high - 1), HTHSCROLL);
    EXPECT_EQ(hit(one, x + 4, y + 4), HTGROWBOX);
  }
  EXPECT_EQ(hit(window, 5, 58), HTBORDER);

  record("L");
  EXPECT_EQ(set(framed, SB_HORZ, SIF_PAGE, 0, 0, 200, 0), 0);
  const std::string expected = "F: CHANGING 0,0 0x0 37\nF: CHANGED 0,0 300x200\nF: SIZE ";
  EXPECT_EQ(take().substr(0, expected.size()), expected);
}

// What the program is told: the codes, of a thumb with its place. It moves its bar as it is asked.
class WinScrollUser : public WinScroll {
 protected:
  const HWND window = child(kBoth);
  const int x = 100 + 200 - wide / 2, end = 200 - high; // of the vertical bar: its middle on the screen, its length
  std::string codes;
  bool follows = true;

  void SetUp() override {
    WinScroll::SetUp();
    set(window, SB_VERT, SIF_ALL, 0, 99, 10, 0);
    answer = [this](HWND of, UINT message, WPARAM wParam, LPARAM, LRESULT &) {
      if (of != window || (message != WM_VSCROLL && message != WM_HSCROLL)) return false;
      if (message == WM_VSCROLL)
        tell(LOWORD(wParam), static_cast<short>(HIWORD(wParam)));
      else
        codes += 'h' + std::to_string(LOWORD(wParam)) + ' ';
      return true;
    };
  }
  void tell(int code, int high) {
    SCROLLINFO info = {sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(window, SB_VERT, &info);
    const bool isThumb = code == SB_THUMBTRACK || code == SB_THUMBPOSITION;
    codes += std::to_string(code) + (isThumb ? ':' + std::to_string(info.nTrackPos) : "") + ' ';
    EXPECT_EQ(high, isThumb ? static_cast<short>(info.nTrackPos) : 0);
    const int page = static_cast<int>(info.nPage);
    const int kSteps[] = {-1, 1, -page, page};
    if (follows && code <= SB_PAGEDOWN) SetScrollPos(window, SB_VERT, info.nPos + kSteps[code], TRUE);
    if (follows && code == SB_THUMBTRACK) SetScrollPos(window, SB_VERT, info.nTrackPos, TRUE);
  }
  std::string clicked(int atX, int atY) {
    SetCursorPos(atX, atY), click(), pump(20);
    return std::exchange(codes, {});
  }
  static constexpr POINT kWait = {-1, -1};
  // Presses, goes to the places given, 30 ms each, and releases.
  std::string dragged(POINT from, const std::vector<POINT> &to) {
    SetCursorPos(from.x, from.y), button(MOUSEEVENTF_LEFTDOWN);
    size_t next = 0; // moves join in the queue, so that each waits until the one before is taken
    script = [&] {
      if (next < to.size() && to[next].x != kWait.x) SetCursorPos(to[next].x, to[next].y);
      if (next == to.size()) button(MOUSEEVENTF_LEFTUP);
      ++next;
    };
    const UINT_PTR ticks = SetTimer(nullptr, 0, 30, tick);
    MSG message;
    for (const DWORD start = GetTickCount(); next <= to.size() + 1 && GetTickCount() - start < 5000;)
      if (GetMessageA(&message, nullptr, 0, 0)) DispatchMessageA(&message);
    KillTimer(nullptr, ticks);
    return std::exchange(codes, {});
  }
  static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) { script(); }
  static inline std::function<void()> script;
};

TEST_F(WinScrollUser, ClicksOnArrowsAndPages) {
  EXPECT_EQ(clicked(x, 100 + end - 8), "1 8 ");
  EXPECT_EQ(clicked(x, 100 + end - high - 5), "3 8 ");
  EXPECT_EQ(told(window), "shown 0..99 page 10 at 11");
  EXPECT_EQ(clicked(x, 100 + high + 2), "2 8 ");
  EXPECT_EQ(clicked(x, 108), "0 8 ");
  EXPECT_EQ(told(window), "shown 0..99 page 10 at 0");
  EXPECT_EQ(clicked(110, 100 + 200 - high / 2), "h0 h8 ");
  EXPECT_EQ(clicked(200, 100 + 200 - high / 2), "h3 h8 ");
  EXPECT_EQ(clicked(x, 100 + 200 - 5), "") << "the corner";
  if (onWine()) return; // scrolls with disabled arrows
  EnableScrollBar(window, SB_VERT, ESB_DISABLE_DOWN);
  EXPECT_EQ(clicked(x, 100 + end - 8), "");
  EXPECT_EQ(clicked(x, 108), "0 8 ");
  EnableScrollBar(window, SB_VERT, ESB_DISABLE_BOTH);
  EXPECT_EQ(clicked(x, 108) + clicked(x, 100 + end / 2), "");
}

TEST_F(WinScrollUser, AHeldArrowRepeatsAndAHeldPageStopsAtThePointer) {
  const std::string lines = dragged({x, 100 + end - 8}, std::vector<POINT>(20, kWait)); // 600 ms
  EXPECT_GE(lines.size(), 2u * 5);
  EXPECT_EQ(lines.find_first_not_of("1 "), lines.size() - 2) << lines;
  const LONG middle = 100 + end / 2;
  const std::string pages = dragged({x, middle}, std::vector<POINT>(30, kWait));
  EXPECT_EQ(pages.find_first_not_of("3 "), pages.size() - 2) << pages;
  EXPECT_LE(pages.size(), 2u * 7) << "the thumb has come to the pointer";
  const std::string left =
      dragged({x, 108}, {{x - 100, 150}, kWait, kWait, kWait, kWait, kWait, kWait, kWait, kWait, kWait});
  EXPECT_EQ(left, "0 8 ") << "nothing repeats while the pointer is elsewhere";
}

TEST_F(WinScrollUser, TheThumbIsHeld) {
  const LONG from = 100 + high + 5, track = end - 2 * high, thumb = track * 10 / 100;
  const auto at = [&](LONG pixels) { return std::to_string((pixels * 90 + (track - thumb) / 2) / (track - thumb)); };
  EXPECT_EQ(dragged({x, from}, {{x, from + 50}, {x, from + 60}}),
            "5:0 5:" + at(50) + " 5:" + at(60) + " 4:" + at(60) + " 8 ");
  EXPECT_EQ(GetScrollPos(window, SB_VERT), std::stoi(at(60)));
  SetScrollPos(window, SB_VERT, 0, TRUE);
  EXPECT_EQ(dragged({x, from}, {{x, from + 50}, {x - 280, from + 50}, {x + 5, from + 40}, {x, 700}}),
            "5:0 5:" + at(50) + " 5:0 5:" + at(40) + " 5:0 4:0 8 ")
      << "far away from the bar it goes back";
  follows = false;
  EXPECT_EQ(dragged({x, from}, {{x, 100 + end - 5}}), "5:0 5:90 4:90 8 ");
  EXPECT_EQ(GetScrollPos(window, SB_VERT), 0) << "the position is the program's";
  set(window, SB_VERT, SIF_RANGE | SIF_PAGE, 0, 200000, 10, 0);
  const std::string moved = dragged({x, from}, {{x, from + 80}});
  EXPECT_GT(std::stoi(moved.substr(moved.find(" 5:") + 3)), 65536) << moved;
}

TEST_F(WinScrollUser, ATrackedThumbIsLetGoByCancelAndEndsWithItsWindow) {
  const Answer scrolls = answer;
  answer = [&](HWND of, UINT message, WPARAM wParam, LPARAM lParam, LRESULT &result) {
    const bool scrolled = scrolls(of, message, wParam, lParam, result);
    if (scrolled && LOWORD(wParam) == SB_THUMBTRACK) ReleaseCapture();
    return scrolled;
  };
  EXPECT_EQ(clicked(x, 100 + high + 5), "5:0 ");
  answer = [&](HWND of, UINT message, WPARAM, LPARAM, LRESULT &) {
    return of == window && message == WM_VSCROLL && DestroyWindow(window);
  };
  clicked(x, 108);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(WinScroll, ABarIsDrawnInWindowsOfBothKinds) {
  const HWND popup = make("P", WS_POPUP | WS_VISIBLE | WS_VSCROLL, 600, 100, 200, 200), inner = child(WS_VSCROLL);
  for (const HWND window : {inner, popup}) {
    set(window, SB_VERT, SIF_ALL, 0, 99, 0, 0);
    pump(50);
    const HDC dc = GetDCEx(window, nullptr, DCX_WINDOW);
    const auto pixel = [&](int y) { return GetPixel(dc, 200 - wide / 2, y); };
    const COLORREF thumb = pixel(2 * high - 1), ground = pixel(high * 4 - 1);
    EXPECT_NE(thumb, ground) << "its lower edge";
    SetScrollPos(window, SB_VERT, 99, TRUE);
    EXPECT_EQ(pixel(200 - high - 1), thumb);
    EXPECT_NE(pixel(2 * high - 1), thumb);
    EnableScrollBar(window, SB_VERT, ESB_DISABLE_BOTH);
    EXPECT_NE(pixel(200 - high - 1), thumb);
    EXPECT_NE(pixel(0), CLR_INVALID);
    ReleaseDC(window, dc);
  }
}
