// The message queue of a thread, with what else the thread has of its own: its focus, its capture, its timers.
#pragma once

#include "platform/desktop/timers.h"
#include "platform/winapi.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace platform {

struct Window;

// What the user did, before it is known which window it concerns.
struct Input {
  enum class Kind { mouse, wheel, key, text } kind;
  UINT message = 0;   // WM_MOUSEMOVE, WM_LBUTTONDOWN ..., WM_KEYDOWN or WM_KEYUP
  POINT at{};         // on the screen
  int delta = 0;      // of the wheel
  BYTE key = 0;       // virtual key
  WORD scan = 0;      // bits 16 to 24 of lParam: scan code, and bit 8 for an extended key
  std::string text;   // what a key types, where the desktop has told it
  bool typed = false; // whether text counts
  DWORD time = 0;
};

// A message on its way to another thread.
struct Sent {
  HWND window;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  LRESULT result = 0;
  bool done = false;
  std::shared_ptr<class Queue> sender;
};

class Queue : public std::enable_shared_from_this<Queue> {
 public:
  explicit Queue(DWORD thread) : thread(thread) {}

  const DWORD thread;
  bool gone = false; // the thread has ended

  std::deque<MSG> posted;
  std::deque<Input> input;
  std::deque<std::shared_ptr<Sent>> sent;
  Timers timers;
  bool quit = false;
  int quitStatus = 0;

  Window *focus = nullptr;
  Window *active = nullptr;
  Window *capture = nullptr;
  Window *tracked = nullptr;    // waits for WM_MOUSELEAVE
  std::array<BYTE, 256> keys{}; // as of the last message taken; bit 7 down, bit 0 toggled
  std::string typed;            // what the last key message taken types, where the desktop has told it
  bool hasTyped = false;
  bool altAlone = false; // Alt went down, and no other key since
  MSG lastClick{};       // the last press of a button, for double clicks
  int serving = 0;       // sent messages of other threads under way

  // Something came for this thread.
  void wake();
  // Waits until something comes or the moment is there. Gives up the desktop's lock meanwhile.
  void wait(const std::optional<std::chrono::steady_clock::time_point> &until);
  // Runs the procedures for messages that other threads have sent.
  void serveSent();

 private:
  std::condition_variable condition_;
  std::mutex mutex_;
  bool woken_ = false;
};

// The queue of the calling thread, made on first need.
const std::shared_ptr<Queue> &currentQueue();
// Null when there is no such thread, or it has no queue.
std::shared_ptr<Queue> queueOf(DWORD thread);

MSG messageFor(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// FALSE with an error when the queue is full.
BOOL post(Queue &queue, const MSG &message);
// A window is going: what waits for it in its queue goes too.
void forgetWindow(Queue &queue, const Window &window);

} // namespace platform
