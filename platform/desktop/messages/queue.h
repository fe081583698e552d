// The message queue of a thread, with the thread's focus, capture and timers. Windows are only handles here. Everything
// is used under the desktop's lock.
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

// An action of the user whose window isn't known yet.
struct Input {
  enum class Kind { mouse, wheel, key, text };
  explicit Input(Kind kind) : kind(kind) {}

  Kind kind;
  UINT message = 0;   // WM_MOUSEMOVE, WM_LBUTTONDOWN ..., WM_KEYDOWN or WM_KEYUP, WM_MOUSEWHEEL or WM_MOUSEHWHEEL
  POINT at{};         // on the screen
  HWND top = nullptr; // the top-level window under it, as the desktop saw it; null if a program made the action
  int delta = 0;      // of the wheel
  BYTE key = 0;       // virtual key
  WORD scan = 0;      // bits 16 to 24 of lParam: scan code, and bit 8 for an extended key
  std::string text;   // the characters of a key, as the desktop tells them
  bool typed = false; // whether the desktop told them
  DWORD time = 0;
  uint64_t number = 0; // counts all actions
};

// A message or a piece of work for another thread.
struct Sent {
  HWND window = nullptr;
  UINT message = 0;
  WPARAM wParam = 0;
  LPARAM lParam = 0;
  std::function<void()> work; // instead of a message
  LRESULT result = 0;
  bool done = false;
  std::shared_ptr<class Queue> sender; // null if nobody waits for the end
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
  std::deque<Report> deeds; // of the user, on whole windows
  Timers timers;
  bool quit = false;
  int quitStatus = 0;

  HWND focus = nullptr;
  HWND active = nullptr;
  HWND capture = nullptr;
  HWND tracked = nullptr;       // waits for WM_MOUSELEAVE
  bool pointerDue = false;      // another window may be under the resting pointer
  DWORD messageTime = 0;        // of the last message taken
  std::array<BYTE, 256> keys{}; // as of the last message taken; bit 7 down, bit 0 toggled
  std::string typed;            // the characters of the last key message taken, as the desktop tells them
  bool hasTyped = false;
  bool altAlone = false; // Alt went down, and no other key since then
  BYTE menuKey = 0;      // Alt or F10 while no other key follows; for the default procedure
  MSG lastClick{};       // the last press of a button, for double clicks
  int serving = 0;       // sent messages of other threads under way

  // Wakes the thread: there is something in its queue.
  void wake();
  // Waits until the thread is woken or the moment has come. Gives up the desktop's lock meanwhile.
  void wait(const std::optional<Moment> &until);
  // Runs the procedures for messages that other threads have sent.
  void serveSent();
  // Lets all senders that wait for this thread go on.
  void letGo();

 private:
  std::condition_variable condition_;
  std::mutex mutex_;
  bool woken_ = false;
};

// The queue of the calling thread, made on the first call.
const std::shared_ptr<Queue> &currentQueue();
// The queue of a thread; null if no such thread exists or it has no queue.
std::shared_ptr<Queue> queueOf(DWORD thread);
std::vector<std::shared_ptr<Queue>> allQueues();

MSG messageFor(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Result: FALSE, with the last error set, if the queue is full.
BOOL post(Queue &queue, const MSG &message);
// Removes the messages, timers and states of a window that is going.
void forgetWindow(Queue &queue, HWND window);

// Puts work into another thread's queue and waits until that thread has served it. A thread that ends serves no more,
// and lets the caller go on.
// limit: the end of the wait. Result: false if the limit has passed or the thread had ended before.
bool sendTo(Queue &queue, const std::shared_ptr<Sent> &sent, const std::optional<Queue::Moment> &limit = std::nullopt);
// sendTo without a wait.
void sendNotice(Queue &queue, const std::shared_ptr<Sent> &sent);

} // namespace platform
