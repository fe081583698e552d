// Windows with button bars, whose messages are written down.
#pragma once

#include "support/desktop.h"
#include "windows/objects.h"

#include <map>

inline WqMbbBtnDesc button(uint16_t id, RECT rect, uint32_t flags = 0, uint32_t options = 0) {
  return {id, 0, 0, flags, rect, "", options};
}

class BarTest : public ObjectTest {
 protected:
  using Deeds = std::map<std::string, std::function<void()>>;

  void SetUp() override { ObjectTest::SetUp(), SetCursorPos(900, 700); }
  void TearDown() override { endAll(), WqTimer_Stop(), ObjectTest::TearDown(); }

  // A window that takes part, without a bar yet. Its letter begins what is written of it: "a10 over 3,4" for a move
  // over button 10, "a10 press" for a notification, "a down" for a message that came through to its user procedure.
  Window &barred(char letter, RECT rect, WqWnd *parent = nullptr) {
    Window &wnd = made(parent, rect);
    WqWnd_Ds(&wnd, WQ_DS_MBB);
    wnd.on = [this, letter](const WqMsg &msg) { return write(letter + told(msg)), 0; };
    return wnd;
  }
  // And one with buttons 10 and 11 beside each other, and 20, disabled, below them, each 20 pixels wide.
  Window &simple(char letter, RECT rect, WqWnd *parent = nullptr) {
    Window &wnd = barred(letter, rect, parent);
    build(wnd.hwnd);
    return wnd;
  }
  static void build(HWND hwnd) {
    const WqMbbFieldDesc fields[] = {{1, 7, 2, 10, 10, 40, 20}, {2, 7, 1, 10, 50, 40, 20}};
    const WqMbbBtnDesc buttons[] = {button(10, {0, 0, 19, 19}), button(11, {20, 0, 39, 19}, 0, WQ_MBB_NO_DOUBLE),
                                    button(20, {0, 0, 19, 19}, WQ_MBB_DISABLED)};
    WqMbb_Config(hwnd, fields, buttons, 2);
  }

  // A mouse message in its lParam's client coordinates, without the pointer.
  static LRESULT send(const Window &wnd, uint32_t msg, int x, int y) {
    return SendMessageA(wnd.hwnd, msg, 0, MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y)));
  }
  // Puts the pointer on a point of the client area, and dispatches what comes of it.
  static void point(const Window &wnd, int x, int y) {
    POINT at = {x, y};
    ClientToScreen(wnd.hwnd, &at), SetCursorPos(at.x, at.y), settle();
  }
  // Ticks of the timers are left out: they come when a test wants them.
  static void settle() {
    WqWnd_RemoveQueTimerMsg(wqMain.timer.timerId);
    if (onWindows()) Sleep(30), WqWnd_RemoveQueTimerMsg(wqMain.timer.timerId); // where input takes its time
  }
  std::string take() { return std::exchange(log_, ""); }
  // A tick of the timers, each 100 ms after the one before.
  void tick() {
    while (tick_.message != WM_TIMER || tick_.wParam != wqMain.timer.timerId) {
      GetMessageA(&tick_, nullptr, 0, 0);
      if (tick_.message != WM_TIMER) DispatchMessageA(&tick_);
    }
    for (const WqList *node = wqMain.timer.list; node; node = node->next)
      if (auto *elem = reinterpret_cast<WqTimerElem *>(node->data); elem->lastTick != 0) elem->elapsed += 100;
    DispatchMessageA(&tick_);
  }
  // The ids of the timers, newest first.
  static std::string timers() {
    std::string ids;
    for (const WqList *node = wqMain.timer.list; node; node = node->next) {
      const uint32_t id = reinterpret_cast<const WqTimerElem *>(node->data)->id;
      ids += id == WQ_MBB_TIMER_HOVER ? "hover " : id == WQ_MBB_TIMER_REPEAT ? "repeat " : "other ";
    }
    return ids;
  }

  Deeds deeds; // what is done once a line is written

 private:
  static std::string told(const WqMsg &msg) {
    const auto *button = reinterpret_cast<const WqMbbBtn *>(msg.lParam);
    const auto *at = reinterpret_cast<const POINT *>(msg.lParam);
    switch (msg.msg) {
    case WQM_MBB_PRESS:
      return std::to_string(msg.wParam) + " over " + std::to_string(at->x) + ',' + std::to_string(at->y);
    case WQM_MBB_NOTIFY: {
      const char *const events[] = {"?", "release", "press", "repeat", "?", "leave"};
      return std::to_string(button->id) + ' ' + (msg.wParam < 6 ? events[msg.wParam] : "?");
    }
    case WM_MOUSEMOVE: return " move";
    case WM_LBUTTONDOWN: return " down";
    case WM_LBUTTONDBLCLK: return " double";
    case WM_LBUTTONUP: return " up";
    default: return "";
    }
  }
  void write(const std::string &line) {
    if (line.size() < 2) return;
    log_ += log_.empty() ? line : "; " + line;
    if (const auto deed = deeds.find(line); deed != deeds.end()) std::function(deed->second)();
  }

  std::string log_;
  MSG tick_ = {};
};
