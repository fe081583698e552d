// Windows on a real X server with a window manager: what its user does arrives as the messages that the same actions
// bring without a display. xdotool is the user.

#include "platform/platform.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace {

std::vector<std::string> seen;

std::string line(const char *name, WPARAM wParam, LPARAM lParam, bool point) {
  std::string text = name + (' ' + std::to_string(static_cast<LONG>(wParam)));
  if (point) text += ' ' + std::to_string(GET_X_LPARAM(lParam)) + ',' + std::to_string(GET_Y_LPARAM(lParam));
  return text;
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const struct {
    UINT message;
    const char *name;
    bool point;
  } rows[] = {{WM_MOUSEMOVE, "move", true},
              {WM_LBUTTONDOWN, "left down", true},
              {WM_LBUTTONUP, "left up", true},
              {WM_LBUTTONDBLCLK, "left twice", true},
              {WM_RBUTTONDOWN, "right down", true},
              {WM_RBUTTONUP, "right up", true},
              {WM_MOUSEWHEEL, "wheel", true},
              {WM_KEYDOWN, "key down", false},
              {WM_KEYUP, "key up", false},
              {WM_CHAR, "character", false},
              {WM_SIZE, "size", true},
              {WM_MOVE, "place", false},
              {WM_CLOSE, "close", false},
              {WM_DESTROY, "end", false},
              {WM_MOUSELEAVE, "leave", false},
              {WM_SYSCOMMAND, "command", false},
              {WM_ACTIVATE, "active", false},
              {WM_SETFOCUS, "focus", false}};
  for (const auto &row : rows) {
    if (row.message != message) continue;
    const bool bare = message == WM_SETFOCUS || message == WM_MOVE;
    const std::string told = line(row.name, bare ? 0 : wParam, lParam, row.point);
    if (seen.empty() || seen.back() != told) seen.push_back(told);
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

// Pumps until nothing has come for a while.
void pump() {
  DWORD quiet = GetTickCount() + 400;
  MSG message;
  while (static_cast<LONG>(GetTickCount() - quiet) < 0) {
    if (!PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
      Sleep(5);
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
    quiet = GetTickCount() + 400;
  }
}

void user(const std::string &actions) {
  ASSERT_EQ(std::system(("xdotool " + actions).c_str()), 0);
  pump();
}

std::string joined() {
  std::string all;
  for (const std::string &one : seen) all += one + "\n";
  return all;
}

class X11Test : public testing::Test {
 protected:
  void SetUp() override {
    WNDCLASSA windowClass{};
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = procedure;
    windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = "x11test";
    RegisterClassA(&windowClass);
    window_ = CreateWindowExA(0, "x11test", "first", WS_OVERLAPPEDWINDOW, 200, 200, 408, 327, nullptr, nullptr, nullptr,
                              nullptr);
    ASSERT_TRUE(platformHasDisplay());
    ShowWindow(window_, SW_SHOWNORMAL);
    SetCursorPos(900, 900);
    pump();
    seen.clear();
  }
  void TearDown() override {
    if (IsWindow(window_)) DestroyWindow(window_);
    pump();
  }
  // The client area on the screen: 400 x 300 at 204,223.
  RECT client() {
    RECT area;
    GetClientRect(window_, &area);
    MapWindowPoints(window_, nullptr, reinterpret_cast<POINT *>(&area), 2);
    return area;
  }
  HWND window_ = nullptr;
};

// The picture that the X server shows, in the form that xwd writes it: a header of big-endian numbers, the name of the
// window, colours of 12 bytes each, and rows of pixels.
class Screen {
 public:
  Screen() {
    FILE *pipe = popen("xwd -root -silent", "r");
    for (int byte = pipe ? std::fgetc(pipe) : EOF; byte != EOF; byte = std::fgetc(pipe))
      bytes_.push_back(static_cast<unsigned char>(byte));
    if (pipe) pclose(pipe);
  }
  bool there() const { return bytes_.size() > 100 && number(kBitsPerPixel) % 8 == 0; }
  COLORREF at(LONG x, LONG y) const {
    const size_t first = number(kHeaderSize) + 12 * number(kColors);
    const size_t pixel =
        first + static_cast<size_t>(y) * number(kBytesPerLine) + static_cast<size_t>(x) * (number(kBitsPerPixel) / 8);
    return RGB(bytes_.at(pixel + 2), bytes_.at(pixel + 1), bytes_.at(pixel));
  }

 private:
  enum Field { kHeaderSize = 0, kBitsPerPixel = 11, kBytesPerLine = 12, kColors = 19 };
  uint32_t number(Field field) const {
    const unsigned char *at = bytes_.data() + 4 * field;
    return static_cast<uint32_t>(at[0]) << 24 | static_cast<uint32_t>(at[1]) << 16 | static_cast<uint32_t>(at[2]) << 8 |
           at[3];
  }
  std::vector<unsigned char> bytes_;
};

// What a user of the API does: a button or the wheel, or a key.
struct Act {
  DWORD mouse;
  int data;
  BYTE key;
  DWORD keyFlags;
};
using Acts = std::vector<Act>;

constexpr Act kLeft = {MOUSEEVENTF_LEFTDOWN, 0, 0, 0}, kLeftUp = {MOUSEEVENTF_LEFTUP, 0, 0, 0};

void perform(const Acts &acts) {
  for (const Act &act : acts)
    if (act.key)
      keybd_event(act.key, 0, act.keyFlags, 0);
    else
      mouse_event(act.mouse, 0, 0, static_cast<DWORD>(act.data), 0);
  pump();
}

Acts typed(const std::vector<BYTE> &keys) {
  Acts acts;
  for (const BYTE key : keys) acts.insert(acts.end(), {{0, 0, key, 0}, {0, 0, key, KEYEVENTF_KEYUP}});
  return acts;
}

} // namespace

TEST_F(X11Test, StandsWhereItIsTold) {
  const RECT area = client();
  EXPECT_EQ(area.left, 204);
  EXPECT_EQ(area.top, 223);
  EXPECT_EQ(area.right - area.left, 400);
  EXPECT_EQ(area.bottom - area.top, 300);
  EXPECT_EQ(std::system("test \"$(xdotool search --name '^first$' getwindowgeometry --shell | grep -c "
                        "'WIDTH=400\\|HEIGHT=300')\" = 2"),
            0);
  EXPECT_EQ(GetActiveWindow(), window_);
}

// The user of the X server acts, and then one of the API; both bring the same messages.
TEST_F(X11Test, ClicksTypesAndScrolls) {
  // clang-format off
  const struct { POINT at; const char *actions; Acts same; const char *expected; } rows[] = {
      {{254, 283}, "click 1", {kLeft, kLeftUp}, "move 0 50,60\nleft down 1 50,60\nleft up 0 50,60\n"},
      {{304, 283}, "click 3", {{MOUSEEVENTF_RIGHTDOWN, 0, 0, 0}, {MOUSEEVENTF_RIGHTUP, 0, 0, 0}},
       "move 0 100,60\nright down 2 100,60\nright up 0 100,60\n"},
      {{254, 293}, "click --repeat 2 --delay 50 1", {kLeft, kLeftUp, kLeft, kLeftUp},
       "move 0 50,70\nleft down 1 50,70\nleft up 0 50,70\nleft twice 1 50,70\nleft up 0 50,70\n"},
      {{254, 283}, "click 4 click 5", {{MOUSEEVENTF_WHEEL, 120, 0, 0}, {MOUSEEVENTF_WHEEL, -120, 0, 0}},
       "move 0 50,60\nwheel 7864320 254,283\nwheel -7864320 254,283\n"},
      {{900, 900}, "key a Return Left F5", typed({'A', VK_RETURN, VK_LEFT, VK_F1 + 4}),
       "key down 65\ncharacter 97\nkey up 65\nkey down 13\ncharacter 13\nkey up 13\nkey down 37\nkey up 37\n"
       "key down 116\nkey up 116\n"},
      {{900, 900}, "keydown shift key a keyup shift",
       {{0, 0, VK_SHIFT, 0}, {0, 0, 'A', 0}, {0, 0, 'A', KEYEVENTF_KEYUP}, {0, 0, VK_SHIFT, KEYEVENTF_KEYUP}},
       "key down 16\nkey down 65\ncharacter 65\nkey up 65\nkey up 16\n"}};
  // clang-format on
  for (const auto &[at, actions, same, expected] : rows)
    for (const bool byTheApi : {false, true}) {
      SetCursorPos(900, 900), pump(), seen.clear();
      if (byTheApi)
        SetCursorPos(at.x, at.y), perform(same);
      else
        user("mousemove " + std::to_string(at.x) + ' ' + std::to_string(at.y) + ' ' + actions);
      EXPECT_EQ(joined(), expected) << actions << (byTheApi ? " by the API" : "");
    }
}

TEST_F(X11Test, ABorderAndTheCaptionAreDragged) {
  // the corner of the frame below the client area, in steps that a hand takes
  user("mousemove 600 525 mousedown 1 sleep 0.2 mousemove_relative 30 10 sleep 0.2 mousemove_relative 30 20 sleep 0.2 "
       "mouseup 1");
  RECT area = client();
  EXPECT_EQ(area.right - area.left, 460) << joined();
  EXPECT_EQ(area.bottom - area.top, 330);
  EXPECT_NE(joined().find("size 0 460,330"), std::string::npos) << joined();
  RECT whole;
  GetWindowRect(window_, &whole);
  EXPECT_EQ(whole.right - whole.left, 468);

  seen.clear();
  user("mousemove 350 213 mousedown 1 sleep 0.2 mousemove_relative 20 10 sleep 0.2 mousemove_relative 20 20 sleep 0.2 "
       "mouseup 1");
  area = client();
  EXPECT_NEAR(area.left, 244, 1) << joined();
  EXPECT_NEAR(area.top, 253, 1);
  EXPECT_EQ(area.right - area.left, 460);
  EXPECT_NE(joined().find("place 0"), std::string::npos) << joined();
}

TEST_F(X11Test, TheDesktopActivatesAndCloses) {
  const HWND second = CreateWindowExA(0, "x11test", "second", WS_OVERLAPPEDWINDOW, 700, 300, 308, 227, nullptr, nullptr,
                                      nullptr, nullptr);
  ShowWindow(second, SW_SHOWNORMAL);
  pump();
  EXPECT_EQ(GetActiveWindow(), second);
  seen.clear();
  user("mousemove 254 283 click 1");
  EXPECT_EQ(GetActiveWindow(), window_);
  EXPECT_EQ(GetFocus(), window_);
  EXPECT_NE(joined().find("active 0\nactive"), std::string::npos) << joined();
  seen.clear();
  user("key alt+F4");
  EXPECT_NE(joined().find("command 61536\nclose 0\n"), std::string::npos) << joined();
  EXPECT_FALSE(IsWindow(window_));
  EXPECT_EQ(GetActiveWindow(), second);
  DestroyWindow(second);
}

// Each call tells the screen of all that it changed, however wide the pen.
TEST_F(X11Test, WhatIsDrawnIsOnTheScreen) {
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
  const RECT area = client();
  const RECT all = {0, 0, area.right - area.left, area.bottom - area.top};
  for (const auto &row : rows) {
    const HDC dc = GetDC(window_);
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    pump();
    const HGDIOBJ before = SelectObject(dc, CreatePen(PS_SOLID, row.penWidth, RGB(0, 0, 128)));
    row.draw(dc);
    DeleteObject(SelectObject(dc, before));
    pump();
    const Screen screen;
    ASSERT_TRUE(screen.there());
    int wrong = 0, drawn = 0;
    for (int y = 0; y < all.bottom; ++y)
      for (int x = 0; x < all.right; ++x) {
        const COLORREF pixel = GetPixel(dc, x, y);
        wrong += screen.at(area.left + x, area.top + y) != pixel;
        drawn += pixel != RGB(255, 255, 255);
      }
    EXPECT_EQ(wrong, 0) << row.name;
    EXPECT_GT(drawn, 0) << row.name;
    ReleaseDC(window_, dc);
  }
}

TEST_F(X11Test, TheCursorLeaves) {
  user("mousemove 254 283");
  TRACKMOUSEEVENT event = {sizeof event, TME_LEAVE, window_, 0};
  EXPECT_TRUE(TrackMouseEvent(&event));
  seen.clear();
  user("mousemove 1000 900");
  EXPECT_EQ(joined(), "leave 0\n");
}
