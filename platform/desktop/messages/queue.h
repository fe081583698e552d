// The message queue of a thread, with what else the thread has of its own: its focus, its capture, its timers. Windows are
// known by handle here. Everything is used under the desktop's lock.
#pragma once

#include "platform/desktop/messages/timers.h"
#include "platform/desktop/screen/reports.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace platform {

// What the user did, before it is known which window it concerns.
struct Input {
  enum class Kind { mouse, wheel, key, text };
  explicit Input(Kind kind) : kind(kind) {}

  Kind kind;
  UINT message = 0;   // WM_MOUSEMOVE, WM_LBUTTONDOWN ..., WM_KEYDOWN or WM_KEYUP, WM_MOUSEWHEEL or WM_MOUSEHWHEEL
  POINT at{};         // on the screen
  HWND top = nullptr; // the top-level window in which the desktop saw it; null when a program did it
  int delta = 0;      // of the wheel
  BYTE key = 0;       // virtual key
  WORD scan = 0;      // bits 16 to 24 of lParam: scan code, and bit 8 for an extended key
  std::string text;   // what a key types, where the desktop has told it
  bool typed = false; // whether text counts
  DWORD time = 0;
  uint64_t number = 0; // counts all of them
};

// A message, or work, on its way to another thread.
struct Sent {
  HWND window = nullptr;
  UINT message = 0;
  WPARAM wParam = 0;
  LPARAM lParam = 0;
  std::function<void()> work; // instead of a message
  LRESULT result = 0;
  bool done = false;
  std::shared_ptr<class Queue> sender; // null when nobody waits
};

class Queue : public std::enable_shared_from_this<Queue> {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  explicit Queue(DWORD thread) : thread(thread) {}

  const DWORD thread; // 0 for the queue of the desktop's own window
  bool gone = false;  // the thread has ended

  std::deque<MSG> posted;
  std::deque<Input> input;
  std::deque<std::shared_ptr<Sent>> sent;
  std::deque<Report> deeds; // of the user, on windows as a whole
  Timers timers;
  bool quit = false;
  int quitStatus = 0;

  HWND focus = nullptr;
  HWND active = nullptr;
  HWND capture = nullptr;
  HWND tracked = nullptr;       // waits for WM_MOUSELEAVE
  bool pointerDue = false;      // what is under the pointer may have changed, although it rests
  DWORD messageTime = 0;        // of the last message taken
  std::array<BYTE, 256> keys{}; // as of the last message taken; bit 7 down, bit 0 toggled
  std::string typed;            // what the last key message taken types, where the desktop has told it
  bool hasTyped = false;
  bool altAlone = false; // Alt went down, and no other key since
  BYTE menuKey = 0;      // Alt or F10, for the default procedure, as long as nothing came since it went down
  MSG lastClick{};       // the last press of a button, for double clicks
  int serving = 0;       // sent messages of other threads under way

  // Something came for this thread.
  void wake();
  // Waits until something comes or the moment is there. Gives up the desktop's lock meanwhile.
  void wait(const std::optional<Moment> &until);
  // Runs the procedures for messages that other threads have sent.
  void serveSent();
  // Lets whoever waits for this thread go on.
  void letGo();

 private:
  std::condition_variable condition_;
  std::mutex mutex_;
  bool woken_ = false;
};

// The queue of the calling thread, made on first need.
const std::shared_ptr<Queue> &currentQueue();
// Null when there is no such thread, or it has no queue.
std::shared_ptr<Queue> queueOf(DWORD thread);
std::vector<std::shared_ptr<Queue>> allQueues();

MSG messageFor(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// FALSE with an error when the queue is full.
BOOL post(Queue &queue, const MSG &message);
// A window is going: what waits for it in its queue goes too.
void forgetWindow(Queue &queue, HWND window);

// Puts something into another thread's queue and waits until that thread has served it.
// limit: how long. Result: whether it was served; a thread that ends serves nothing more.
bool sendTo(Queue &queue, const std::shared_ptr<Sent> &sent, const std::optional<Queue::Moment> &limit = std::nullopt);
// The same without waiting.
void sendNotice(Queue &queue, const std::shared_ptr<Sent> &sent);

} // namespace platform
