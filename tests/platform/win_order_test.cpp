// Order, owners, frames, attributes and points: what windows tell of themselves.
#include "support/desktop.h"

#include <utility>

using WinOrder = DesktopTest;

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPopup = WS_POPUP | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

TEST_F(WinOrder, OrderFollowsPlacementAndOwners) {
  const HWND a = make("A", kPopup, 0, 0, 99, 99), b = make("B", kPopup, 0, 0, 99, 99);
  const HWND p = make("P", kPopup, 0, 0, 9, 9, a), k = make("K", kChild, 0, 0, 9, 9, a);
  const HWND l = make("L", kChild, 0, 0, 9, 9, a), m = make("M", kChild, 0, 0, 9, 9, l);
  std::string got;
  const std::pair<HWND, HWND> moves[] = {
      {b, b},        {a, HWND_TOP},       {b, HWND_TOP}, {b, HWND_BOTTOM}, {b, HWND_TOPMOST},
      {a, HWND_TOP}, {b, HWND_NOTOPMOST}, {a, HWND_TOP}, {k, k},           {l, HWND_TOP},
      {l, k}};
  for (const auto &[window, after] : moves) {
    got += SetWindowPos(window, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE) ? ' ' : '?';
    for (HWND at = GetWindow(window, GW_HWNDFIRST); at; at = GetWindow(at, GW_HWNDNEXT))
      got += names.count(at) ? names[at] : "";
  }
  EXPECT_EQ(got, " PBA PAB BPA PAB BPA BPA BPA PAB KL LK KL"); // owned windows stay above their owners
  EXPECT_TRUE(GetParent(k) == a && GetParent(p) == a && GetWindow(p, GW_OWNER) == a && !GetWindow(k, GW_OWNER));
  EXPECT_TRUE(IsChild(a, m) && !IsChild(a, p) && GetAncestor(m, GA_ROOT) == a && GetAncestor(p, GA_ROOTOWNER) == a);
  EXPECT_TRUE(!SetParent(l, m) && SetParent(k, b) == a && GetParent(k) == b && GetWindow(a, GW_CHILD) == l);
}

TEST_F(WinOrder, TheStyleDecidesTheFrame) {
  const HWND parent = make("parent", kTop, 0, 0, 400, 300);
  const std::pair<DWORD, const char *> frames[] = {
      {WS_OVERLAPPEDWINDOW, "-4,-23,4,4"},    {WS_POPUP, "0,0,0,0"},
      {WS_POPUP | WS_BORDER, "-1,-1,1,1"},    {WS_POPUP | WS_DLGFRAME, "-3,-3,3,3"},
      {WS_CHILD | WS_CAPTION, "-3,-22,3,3"},  {WS_CHILD | WS_BORDER, "-1,-1,1,1"},
      {WS_POPUP | WS_THICKFRAME, "-3,-3,3,3"}};
  for (const auto &[style, frame] : frames) {
    RECT rect{}, client{};
    EXPECT_TRUE(AdjustWindowRectEx(&rect, style, FALSE, 0));
    EXPECT_EQ(rectText(rect), frame);
    const HWND window = make("w", style, 20, 20, 300, 200, style & WS_CHILD ? parent : nullptr);
    GetClientRect(window, &client);
    EXPECT_EQ(rectText(client), rectText({0, 0, 300 + rect.left - rect.right, 200 + rect.top - rect.bottom})) << frame;
  }
}

TEST_F(WinOrder, AttributesAreKept) {
  const HWND top = make("A", WS_OVERLAPPEDWINDOW, 0, 0, 99, 99);
  char text[8];
  EXPECT_TRUE(SetWindowTextA(top, "ab\x83\x5C\x83\x5C") && GetWindowTextLengthA(top) == 6);
  EXPECT_TRUE(GetWindowTextA(top, text, 4) == 2 && std::string(text) == "ab"); // no half characters
  EXPECT_TRUE(SetWindowTextA(top, nullptr) && !GetWindowTextA(top, text, 8) && !*text);
  EXPECT_TRUE(!SetWindowLongPtrA(top, GWLP_USERDATA, 5) && SetWindowLongPtrA(top, GWLP_USERDATA, 6) == 5);
  const auto old =
      reinterpret_cast<WNDPROC>(SetWindowLongPtrA(top, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&DefWindowProcA)));
  play("O", {{[&] { SendMessageA(top, WM_USER, 0, 0), CallWindowProcA(old, top, WM_USER, 1, 2); }, "A: USER+0 1 2"}});
  std::string states;
  for (const UINT state : {MF_GRAYED, MF_DISABLED, MF_ENABLED, MF_ENABLED})
    states += std::to_string(EnableMenuItem(GetSystemMenu(top, FALSE), SC_CLOSE, state));
  EXPECT_EQ(states + std::to_string(EnableMenuItem(GetSystemMenu(top, FALSE), 0x1234, MF_GRAYED)), "0120-1");
  COLORREF key{};
  BYTE alpha{};
  DWORD flags{};
  EXPECT_FALSE(SetLayeredWindowAttributes(top, 1, 128, LWA_ALPHA)); // not layered yet
  SetWindowLongA(top, GWL_EXSTYLE, WS_EX_LAYERED);
  EXPECT_TRUE(SetLayeredWindowAttributes(top, 1, 128, LWA_ALPHA));
  EXPECT_TRUE(GetLayeredWindowAttributes(top, &key, &alpha, &flags) && alpha == 128 && flags == LWA_ALPHA);
}

TEST_F(WinOrder, APointFindsItsWindow) {
  const HWND a = make("A", kTop, 100, 100, 400, 300), c = make("C", kChild, 20, 20, 100, 80, a);
  make("G", kChild, 10, 10, 30, 30, c), make("H", WS_CHILD, 20, 120, 80, 80, a);
  std::string under;
  for (POINT point : {POINT{404, 323}, {204, 113}, {184, 203}, {139, 158}, {129, 248}}) { // A, its caption, C, G, H
    under += names[WindowFromPoint(point)];
    ScreenToClient(a, &point);
    under += names[ChildWindowFromPoint(a, point)] + ' '; // a hidden one too, and nothing outside of the client area
  }
  EXPECT_EQ(under, "AA A CC GC AH ");
}
