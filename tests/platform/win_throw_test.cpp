// Window procedures that throw. What they throw reaches the caller as it is, and the windows work on.
#include "support/aside.h"
#include "support/desktop.h"
#include "support/input.h"

#include <exception>
#include <new>
#include <stdexcept>

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

static const std::exception_ptr kThrown[] = {std::make_exception_ptr(7),
                                             std::make_exception_ptr(std::runtime_error("told")),
                                             std::make_exception_ptr(std::bad_alloc())};

// What comes out of it, the very object; null for nothing.
static std::exception_ptr caught(const std::function<void()> &act) {
  try {
    act();
  } catch (...) {
    return std::current_exception();
  }
  return nullptr;
}

class WinThrow : public DesktopTest {
 protected:
  HWND b{}, a{}, c{};

  void SetUp() override {
    if (onWindows()) GTEST_SKIP() << "Windows has frames of its own there that nothing unwinds";
    b = make("B", kTop, 600, 100, 300, 200), a = make("A", kTop, 100, 100, 300, 200);
    c = make("C", kChild, 20, 20, 100, 80, a);
    SetActiveWindow(a), move(a, 200, 150), pump(50);
  }

  // Throws when A, or a window that isn't known yet, gets this message first.
  void throwAt(UINT message, const std::exception_ptr &what) {
    answer = [this, message, what, thrown = std::make_shared<bool>()](HWND window, UINT at, WPARAM, LPARAM, LRESULT &) {
      if (at == message && window != b && window != c && !std::exchange(*thrown, true)) std::rethrow_exception(what);
      return false;
    };
  }

  void expectThatAllWorks() {
    answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &result) { return result = 42, message == WM_USER + 9; };
    ReleaseCapture();
    EXPECT_FALSE(InSendMessage());
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(SendMessageA(b, WM_USER + 9, 0, 0), 42);
    pump(), record("LP");
    const HWND w = make("W", WS_POPUP, 500, 500, 90, 90);
    EXPECT_EQ(take(), "W: NCCREATE 500,500 90x90\nW: CREATE 500,500 90x90\nW: SIZE 90,90\nW: MOVE 500,500");
    ShowWindow(w, SW_SHOWNA), UpdateWindow(w);
    EXPECT_EQ(pump(), "W: SHOW 1\nW: CHANGING 0,0 0x0 53\nW: CHANGED 500,500 90x90\nW: PAINT 0,0,90,90");
    EXPECT_TRUE(DestroyWindow(w));
    const auto sent = aside([this] { return SendMessageA(b, WM_USER + 9, 0, 0); });
    for (int i = 0; i < 500 && !sent->done; ++i) pump(1);
    EXPECT_TRUE(sent->done);
    EXPECT_EQ(sent->result, 42);
  }
};

TEST_F(WinThrow, WhatAProcedureThrowsReachesTheCaller) {
  const auto place = [this] { MoveWindow(a, 120, 120, 320, 220, TRUE); };
  const auto born = [] { make("X", kTop, 0, 300, 99, 99); };
  const auto show = [this] { ShowWindow(a, SW_HIDE), ShowWindow(a, SW_SHOW); };
  const auto focus = [this] { SetFocus(c), SetFocus(a); };
  const auto paint = [this] { InvalidateRect(a, nullptr, TRUE), UpdateWindow(a); };
  const auto point = [this] { move(a, 201, 151), pump(), move(a, 200, 150), click(), pump(); };
  const std::pair<UINT, std::function<void()>> ways[] = {
      {WM_USER, [this] { SendMessageA(a, WM_USER, 0, 0); }},
      {WM_USER, [this] { PostMessageA(a, WM_USER, 0, 0), pump(); }},
      {WM_TIMER, [this] { SetTimer(a, 1, 10, nullptr), pump(100); }},
      {WM_NCCREATE, born},
      {WM_CREATE, born},
      {WM_SHOWWINDOW, show},
      {WM_ACTIVATE, show},
      {WM_WINDOWPOSCHANGING, place},
      {WM_NCCALCSIZE, place},
      {WM_WINDOWPOSCHANGED, place},
      {WM_SIZE, place},
      {WM_KILLFOCUS, focus},
      {WM_SETFOCUS, focus},
      {WM_PAINT, paint},
      {WM_ERASEBKGND, paint},
      {WM_CAPTURECHANGED, [this] { SetCapture(a), SetCapture(b); }},
      {WM_STYLECHANGED, [this] { SetWindowLongA(a, GWL_STYLE, static_cast<LONG>(kTop)); }},
      {WM_SETTEXT, [this] { SetWindowTextA(a, "text"); }},
      {WM_NCHITTEST, point},
      {WM_SETCURSOR, point},
      {WM_LBUTTONDOWN, point},
      {WM_CLOSE, [this] { SendMessageA(a, WM_SYSCOMMAND, SC_CLOSE, 0); }},
      {WM_DESTROY, [this] { DestroyWindow(a); }}};
  for (const auto &[message, way] : ways)
    for (const std::exception_ptr &what : kThrown) {
      SCOPED_TRACE(testing::Message() << &what - kThrown << " at " << std::hex << message);
      throwAt(message, what);
      EXPECT_TRUE(caught(way) == what);
      answer = nullptr;
      expectThatAllWorks();
      for (const auto &[window, name] : names) // nobody has the handle of what was never born
        EXPECT_FALSE(name == "X" && DestroyWindow(window));
      KillTimer(a, 1), MoveWindow(a, 100, 100, 300, 200, TRUE);
      if (message == WM_DESTROY) DestroyWindow(a), a = make("A", kTop, 100, 100, 300, 200);
      if (!IsWindow(c)) c = make("C", kChild, 20, 20, 100, 80, a);
      ShowWindow(a, SW_SHOW), SetActiveWindow(a), pump();
    }
}

TEST_F(WinThrow, ASenderOnAnotherThreadIsLetGo) {
  throwAt(WM_USER, kThrown[0]);
  const auto sent = aside([this] { return SendMessageA(a, WM_USER, 0, 0) + 1; });
  EXPECT_TRUE(caught([&] {
                for (int i = 0; i < 2000 && !sent->done; ++i) pump();
              }) == kThrown[0]);
  EXPECT_TRUE(sent->within(2000));
  EXPECT_EQ(sent->result, 1) << "0 from the window";
  expectThatAllWorks();
}

TEST_F(WinThrow, AProcedureMayCatchWhatAnotherOneThrows) {
  answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT &result) {
    if (message != WM_USER) return false;
    if (window == a) std::rethrow_exception(kThrown[1]);
    result = caught([&] { SendMessageA(a, WM_USER, 0, 0); }) == kThrown[1] ? 5 : 6;
    return true;
  };
  EXPECT_EQ(SendMessageA(b, WM_USER, 0, 0), 5);
  const auto sent = aside([this] { return SendMessageA(b, WM_USER, 0, 0); });
  for (int i = 0; i < 2000 && !sent->done; ++i) pump();
  EXPECT_EQ(sent->result, 5) << "from another thread";
  expectThatAllWorks();
}
