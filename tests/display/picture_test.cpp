// What is to be seen: what was drawn, at once, and whatever else the program is busy with. A busy program is one that
// takes no messages, which is what these tests do between two calls of until or serve.

#include "display.h"

#include <chrono>
#include <thread>

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255), kGrey = RGB(128, 128, 128);

void fill(HWND window, const RECT &rect, int stockBrush) {
  const HDC dc = GetDC(window);
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(stockBrush)));
  ReleaseDC(window, dc);
}

// Waits without taking messages.
bool seen(const std::function<bool()> &so) {
  for (int tries = 0; tries < 200; ++tries) {
    if (so()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

// The colours at these points of a client area.
std::string coloursAt(const char *title, const std::vector<POINT> &points) {
  const Place place = user().window(title).client;
  const Picture picture = user().picture();
  std::string colours;
  for (const POINT &point : points) {
    const COLORREF pixel = picture.at(place.x + point.x, place.y + point.y);
    colours += pixel == kWhite ? "white " : pixel == kGrey ? "grey " : std::to_string(pixel) + ' ';
  }
  return colours;
}
void expectSeen(const std::vector<POINT> &points, const std::string &colours) {
  std::string last;
  seen([&] { return (last = coloursAt("A", points)) == colours; });
  EXPECT_EQ(last, colours);
}

} // namespace

// Each call tells the screen of all that it changed, however wide the pen.
TEST_F(AnyDesktop, WhatIsDrawnIsOnTheScreen) {
  static const POINT corners[] = {{200, 120}, {240, 170}, {170, 150}};
  const struct {
    const char *name;
    int penWidth;
    void (*draw)(HDC);
  } rows[] = {
      {"line", 61, [](HDC dc) { (MoveToEx(dc, 150, 150, nullptr), LineTo(dc, 250, 160)); }},
      {"polyline", 1, [](HDC dc) { Polyline(dc, corners, 3); }},
      {"polygon", 41, [](HDC dc) { Polygon(dc, corners, 3); }},
      {"rectangle", 121, [](HDC dc) { Rectangle(dc, 180, 130, 220, 170); }},
      {"ellipse", 230, [](HDC dc) { Ellipse(dc, 180, 130, 220, 170); }},
      {"round corners", 90, [](HDC dc) { RoundRect(dc, 180, 130, 220, 170, 20, 20); }},
      {"curve", 33, [](HDC dc) { (MoveToEx(dc, 150, 150, nullptr), PolyBezierTo(dc, corners, 3)); }},
      {"fill", 1,
       [](HDC dc) {
         const RECT rect = {90, 80, 60, 50};
         FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
       }},
      {"text", 1, [](HDC dc) { TextOutA(dc, 100, 100, "peak", 4); }},
      {"edge", 1,
       [](HDC dc) {
         RECT rect = {20, 30, 90, 60};
         DrawEdge(dc, &rect, EDGE_RAISED, BF_RECT | BF_MIDDLE);
       }},
      {"pixel", 1, [](HDC dc) { SetPixel(dc, 7, 9, RGB(255, 0, 0)); }},
      {"copy", 1, [](HDC dc) { BitBlt(dc, 200, 200, 90, 70, dc, 10, 10, NOTSRCCOPY); }},
  };
  const HWND window = show("A");
  const Place area = there("A");
  const HDC dc = GetDC(window);
  for (const auto &row : rows) {
    fill(window, {0, 0, area.width, area.height}, WHITE_BRUSH);
    expectSeen({{1, 1}, {200, 150}, {399, 299}}, "white white white ");
    const HGDIOBJ before = SelectObject(dc, CreatePen(PS_SOLID, row.penWidth, RGB(0, 0, 128)));
    row.draw(dc);
    DeleteObject(SelectObject(dc, before));
    int wrong = 0, drawn = 0;
    until([&] {
      const Picture picture = user().picture();
      wrong = drawn = 0;
      for (int y = 0; y < area.height; ++y)
        for (int x = 0; x < area.width; ++x) {
          const COLORREF pixel = GetPixel(dc, x, y);
          wrong += picture.at(area.x + x, area.y + y) != pixel;
          drawn += pixel != kWhite;
        }
      return wrong == 0;
    });
    EXPECT_EQ(wrong, 0) << row.name;
    EXPECT_GT(drawn, 0) << row.name;
  }
  ReleaseDC(window, dc);
}

TEST_F(AnyDesktop, ABusyProgramDrawsVisibly) {
  const HWND window = show("A");
  expectSeen({{20, 20}, {300, 200}}, "white white ");
  fill(window, {10, 10, 100, 100}, GRAY_BRUSH);
  expectSeen({{20, 20}, {300, 200}}, "grey white ");
  fill(window, {200, 150, 400, 300}, GRAY_BRUSH);
  expectSeen({{20, 20}, {300, 200}}, "grey grey ");
}

TEST_F(X11Desktop, ABusyProgramIsUncovered) {
  const HWND window = show("A");
  fill(window, {0, 0, 200, 300}, GRAY_BRUSH);
  expectSeen({{20, 20}, {300, 200}}, "grey white ");
  const Place place = there("A");
  x11User().cover({place.x - 20, place.y - 20, 440, 340});
  EXPECT_TRUE(seen([] { return coloursAt("A", {{20, 20}}) == "white "; }));
  x11User().uncover();
  expectSeen({{20, 20}, {300, 200}, {1, 1}, {398, 298}}, "grey white grey white ");
}

// It keeps what it showed, and what is new has the background of its class.
TEST_F(AnyDesktop, ABusyProgramIsMovedAndSized) {
  const HWND window = show("A");
  fill(window, {0, 0, 400, 300}, GRAY_BRUSH);
  expectSeen({{20, 20}, {399, 299}}, "grey grey ");
  const Place place = {300, 320, 400, 300}, larger = {250, 220, 500, 360};
  user().place(user().window("A"), place);
  EXPECT_TRUE(seen([&] { return there("A") == place; })) << there("A");
  expectSeen({{20, 20}, {399, 299}}, "grey grey ");
  user().place(user().window("A"), larger);
  EXPECT_TRUE(seen([&] { return there("A") == larger; })) << there("A");
  expectSeen({{20, 20}, {399, 299}, {401, 150}, {200, 301}, {498, 358}}, "grey grey white white white ");
  EXPECT_EQ(here(window).width, 400) << "the program has taken no message yet";
  expectAgreed(window);
  EXPECT_EQ(here(window).width, 500);
}

TEST_F(X11Desktop, ABusyProgramAnswersTheWindowManager) {
  const HWND window = show("A");
  EXPECT_TRUE(x11User().answersPing(user().window("A")));
  listen("L");
  user().wish(user().window("A"), User::Wish::close);
  EXPECT_TRUE(x11User().answersPing(user().window("A")));
  EXPECT_NE(user().window("A").id, 0u);
  EXPECT_TRUE(until([&] { return !IsWindow(window); })) << "once it takes messages it closes";
}
