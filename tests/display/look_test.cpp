// What the desktop knows of a window besides its pixels: title, program, icon, opacity, order.

#include "display.h"

#include <algorithm>
#include <cctype>

namespace {

HICON plainIcon(COLORREF colour) {
  const HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
  const HBITMAP picture = CreateCompatibleBitmap(screen, 32, 32), mask = CreateBitmap(32, 32, 1, 1, nullptr);
  const HBRUSH brush = CreateSolidBrush(colour);
  const RECT all = {0, 0, 32, 32};
  for (const auto &[bitmap, ground] : {std::pair(picture, brush), {mask, HBRUSH(GetStockObject(BLACK_BRUSH))}}) {
    const HGDIOBJ before = SelectObject(memory, bitmap);
    FillRect(memory, &all, ground);
    SelectObject(memory, before);
  }
  ICONINFO parts = {TRUE, 0, 0, mask, picture};
  const HICON icon = CreateIconIndirect(&parts);
  for (const HGDIOBJ object : {HGDIOBJ(picture), HGDIOBJ(mask), HGDIOBJ(brush)}) DeleteObject(object);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return icon;
}

// From the bottom, in letters of their titles.
std::string order() {
  std::string titles;
  for (const Shown &window : user().windows()) titles += window.title;
  return titles;
}

} // namespace

TEST_F(AnyDesktop, TheTitleIsJapanese) {
  const HWND window = show("A");
  SetWindowTextA(window, "\x83\x8C\x83\x78\x83\x8B \x95\x5C"); // with 0x5C as the second byte of a character
  EXPECT_TRUE(until([] { return user().window("レベル 表").id != 0; })) << user().windows().front().title;
}

// A dock groups windows by the name of the program's file.
TEST_F(AnyDesktop, TheProgramIsKnownByItsFile) {
  const auto same = [](std::string name, std::string wanted) {
    name[0] = static_cast<char>(std::tolower(name[0])); // X11 programs begin their classes with a capital
    return name == wanted;
  };
  show("A");
  EXPECT_PRED2(same, user().window("A").program, "test_display");
  Beside other("ln -sf visitor 'build 7' && exec './build 7' visitor 600 400 300 200");
  EXPECT_TRUE(until([] { return user().window("visitor").id != 0; }));
  EXPECT_PRED2(same, user().window("visitor").program, "build 7");
  user().wish(user().window("visitor"), User::Wish::close);
  EXPECT_EQ(other.end(), 0);
}

// That of its class, unless the program sets another.
TEST_F(X11Desktop, TheIconIsThatOfTheProgram) {
  const HICON ofClass = plainIcon(RGB(200, 0, 0)), other = plainIcon(RGB(0, 0, 200));
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = DefWindowProcA;
  windowClass.hIcon = ofClass;
  windowClass.lpszClassName = "with an icon";
  ASSERT_TRUE(RegisterClassA(&windowClass));
  const HWND window = CreateWindowExA(0, "with an icon", "A", WS_OVERLAPPEDWINDOW, 100, 100, 300, 200, nullptr, nullptr,
                                      nullptr, nullptr);
  names[window] = "A";
  ShowWindow(window, SW_SHOW);
  // the one colour of the icon of that size; nothing when there is none or they are several
  const auto colour = [] {
    for (const X11User::Icon &icon : x11User().icons(user().window("A")))
      if (icon.width == 32 && icon.height == 32 &&
          std::count(icon.pixels.begin(), icon.pixels.end(), icon.pixels[0]) == 32 * 32)
        return icon.pixels[0];
    return 0u;
  };
  EXPECT_TRUE(until([&] { return colour() == 0xFFC80000; })) << std::hex << colour();
  SendMessageA(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(other));
  EXPECT_TRUE(until([&] { return colour() == 0xFF0000C8; })) << std::hex << colour();
  const auto icons = [] { return x11User().icons(user().window("A")).size(); };
  SendMessageA(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(LoadIconA(nullptr, IDI_WARNING)));
  EXPECT_TRUE(until([&] { return colour() == 0 && icons() > 0; })) << std::hex << colour() << " of " << icons();
  SendMessageA(window, WM_SETICON, ICON_BIG, 0);
  EXPECT_TRUE(until([&] { return colour() == 0xFFC80000; })) << std::hex << colour();
  DestroyWindow(window);
  DestroyIcon(ofClass);
  DestroyIcon(other);
}

TEST_F(X11Desktop, AWindowIsTranslucent) {
  const HWND window = show("A");
  const auto opacity = [] { return user().window("A").opacity; };
  EXPECT_EQ(opacity(), 1);
  SetWindowLongA(window, GWL_EXSTYLE, GetWindowLongA(window, GWL_EXSTYLE) | static_cast<LONG>(WS_EX_LAYERED));
  EXPECT_TRUE(SetLayeredWindowAttributes(window, 0, 128, LWA_ALPHA));
  EXPECT_TRUE(until([&] { return opacity() < 1; }));
  EXPECT_NEAR(opacity(), 128 / 255.0, 0.01);
  SetWindowLongA(window, GWL_EXSTYLE, GetWindowLongA(window, GWL_EXSTYLE) & ~static_cast<LONG>(WS_EX_LAYERED));
  EXPECT_TRUE(until([&] { return opacity() == 1; }));
}

TEST_F(ManagedDesktop, TopmostWindowsStayAbove) {
  const HWND top = show("T", WS_OVERLAPPEDWINDOW, 300, 300), other = show("A");
  EXPECT_EQ(order(), "TA");
  SetWindowPos(top, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_TRUE(until([] { return order() == "AT"; })) << order();
  EXPECT_TRUE(user().window("T").above);
  const Place place = there("A");
  user().click(place.x + 20, place.y + 20);
  expectActive(other);
  SetWindowPos(other, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  serve(100);
  EXPECT_EQ(order(), "AT");
  SetWindowPos(top, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_TRUE(until([] { return !user().window("T").above; }));
  user().click(place.x + 20, place.y + 20);
  EXPECT_TRUE(until([] { return order() == "TA"; })) << order();
}

TEST_F(ManagedDesktop, OwnedWindowsStayAboveTheirOwners) {
  const HWND owner = show("A", WS_OVERLAPPEDWINDOW, 100, 100, 600, 500);
  show("P", WS_POPUP | WS_CAPTION, 300, 300, 200, 150, owner);
  const HWND other = show("B", WS_OVERLAPPEDWINDOW, 650, 100);
  EXPECT_EQ(order(), "APB");
  user().click(there("A").x + 20, there("A").y + 20);
  expectActive(owner);
  EXPECT_TRUE(until([] { return order() == "BAP"; })) << order();
  SetActiveWindow(other);
  EXPECT_TRUE(until([] { return order() == "APB"; })) << order();
  ShowWindow(owner, SW_MINIMIZE); // takes what it owns along
  EXPECT_TRUE(until([] { return user().window("A").minimised; }));
  const Picture picture = user().picture();
  EXPECT_NE(picture.at(400, 400), RGB(255, 255, 255)) << "the popup is still to be seen";
}
