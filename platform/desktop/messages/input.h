// Turns the user's input into messages.
#pragma once

#include "platform/desktop/messages/queue.h"

namespace platform {

// Puts an action into the queue of the thread that it concerns.
void addInput(Input input);

// The caller's choice of messages.
class InputFilter {
 public:
  virtual bool wants(HWND window, UINT message) const = 0;

 protected:
  ~InputFilter() = default;
};

// Takes or looks at the next wanted message from the actions in a queue. Result: whether there is one.
bool takeInputMessage(Queue &queue, const InputFilter &filter, bool remove, MSG &message);

// Whether the pointer may be over another program, even inside the rectangle of one of our windows.
bool pointerIsElsewhere();
// Notes that another window may be under the resting pointer now.
void changedUnderPointer();
// Notes that a top-level window can't be under the pointer any more.
void goneUnderPointer(HWND window);
// Tells a new window under the resting pointer, if there is one.
void lookUnderPointer();
// Moves the pointer to its own place, which makes a WM_MOUSEMOVE.
void moveWhereItIs();

// Tells the window of a queue that waits for the mouse to leave.
void leaveTracked(Queue &queue);

// Gives the capture to a window of a queue; null for none.
void setCapture(Queue &queue, HWND window);

} // namespace platform
