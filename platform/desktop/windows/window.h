// A window: its record, its place in the tree, and its handle. Everything here is used under the desktop's lock.
#pragma once

#include "platform/desktop/messages/queue.h"
#include "platform/desktop/rects.h"
#include "platform/winapi.h"

#include <QRegion>

#include <memory>
#include <string>
#include <vector>

namespace platform {

class Surface;
struct ScrollBars;

struct WindowClass {
  std::string name;
  UINT style = 0;
  WNDPROC procedure = nullptr;
  int extra = 0; // bytes for the application in each window
  HINSTANCE instance = nullptr;
  HICON icon = nullptr;
  HCURSOR cursor = nullptr;
  HBRUSH background = nullptr;
};

// The system menu: one bit per item that is grayed or disabled.
struct SystemMenu {
  HMENU handle = nullptr;
  std::vector<std::pair<UINT, UINT>> items; // command and state
};

// The state of a top-level window as the screen knows it.
struct OnScreen {
  bool open = false;
  bool topmost = false;
  QRect client;
  ShowState state = ShowState::normal;
  Serial placeSerial = 0, stateSerial = 0;
  std::pair<HICON, HICON> iconsFrom; // big and small icon
  std::shared_ptr<const std::vector<QImage>> icons;
};

struct Window {
  HWND handle = nullptr;
  std::shared_ptr<WindowClass> windowClass;
  std::shared_ptr<Queue> queue;   // of the window's thread
  Window *parent = nullptr;       // the desktop for a top-level window; null for the desktop itself
  Window *owner = nullptr;        // of a top-level window
  std::vector<Window *> children; // the topmost first
  std::vector<Window *> owned;

  DWORD style = 0;
  DWORD exStyle = 0;
  LONG_PTR id = 0;
  LONG_PTR userData = 0;
  HINSTANCE instance = nullptr;
  WNDPROC procedure = nullptr;
  std::vector<uint8_t> extra;
  std::string text;
  HICON icons[2] = {nullptr, nullptr};
  std::unique_ptr<SystemMenu> menu;

  RECT rect{};            // in client coordinates of the parent
  RECT client{};          // likewise
  RECT normal{};          // the rectangle for leaving the minimized or maximized state
  bool needsSize = false; // the first showing still has to send WM_SIZE and WM_MOVE
  MINMAXINFO limits{};    // after the last WM_GETMINMAXINFO; all 0 if it was never sent
  bool restoreMaximized = false;
  bool destroying = false;
  bool alive = true;

  QRegion update;            // the update region, in client coordinates
  bool erase = false;        // the update region includes its background
  bool eraseRefused = false; // WM_ERASEBKGND was answered with 0
  bool frameDirty = false;
  size_t dirtyBelow = 0; // number of windows that need paint, this one and all below

  std::vector<HWND> relaysTo; // tooltip controls that get its mouse messages first
  bool passesInput = false;   // the pointer goes through it, and it doesn't become active by itself

  std::unique_ptr<ScrollBars> scroll; // null until it has a bar

  BYTE alpha = 255;
  COLORREF colorKey = 0;
  DWORD layeredFlags = 0; // 0 until SetLayeredWindowAttributes

  std::shared_ptr<Surface> surface; // of a top-level window
  OnScreen onScreen;

  Window();
  ~Window();
  Window(const Window &) = delete;
  Window &operator=(const Window &) = delete;

  bool isChild() const { return (style & (WS_CHILD | WS_POPUP)) == WS_CHILD; }
  bool isTopLevel() const { return parent && !parent->parent; }
  bool is(DWORD bits) const { return (style & bits) == bits; }
  LONG width() const { return rect.right - rect.left; }
  LONG height() const { return rect.bottom - rect.top; }
  RECT clientArea() const { return {0, 0, client.right - client.left, client.bottom - client.top}; }
};

// Keeps a window's record alive while procedures run that may destroy the window.
using WindowRef = std::shared_ptr<Window>;

// The root of the tree.
Window &desktopWindow();

// Null, with the last error set, for an invalid handle.
WindowRef windowOf(HWND handle);
// windowOf that sets no error for a null handle.
WindowRef windowOrNone(HWND handle);
// windowOf for callers that run no procedure while they use the record. Sets no error.
Window *recordOf(HWND handle);
WindowRef refOf(const Window *window);
inline HWND handleOf(const Window *window) { return window ? window->handle : nullptr; }

// Gives a new window a handle, and takes the handle away.
HWND openWindow(const WindowRef &window);
void closeWindow(Window &window);
size_t countWindows();

// The tree.
void link(Window &window, Window &parent, Window *above); // below `above`; null puts it on top
void unlink(Window &window);
bool isDescendant(const Window &window, const Window &ancestor);
Window &rootOf(Window &window);
inline const Window &rootOf(const Window &window) { return rootOf(const_cast<Window &>(window)); }
// The surface that a window draws on; null for the desktop window.
inline const std::shared_ptr<Surface> &surfaceOf(const Window &window) { return rootOf(window).surface; }
// Whether the window and all its ancestors have WS_VISIBLE.
bool isVisible(const Window &window);
// Whether the window and all its ancestors are visible and not minimized.
bool isOpen(const Window &window);
// The children, kept alive while procedures run.
std::vector<WindowRef> childrenOf(const Window &window);

// The place of a client area's corner on the screen, and on the surface of its top-level window.
POINT clientOrigin(const Window &window);
POINT originInSurface(const Window &window);
RECT screenRect(const Window &window);

// Calls a window's procedure. The caller is on the window's thread.
LRESULT callProcedure(Window &window, UINT message, WPARAM wParam, LPARAM lParam);
// The focus, the active window and the capture of a window's thread are kept by handle.
inline bool isFocus(const Window &window) { return window.queue->focus == window.handle; }
inline bool isActive(const Window &window) { return window.queue->active == window.handle; }
// Sends a message to a window of any thread. A null window gets nothing.
LRESULT send(const WindowRef &window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// Runs a body on a window's thread, and waits for it. If the thread ends first, the result is failure.
template <typename Result, typename Body> Result onThreadOf(const Window &window, Result failure, Body body) {
  if (window.queue == currentQueue()) return body();
  Result result = failure;
  DWORD error = GetLastError();
  const auto sent = std::make_shared<Sent>();
  sent->window = window.handle;
  sent->work = [&] {
    result = body();
    error = GetLastError();
  };
  sendTo(*window.queue, sent);
  SetLastError(error);
  return result;
}

inline LPARAM lParamOf(LONG low, LONG high) { return static_cast<LPARAM>(MAKELPARAM(low, high)); }
template <typename Record> LPARAM addressOf(Record &record) { return reinterpret_cast<LPARAM>(&record); }
inline WPARAM wParamOf(HWND window) { return reinterpret_cast<WPARAM>(window); }
inline LPARAM lParamOf(HWND window) { return reinterpret_cast<LPARAM>(window); }

} // namespace platform
