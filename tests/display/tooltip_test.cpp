// Tips are small windows beside the pointer, which take nothing from the window below.

#include "display.h"

namespace {

constexpr COLORREF kGround = RGB(255, 0, 255); // of tips; nothing else here has it
constexpr int kUnder = 19, kFrame = 1;         // the tip begins so far below the pointer, and a pixel left of it

TTTOOLINFOA toolOf(HWND window, UINT flags, const char *text) {
  TTTOOLINFOA info{};
  info.cbSize = TTTOOLINFOA_V2_SIZE, info.uFlags = flags | TTF_IDISHWND, info.hwnd = window;
  info.uId = reinterpret_cast<UINT_PTR>(window), info.lpszText = const_cast<char *>(text);
  return info;
}

// A tooltip whose only tool is the client area of this window.
HWND makeTip(HWND owner, const char *text, UINT flags = TTF_SUBCLASS) {
  InitCommonControls();
  const HWND tip = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, TTS_ALWAYSTIP, 0, 0, 0, 0, owner, nullptr,
                                   nullptr, nullptr);
  TTTOOLINFOA info = toolOf(owner, flags, text);
  EXPECT_TRUE(SendMessageA(tip, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&info)));
  SendMessageA(tip, TTM_SETDELAYTIME, TTDT_INITIAL, 100), SendMessageA(tip, TTM_SETTIPBKCOLOR, kGround, 0);
  return tip;
}

// The tip with its frame, as it is on the screen.
Place seenTip() {
  const Place inner = user().picture().box(kGround);
  if (!inner.width) return {};
  return {inner.x - kFrame, inner.y - kFrame, inner.width + 2 * kFrame, inner.height + 2 * kFrame};
}

} // namespace

TEST_F(AnyDesktop, ATipComesBelowTheRestingPointerAndGoesWithIt) {
  const HWND window = show("A"), tip = makeTip(window, "A tip");
  expectActive(window);
  const Place area = there("A");
  for (const POINT point : {POINT{100, 80}, POINT{area.width - 10, area.height - 10}}) {
    const int x = area.x + point.x, y = area.y + point.y;
    user().point(x, y);
    const auto stands = [&] {
      const Place seen = seenTip();
      return seen.x == x - kFrame && seen.y == y + kUnder;
    };
    EXPECT_TRUE(until(stands)) << seenTip() << ", while the pointer is at " << x << ", " << y;
    RECT size;
    GetClientRect(tip, &size);
    EXPECT_EQ(seenTip().width, size.right);
    EXPECT_EQ(seenTip().height, size.bottom);
    expectActive(window);
    listen("M");
    user().point(x + 2, y - 1), user().click(x + 2, y - 1); // beside it, but in the tool
    EXPECT_TRUE(until([] { return seenTip() == Place{}; })) << seenTip();
    const std::string moved = "A< MOUSE " + std::to_string(point.x + 2) + ',' + std::to_string(point.y - 1);
    EXPECT_EQ(count(told(moved), "A< "), 3) << "the move and the click";
    user().point(1270, 790), settle();
  }
  user().point(area.x + 100, area.y + 80);
  EXPECT_TRUE(until([] { return seenTip().width > 0; }));
  user().point(area.x + area.width + 200, area.y + 10); // the desktop, or another program
  EXPECT_TRUE(until([] { return seenTip() == Place{}; })) << seenTip();
  DestroyWindow(tip);
}

TEST_F(AnyDesktop, ThePointerGoesThroughATip) {
  const HWND window = show("A"), tip = makeTip(window, "A tip");
  const Place area = there("A");
  user().point(area.x + 100, area.y + 80);
  ASSERT_TRUE(until([] { return seenTip().width > 0; }));
  settle();
  listen("M");
  const Place seen = seenTip();
  const int x = seen.x + seen.width / 2, y = seen.y + seen.height / 2;
  user().click(x, y);
  const std::string at = std::to_string(x - area.x) + ',' + std::to_string(y - area.y);
  const std::string expected = "A< MOUSE " + at + "\nA< LDOWN 1 " + at + "\nA< LUP " + at;
  const std::string lines = told(expected);
  EXPECT_NE(lines.find("LDOWN"), std::string::npos) << lines;
  EXPECT_NE(lines.find(at), std::string::npos) << lines;
  EXPECT_TRUE(until([] { return seenTip() == Place{}; })) << "a press takes it down";
  DestroyWindow(tip);
}

// A program moves one along with what is dragged, and changes what it says.
TEST_F(AnyDesktop, AHeldTipMovesAndGrows) {
  const HWND window = show("A"), tip = makeTip(window, "-3 dB", TTF_TRACK | TTF_ABSOLUTE);
  const Place area = there("A"), own = here(window);
  TTTOOLINFOA info = toolOf(window, TTF_TRACK, "-3 dB");
  const auto expectAt = [&](int x, int y) {
    RECT size;
    GetClientRect(tip, &size);
    const Place wanted = {area.x + x - kFrame, area.y + y - kFrame, size.right, size.bottom};
    EXPECT_TRUE(until([&] { return seenTip() == wanted; })) << seenTip() << " instead of " << wanted;
  };
  for (int round = 0; round < 5; ++round) {
    const int x = 50 + 40 * round, y = 60 + 20 * round;
    SendMessageA(tip, TTM_TRACKPOSITION, 0, MAKELPARAM(own.x + x, own.y + y));
    if (round == 0) SendMessageA(tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&info));
    expectAt(x, y);
  }
  info.lpszText = const_cast<char *>("-12.5 dB and more");
  SendMessageA(tip, TTM_UPDATETIPTEXTA, 0, reinterpret_cast<LPARAM>(&info));
  expectAt(210, 140);
  SendMessageA(tip, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&info));
  EXPECT_TRUE(until([] { return seenTip() == Place{}; }));
  DestroyWindow(tip);
}

// Where a program places its windows it knows how far the screen goes.
TEST_F(X11Desktop, ATipStaysOnTheScreenAndFreeOfThePointer) {
  const HWND window = show("A", WS_POPUP, 700, 500, 580, 524), tip = makeTip(window, "A tip that is rather long");
  const int right = GetSystemMetrics(SM_CXSCREEN), bottom = GetSystemMetrics(SM_CYSCREEN);
  for (const POINT point : {POINT{right - 3, 600}, POINT{right - 3, bottom - 3}, POINT{800, bottom - 3}}) {
    user().point(point.x, point.y);
    EXPECT_TRUE(until([] { return seenTip().width > 0; }));
    serve(50);
    const Place seen = seenTip();
    RECT size;
    GetClientRect(tip, &size);
    EXPECT_EQ(seen.width, size.right) << "all of it is to be seen";
    EXPECT_EQ(seen.height, size.bottom);
    EXPECT_LE(seen.x + seen.width, right);
    EXPECT_TRUE(seen.y > point.y || seen.y + seen.height <= point.y) << seen;
    user().point(10, 10);
    EXPECT_TRUE(until([] { return seenTip() == Place{}; }));
  }
  DestroyWindow(tip);
}

// There the compositor alone knows, and it moves them; the pointer may lie on an edge then.
TEST_F(SwayDesktop, ATipIsSeenAsAWhole) {
  const HWND window = show("A"), tip = makeTip(window, "A tip that is rather long");
  const Place area = there("A"), edge = {1280 - area.width, 800 - area.height, area.width, area.height};
  user().place(user().window("A"), edge);
  EXPECT_TRUE(until([&] { return there("A") == edge; })) << there("A");
  user().point(1240, 780);
  RECT size;
  const auto isWhole = [&] {
    GetClientRect(tip, &size);
    const Place seen = seenTip();
    constexpr int kPointer = 16;
    return seen.width > size.right - kPointer && seen.width <= size.right && seen.height == size.bottom;
  };
  EXPECT_TRUE(until(isWhole)) << seenTip() << " of " << size.right << 'x' << size.bottom;
  DestroyWindow(tip);
}
