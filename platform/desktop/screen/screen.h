// The desktop that windows are shown on: what the layer asks of it, and what it tells.
//
// Windows are known by handle here. Places are in the program's pixels. Every call returns at once: what is asked for
// happens on the desktop's own time, and what comes of it is told as a report (above.h). A call may come from any thread,
// under any lock.
#pragma once

#include "platform/desktop/screen/picture.h"
#include "platform/winapi.h"

#include <Qt>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

enum class ShowState { normal, minimized, maximized, minimizedFromMaximized };

// What a top-level window looks like, but for its place.
struct Look {
  DWORD style = 0;
  DWORD exStyle = 0;
  std::string title;                                // UTF-8
  HWND owner = nullptr;                             // a window that it stays above
  BYTE alpha = 255;                                 // 0 lets everything through
  bool passesInput = false;                         // the pointer goes through it
  bool takesFiles = false;                          // that the user drops
  QRgb ground = 0xFFFFFFFF;                         // of areas that the program has not painted yet
  std::shared_ptr<const std::vector<QImage>> icons; // one in several sizes; null for the desktop's choice
};

// Where a top-level window's client area stands, and the limits of its size.
struct Stand {
  QRect client;
  QSize smallest, largest;
};

struct ScreenInfo {
  SIZE size;     // of the primary screen, whose top left corner is the origin
  RECT all;      // that all screens together take
  RECT workArea; // of the primary screen, without the panels
  POINT pointer; // as it was when the screen was found
  int pixelsPerInch;
  bool placesWindows; // whether windows stand where they are told to, and pointers tell where they are on the screen
};

// A shape of the pointer: one of the desktop's own, or a picture.
struct Pointer {
  Qt::CursorShape shape = Qt::ArrowCursor;
  QImage picture; // null for the desktop's own
  QPoint hotSpot;
};

// Calls that change a thing carry a serial number, which counts the changes of that thing. What the desktop tells of the
// thing comes back with the number of the last change that it knew; a program that has changed the thing since pays no
// attention.
using Serial = uint32_t;

class Screen {
 public:
  virtual ~Screen() = default;
  Screen(const Screen &) = delete;
  Screen &operator=(const Screen &) = delete;

  // Whether anybody can see windows.
  virtual bool isSeen() const = 0;
  // As far as it is known now.
  virtual ScreenInfo info() const = 0;

  // Opens or shows a window. picture: what it shows.
  virtual void show(HWND window, const Look &look, const Stand &stand, Serial standSerial, ShowState state,
                    Serial stateSerial, const std::shared_ptr<Picture> &picture) = 0;
  // Whether so much of what was asked is not done yet that a program which opens still more has to wait, and the wait,
  // under no lock. It ends after some time anyway.
  virtual bool isBehind() const = 0;
  virtual void catchUp() = 0;
  virtual void hide(HWND window) = 0;
  virtual void close(HWND window) = 0;
  virtual void setLook(HWND window, const Look &look) = 0;
  virtual void place(HWND window, const Stand &stand, Serial serial) = 0;
  virtual void setState(HWND window, ShowState state, Serial serial) = 0;
  virtual void raise(HWND window) = 0;
  virtual void lower(HWND window) = 0;
  // Null gives nothing to anybody; it only counts as the program's newest wish.
  virtual void activate(HWND window, Serial serial) = 0;

  // The window's picture has changed.
  virtual void flush(HWND window) = 0;
  // Something was drawn. Unless the program brings it to the screen itself in a moment, it is asked to.
  virtual void flushSoon() = 0;

  virtual void setPointer(const Pointer &pointer) = 0;
  virtual void movePointer(POINT to, Serial serial) = 0;
  // Asks where the pointer is when it is over none of the windows.
  virtual void findPointer() = 0;

  // Puts the program's data on the clipboard, by the types that it can have; who wants them is sent to above::clipboardData.
  virtual void offerClipboard(const std::vector<std::string> &types, Serial offer) = 0;
  // These ask the program that has put something there. Its answer comes on the screen's thread, which holds no lock then,
  // or at once, and may come late or never. Text is UTF-8, of type text/plain.
  template <typename Result> using Answered = std::function<void(std::optional<Result>)>;
  virtual void askClipboardTypes(Answered<std::vector<std::string>> answered) = 0;
  virtual void askClipboard(const std::string &type, Answered<std::string> answered) = 0;

  // A thread on which the desktop's own event loop runs, in a program that brought it, has to let it run while it waits.
  // For all others, which is the rule, these do nothing.
  virtual bool runsHere() const = 0;
  virtual void runEvents() = 0;
  virtual void waitForEvents(const std::optional<std::chrono::steady_clock::time_point> &until) = 0;
  // Ends that wait. thread: the one that has something to do; others are passed over.
  virtual void wake(DWORD thread) = 0;

 protected:
  Screen() = default;
};

// The one screen of the process, found on first need. Without a display it is one that nobody sees.
Screen &theScreen();
// theScreen() is there; asking for it costs no start.
bool hasScreen();

// Real pixels instead of those that the desktop scales. Takes effect only before the screen is there.
// Result: whether it did.
bool useRealPixels();
bool usesRealPixels();

} // namespace platform
