#include "support/desktop.h"
#include "support/input.h"

#include <atomic>
#include <thread>

using WinQueue = DesktopTest;

const HWND kNone = reinterpret_cast<HWND>(INT_PTR{-1}); // messages to no window

// The next message, "5 " for USER+5; "- " when there is none.
static std::string next(HWND window = nullptr, UINT first = 0, UINT last = 0, UINT remove = PM_REMOVE) {
  MSG message{};
  if (!PeekMessageA(&message, window, first, last, remove)) return "- ";
  if (message.message == WM_PAINT) return ValidateRect(message.hwnd, nullptr), "paint ";
  if (message.message >= WM_USER) return std::to_string(message.message - WM_USER) + ' ';
  if (message.message == WM_LBUTTONDOWN) return "press ";
  if (message.message == WM_LBUTTONUP) return "release ";
  return (message.message == WM_QUIT ? "quit" : "timer") + std::to_string(message.wParam) + ' ';
}

static int timerCalls;
static void CALLBACK onTimer(HWND, UINT message, UINT_PTR, DWORD) { timerCalls += message == WM_TIMER; }

// What was sent, and 1 more when it came from another thread.
static LRESULT CALLBACK serve(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_USER) return lParam + InSendMessage();
  return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(WinQueue, FiltersAndKindsDecideTheOrder) {
  const HWND a = make("A", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9), b = make("B", WS_POPUP, 0, 0, 9, 9),
             child = make("C", WS_CHILD, 0, 0, 9, 9, a);
  pump(20);
  UINT number = WM_USER;
  for (const HWND to : {a, b, child, HWND{}, a}) PostMessageA(to, ++number, 0, 0);
  PostThreadMessageA(GetCurrentThreadId(), WM_USER + 6, 0, 0);
  std::string got;
  for (const HWND from : {HWND{}, a, b, child, kNone}) got += next(from, 0, 0, PM_NOREMOVE);
  got += next(nullptr, WM_USER + 5, WM_USER + 7);
  for (const HWND from : {kNone, kNone, kNone, child, child, a, a, HWND{}, HWND{}}) got += next(from);
  EXPECT_EQ(got, "1 1 2 3 4 5 4 6 - 3 - 1 - 2 - ");
  MSG message;
  PostQuitMessage(4);
  EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0), 0);
  EXPECT_EQ(message.wParam, 4u);
  PostMessageA(b, WM_USER, 0, 0), SetTimer(b, 1, 10, nullptr), DestroyWindow(b), Sleep(30);
  EXPECT_EQ(next(), "- ") << "what the window has left to hear goes with it";
  EXPECT_EQ(GetMessageA(&message, b, 0, 0), -1);
}

TEST_F(WinQueue, ATimerComesOnceHoweverLateItIs) {
  const HWND a = make("A", WS_POPUP, 0, 0, 9, 9);
  for (const UINT time : {10u, 400u}) EXPECT_EQ(SetTimer(a, 1, time, nullptr), 1u);
  Sleep(1000);
  EXPECT_EQ(next(a, 0, 0, PM_NOREMOVE), "timer1 ");
  for (const char *expected : {"timer1 ", "- "}) EXPECT_EQ(next(), expected);
  Sleep(450);
  EXPECT_TRUE(KillTimer(a, 1));
  EXPECT_FALSE(KillTimer(a, 1));
  EXPECT_EQ(next(), "- ") << "what it has left to say goes with it";
  const UINT_PTR id = SetTimer(nullptr, 0, 10, onTimer);
  for (int tries = 0; timerCalls < 2 && tries < 500; ++tries) pump(20); // a busy machine is late
  EXPECT_GT(timerCalls, 1);
  EXPECT_EQ(SetTimer(nullptr, id, 10, onTimer), id);
  EXPECT_TRUE(KillTimer(nullptr, id));
  answer = [&](HWND, UINT message, WPARAM id, LPARAM, LRESULT &) { return message == WM_TIMER && KillTimer(a, id); };
  play("O", {{[&] { SetTimer(a, 3, 10, nullptr), Sleep(40); }, "A< TIMER 3"}, {[] { Sleep(40); }, ""}});
}

TEST_F(WinQueue, NothingIsLostBetweenManyThreads) {
  const HWND a = make("A", WS_POPUP, 0, 0, 9, 9);
  std::vector<LPARAM> got(8);
  std::vector<HWND> windows(8);
  std::atomic<int> wrong{};
  answer = [&](HWND, UINT message, WPARAM from, LPARAM number, LRESULT &result) {
    if (message == WM_USER) wrong += got[from]++ != number;
    if (message == WM_USER + 1) // the sender waits and serves this at the same time
      result = 2 * SendMessageA(windows[from], WM_USER, 0, number), wrong += DestroyWindow(windows[from]);
    return message >= WM_USER;
  };
  std::vector<std::thread> threads;
  for (WPARAM t = 0; t < 8; ++t)
    threads.emplace_back([&, t] {
      WNDCLASSA server{};
      server.lpfnWndProc = serve, server.lpszClassName = "server", RegisterClassA(&server);
      windows[t] = CreateWindowExA(0, "server", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
      const auto post = [&](UINT message, LPARAM number) {
        while (!PostMessageA(a, message, t, number)) Sleep(1); // a queue may be full
      };
      for (int i = 0; i < 2000; ++i) {
        post(WM_USER, i);
        if (i % 100 == 0) wrong += SendMessageA(a, WM_USER + 1, t, i) != 2 * (i + 1);
      }
      post(WM_USER + 2, 0);
    });
  MSG message{};
  int retrieved = 0; // what is sent is served inside of GetMessageA
  for (int left = 8; left && GetMessageA(&message, nullptr, 0, 0) > 0;
       left -= message.message == WM_USER + 2, ++retrieved)
    DispatchMessageA(&message);
  for (std::thread &thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(retrieved, 8 * 2001);
  EXPECT_EQ(got, std::vector<LPARAM>(8, 2000));
  for (const HWND window : windows) EXPECT_FALSE(IsWindow(window)) << "it has ended with its thread";
}

TEST_F(WinQueue, EveryKindWaitsForThoseBeforeIt) {
  const HWND a = make("A", WS_POPUP | WS_VISIBLE, 100, 100, 200, 200);
  SetActiveWindow(a), move(a, 50, 50), pump(50);
  std::string got;
  std::atomic<bool> sending{};
  answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT &) {
    if (message == WM_USER) got += "sent ";
    return message == WM_USER;
  };
  SetTimer(a, 1, 10, nullptr), InvalidateRect(a, nullptr, FALSE), click();
  PostQuitMessage(1), PostQuitMessage(2), PostMessageA(a, WM_USER + 1, 0, 0);
  std::thread sender([&] { sending = true, SendMessageA(a, WM_USER, 0, 0); });
  while (!sending) Sleep(1);
  Sleep(100);
  for (const UINT kind : {UINT{WM_USER + 7}, UINT{WM_LBUTTONUP}, UINT{WM_PAINT}, UINT{WM_TIMER}})
    got += next(a, kind, kind, PM_NOREMOVE); // the end of the program passes every filter
  for (int i = 0; i < 6; ++i) got += next();
  sender.join(), KillTimer(a, 1);
  EXPECT_EQ(got + next(), "sent quit2 quit2 quit2 quit2 1 quit2 press release paint timer1 - ");
}
