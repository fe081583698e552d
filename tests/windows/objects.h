// Window objects with user procedures that are lambdas.
#pragma once

#include "support/library.h"

#include <array>
#include <deque>
#include <functional>
#include <string>
#include <vector>

using Edges = std::array<LONG, 4>;
inline Edges edges(const RECT &rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

// Where the window is, in its parent's client area or on the screen.
inline Edges placeOf(const WqWnd &wnd) {
  RECT rect = {};
  GetWindowRect(wnd.hwnd, &rect);
  MapWindowPoints(nullptr, wnd.parent ? wnd.parent->hwnd : nullptr, reinterpret_cast<POINT *>(&rect), 2);
  return edges(rect);
}

class ObjectTest : public LibraryTest {
 protected:
  using On = std::function<int32_t(const WqMsg &)>;
  struct Window : WqWnd {
    On on;
  };

  // A popup or a child, not made yet. The user procedure works inside the making too.
  Window &object(WqWnd *parent = nullptr, RECT rect = {}, On on = nullptr) {
    Window &window = windows_.emplace_back();
    WqWnd_Init(&window), WqWnd_Parent(&window, parent);
    WqWnd_Style(&window, WS_VISIBLE | (parent ? DWORD{WS_CHILD} : WS_POPUP));
    WqWnd_UserProc(&window, [](WqWnd *wnd, WqMsg *msg) {
      const On handler = static_cast<Window *>(wnd)->on;
      return handler ? handler(*msg) : 0;
    });
    window.rect = rect, window.on = std::move(on);
    return window;
  }
  // One that is made, and lies in this rectangle.
  Window &made(WqWnd *parent, RECT rect, On on = nullptr) {
    Window &window = object(parent, {rect.left, rect.top, rect.right - 1, rect.bottom - 1}, std::move(on));
    EXPECT_NE(WqWnd_Create(&window), nullptr);
    return window;
  }
  void endAll() {
    wqMain.mainWnd = nullptr;
    for (Window &window : windows_) {
      window.on = nullptr, WqWnd_Term(&window);
      if (window.hwnd) DestroyWindow(window.hwnd);
    }
    WqWnd_WaitQueEmpty();
  }
  void TearDown() override { endAll(), LibraryTest::TearDown(); }

  std::deque<Window> windows_;
};
