// Windows on a live display, and the person who uses them. The name of a suite tells where its tests hold, and ./test
// picks them by it: AnyDesktop, DesktopClipboard and ViewersBar (all but weston), DesktopDialogs, DialogsByHand and
// FilesByHand (openbox), X11Desktop (with a window manager or without), ManagedDesktop (with one), SwayDesktop,
// WestonDesktop.
#pragma once

#include "support/desktop.h"
#include "support/display/commands.h"
#include "support/display/user.h"

class DisplayTest : public DesktopTest {
 protected:
  void SetUp() override;    // the pointer rests in a corner
  void TearDown() override; // until the desktop shows no window any more

  // A window that the desktop shows, made as DesktopTest makes it.
  static HWND show(const char *title, DWORD style = WS_OVERLAPPEDWINDOW, int x = 200, int y = 200, int width = 408,
                   int height = 327, HWND owner = nullptr);
  // Serves messages until this is so, for that time at most. Result: whether it became so.
  static bool until(const std::function<bool()> &so, DWORD milliseconds = 2000);
  static void serve(DWORD milliseconds); // for some time
  // Until the desktop has answered everything, and what happens next is the user's deed.
  static void settle() { serve(600); }
  static void listen(const std::string &groups); // records from here on, see DesktopTest::record
  // The lines recorded since then or since the last call, once they are as many as those expected and some time more.
  static std::string told(const std::string &expected);
  static int count(const std::string &lines, const std::string &part);

  // The client area, as the program believes it to be, and as the desktop shows it.
  static Place here(HWND window);
  static Place there(const std::string &title);
  static std::string title(HWND window); // empty for no window of these tests
  // Two windows stand side by side, where the desktop would put both into its middle.
  static void apart(const char *left, const char *right);
  // Both views agree within some time. On a desktop where no program knows its place the sizes do.
  static void expectAgreed(HWND window);
  // It is the active one here and there.
  static void expectActive(HWND window);

 private:
  static inline std::string heard_;
};

using AnyDesktop = DisplayTest;
using X11Desktop = DisplayTest;
using ManagedDesktop = DisplayTest;
using SwayDesktop = DisplayTest;
