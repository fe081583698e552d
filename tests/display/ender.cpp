// A program with windows on two threads, both of which draw and pump, that ends in one of many ways:
//   ender return       main returns, with the windows open
//   ender exit         exit on the main thread
//   ender procedure    exit inside a window procedure of the main thread
//   ender worker       exit on a thread without windows
//   ender box          the same, while a message box is open
//   ender window       exit inside a window procedure of the second thread
//   ender server       the X server or the compositor is killed
//   ender child-return, child-exit, child-_exit    a child forks and ends so, and this one goes on and returns
// Status: 0 from return, 3 from exit, 4 when the child didn't end well.

#include "platform/platform.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kByExit = 3, kBadChild = 4;
constexpr UINT kEnd = WM_APP;
std::atomic<HWND> second = nullptr;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == kEnd) std::exit(kByExit);
  return DefWindowProcA(window, message, wParam, lParam);
}

HWND makeWindow(const char *title, int x) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = procedure;
  windowClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  windowClass.lpszClassName = "ender";
  RegisterClassA(&windowClass);
  return CreateWindowExA(0, "ender", title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, x, 100, 300, 200, nullptr, nullptr,
                         nullptr, nullptr);
}

// One round of drawing and pumping.
void work(HWND window) {
  const HDC dc = GetDC(window);
  const RECT rect = {10, 10, 200, 100};
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
  ReleaseDC(window, dc);
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
  Sleep(1);
}

void workFor(HWND window, int milliseconds) {
  for (const DWORD start = GetTickCount(); GetTickCount() - start < static_cast<DWORD>(milliseconds);) work(window);
}

void secondThread() {
  const HWND window = makeWindow("second", 500);
  second = window;
  for (;;) work(window);
}

// Result: whether the child ended well, which it has to within some seconds.
bool childEnded(pid_t child, HWND window) {
  int result = 0;
  for (int rounds = 0; rounds < 3000; ++rounds) {
    if (waitpid(child, &result, WNOHANG) == child) return WIFEXITED(result) && WEXITSTATUS(result) == 0;
    work(window);
  }
  kill(child, SIGKILL);
  waitpid(child, &result, 0);
  return false;
}

} // namespace

int main(int argc, char **argv) {
  const std::string way = argc > 1 ? argv[1] : "";
  const HWND window = makeWindow("first", 100);
  std::thread(secondThread).detach();
  while (!second) work(window);
  workFor(window, 60);
  if (way == "return") return 0;
  if (way == "exit") std::exit(kByExit);
  if (way == "procedure") SendMessageA(window, kEnd, 0, 0);
  if (way == "window") PostMessageA(second, kEnd, 0, 0);
  if (way == "worker") std::thread([] { std::exit(kByExit); }).detach();
  if (way == "box") {
    std::thread([] { (Sleep(100), std::exit(kByExit)); }).detach();
    MessageBoxA(window, "The program ends under it.", "ender", MB_OKCANCEL);
  }
  if (way == "server") kill(static_cast<pid_t>(std::atoi(std::getenv("WQ_SESSION_SERVER"))), SIGKILL);
  if (way.rfind("child-", 0) != 0) return workFor(window, 20000), 1; // it should have ended meanwhile

  const pid_t child = fork();
  if (child == 0) {
    if (way == "child-return") return 0;
    if (way == "child-exit") std::exit(0);
    _exit(0);
  }
  if (!childEnded(child, window)) return kBadChild;
  workFor(window, 60);
  return 0;
}
