// Times that a user of an X server feels: until pixels are visible, until a key arrives, the number of pictures a
// second and their cost, and until a window appears. A second connection to the server observes and presses keys.
// Prints a line "subject<TAB>median<TAB>10th percentile<TAB>90th percentile<TAB>unit" for each.
//   bench_display start    only shows the window, for the last subject

#include <spawn.h> // before the API, because of a macro

#include "platform/platform.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr SIZE kArea = {1280, 800};
constexpr Seconds kPatience(5);
constexpr COLORREF kFirst = RGB(255, 0, 255); // the colour that the last subject waits for

void require(bool isWell, const char *what) {
  if (isWell) return;
  std::fprintf(stderr, "bench_display: %s\n", what);
  std::exit(1);
}

double since(Clock::time_point start) { return Seconds(Clock::now() - start).count(); }

// Another client of the X server.
class Observer {
 public:
  Observer() : connection_(xcb_connect(nullptr, nullptr)) {
    require(!xcb_connection_has_error(connection_), "there is no X server");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  }
  ~Observer() { xcb_disconnect(connection_); }
  Observer(const Observer &) = delete;
  Observer &operator=(const Observer &) = delete;

  COLORREF pixel(int x, int y) {
    const auto cookie = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, static_cast<int16_t>(x),
                                      static_cast<int16_t>(y), 1, 1, ~uint32_t{0});
    xcb_get_image_reply_t *reply = xcb_get_image_reply(connection_, cookie, nullptr);
    require(reply, "the X server gives no picture");
    const uint8_t *byte = xcb_get_image_data(reply);
    const COLORREF colour = RGB(byte[2], byte[1], byte[0]);
    std::free(reply);
    return colour;
  }
  void awaitPixel(int x, int y, COLORREF colour) {
    for (const auto start = Clock::now(); pixel(x, y) != colour;)
      require(since(start) < kPatience.count(), "a pixel isn't shown");
  }
  void key(bool down) {
    constexpr uint8_t kCode = 38; // a letter
    xcb_test_fake_input(connection_, down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, kCode, 0, root_, 0, 0, 0);
    xcb_flush(connection_);
  }

  // Lets the server report every change of the screen from now on, and counts changes of a whole area since the last
  // call.
  void watch() {
    const auto version = xcb_damage_query_version(connection_, 1, 1);
    std::free(xcb_damage_query_version_reply(connection_, version, nullptr));
    xcb_damage_create(connection_, xcb_generate_id(connection_), root_, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  }
  int changes(SIZE whole) {
    const uint8_t notice = xcb_get_extension_data(connection_, &xcb_damage_id)->first_event + XCB_DAMAGE_NOTIFY;
    pixel(0, 0); // the answer comes after all reports
    int count = 0;
    while (xcb_generic_event_t *event = xcb_poll_for_event(connection_)) {
      const auto *change = reinterpret_cast<xcb_damage_notify_event_t *>(event);
      count +=
          (event->response_type & 0x7F) == notice && change->area.width >= whole.cx && change->area.height >= whole.cy;
      std::free(event);
    }
    return count;
  }

 private:
  xcb_connection_t *connection_;
  xcb_window_t root_;
};

COLORREF ground = kFirst;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_PAINT) return DefWindowProcA(window, message, wParam, lParam);
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window, &paint);
  const HBRUSH brush = CreateSolidBrush(ground);
  const RECT all = {0, 0, kArea.cx, kArea.cy};
  FillRect(dc, &all, brush);
  DeleteObject(brush);
  EndPaint(window, &paint);
  return 0;
}

HWND showWindow() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = procedure;
  windowClass.lpszClassName = "bench";
  RegisterClassA(&windowClass);
  const HWND window =
      CreateWindowExA(0, "bench", "bench", WS_POPUP, 0, 0, kArea.cx, kArea.cy, nullptr, nullptr, nullptr, nullptr);
  require(window, "a window cannot be made");
  ShowWindow(window, SW_SHOW);
  UpdateWindow(window);
  return window;
}

void pump() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

void repaint(HWND window, COLORREF colour) {
  ground = colour;
  InvalidateRect(window, nullptr, FALSE);
  UpdateWindow(window);
}

void tell(const char *subject, std::vector<double> samples, double factor, const char *unit) {
  std::sort(samples.begin(), samples.end());
  const auto at = [&](size_t percent) { return samples[(samples.size() - 1) * percent / 100] * factor; };
  std::printf("%s\t%.3g\t%.3g\t%.3g\t%s\n", subject, at(50), at(10), at(90), unit);
  std::fflush(stdout);
}

// From the end of a drawing call until another client sees the pixels. Then the program gets messages, or it is busy.
void pixelsSeen(HWND window, Observer &observer, bool busy) {
  std::vector<double> samples;
  for (int i = 0; i < 300; ++i) {
    const bool black = i % 2 == 0;
    const RECT field = {100, 100, 116, 116};
    const HDC dc = GetDC(window);
    const auto start = Clock::now();
    FillRect(dc, &field, static_cast<HBRUSH>(GetStockObject(black ? BLACK_BRUSH : WHITE_BRUSH)));
    ReleaseDC(window, dc);
    if (!busy) pump();
    observer.awaitPixel(108, 108, black ? RGB(0, 0, 0) : RGB(255, 255, 255));
    samples.push_back(since(start));
    pump();
    Sleep(2);
  }
  tell(busy ? "the same, the program is busy" : "16 x 16 pixels changed to seen", samples, 1e3, "ms");
}

// From the press until the waiting program has the message.
void keyArrives(Observer &observer) {
  std::vector<double> samples;
  std::atomic<Clock::time_point> pressed;
  MSG message;
  for (int i = 0; i < 200; ++i) {
    std::thread hand([&] {
      Sleep(3); // until the program waits
      pressed = Clock::now();
      observer.key(true);
    });
    do require(GetMessageA(&message, nullptr, 0, 0) > 0, "the program was ended");
    while (message.message != WM_KEYDOWN);
    samples.push_back(since(pressed));
    hand.join();
    observer.key(false);
    do require(GetMessageA(&message, nullptr, 0, 0) > 0, "the program was ended");
    while (message.message != WM_KEYUP);
  }
  tell("key pressed to message", samples, 1e3, "ms");
}

// The server's reports of changes in the whole area, while the program paints as fast as possible.
void repaintsShown(HWND window, Observer &observer) {
  constexpr Seconds kRound(1);
  std::vector<double> samples;
  observer.watch();
  for (int round = 0; round < 5; ++round) {
    observer.changes(kArea);
    const auto start = Clock::now();
    for (COLORREF colour = 1; since(start) < kRound.count(); ++colour) {
      repaint(window, colour);
      pump();
    }
    samples.push_back(observer.changes(kArea) / since(start));
  }
  tell("1280 x 800 repaints shown", samples, 1, "per second");
}

double processorTime() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval &time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void costOfAnAnimation(HWND window) {
  constexpr int kPictures = 60; // a second
  std::vector<double> samples;
  COLORREF colour = 0;
  for (int round = 0; round < 5; ++round) {
    const double before = processorTime();
    const auto start = Clock::now();
    for (int i = 1; i <= kPictures; ++i) {
      repaint(window, ++colour);
      pump();
      std::this_thread::sleep_until(start + std::chrono::duration_cast<Clock::duration>(Seconds(1) * i / kPictures));
    }
    samples.push_back((processorTime() - before) / since(start));
  }
  tell("processor at 60 repaints a second", samples, 100, "%");
}

// From the start of a process until its window is visible.
void firstExposure(Observer &observer, const char *program) {
  std::vector<double> samples;
  for (int i = 0; i < 15; ++i) {
    char name[] = "bench_display", word[] = "start";
    char *words[] = {name, word, nullptr};
    pid_t process;
    const auto start = Clock::now();
    require(posix_spawn(&process, program, nullptr, nullptr, words, environ) == 0, "the program can't be started");
    observer.awaitPixel(kArea.cx / 2, kArea.cy / 2, kFirst);
    samples.push_back(since(start));
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
    observer.awaitPixel(kArea.cx / 2, kArea.cy / 2, 0); // the empty screen
  }
  tell("start to first exposure", samples, 1e3, "ms");
}

} // namespace

int main(int argc, char **argv) {
  if (argc > 1) {
    showWindow();
    for (MSG message; GetMessageA(&message, nullptr, 0, 0) > 0;) DispatchMessageA(&message);
    return 0;
  }
  Observer observer;
  firstExposure(observer, argv[0]);
  const HWND window = showWindow();
  observer.awaitPixel(kArea.cx - 1, kArea.cy - 1, kFirst);
  pump();
  pixelsSeen(window, observer, false);
  pixelsSeen(window, observer, true);
  keyArrives(observer);
  repaintsShown(window, observer);
  costOfAnAnimation(window);
}
