// The desktop that shows the windows: the layer's requests, answered by reports.
//
// Windows are only handles here. Places are in the program's pixels. Every call returns at once. The desktop carries
// out a request in its own time, and its result comes as a report (above.h). Calls may come from any thread, under any
// lock.
#pragma once

#include "platform/desktop/screen/picture.h"
#include "platform/desktop/screen/question.h"
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

// The look of a top-level window, without its place.
struct Look {
  DWORD style = 0;
  DWORD exStyle = 0;
  std::string title;                                // UTF-8
  HWND owner = nullptr;                             // the window stays above its owner
  BYTE alpha = 255;                                 // 0 is fully transparent
  bool passesInput = false;                         // the pointer goes through it
  bool takesFiles = false;                          // dropped by the user
  QRgb ground = 0xFFFFFFFF;                         // the colour of areas not yet painted
  std::shared_ptr<const std::vector<QImage>> icons; // one icon in several sizes; null for the desktop's choice
};

// The place of a top-level window's client area, and the limits of its size.
struct Stand {
  QRect client;
  QSize smallest, largest;
};

struct ScreenInfo {
  SIZE size;     // of the primary screen; its top left corner is the origin
  RECT all;      // of all screens together
  RECT workArea; // of the primary screen, without the panels
  POINT pointer; // when the screen was found
  int pixelsPerInch;
  bool placesWindows; // whether windows stand where the program wants, and the pointer has screen coordinates
};

// A shape of the pointer: one of the desktop's shapes, or a picture.
struct Pointer {
  Qt::CursorShape shape = Qt::ArrowCursor;
  QImage picture; // null for a shape of the desktop's
  QPoint hotSpot;
};

// Calls that change a thing carry a serial number, which counts the changes of that thing. A report about the thing
// carries the number of the last change that the desktop knew. A program that has made later changes ignores the
// report.
using Serial = uint32_t;

class Screen {
 public:
  virtual ~Screen() = default;
  Screen(const Screen &) = delete;
  Screen &operator=(const Screen &) = delete;

  // Whether windows are visible to anybody.
  virtual bool isSeen() const = 0;
  // The state of the screen as last reported.
  virtual ScreenInfo info() const = 0;

  // Opens or shows a window. picture: its pixels.
  virtual void show(HWND window, const Look &look, const Stand &stand, Serial standSerial, ShowState state,
                    Serial stateSerial, const std::shared_ptr<Picture> &picture) = 0;
  // isBehind tells whether so many requests wait that a program must not open more windows. catchUp waits until there
  // are fewer, with no lock held. It returns after some time anyway.
  virtual bool isBehind() const = 0;
  virtual void catchUp() = 0;
  virtual void hide(HWND window) = 0;
  virtual void close(HWND window) = 0;
  virtual void setLook(HWND window, const Look &look) = 0;
  virtual void place(HWND window, const Stand &stand, Serial serial) = 0;
  virtual void setState(HWND window, ShowState state, Serial serial) = 0;
  virtual void raise(HWND window) = 0;
  virtual void lower(HWND window) = 0;
  // Null activates no other window; it only counts as the program's newest wish.
  virtual void activate(HWND window, Serial serial) = 0;

  // The picture of the window has changed.
  virtual void flush(HWND window) = 0;
  // Pixels were drawn. The screen calls above::flushDrawn in a moment, in case the program doesn't show them itself.
  virtual void flushSoon() = 0;

  virtual void setPointer(const Pointer &pointer) = 0;
  virtual void movePointer(POINT to, Serial serial) = 0;
  // Asks for the place of the pointer outside all windows.
  virtual void findPointer() = 0;

  // Offers the program's data on the clipboard, by their types. The data are fetched with above::clipboardData.
  virtual void offerClipboard(const std::vector<std::string> &types, Serial offer) = 0;
  // Ask the program that owns the clipboard. The answer comes at once, or on the screen's thread, which holds no lock
  // then. It may come late or never. Text is UTF-8, of type text/plain.
  template <typename Result> using Answered = std::function<void(std::optional<Result>)>;
  virtual void askClipboardTypes(Answered<std::vector<std::string>> answered) = 0;
  virtual void askClipboard(const std::string &type, Answered<std::string> answered) = 0;

  // Whether the desktop may have its own dialogs for files. The answer is certain after the first question.
  virtual bool mayAskFiles() const = 0;
  // Asks the user with the desktop's own dialog for files. The answer comes once, like those of the clipboard.
  // Result: a function that takes the question back, but not an answer in progress; null if there is no such dialog.
  virtual std::function<void()> askFiles(const FileQuestion &question, FileAnswered answered) = 0;

  // For a thread on which the program runs the desktop's event loop: it must let that loop run while it waits. On all
  // other threads these functions do nothing.
  virtual bool runsHere() const = 0;
  virtual void runEvents() = 0;
  virtual void waitForEvents(const std::optional<std::chrono::steady_clock::time_point> &until) = 0;
  // Ends such a wait. thread: the thread with something to do; other threads are ignored.
  virtual void wake(DWORD thread) = 0;

 protected:
  Screen() = default;
};

// The screen of the process, made on the first call. Without a display it shows nothing.
Screen &theScreen();
// Whether theScreen() exists. The call makes no screen.
bool hasScreen();

// Uses real pixels instead of pixels that the desktop scales. This has an effect only before the screen exists.
// Result: whether real pixels are used.
bool useRealPixels();
bool usesRealPixels();

} // namespace platform
