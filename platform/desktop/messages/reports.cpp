// Hands the desktop's reports to the threads that they concern.

#include "platform/desktop/lock.h"
#include "platform/desktop/messages/above.h"
#include "platform/desktop/messages/devices.h"
#include "platform/desktop/messages/input.h"
#include "platform/desktop/screen/above.h"

namespace platform {

namespace {

void takeReport(const PointerMoved &moved) {
  Devices &all = devices();
  if (moved.serial != all.pointerSerial) return;   // older than the program's last movement of the pointer
  if (!above::queueOfWindow(moved.window)) return; // the window is gone
  const bool entered = std::exchange(all.pointerTop, moved.window) != moved.window;
  all.programMoved = false;
  if (all.pointer && all.pointer->x == moved.at.x && all.pointer->y == moved.at.y) {
    if (entered) changedUnderPointer(), lookUnderPointer();
    return;
  }
  Input input{Input::Kind::mouse};
  input.message = WM_MOUSEMOVE;
  input.at = moved.at;
  input.top = moved.window;
  addInput(std::move(input));
}

void takeReport(const ButtonChanged &button) {
  devices().pointerTop = button.window;
  Input input{Input::Kind::mouse};
  input.message = button.message;
  input.at = button.at;
  input.top = button.window;
  addInput(std::move(input));
}

void takeReport(const WheelTurned &wheel) {
  Input input{Input::Kind::wheel};
  input.message = wheel.sideways ? WM_MOUSEHWHEEL : WM_MOUSEWHEEL;
  input.at = wheel.at;
  input.top = wheel.window;
  input.delta = wheel.delta;
  addInput(std::move(input));
}

void takeReport(const KeyChanged &key) {
  Input input{key.key ? Input::Kind::key : Input::Kind::text};
  input.message = key.down ? WM_KEYDOWN : WM_KEYUP;
  input.top = key.window;
  input.key = key.key;
  input.scan = key.scan;
  input.text = key.text;
  input.typed = key.down;
  addInput(std::move(input));
}

void takeReport(const TextTyped &typed) {
  Input input{Input::Kind::text};
  input.top = typed.window;
  input.text = typed.text;
  addInput(std::move(input));
}

void takeReport(const PointerLeft &left) {
  Devices &all = devices();
  if (all.pointerTop == left.window) all.pointerTop = nullptr;
  all.programMoved = false;
  all.pointer = left.at;
  Queue *const queue = above::queueOfWindow(left.window);
  if (queue && queue->tracked && above::isIn(queue->tracked, left.window)) leaveTracked(*queue);
}

void takeReport(const PointerFound &found) {
  if (found.serial == devices().pointerSerial && !devices().pointerTop) devices().pointer = found.at;
}

// All other reports concern whole windows and go to the windows' threads.
void addDeed(Queue &queue, const Report &report) {
  // only a window's newest place counts
  if (const auto *const placed = std::get_if<Placed>(&report); placed && !queue.deeds.empty()) {
    const auto *const last = std::get_if<Placed>(&queue.deeds.back());
    if (last && last->window == placed->window) queue.deeds.pop_back();
  }
  queue.deeds.push_back(report);
  queue.wake();
}

template <typename OfWindow> void addToWindow(const OfWindow &report) {
  if (Queue *const queue = above::queueOfWindow(report.window)) addDeed(*queue, report);
}

void addToAll(const Report &report) {
  for (const std::shared_ptr<Queue> &queue : allQueues()) addDeed(*queue, report);
}

void takeReport(const Placed &report) { addToWindow(report); }
void takeReport(const StateChanged &report) { addToWindow(report); }
void takeReport(const CloseAsked &report) { addToWindow(report); }
void takeReport(const FilesDropped &report) { addToWindow(report); }
void takeReport(const ClipboardTaken &report) { above::takeClipboard(report); }
void takeReport(const ScreenChanged &report) { addToAll(report); }
void takeReport(const ScreenGone &report) { addToAll(report); }

// The thread that loses the keyboard is told first.
void takeReport(const Activated &report) {
  Queue *const gains = above::queueOfWindow(report.window), *const loses = above::keyboardQueue();
  if (loses && loses != gains) addDeed(*loses, Activated{nullptr, report.serial});
  if (gains) addDeed(*gains, report);
}

} // namespace

void above::take(Report report) {
  const DesktopLock lock;
  std::visit([](const auto &one) { takeReport(one); }, report);
}

} // namespace platform
