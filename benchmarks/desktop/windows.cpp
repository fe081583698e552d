// Window objects and their layout, messages, timers.

#include "desktop/desktop.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace {

constexpr int kColumns = 40; // side by side, all visible and without overlap
constexpr int kCount = 1000;
constexpr LONG kSize = 16;
constexpr LONG kSpare = 8; // the distance of their moves
constexpr RECT kFrame = {0, 0, kColumns *kSize + kSpare, kCount / kColumns *kSize + kSpare};

void makeWindow(WqWnd &wnd, WqWnd *parent) {
  WqWnd_Parent(&wnd, parent);
  WqWnd_Style(&wnd, WS_VISIBLE | (parent ? DWORD{WS_CHILD} : WS_POPUP));
  require(WqWnd_Create(&wnd) != nullptr, "a window cannot be made");
}

class Frame {
 public:
  Frame() {
    WqWnd_Init(&wnd_);
    wnd_.rect = kFrame;
    makeWindow(wnd_, nullptr);
  }
  ~Frame() {
    DestroyWindow(wnd_.hwnd);
    WqWnd_WaitQueEmpty();
  }
  Frame(const Frame &) = delete;
  Frame &operator=(const Frame &) = delete;

  WqWnd *object() { return &wnd_; }
  HWND window() const { return wnd_.hwnd; }

 private:
  WqWnd wnd_;
};

POINT cellOf(int index) { return {index % kColumns * kSize, index / kColumns * kSize}; }

// A set of windows, each of which keeps its place relative to its target. The first window moves, and the wave ends
// when the last one is painted.
double layoutWave(int (*targetOf)(int index)) {
  std::vector<WqWnd> windows(kCount); // they outlive their parent
  Frame frame;
  for (int i = 0; i < kCount; ++i) {
    WqWnd &wnd = windows[static_cast<size_t>(i)];
    WqWnd_Init(&wnd);
    const POINT cell = cellOf(i);
    wnd.rect = {cell.x, cell.y, cell.x + kSize - 1, cell.y + kSize - 1};
    if (i > 0) {
      const int target = targetOf(i);
      const POINT from = cellOf(target);
      const RECT margin = {cell.x - from.x - kSize, cell.y - from.y - kSize, 0, 0};
      WqWnd_SnapL(&wnd, &windows[static_cast<size_t>(target)]);
      WqWnd_SnapT(&wnd, &windows[static_cast<size_t>(target)]);
      WqWnd_Ds(&wnd, WQ_DS_KEEP_W | WQ_DS_KEEP_H);
      WqWnd_SnapMargin(&wnd, &margin);
    } else {
      WqWnd_Ds(&wnd, WQ_DS_KEEP_W); // without a layout flag the window moves nothing
    }
    makeWindow(wnd, frame.object());
  }
  WqWnd_WaitQueEmpty();
  LONG offset = 0;
  const double seconds = secondsPerIteration([&] {
    offset = kSpare - offset;
    const RECT rect = {offset, offset, offset + kSize, offset + kSize};
    WqWnd_Rect(&windows.front(), &rect);
    WqWnd_WaitQueEmpty();
  });
  POINT corner = {};
  MapWindowPoints(windows.back().hwnd, frame.window(), &corner, 1);
  const POINT cell = cellOf(kCount - 1);
  require(corner.x == cell.x + offset && corner.y == cell.y + offset, "the last window was not laid out");
  return seconds;
}

double layoutChain() {
  return layoutWave([](int index) { return index - 1; });
}

double layoutStar() {
  return layoutWave([](int) { return 0; });
}

double message() {
  static int arrived;
  Frame frame;
  frame.object()->userProc = [](WqWnd *wnd, WqMsg *msg) {
    if (msg->msg != WM_APP) return 0;
    ++arrived;
    wnd->result = 0;
    return 1;
  };
  WqWnd_WaitQueEmpty();
  int posted = 0;
  const double seconds = secondsPerIteration([&] {
    ++posted;
    PostMessageA(frame.window(), WM_APP, 1, 2);
    MSG msg;
    do {
      GetMessageA(&msg, nullptr, 0, 0);
      DispatchMessageA(&msg);
    } while (msg.message != WM_APP); // the platform may post other messages
  });
  require(arrived == posted, "a message was lost");
  return seconds;
}

// The pointer moves to and fro over the main window, which has this many tools. none: there is no tooltip.
double mouseMessage(int tools) {
  static int arrived;
  Frame frame;
  frame.object()->userProc = [](WqWnd *, WqMsg *msg) {
    arrived += msg->msg == WM_MOUSEMOVE;
    return 0;
  };
  WqMain_Config(frame.window());
  if (tools == 0) WqTooltip_Term(0);
  for (int i = 0; i < tools; ++i) {
    const POINT cell = cellOf(i);
    const RECT rect = {cell.x, cell.y, cell.x + kSize, cell.y + kSize};
    WqTooltip_AddRect(frame.window(), &rect, static_cast<uint32_t>(i + 1));
  }
  WqWnd_WaitQueEmpty();
  arrived = 0;
  int moves = 0;
  const double seconds = secondsPerIteration([&] {
    SetCursorPos(kFrame.left + 2 + ++moves % 2, kFrame.top + 2);
    MSG msg;
    do {
      GetMessageA(&msg, nullptr, 0, 0);
      DispatchMessageA(&msg);
    } while (msg.message != WM_MOUSEMOVE);
  });
  require(arrived == moves, "a mouse message was lost");
  return seconds;
}

// A thread with a window that answers until it is told to quit.
class OtherThread {
 public:
  OtherThread() : thread_([this] { work(); }) {
    while (!window_) std::this_thread::yield();
  }
  ~OtherThread() {
    PostMessageA(window_, WM_CLOSE, 0, 0);
    thread_.join();
  }
  OtherThread(const OtherThread &) = delete;
  OtherThread &operator=(const OtherThread &) = delete;

  HWND window() const { return window_; }

 private:
  static LRESULT CALLBACK answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_APP) return static_cast<LRESULT>(wParam) + 1;
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcA(window, message, wParam, lParam);
  }
  void work() {
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = answer;
    windowClass.hInstance = wqMain.instance;
    windowClass.lpszClassName = "bench_other";
    RegisterClassA(&windowClass); // an earlier subject may have registered it
    window_ =
        CreateWindowExA(0, "bench_other", "", WS_POPUP, 0, 0, 100, 50, nullptr, nullptr, wqMain.instance, nullptr);
    require(window_ != nullptr, "a window cannot be made on another thread");
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0) DispatchMessageA(&msg);
  }

  std::atomic<HWND> window_ = nullptr;
  std::thread thread_;
};

double messageToOtherThread() {
  const OtherThread other;
  WPARAM sent = 0;
  return secondsPerIteration([&] {
    ++sent;
    require(SendMessageA(other.window(), WM_APP, sent, 0) == static_cast<LRESULT>(sent) + 1, "an answer is wrong");
  });
}

double childWindow() {
  WNDCLASSA windowClass = {};
  windowClass.lpfnWndProc = DefWindowProcA;
  windowClass.hInstance = wqMain.instance;
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(uintptr_t{COLOR_WINDOW + 1});
  windowClass.lpszClassName = "bench_child";
  require(RegisterClassA(&windowClass) != 0, "a class cannot be registered");
  Frame frame;
  WqWnd_WaitQueEmpty();
  return secondsPerIteration([&] {
    HWND child = CreateWindowExA(0, "bench_child", "", WS_CHILD | WS_VISIBLE, 10, 10, 100, 50, frame.window(), nullptr,
                                 wqMain.instance, nullptr);
    require(child && DestroyWindow(child), "a child window cannot be made");
  });
}

double textThroughClipboard() {
  constexpr size_t kLength = 1 << 20;
  const Frame frame;
  std::vector<char> fetched(kLength);
  wqMain.mainWnd = frame.window();
  const double seconds = secondsPerIteration([&] {
    const HGLOBAL text = GlobalAlloc(GMEM_MOVEABLE, kLength);
    auto *const bytes = static_cast<char *>(GlobalLock(text));
    std::fill_n(bytes, kLength - 1, 'x');
    bytes[kLength - 1] = '\0';
    GlobalUnlock(text);
    require(OpenClipboard(frame.window()), "the clipboard cannot be opened");
    EmptyClipboard();
    require(SetClipboardData(CF_TEXT, text), "a text cannot be put on the clipboard");
    CloseClipboard();
    fetched[kLength - 2] = '\0';
    WqClipBoard_GetText(fetched.data(), kLength);
    require(fetched[kLength - 2] == 'x', "the text doesn't come back");
  });
  WqClipBoard_Delete();
  wqMain.mainWnd = nullptr;
  return seconds;
}

double timerTick() {
  constexpr uint32_t kTimers = 10000;
  constexpr uint32_t kHour = 3600 * 1000; // longer than the program runs, so no timer is due
  WqTimer_Start();
  WqTimerElem elem;
  WqTimerElem_Init(&elem);
  WqTimerElem_Param(
      &elem, 1, [](uint32_t, uint32_t, WqWord) { return int32_t{0}; }, 0, kHour);
  for (uint32_t i = 0; i < kTimers; ++i) WqTimer_Insert(&elem);
  // only the platform can make this message; dispatching it again is another tick
  MSG tick;
  while (GetMessageA(&tick, nullptr, 0, 0) > 0 && (tick.message != WM_TIMER || tick.wParam != wqMain.timer.timerId))
    DispatchMessageA(&tick);
  const double seconds = secondsPerIteration([&] { DispatchMessageA(&tick); });
  uint32_t ticked = 0;
  for (const WqList *node = wqMain.timer.list; node; node = node->next)
    ticked += reinterpret_cast<const WqTimerElem *>(node->data)->lastTick != 0;
  require(ticked == kTimers, "a timer has missed the tick");
  WqTimer_Stop();
  return seconds;
}

} // namespace

void addWindows(std::vector<Subject> &subjects) {
  subjects.push_back({"layout of 1,000 windows in a chain", layoutChain});
  subjects.push_back({"layout of 1,000 windows round one", layoutStar});
  subjects.push_back({"message posted, got, dispatched", message});
  subjects.push_back({"mouse moved, no tooltip", [] { return mouseMessage(0); }});
  subjects.push_back({"mouse moved, tooltip with 1 tool", [] { return mouseMessage(1); }});
  subjects.push_back({"mouse moved, tooltip with 1,000 tools", [] { return mouseMessage(kCount); }});
  subjects.push_back({"message sent to another thread", messageToOtherThread});
  subjects.push_back({"child window created, destroyed", childWindow});
  subjects.push_back({"text of 1 MB to the clipboard and back", textThroughClipboard});
  subjects.push_back({"tick of 10,000 timers", timerTick});
}
