// What the hand does arrives as messages, where and as often as it did it.

#include "display.h"

#include <regex>

namespace {

// Scan codes are the keyboard's affair.
std::string withoutScanCodes(const std::string &lines) {
  static const std::regex key("< (UP|DOWN|CHAR) ([0-9A-F]+) [0-9A-F]+");
  return std::regex_replace(lines, key, "< $1 $2");
}

// A point of the client area, on the program's screen.
std::string onScreen(HWND window, int x, int y) {
  POINT point = {x, y};
  ClientToScreen(window, &point);
  return std::to_string(point.x) + ',' + std::to_string(point.y);
}

} // namespace

TEST_F(AnyDesktop, StandsWhereItIsTold) {
  const HWND window = show("A");
  EXPECT_EQ(here(window), (Place{204, 223, 400, 300}));
  EXPECT_EQ(there("A").width, 400);
  EXPECT_EQ(there("A").height, 300);
  expectActive(window);
}

TEST_F(AnyDesktop, ClicksTypesAndScrolls) {
  const HWND window = make("A", WS_OVERLAPPEDWINDOW, 200, 200, 408, 327, nullptr, CS_DBLCLKS);
  ShowWindow(window, SW_SHOW);
  ASSERT_TRUE(until([] { return user().window("A").active; }));
  const Place place = there("A");
  // as fast as a mouse reports, and the window manager looks at each press first; no message is taken meanwhile
  const auto pause = [] { Sleep(10); };
  const auto point = [&](int x, int y) { (user().point(place.x + x, place.y + y), pause()); };
  const auto press = [&](int number) { (user().button(number, true), pause()); };
  const auto release = [&](int number) { (user().button(number, false), pause()); };
  const std::string wheelAt = onScreen(window, 50, 80);
  const struct {
    std::function<void()> act;
    std::string expected;
  } rows[] = {
      {[&] { point(50, 60); }, "A< MOUSE 50,60"},
      {[&] { (press(1), release(1)); }, "A< LDOWN 1 50,60\nA< LUP 50,60"},
      {[&] { (point(100, 60), press(3), release(3)); }, "A< MOUSE 100,60\nA< RDOWN 2 100,60\nA< RUP 100,60"},
      {[&] { (point(50, 80), press(1), point(55, 85), release(1), point(50, 80)); },
       "A< MOUSE 50,80\nA< LDOWN 1 50,80\nA< MOUSE 1 55,85\nA< LUP 55,85\nA< MOUSE 50,80"},
      {[&] { (serve(600), press(1), release(1), press(1), release(1)); },
       "A< LDOWN 1 50,80\nA< LUP 50,80\nA< LDOUBLE 1 50,80\nA< LUP 50,80"},
      {[&] { (user().wheel(-1), user().wheel(1)); }, "A< WHEEL 780000 " + wheelAt + "\nA< WHEEL FF880000 " + wheelAt},
      {[&] { (user().type("a"), user().type("Return"), user().type("Left"), user().type("F5")); },
       "A< DOWN 41\nA< CHAR 61\nA< UP 41\nA< DOWN D\nA< CHAR D\nA< UP D\nA< DOWN 25\nA< UP 25\nA< DOWN 74\nA< UP 74"},
      {[&] { (user().key("Shift_L", true), user().type("a"), user().key("Shift_L", false)); },
       "A< DOWN 10\nA< DOWN 41\nA< CHAR 41\nA< UP 41\nA< UP 10"},
  };
  listen("MK");
  for (size_t i = 0; i < std::size(rows); ++i) {
    rows[i].act();
    EXPECT_EQ(withoutScanCodes(told(rows[i].expected)), rows[i].expected) << "row " << i;
  }
}

// Where a window stands, the desktop decides, now and then too; the pointer is always where its user sees it.
TEST_F(AnyDesktop, ThePointerIsWhereItsUserSeesIt) {
  const HWND window = show("A");
  // never at the same place of the window twice: Qt takes that for no move
  int step = 0;
  const auto look = [&](const char *when) {
    SCOPED_TRACE(when);
    const Place place = there("A");
    listen("M");
    for (const int x : {30 + step, 50 + step}) {
      user().point(place.x + x, place.y + 60);
      EXPECT_EQ(told("A< MOUSE"), "A< MOUSE " + std::to_string(x) + ",60");
    }
    user().button(1, true);
    user().button(1, false);
    user().wheel(-1);
    const std::string at = std::to_string(50 + step) + ",60";
    const std::string pressed =
        "A< LDOWN 1 " + at + "\nA< LUP " + at + "\nA< WHEEL 780000 " + onScreen(window, 50 + step, 60);
    EXPECT_EQ(told(pressed), pressed);
    POINT cursor{};
    GetCursorPos(&cursor);
    EXPECT_EQ(title(WindowFromPoint(cursor)), "A");
    ScreenToClient(window, &cursor);
    EXPECT_EQ(std::to_string(cursor.x) + ',' + std::to_string(cursor.y), at);
    ++step;
  };
  look("from the start");
  for (const Place &place : {Place{100, 120, 400, 300}, Place{600, 50, 500, 350}, Place{20, 300, 400, 300}}) {
    settle();
    user().place(user().window("A"), place);
    EXPECT_TRUE(until([&] { return there("A") == place; }));
    expectAgreed(window);
    look("after a move");
  }
  MoveWindow(window, 300, 300, 408, 327, TRUE);
  expectAgreed(window);
  look("after a move by the program");
}

TEST_F(X11Desktop, SetCursorPosMovesThePointerOnce) {
  show("A");
  listen("M");
  for (const auto &[x, y] : {std::pair(50, 60), {51, 60}, {300, 200}}) {
    SetCursorPos(204 + x, 223 + y);
    const std::string at = std::to_string(x) + ',' + std::to_string(y);
    EXPECT_EQ(told("A< MOUSE"), "A< MOUSE " + at);
    user().button(1, true);
    user().button(1, false);
    EXPECT_EQ(told("A< LDOWN\nA< LUP"), "A< LDOWN 1 " + at + "\nA< LUP " + at);
  }
}

// The pointer rests and windows come, move and go: each that gets it is told so, once.
TEST_F(X11Desktop, WindowsMoveUnderARestingPointer) {
  user().point(640, 400);
  const HWND below = show("B", WS_POPUP, 300, 200, 600, 400);
  const HWND window = make("A", WS_POPUP, 400, 250, 400, 300);
  settle();
  listen("M");
  const struct {
    const char *what;
    std::function<void()> act;
    std::string expected;
  } rows[] = {
      {"shown", [&] { ShowWindow(window, SW_SHOW); }, "A< MOUSE 240,150"},
      {"moved", [&] { MoveWindow(window, 410, 270, 400, 300, TRUE); }, "A< MOUSE 230,130"},
      {"moved away", [&] { MoveWindow(window, 810, 700, 400, 300, TRUE); }, "B< MOUSE 340,200"},
      {"back", [&] { MoveWindow(window, 410, 270, 400, 300, TRUE); }, "A< MOUSE 230,130"},
      {"hidden", [&] { ShowWindow(window, SW_HIDE); }, "B< MOUSE 340,200"},
  };
  for (const auto &[what, act, expected] : rows) {
    act();
    serve(100);
    EXPECT_EQ(told(expected), expected) << what;
  }
  ShowWindow(below, SW_HIDE);
}

TEST_F(AnyDesktop, AWindowAppearsUnderARestingPointer) {
  user().point(640, 400);
  listen("M");
  show("A", WS_POPUP, 340, 200, 600, 400);
  const Place place = there("A");
  const std::string expected = "A< MOUSE " + std::to_string(640 - place.x) + ',' + std::to_string(400 - place.y);
  serve(100);
  EXPECT_EQ(told(expected), expected);
}

TEST_F(AnyDesktop, ThePointerLeaves) {
  const HWND window = show("A");
  const Place place = there("A");
  user().point(place.x + 50, place.y + 60);
  listen("M");
  EXPECT_EQ(told("A< MOUSE 50,60"), "A< MOUSE 50,60");
  TRACKMOUSEEVENT event = {sizeof event, TME_LEAVE, window, 0};
  EXPECT_TRUE(TrackMouseEvent(&event));
  user().point(place.x + place.width + 60, place.y + place.height + 60);
  EXPECT_EQ(told("A< LEAVE"), "A< LEAVE");
}

TEST_F(AnyDesktop, TheDesktopAndAKeyClose) {
  const struct {
    const char *how;
    void (*act)();
  } rows[] = {{"window manager", [] { user().wish(user().window("A"), User::Wish::close); }},
              {"Alt and F4", [] { (user().key("Alt_L", true), user().type("F4"), user().key("Alt_L", false)); }}};
  for (const auto &[how, act] : rows) {
    const HWND other = show("B", WS_OVERLAPPEDWINDOW, 400, 400), window = show("A");
    expectActive(window);
    listen("L");
    act();
    EXPECT_TRUE(until([&] { return !IsWindow(window); })) << how;
    const std::string lines = told("");
    EXPECT_LT(lines.find("COMMAND F060"), lines.find("A: CLOSE")) << how << '\n' << lines;
    EXPECT_EQ(count(lines, "CLOSE"), 1) << how;
    expectActive(other);
    DestroyWindow(other);
    EXPECT_TRUE(until([] { return user().windows().empty(); }));
  }
}
