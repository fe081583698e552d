#include "platform/desktop/windows/window.h"

#include "platform/desktop/drawing/surface.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/messages/devices.h"
#include "platform/desktop/windows/scroll.h"

#include <algorithm>

namespace platform {

namespace {

// The table of windows. A handle is index and generation, so that a closed handle stays invalid. It is even, and never
// a small number with another meaning.
struct Place {
  WindowRef window;
  uint32_t generation = 1;
};

constexpr uint32_t kIndexBits = 15;
constexpr uint32_t kPlaces = 1u << kIndexBits;
constexpr uint32_t kGenerations = 1u << 14; // so many that a handle stays below 2 to the 31st

std::vector<Place> &places() {
  static auto *all = new std::vector<Place>;
  return *all;
}

// Free places, the longest free first: a handle number returns as late as possible.
std::deque<uint32_t> &freePlaces() {
  static auto *all = new std::deque<uint32_t>;
  return *all;
}

HWND handleAt(uint32_t index, uint32_t generation) {
  return reinterpret_cast<HWND>(static_cast<uintptr_t>((generation << kIndexBits | index) << 1));
}

Place *placeOf(HWND handle) {
  const auto value = reinterpret_cast<uintptr_t>(handle);
  const size_t index = value >> 1 & (kPlaces - 1);
  if (index >= places().size()) return nullptr;
  Place &place = places()[index];
  return place.window && place.window->handle == handle ? &place : nullptr;
}

// Whether TTM_RELAYEVENT takes a message: movements, presses and releases.
bool isRelayed(UINT message) {
  const auto bit = [](UINT one) { return 1u << (one - WM_MOUSEFIRST); };
  constexpr UINT kRelayed = bit(WM_MOUSEMOVE) | bit(WM_LBUTTONDOWN) | bit(WM_LBUTTONUP) | bit(WM_RBUTTONDOWN) |
                            bit(WM_RBUTTONUP) | bit(WM_MBUTTONDOWN) | bit(WM_MBUTTONUP);
  return message - WM_MOUSEFIRST <= WM_MBUTTONUP - WM_MOUSEFIRST && kRelayed & bit(message);
}

// Tells the tooltip controls of a window, which are this thread's. They tell the program of tips that come or go.
// Result: the window, if it still exists afterwards.
const Window *relay(const Window &window, UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND handle = window.handle;
  const MSG told = {handle, message, wParam, lParam, window.queue->messageTime, cursorPosition()};
  const Window *left = &window;
  for (size_t i = 0; left && i < left->relaysTo.size(); ++i) {
    const Window *const tip = recordOf(left->relaysTo[i]);
    if (!tip) continue;
    callOut(tip->procedure, tip->handle, TTM_RELAYEVENT, WPARAM{0}, addressOf(told));
    left = recordOf(handle);
  }
  return left;
}

} // namespace

Window::Window() = default;
Window::~Window() = default;

HWND openWindow(const WindowRef &window) {
  uint32_t index = static_cast<uint32_t>(places().size());
  if (index == kPlaces || freePlaces().size() > 256) {
    if (freePlaces().empty()) {
      SetLastError(ERROR_NOT_ENOUGH_MEMORY);
      return nullptr;
    }
    index = freePlaces().front();
    freePlaces().pop_front();
  } else {
    places().emplace_back();
  }
  Place &place = places()[index];
  place.window = window;
  return window->handle = handleAt(index, place.generation);
}

void closeWindow(Window &window) {
  Place *place = placeOf(window.handle);
  if (!place) return;
  window.alive = false;
  place->generation = place->generation % (kGenerations - 1) + 1;
  freePlaces().push_back(static_cast<uint32_t>(place - places().data()));
  place->window.reset();
}

size_t countWindows() { return places().size() - freePlaces().size(); }

Window &desktopWindow() {
  static const WindowRef desktop = [] {
    auto window = std::make_shared<Window>();
    window->windowClass = std::make_shared<WindowClass>();
    window->windowClass->name = "#32769";
    window->procedure = DefWindowProcA;
    window->queue = std::make_shared<Queue>(0); // of no thread
    window->style = WS_POPUP | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    const SIZE size = theScreen().info().size;
    window->rect = window->client = {0, 0, size.cx, size.cy};
    openWindow(window);
    return window;
  }();
  return *desktop;
}

WindowRef windowOrNone(HWND handle) {
  const Place *place = placeOf(handle);
  return place ? place->window : nullptr;
}

Window *recordOf(HWND handle) {
  const Place *place = placeOf(handle);
  return place ? place->window.get() : nullptr;
}

WindowRef windowOf(HWND handle) {
  const Place *place = placeOf(handle);
  if (place) return place->window;
  if (handle && handle == desktopWindow().handle) return windowOrNone(handle);
  SetLastError(ERROR_INVALID_WINDOW_HANDLE);
  return nullptr;
}

WindowRef refOf(const Window *window) { return window ? windowOrNone(window->handle) : nullptr; }

void link(Window &window, Window &parent, Window *above) {
  auto at = parent.children.begin();
  if (above) at = std::find(parent.children.begin(), parent.children.end(), above);
  if (above && at != parent.children.end()) ++at;
  parent.children.insert(at, &window);
  window.parent = &parent;
  for (Window *up = &parent; up; up = up->parent) up->dirtyBelow += window.dirtyBelow;
}

void unlink(Window &window) {
  if (!window.parent) return;
  for (Window *up = window.parent; up; up = up->parent) up->dirtyBelow -= window.dirtyBelow;
  std::erase(window.parent->children, &window);
  window.parent = nullptr;
}

bool isDescendant(const Window &window, const Window &ancestor) {
  for (const Window *up = window.parent; up; up = up->parent)
    if (up == &ancestor) return true;
  return false;
}

Window &rootOf(Window &window) {
  Window *root = &window;
  while (root->parent && root->parent->parent) root = root->parent;
  return *root;
}

bool isVisible(const Window &window) {
  for (const Window *up = &window; up; up = up->parent)
    if (!up->is(WS_VISIBLE)) return false;
  return true;
}

bool isOpen(const Window &window) {
  for (const Window *up = &window; up; up = up->parent)
    if (!up->is(WS_VISIBLE) || up->is(WS_MINIMIZE)) return false;
  return true;
}

std::vector<WindowRef> childrenOf(const Window &window) {
  std::vector<WindowRef> kept;
  kept.reserve(window.children.size());
  for (const Window *child : window.children) kept.push_back(refOf(child));
  return kept;
}

POINT clientOrigin(const Window &window) {
  POINT origin{0, 0};
  for (const Window *up = &window; up->parent; up = up->parent) {
    origin.x += up->client.left;
    origin.y += up->client.top;
  }
  return origin;
}

POINT originInSurface(const Window &window) {
  POINT origin{0, 0};
  for (const Window *up = &window; up->parent && up->parent->parent; up = up->parent) {
    origin.x += up->client.left;
    origin.y += up->client.top;
  }
  return origin;
}

RECT screenRect(const Window &window) {
  if (!window.parent) return window.rect;
  const POINT origin = clientOrigin(*window.parent);
  return offset(window.rect, origin.x, origin.y);
}

LRESULT callProcedure(Window &window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (window.relaysTo.empty() || !isRelayed(message)) [[likely]]
    return callOut(window.procedure, window.handle, message, wParam, lParam);
  const Window *const told = relay(window, message, wParam, lParam);
  return told ? callOut(told->procedure, told->handle, message, wParam, lParam) : 0;
}

LRESULT send(const WindowRef &window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!window || !window->alive) return 0;
  if (window->queue == currentQueue() || window->queue->thread == 0)
    return callProcedure(*window, message, wParam, lParam);
  const auto sent = std::make_shared<Sent>(Sent{window->handle, message, wParam, lParam, {}, 0, false, nullptr});
  sendTo(*window->queue, sent);
  return sent->result;
}

} // namespace platform
