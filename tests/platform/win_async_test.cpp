// Calls on windows of other threads that don't wait for them, or not for long.
#include "support/aside.h"
#include "support/desktop.h"

#include <thread>

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE;

class WinAsync : public DesktopTest {
 protected:
  const HWND a = make("A", kTop, 100, 100, 300, 200);
  ULONG_PTR reply = 77;

  void SetUp() override {
    pump(50), record("LXO");
    answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &result) { return result = 42, message == WM_USER; };
  }
  // What another thread's call returns at once, with nothing told yet; the error after it.
  std::pair<INT_PTR, DWORD> atOnce(const std::function<INT_PTR()> &call) {
    const auto outcome = aside(call);
    EXPECT_TRUE(outcome->within(2000));
    EXPECT_EQ(take(), "");
    return {outcome->result, outcome->error};
  }
};

TEST_F(WinAsync, ChangesAreMadeLater) {
  const auto place = [this] {
    return SetWindowPos(a, nullptr, 110, 110, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
  };
  EXPECT_EQ(atOnce(place).first, TRUE);
  EXPECT_EQ(screenRect(a), "100,100,400,300");
  EXPECT_EQ(pump(50), "A: CHANGING 110,110 0x0 15\nA: CHANGED 110,110 300x200\nA: MOVE 114,133");
  EXPECT_EQ(atOnce([this] { return ShowWindowAsync(a, SW_HIDE); }).first, TRUE); // it could be asked
  EXPECT_TRUE(IsWindowVisible(a));
  EXPECT_EQ(pump(50), "A: SHOW\nA: CHANGING 0,0 0x0 83\nA: CHANGED 110,110 300x200");
  EXPECT_EQ(atOnce([this] { return SendNotifyMessageA(a, WM_USER, 1, 2); }).first, TRUE);
  EXPECT_EQ(pump(50), "A: USER+0 1 2");
}

TEST_F(WinAsync, OnAWindowOfItsOwnAThreadDoesThemAtOnce) {
  EXPECT_TRUE(SendNotifyMessageA(a, WM_USER, 1, 2));
  EXPECT_EQ(take(), "A: USER+0 1 2");
  EXPECT_EQ(SendMessageTimeoutA(a, WM_USER, 3, 4, SMTO_NORMAL, 10, &reply), 1);
  EXPECT_EQ(take(), "A: USER+0 3 4");
  EXPECT_EQ(reply, 42u);
  for (const HWND gone : {HWND{}, reinterpret_cast<HWND>(INT_PTR{0x1234})}) {
    EXPECT_FALSE(SendNotifyMessageA(gone, WM_USER, 0, 0));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_FALSE(SendMessageTimeoutA(gone, WM_USER, 0, 0, SMTO_NORMAL, 10, &reply));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_FALSE(ShowWindowAsync(gone, SW_HIDE));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_EQ(GetWindowThreadProcessId(gone, nullptr), 0u);
  }
}

TEST_F(WinAsync, ASenderGivesUpAfterItsTime) {
  const auto send = [this](UINT milliseconds) {
    return [=, this] { return SendMessageTimeoutA(a, WM_USER, 1, 2, SMTO_NORMAL, milliseconds, &reply); };
  };
  const DWORD start = GetTickCount();
  EXPECT_EQ(atOnce(send(100)), std::make_pair(INT_PTR{0}, DWORD{ERROR_TIMEOUT}));
  EXPECT_GE(GetTickCount() - start, 90u);
  pump(30);
  const auto answered = aside(send(5000));
  for (int i = 0; i < 1000 && !answered->done; ++i) pump(1);
  EXPECT_EQ(answered->result, 1);
  EXPECT_EQ(reply, 42u);
}

TEST_F(WinAsync, AWindowNamesItsThread) {
  DWORD process = 0, again = 0;
  EXPECT_EQ(GetWindowThreadProcessId(a, &process), GetCurrentThreadId());
  DWORD maker = 0, told = 0;
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
