// Which window is the active one: as the program asks, as its user clicks, and with the desktop's answers late.

#include "display.h"

namespace {

constexpr DWORD kPopup = WS_POPUP | WS_CAPTION | WS_SYSMENU;

struct Pair {
  const char *name;
  bool owned; // the second by the first
};
constexpr Pair kPairs[] = {{"two windows", false}, {"a window and its popup", true}};

} // namespace

// Two wishes in a row: the last one holds, and nobody asks anything more.
TEST_F(AnyDesktop, TheLastOfTwoActivatedStaysActive) {
  const struct {
    const char *name;
    void (*activate)(HWND);
  } ways[] = {{"ShowWindow", [](HWND window) { (ShowWindow(window, SW_HIDE), ShowWindow(window, SW_SHOW)); }},
              {"SetActiveWindow", [](HWND window) { SetActiveWindow(window); }},
              {"SetForegroundWindow", [](HWND window) { SetForegroundWindow(window); }},
              {"SetFocus", [](HWND window) { SetFocus(window); }}};
  for (const Pair &pair : kPairs) {
    const HWND first = make("A", WS_OVERLAPPEDWINDOW, 100, 100, 400, 300);
    const HWND second = make("B", kPopup, 300, 200, 300, 200, pair.owned ? first : nullptr);
    for (const auto &way : ways) {
      SCOPED_TRACE(std::string(pair.name) + ", " + way.name);
      const bool shows = way.name == ways[0].name;
      if (!shows) way.activate(second);
      way.activate(first);
      way.activate(second);
      listen("F");
      serve(shows ? 1200 : 600);
      const std::string lines = told("");
      EXPECT_EQ(count(lines, "ACTIVATE"), 0) << lines;
      expectActive(second);
    }
    DestroyWindow(first);
    DestroyWindow(second);
    EXPECT_TRUE(until([] { return user().windows().empty(); }));
  }
}

TEST_F(AnyDesktop, TheLastOfAThousandActivatedStaysActive) {
  const HWND windows[] = {show("A"), show("B", WS_OVERLAPPEDWINDOW, 300, 300)};
  const Place place = there("B"); // sway refuses a program that nobody has touched
  user().click(place.x + 50, place.y + 60);
  settle();
  for (int round = 0; round < 4; ++round) {
    SCOPED_TRACE(round);
    for (int call = 0; call < 1000; ++call) {
      SetActiveWindow(windows[call % 2]);
      if (call % 100 == 99) pump();
    }
    const HWND last = windows[round % 2];
    SetActiveWindow(last);
    listen("F");
    serve(400);
    const std::string lines = told("");
    EXPECT_EQ(count(lines, "ACTIVATE"), 0) << lines;
    expectActive(last);
  }
}

TEST_F(AnyDesktop, AClickActivates) {
  const HWND windows[] = {show("A", WS_OVERLAPPEDWINDOW, 50, 50), show("B", WS_OVERLAPPEDWINDOW, 600, 400)};
  apart("A", "B");
  expectActive(windows[1]);
  for (const int clicked : {0, 1, 0}) {
    settle();
    listen("F");
    const Place at = there(title(windows[clicked]));
    user().click(at.x + 50, at.y + 60);
    expectActive(windows[clicked]);
    const std::string lines = told("");
    EXPECT_EQ(count(lines, "ACTIVATE"), 2) << lines;
    EXPECT_EQ(count(lines, "SETFOCUS"), 1) << lines;
  }
}

TEST_F(AnyDesktop, TheDesktopActivates) {
  const HWND first = show("A"), second = show("B", WS_OVERLAPPEDWINDOW, 300, 300);
  for (const HWND window : {first, second, first}) {
    settle();
    user().wish(user().window(title(window)), User::Wish::activate);
    expectActive(window);
  }
}

// What the program wants when it learns what the user did comes after that, and holds.
TEST_F(AnyDesktop, AProgramAnswersAClickByActivatingAnotherWindow) {
  const HWND first = show("A", WS_OVERLAPPEDWINDOW, 50, 50), second = show("B", WS_OVERLAPPEDWINDOW, 600, 400);
  apart("A", "B");
  int presses = 0;
  answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT &) {
    if (window == second && message == WM_LBUTTONDOWN) ++presses, SetActiveWindow(first);
    return false;
  };
  for (int round = 1; round <= 3; ++round) {
    settle();
    const Place at = there("B");
    user().click(at.x + 50, at.y + 60);
    EXPECT_TRUE(until([&] { return presses == round; }));
    serve(300);
    expectActive(first);
  }
}

TEST_F(AnyDesktop, AnotherProgramTakesTheActivationAndGivesItBack) {
  const HWND window = show("A", WS_OVERLAPPEDWINDOW, 50, 50);
  Beside other("./visitor visitor 600 400 300 200");
  ASSERT_NE(other.line("client"), "");
  ASSERT_TRUE(until([] { return user().window("visitor").id != 0; }));
  for (int round = 0; round < 3; ++round) {
    settle();
    user().wish(user().window("visitor"), User::Wish::activate);
    EXPECT_TRUE(until([] { return user().window("visitor").active && !GetForegroundWindow(); }))
        << title(GetForegroundWindow());
    if (round > 0) {
      EXPECT_NE(other.line("active"), "");
    }
    settle();
    user().wish(user().window("A"), User::Wish::activate);
    expectActive(window);
    EXPECT_NE(other.line("inactive"), "");
  }
  user().wish(user().window("visitor"), User::Wish::close);
  EXPECT_EQ(other.end(), 0);
}

// A dialog disables its owner: a click there doesn't reach the owner, and the dialog stays active.
TEST_F(AnyDesktop, ADisabledOwnerTakesNothing) {
  const HWND owner = show("owner", WS_OVERLAPPEDWINDOW, 100, 100, 600, 500);
  const HWND dialog = show("dialog", kPopup, 300, 300, 200, 150, owner);
  EnableWindow(owner, FALSE);
  expectActive(dialog);
  listen("MKL");
  const Place place = there("owner");
  user().click(place.x + 20, place.y + 20);
  user().type("a");
  user().wish(user().window("owner"), User::Wish::close);
  const std::string lines = told("dialog< DOWN\ndialog< CHAR\ndialog< UP");
  EXPECT_EQ(count(lines, "owner"), 0) << lines;
  EXPECT_EQ(count(lines, "dialog< CHAR 61"), 1) << lines;
  expectActive(dialog);
  EXPECT_TRUE(IsWindow(owner));
}

TEST_F(X11Desktop, AWindowThatDeclinesIsClickedWithoutBeingActive) {
  const HWND active = show("A", WS_OVERLAPPEDWINDOW, 50, 50);
  const HWND palette = make("palette", WS_POPUP, 600, 400, 200, 100);
  SetWindowLongA(palette, GWL_EXSTYLE, WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW);
  ShowWindow(palette, SW_SHOWNOACTIVATE);
  ASSERT_TRUE(until([] { return user().window("palette").id != 0; }));
  expectActive(active);
  listen("MF");
  user().click(620, 430);
  const std::string lines = told("palette< MOUSE 20,30\npalette< LDOWN 1 20,30\npalette< LUP 20,30");
  EXPECT_EQ(lines, "palette< MOUSE 20,30\npalette< LDOWN 1 20,30\npalette< LUP 20,30");
  expectActive(active);
}
