// What the user does, turned into messages.
#pragma once

#include "platform/desktop/messages/queue.h"

namespace platform {

// Takes an action into the queue of the thread that it concerns.
void addInput(Input input);

// Which messages the caller wants.
class InputFilter {
 public:
  virtual bool wants(HWND window, UINT message) const = 0;

 protected:
  ~InputFilter() = default;
};

// The next message that comes of the actions in a queue, if there is one that the caller wants.
bool takeInputMessage(Queue &queue, const InputFilter &filter, bool remove, MSG &message);

// The pointer may be over another program, wherever the windows of this one are.
bool pointerIsElsewhere();
// Something has changed, perhaps where the pointer rests: the window that is there may be another one now.
void changedUnderPointer();
// A top-level window isn't there any more for the pointer to be over it.
void goneUnderPointer(HWND window);
// Tells that window, if so.
void lookUnderPointer();
// Moves the pointer to where it is.
void moveWhereItIs();

// Whoever waits in a queue for the mouse to leave is told.
void leaveTracked(Queue &queue);

// The window of a queue that has the mouse for itself; null for none.
void setCapture(Queue &queue, HWND window);

} // namespace platform
