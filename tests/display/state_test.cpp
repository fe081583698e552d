// Minimised, maximised and normal windows, and their places: what the program says last holds against the desktop's
// answers to what it said before, and what the user does reaches the program.

#include "display.h"

#include <algorithm>

namespace {

const char *stateHere(HWND window) {
  return IsIconic(window) ? "minimised" : IsZoomed(window) ? "maximised" : "normal";
}

const char *stateOf(const Shown &shown) {
  return !shown.id ? "not shown" : shown.minimised ? "minimised" : shown.maximised ? "maximised" : "normal";
}
std::string stateThere(const std::string &title) { return stateOf(user().window(title)); }

struct Sequence {
  const char *title;
  DWORD style; // at creation
  std::vector<int> commands;
  const char *state; // after them
};
const Sequence kSequences[] = {
    {"born maximised", WS_MAXIMIZE | WS_VISIBLE, {SW_RESTORE}, "normal"},
    {"born minimised", WS_MINIMIZE | WS_VISIBLE, {SW_RESTORE}, "normal"},
    {"through all", 0, {SW_SHOW, SW_MAXIMIZE, SW_RESTORE, SW_MINIMIZE, SW_RESTORE}, "normal"},
    {"back to maximised", 0, {SW_SHOW, SW_MAXIMIZE, SW_MINIMIZE, SW_RESTORE}, "maximised"},
    {"minimised, maximised", 0, {SW_SHOW, SW_MINIMIZE, SW_MAXIMIZE}, "maximised"},
    {"maximised, minimised", 0, {SW_SHOW, SW_MAXIMIZE, SW_MINIMIZE}, "minimised"},
    {"hidden meanwhile", 0, {SW_SHOWMAXIMIZED, SW_HIDE, SW_SHOW}, "maximised"},
};

bool allAsWanted() {
  size_t right = 0;
  for (const Shown &shown : user().windows())
    for (const Sequence &row : kSequences)
      right += shown.title == row.title && stateOf(shown) == std::string(row.state);
  return right == std::size(kSequences);
}

} // namespace

// All at once, and nothing is waited for between the commands.
TEST_F(X11Desktop, TheLastOfManyStatesHolds) {
  const bool managed = session() != Session::bare; // who knows states; a bare X server only knows places
  for (int round = 0; round < 20 && !HasFailure(); ++round) {
    std::vector<HWND> windows;
    for (const Sequence &row : kSequences) {
      const int step = 20 * static_cast<int>(windows.size());
      windows.push_back(make(row.title, WS_OVERLAPPEDWINDOW | row.style, 100 + step, 100 + step, 308, 227));
      for (const int command : row.commands) ShowWindow(windows.back(), command);
    }
    if (managed) until(allAsWanted);
    serve(400); // openbox moves a window that comes back to its place step by step
    const std::vector<Shown> all = user().windows();
    for (size_t i = 0; i < windows.size(); ++i) {
      const Sequence &row = kSequences[i];
      SCOPED_TRACE(std::string(row.title) + ", round " + std::to_string(round));
      const auto found = std::find_if(all.begin(), all.end(), [&](const Shown &one) { return one.title == row.title; });
      const Shown shown = found != all.end() ? *found : Shown();
      EXPECT_STREQ(stateHere(windows[i]), row.state);
      EXPECT_STREQ(managed ? stateOf(shown) : row.state, row.state) << "on the desktop";
      if (row.state == std::string("minimised")) continue;
      const int step = 20 * static_cast<int>(i);
      const Place normal = {104 + step, 123 + step, 300, 200};
      EXPECT_EQ(here(windows[i]) == normal, row.state == std::string("normal")) << here(windows[i]);
      EXPECT_EQ(shown.client, here(windows[i]));
    }
    for (const HWND window : windows) DestroyWindow(window);
    ASSERT_TRUE(until([] { return user().windows().empty(); }));
  }
}

TEST_F(ManagedDesktop, TheUserMaximisesMinimisesAndRestores) {
  const HWND window = show("A");
  const Place normal = here(window);
  const struct {
    User::Wish wish;
    const char *state, *command;
  } rows[] = {{User::Wish::maximise, "maximised", "COMMAND F030"}, {User::Wish::minimise, "minimised", "COMMAND F020"},
              {User::Wish::restore, "maximised", "COMMAND F120"},  {User::Wish::restore, "normal", "COMMAND F120"},
              {User::Wish::minimise, "minimised", "COMMAND F020"}, {User::Wish::restore, "normal", "COMMAND F120"}};
  for (const auto &[wish, state, command] : rows) {
    settle();
    listen("L");
    user().wish(user().window("A"), wish);
    EXPECT_TRUE(until([&, wanted = state] { return stateHere(window) == std::string(wanted); })) << stateHere(window);
    EXPECT_EQ(stateThere("A"), state);
    const std::string lines = told("");
    EXPECT_EQ(count(lines, "COMMAND"), 1) << lines;
    EXPECT_EQ(count(lines, command), 1) << lines;
    EXPECT_EQ(count(lines, "SIZE"), 1) << lines;
    if (state != std::string("minimised")) expectAgreed(window);
  }
  EXPECT_EQ(here(window), normal);
  settle();
  user().wish(user().window("A"), User::Wish::maximise);
  EXPECT_TRUE(until([&] { return IsZoomed(window); }));
  ShowWindow(window, SW_RESTORE); // the program takes it back
  EXPECT_TRUE(until([&] { return stateThere("A") == "normal"; }));
  EXPECT_EQ(here(window), normal);
  expectAgreed(window);
}

TEST_F(X11Desktop, TheLastOfManyPlacesHolds) {
  const HWND window = show("A");
  for (int round = 0; round < 5; ++round) {
    for (int step = 0; step < 100; ++step)
      MoveWindow(window, 50 + 3 * step, 60 + 2 * step, 200 + step, 300 - step, TRUE);
    const Place last = {351, 281, 291, 174};
    EXPECT_EQ(here(window), last);
    expectAgreed(window);
    serve(200);
    EXPECT_EQ(here(window), last);
    EXPECT_EQ(there("A"), last);
  }
}

// The desktop moves and sizes: each becomes one message.
TEST_F(AnyDesktop, AForeignMoveIsTold) {
  const HWND window = show("A");
  for (const Place &place : {Place{300, 310, 400, 300}, Place{300, 310, 500, 350}, Place{250, 210, 410, 320}}) {
    settle();
    const Place before = there("A");
    listen("L");
    user().place(user().window("A"), place);
    EXPECT_TRUE(until([&] { return there("A") == place; })) << there("A");
    expectAgreed(window);
    const std::string lines = told("");
    const bool sized = before.width != place.width;
    EXPECT_EQ(count(lines, "SIZE"), sized ? 1 : 0) << lines;
  }
}

// The user drags the caption while the program moves and sizes the window: in the end both know the same place.
TEST_F(ManagedDesktop, TheUserDragsWhileTheProgramMoves) {
  const HWND window = show("A");
  for (int round = 0; round < 5; ++round) {
    SCOPED_TRACE(round);
    MoveWindow(window, 200, 200, 408, 327, TRUE);
    expectAgreed(window);
    user().point(350, 213);
    user().button(1, true);
    for (int step = 0; step < 20; ++step) {
      user().point(350 + 5 * step, 213 + 3 * step);
      if (step % 4 == 3) MoveWindow(window, 100 + step, 150, 408 + 5 * step, 300, TRUE);
      pump();
    }
    user().button(1, false);
    serve(200);
    expectAgreed(window);
  }
}

TEST_F(ManagedDesktop, ABorderAndTheCaptionAreDragged) {
  const HWND window = show("A");
  const auto drag = [](int x, int y, int dx, int dy) {
    user().point(x, y);
    user().button(1, true);
    for (const int part : {1, 2, 3}) {
      serve(20);
      user().point(x + dx * part / 3, y + dy * part / 3);
    }
    serve(20);
    user().button(1, false);
  };
  listen("L");
  drag(600, 525, 60, 30); // the corner of the frame below the client area
  EXPECT_TRUE(until([&] { return here(window) == Place{204, 223, 460, 330}; })) << here(window);
  EXPECT_NE(told("").find("A: SIZE 460,330"), std::string::npos);
  EXPECT_EQ(screenRect(window), "200,200,668,557");
  expectAgreed(window);
  drag(350, 213, 40, 30);
  EXPECT_TRUE(until([&] { return here(window).x != 204; }));
  const Place moved = here(window);
  EXPECT_NEAR(moved.x, 244, 1);
  EXPECT_NEAR(moved.y, 253, 1);
  EXPECT_EQ(moved.width, 460);
  EXPECT_NE(told("").find("A: MOVE"), std::string::npos);
  expectAgreed(window);
}

// With a display the messages are those that come without one; test_desktop holds more of them.
TEST_F(X11Desktop, AMoveBringsNoMoreMessagesThanUnseen) {
  const HWND window = show("A");
  listen("LS");
  MoveWindow(window, 220, 230, 408, 327, TRUE);
  const std::string moved = "A: CHANGING 220,230 408x327 14\nA: MINMAX\nA: CHANGED 220,230 408x327\nA: MOVE 224,253";
  EXPECT_EQ(told(moved), moved);
  MoveWindow(window, 220, 230, 508, 427, TRUE);
  const std::string sized = "A: CHANGING 220,230 508x427 14\nA: MINMAX\nA: NCCALC 1\nA: CHANGED 220,230 508x427\n"
                            "A: SIZE 500,400";
  EXPECT_EQ(told(sized), sized);
}

TEST_F(X11Desktop, AWindowWithoutFrameStandsWhereItIsTold) {
  const Place places[] = {
      {37, 41, 120, 90}, {-20, -30, 200, 100}, {1200, 950, 200, 200}, {0, 0, 1280, 1024}, {5, 5, 1, 1}};
  for (const DWORD exStyle : {0u, WS_EX_TOOLWINDOW, WS_EX_TOPMOST})
    for (const Place &place : places) {
      const HWND popup = make("popup", WS_POPUP, place.x, place.y, place.width, place.height);
      SetWindowLongA(popup, GWL_EXSTYLE, static_cast<LONG>(exStyle));
      if (exStyle == WS_EX_TOPMOST)
        SetWindowPos(popup, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      ShowWindow(popup, SW_SHOW);
      EXPECT_TRUE(until([&] { return there("popup") == place; })) << place << " became " << there("popup");
      serve(30);
      EXPECT_EQ(here(popup), place);
      DestroyWindow(popup);
      ASSERT_TRUE(until([] { return user().windows().empty(); }));
    }
}
