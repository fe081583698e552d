// Windows whose messages are written down.
#pragma once

#include "platform/platform.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

// Groups of messages: L life and place, S sizes asked for, F focus and activation, P painting, E erasing, M mouse,
// H cursors and activation by the mouse, T hit tests, K keys, X titles, styles and what else changes a state, B the
// clipboard, O what programs send themselves, timers among it.
//
// A message is a line: the window's title, ':' when it was sent or '<' when it came from the queue, a short name, and
// what it carries: a number or flags in hexadecimal unless they are 0, a point, windows by title, a place ("A: SIZE 2
// 300,200", "A: CHANGING 0,0 300x200 16"). What is sent while it is handled follows it. One that is handled on another
// thread than the window's says so.
class DesktopTest : public testing::Test {
 public:
  // Stands for DefWindowProcA where it returns true.
  using Answer = std::function<bool(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT &result)>;
  struct Step {
    std::function<void()> act;
    std::string expected; // lines, until the queue is empty
  };
  static inline Answer answer;
  static inline std::map<HWND, std::string> names; // of all windows that there were

 protected:
  ~DesktopTest() override; // destroys what is left and empties the queue

  // A window of a class with this style, this cursor or none, and a white ground. Its title is its name in the lines.
  static HWND make(const char *title, DWORD style, int x, int y, int width, int height, HWND parent = nullptr,
                   UINT classStyle = 0, LPCSTR cursor = IDC_ARROW);
  static void record(const std::string &groups); // from here on, with nothing written yet
  static std::string take();                     // the lines since then or since the last call
  // Retrieves and dispatches for this long, at least until the queue is empty, and takes the lines.
  static std::string pump(DWORD milliseconds = 0);
  static void play(const std::string &groups, const std::vector<Step> &steps);
};

std::string rectText(const RECT &rect);
std::string screenRect(HWND window);
bool onWindows(); // or on Wine
bool onWine();    // which differs from Windows here and there
