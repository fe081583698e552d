// Windows of several threads, and calls for a window from a thread that is not its own.

#include "display.h"

#include <atomic>
#include <thread>

namespace {

// A thread with a window and a message loop of its own.
class WindowThread {
 public:
  explicit WindowThread(int x, int y) : thread_([this, x, y] { run(x, y); }) {}
  ~WindowThread() {
    PostMessageA(window, WM_CLOSE, 0, 0);
    thread_.join();
  }
  WindowThread(const WindowThread &) = delete;
  WindowThread &operator=(const WindowThread &) = delete;

  std::atomic<HWND> window = nullptr;
  std::atomic<int> presses = 0, strangers = 0; // messages that came on another thread
  std::atomic<DWORD> id = 0;
  std::atomic<bool> over = false;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto *self = reinterpret_cast<WindowThread *>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self && GetCurrentThreadId() != self->id) ++self->strangers;
    if (self && message == WM_LBUTTONDOWN) ++self->presses;
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcA(window, message, wParam, lParam);
  }
  void run(int x, int y) {
    id = GetCurrentThreadId();
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    windowClass.lpszClassName = "of a thread";
    RegisterClassA(&windowClass);
    const HWND made = CreateWindowExA(0, "of a thread", "worker", WS_OVERLAPPEDWINDOW, x, y, 308, 227, nullptr, nullptr,
                                      nullptr, nullptr);
    SetWindowLongPtrA(made, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ShowWindow(made, SW_SHOW);
    window = made;
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
    over = true;
  }
  std::thread thread_;
};

} // namespace

TEST_F(AnyDesktop, WindowsOfTwoThreadsAreShownAtOnce) {
  const HWND window = show("A", WS_OVERLAPPEDWINDOW, 50, 50);
  WindowThread worker(600, 400);
  ASSERT_TRUE(until([] { return user().window("worker").id != 0; }));
  apart("A", "worker");
  expectAgreed(window);
  const auto click = [](const char *title) { user().click(there(title).x + 30, there(title).y + 30); };
  for (int round = 1; round <= 2; ++round) {
    settle();
    click("worker");
    EXPECT_TRUE(until([&] { return worker.presses == round; })) << worker.presses;
    EXPECT_TRUE(until([] { return user().window("worker").active; }));
    EXPECT_TRUE(until([] { return GetActiveWindow() == nullptr; })) << "each thread has an active window of its own";
    settle();
    click("A");
    expectActive(window);
  }
  const Place place = there("worker");
  const Picture picture = user().picture();
  EXPECT_EQ(picture.at(place.x + 30, place.y + 60), RGB(255, 255, 255)) << "its background";
  user().wish(user().window("worker"), User::Wish::close);
  EXPECT_TRUE(until([&] { return worker.over.load(); }));
  EXPECT_EQ(worker.strangers, 0);
  EXPECT_TRUE(until([] { return user().window("worker").id == 0; }));
}

// The two load the desktop from both sides.
TEST_F(AnyDesktop, TwoThreadsShowAndHideAtOnce) {
  std::atomic<bool> over = false;
  std::thread worker([&] {
    for (int round = 0; round < 20; ++round) {
      const WindowThread other(600, 400);
      for (int tries = 0; tries < 1000 && !other.window; ++tries) Sleep(1);
    }
    over = true;
  });
  for (int round = 0; !over && round < 500; ++round) {
    const HWND window = make("A", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300, 200);
    pump();
    DestroyWindow(window);
  }
  const bool ended = until([&] { return over.load(); }, 5000);
  worker.join();
  EXPECT_TRUE(ended);
}

TEST_F(AnyDesktop, AWorkerChangesTheWindowOfAnotherThread) {
  const HWND window = make("A", WS_OVERLAPPEDWINDOW, 200, 200, 408, 327), other = show("B");
  const HWND child = make("child", WS_CHILD | WS_VISIBLE, 10, 10, 50, 50, other);
  const auto onWorker = [](const std::function<void()> &act) {
    std::atomic<bool> done = false;
    std::thread worker([&] { (act(), done = true); });
    EXPECT_TRUE(until([&] { return done.load(); })) << "the worker waits for ever";
    worker.join();
  };
  onWorker([&] { ShowWindow(window, SW_SHOW); });
  EXPECT_TRUE(until([] { return user().window("A").id != 0; }));
  onWorker([&] { SetWindowPos(window, nullptr, 240, 250, 508, 427, SWP_NOZORDER | SWP_NOACTIVATE); });
  EXPECT_EQ(here(window), (Place{244, 273, 500, 400}));
  expectAgreed(window);
  onWorker([&] { SetWindowTextA(window, "renamed"); });
  EXPECT_TRUE(until([] { return user().window("renamed").id != 0; }));
  onWorker([&] { SetParent(child, window); });
  EXPECT_EQ(GetParent(child), window);
  onWorker([&] { SetWindowLongA(child, GWL_STYLE, WS_CHILD); });
  EXPECT_FALSE(IsWindowVisible(child));
  onWorker([&] { ShowWindow(window, SW_HIDE); });
  EXPECT_TRUE(until([] { return user().window("renamed").id == 0; }));
}
