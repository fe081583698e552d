// Order, owners, frames, attributes and points: what windows tell of themselves.
#include "support/desktop.h"

#include <tuple>
#include <utility>

using WinOrder = DesktopTest;

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPopup = WS_POPUP | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

// The windows from the top, those above all others with a star.
static std::string order(HWND any) {
  std::string text;
  for (HWND at = GetWindow(any, GW_HWNDFIRST); at; at = GetWindow(at, GW_HWNDNEXT))
    if (DesktopTest::names.count(at))
      text += DesktopTest::names[at] + (GetWindowLongA(at, GWL_EXSTYLE) & WS_EX_TOPMOST ? "*" : "");
  return text;
}

constexpr UINT kOnlyOrder = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;

TEST_F(WinOrder, OrderFollowsPlacementAndOwners) {
  const HWND a = make("A", kPopup, 0, 0, 99, 99), b = make("B", kPopup, 0, 0, 99, 99);
  const HWND p = make("P", kPopup, 0, 0, 9, 9, a), k = make("K", kChild, 0, 0, 9, 9, a);
  const HWND l = make("L", kChild, 0, 0, 9, 9, a), m = make("M", kChild, 0, 0, 9, 9, l);
  const std::tuple<HWND, HWND, const char *> moves[] = {
      {b, b, "PBA"}, {a, HWND_TOP, "PAB"}, {b, HWND_TOP, "BPA"}, {b, HWND_BOTTOM, "PAB"},
      {k, k, "KL"},  {l, HWND_TOP, "LK"},  {l, k, "KL"}}; // owned windows stay above their owners
  for (const auto &[window, after, expected] : moves) {
    EXPECT_TRUE(SetWindowPos(window, after, 0, 0, 0, 0, kOnlyOrder)) << expected;
    EXPECT_EQ(order(window), expected);
  }
  EXPECT_EQ(GetParent(k), a);
  EXPECT_EQ(GetParent(p), a);
  EXPECT_EQ(GetWindow(p, GW_OWNER), a);
  EXPECT_EQ(GetWindow(k, GW_OWNER), nullptr);
  EXPECT_TRUE(IsChild(a, m));
  EXPECT_FALSE(IsChild(a, p));
  EXPECT_EQ(GetAncestor(m, GA_ROOT), a);
  EXPECT_EQ(GetAncestor(p, GA_ROOTOWNER), a);
  EXPECT_FALSE(SetParent(l, m));
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
  EXPECT_TRUE(SetWindowTextA(top, "ab\x83\x5C\x83\x5C"));
  EXPECT_EQ(GetWindowTextLengthA(top), 6);
  EXPECT_EQ(GetWindowTextA(top, text, 4), 2) << "no half characters";
  EXPECT_STREQ(text, "ab");
  EXPECT_TRUE(SetWindowTextA(top, nullptr));
  EXPECT_EQ(GetWindowTextA(top, text, 8), 0);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(SetWindowLongPtrA(top, GWLP_USERDATA, 5), 0);
  EXPECT_EQ(SetWindowLongPtrA(top, GWLP_USERDATA, 6), 5);
  const auto old =
      reinterpret_cast<WNDPROC>(SetWindowLongPtrA(top, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&DefWindowProcA)));
  play("O", {{[&] { SendMessageA(top, WM_USER, 0, 0), CallWindowProcA(old, top, WM_USER, 1, 2); }, "A: USER+0 1 2"}});
  const HMENU menu = GetSystemMenu(top, FALSE);
  for (const UINT state : {UINT{MF_GRAYED}, UINT{MF_DISABLED}, UINT{MF_ENABLED}}) {
    EnableMenuItem(menu, SC_CLOSE, state);
    EXPECT_EQ(GetMenuState(menu, SC_CLOSE, MF_BYCOMMAND), MF_DEFAULT | state);
  }
  EXPECT_EQ(EnableMenuItem(menu, SC_CLOSE, MF_GRAYED), BOOL{MF_ENABLED}) << "what it was";
  EXPECT_EQ(EnableMenuItem(menu, 0x1234, MF_GRAYED), -1);
  GetSystemMenu(top, TRUE); // as it was first
  EXPECT_EQ(GetMenuState(GetSystemMenu(top, FALSE), SC_CLOSE, MF_BYCOMMAND), UINT{MF_DEFAULT});
  EXPECT_EQ(GetSystemMenu(make("w", kPopup, 20, 20, 300, 200), FALSE), nullptr) << "without WS_SYSMENU";
  COLORREF key{};
  BYTE alpha{};
  DWORD flags{};
  EXPECT_FALSE(SetLayeredWindowAttributes(top, 1, 128, LWA_ALPHA)); // not layered yet
  SetWindowLongA(top, GWL_EXSTYLE, WS_EX_LAYERED);
  EXPECT_TRUE(SetLayeredWindowAttributes(top, 1, 128, LWA_ALPHA));
  EXPECT_TRUE(GetLayeredWindowAttributes(top, &key, &alpha, &flags));
  EXPECT_EQ(alpha, 128);
  EXPECT_EQ(flags, DWORD{LWA_ALPHA});
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

TEST_F(WinOrder, AWindowBehindAnotherTakesItsBand) {
  const HWND a = make("A", kPopup, 0, 0, 99, 99), b = make("B", kPopup, 0, 0, 99, 99),
             c = make("C", kPopup, 0, 0, 99, 99);
  const HWND child = make("K", kChild, 0, 0, 9, 9, a), dead = make("D", kPopup, 0, 0, 9, 9);
  DestroyWindow(dead);
  struct Place {
    HWND window, after;
    const char *order;
    DWORD error = ERROR_SUCCESS;
  };
  const auto none = [](INT_PTR value) { return reinterpret_cast<HWND>(value); };
  const Place places[] = {{b, HWND_TOPMOST, "B*CA"},
                          {a, b, "B*AC"}, // behind the last one of a band: in its own
                          {c, HWND_TOPMOST, "C*B*A"},
                          {a, c, "C*A*B*"}, // between two of them: in theirs
                          {a, HWND_NOTOPMOST, "C*B*A"},
                          {c, b, "B*C*A"},
                          {c, c, "B*C*A"}, // behind itself: where it is
                          {c, a, "B*AC"},  // behind a normal one: normal
                          {b, HWND_TOP, "B*AC"},
                          {b, HWND_BOTTOM, "ACB"},
                          {a, none(0x12345), "ACB", ERROR_INVALID_WINDOW_HANDLE},
                          {a, dead, "ACB", ERROR_INVALID_WINDOW_HANDLE},
                          {c, child, "ACB"}}; // which is no sibling
  for (const Place &place : places) {
    SetLastError(ERROR_SUCCESS);
    const BOOL placed = SetWindowPos(place.window, place.after, 0, 0, 0, 0, kOnlyOrder);
    const DWORD error = placed ? ERROR_SUCCESS : GetLastError();
    EXPECT_EQ(error, place.error) << "for " << place.order;
    EXPECT_EQ(order(a), place.order) << names[place.window] << " behind " << names[place.after];
  }
  EXPECT_TRUE(SetWindowPos(a, dead, 0, 0, 0, 0, kOnlyOrder | SWP_NOZORDER)); // nobody looks at it
  SetWindowLongA(c, GWL_EXSTYLE, WS_EX_TOPMOST);                             // only SetWindowPos does that
  EXPECT_EQ(order(a), "ACB");
}

TEST_F(WinOrder, OwnedWindowsShareTheBandOfTheirOwner) {
  if (onWine()) GTEST_SKIP() << "Wine takes some of the owned windows along, and leaves the owner behind";
  const HWND a = make("A", kPopup, 0, 0, 9, 9), b = make("B", kPopup, 0, 0, 9, 9);
  const HWND p = make("P", kPopup, 0, 0, 9, 9, a), q = make("Q", kPopup, 0, 0, 9, 9, a),
             r = make("R", kPopup, 0, 0, 9, 9, p);
  struct Place {
    HWND window, after;
    const char *topmost;
  };
  const Place places[] = {{a, HWND_TOPMOST, "A*P*Q*R*"}, {b, HWND_TOP, "A*P*Q*R*"},     {a, HWND_NOTOPMOST, ""},
                          {p, HWND_TOPMOST, "P*R*"},     {r, HWND_NOTOPMOST, ""}, // and with it its owners
                          {q, HWND_TOPMOST, "Q*"},       {a, HWND_TOPMOST, "A*P*Q*R*"}, {a, HWND_BOTTOM, ""},
                          {b, HWND_TOPMOST, "B*"}};
  for (const Place &place : places) {
    EXPECT_TRUE(SetWindowPos(place.window, place.after, 0, 0, 0, 0, kOnlyOrder));
    std::string topmost;
    for (const HWND window : {a, b, p, q, r})
      if (GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) topmost += names[window] + '*';
    EXPECT_EQ(topmost, place.topmost) << names[place.window];
    const std::string now = order(a);
    for (const char *pair : {"PA", "QA", "RP"})
      EXPECT_LT(now.find(pair[0]), now.find(pair[1])) << pair << " in " << now;
  }
  make("T", kPopup, 0, 0, 9, 9, b); // owned by one above all others
  EXPECT_EQ(order(a).substr(0, 4), "T*B*");
}
