// Windows that are born minimized or maximized, that come back from there, and that get another parent.
#include "support/desktop.h"

#include <utility>

using WinState = DesktopTest;

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPopup = WS_POPUP | WS_VISIBLE, kChild = WS_CHILD | WS_VISIBLE;

// Which window has the focus while a minimized one is active isn't told: on Windows none, on Wine that one at first.
static std::string state(HWND window, bool activation = true) {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  GetWindowPlacement(window, &placement);
  std::string text = IsWindowVisible(window) ? "visible" : "hidden";
  text += IsIconic(window) ? " iconic" : "";
  text += IsZoomed(window) ? " zoomed" : "";
  text += activation && GetActiveWindow() == window ? " active" : "";
  text += activation && GetFocus() == window && !IsIconic(window) ? " focus" : "";
  return text + ", " + std::to_string(placement.showCmd) + " from " + rectText(placement.rcNormalPosition);
}

TEST_F(WinState, AStateAtBirthLastsUntilItIsRestored) {
  const HWND parent = make("Q", kTop, 50, 50, 400, 300);
  const std::string normal = " from 100,100,400,300";
  for (const DWORD kind : {DWORD{WS_OVERLAPPEDWINDOW}, DWORD{WS_POPUP}, DWORD{WS_CHILD}})
    for (const DWORD bits : {DWORD{WS_MAXIMIZE}, DWORD{WS_MINIMIZE}, DWORD{WS_MAXIMIZE | WS_MINIMIZE}})
      for (const DWORD seen : {DWORD{0}, DWORD{WS_VISIBLE}}) {
        SCOPED_TRACE(testing::Message() << std::hex << (kind | bits | seen));
        SetActiveWindow(parent);
        const HWND a = make("A", kind | bits | seen, 100, 100, 300, 200, kind == WS_CHILD ? parent : nullptr);
        const std::string what = bits & WS_MINIMIZE ? " iconic" : " zoomed", show = bits & WS_MINIMIZE ? ", 2" : ", 3";
        const std::string active = kind == WS_CHILD ? "" : bits & WS_MINIMIZE ? " active" : " active focus";
        const std::string shown = "visible" + what + active + show + normal;
        EXPECT_EQ(state(a), seen ? shown : "hidden" + what + show + normal);
        EXPECT_EQ(ShowWindow(a, SW_SHOW), seen != 0);
        EXPECT_EQ(state(a), shown);
        if (kind != WS_CHILD && bits & WS_MINIMIZE && !onWine()) { // which puts some of them elsewhere
          EXPECT_EQ(screenRect(a), "-32000,-32000,-31840,-31976");
        }
        EXPECT_TRUE(ShowWindow(a, SW_RESTORE));
        if (bits != (WS_MAXIMIZE | WS_MINIMIZE)) { // which come back as Windows pleases
          const std::string focus = kind != WS_CHILD ? " active focus" : bits & WS_MINIMIZE ? " focus" : "";
          EXPECT_EQ(state(a), "visible" + focus + ", 1" + normal);
        }
        DestroyWindow(a);
      }
}

TEST_F(WinState, MaximizingIsToldAfterTheCreation) {
  const HWND parent = make("Q", kTop, 50, 50, 400, 300);
  const std::string made = "new: MINMAX\nA: NCCREATE 100,100 300x200\nA: NCCALC\nA: CREATE 100,100 300x200\n"
                           "A: MINMAX\nA: CHANGING -4,-4 1288x1032 30\nA: MINMAX\nA: NCCALC 1\n"
                           "A: CHANGED -4,-4 1288x1032\nA: MOVE 0,19\nA: SIZE 2 1280,1005",
                    shown = "A: SHOW 1\nA: CHANGING 0,0 0x0 43\nQ: ACTIVATE A\nA: ACTIVATE 1 Q\nQ: KILLFOCUS A\n"
                            "A: SETFOCUS Q\nA: CHANGED -4,-4 1288x1032\nA: SIZE 2 1280,1005\nA: MOVE 0,19",
                    restored = "A: CHANGING 100,100 300x200 20\nA: MINMAX\nA: NCCALC 1\nA: CHANGED 100,100 300x200\n"
                               "A: MOVE 104,123\nA: SIZE 292,173";
  for (const DWORD visible : {DWORD{0}, DWORD{WS_VISIBLE}}) {
    SCOPED_TRACE(visible);
    HWND a{};
    SetActiveWindow(parent);
    play("LSFX", {{[&] { a = make("A", WS_OVERLAPPEDWINDOW | WS_MAXIMIZE | visible, 100, 100, 300, 200); },
                   made + (visible ? '\n' + shown : "")},
                  {[&] { ShowWindow(a, SW_SHOW); }, visible ? "" : shown},
                  {[&] { ShowWindow(a, SW_RESTORE); }, restored},
                  {[&] { ShowWindow(a, SW_RESTORE); }, ""}});
    record(""), DestroyWindow(a);
  }
  record("F"), make("S", kTop | WS_MINIMIZE, 100, 100, 300, 200);
  EXPECT_NE(take().find("S: ACTIVATE 10001 Q"), std::string::npos) << "which says that it is minimized";
}

TEST_F(WinState, OneWayOutOfTheIconForgetsThatItWasMaximized) {
  const std::pair<int, const char *> ways[] = {
      {SW_SHOWNOACTIVATE, "visible, 1"}, {SW_SHOWNA, "visible iconic, 2"}, {SW_RESTORE, "visible zoomed, 3"}};
  const HWND b = make("B", kTop, 500, 100, 400, 300), a = make("A", kTop, 50, 100, 400, 300);
  for (const auto &[command, after] : ways) {
    ShowWindow(a, SW_MAXIMIZE), ShowWindow(a, SW_MINIMIZE), SetActiveWindow(b);
    EXPECT_TRUE(ShowWindow(a, command));
    EXPECT_EQ(state(a, false), std::string(after) + " from 50,100,450,400");
    ShowWindow(a, SW_RESTORE), ShowWindow(a, SW_SHOWNORMAL);
  }
}

TEST_F(WinState, AChildGoesToAnotherParent) {
  const HWND b = make("B", kTop, 500, 100, 400, 300), a = make("A", kTop, 50, 100, 400, 300);
  const HWND c = make("C", kChild, 20, 30, 100, 80, a), h = make("H", WS_CHILD, 20, 130, 100, 80, a);
  names[GetDesktopWindow()] = "desktop", names[nullptr] = "none";
  const std::map<std::string, HWND> windows = {{"A", a}, {"B", b}, {"C", c}, {"H", h}, {"desktop", nullptr}};
  const std::string hide = "C: SHOW\nC: CHANGING 0,0 0x0 97\nC: CHANGED 20,30 100x80\n",
                    lose = "C: KILLFOCUS A\nA: SETFOCUS C\n", go = "C: CHANGING 20,30 0x0 1\nC: CHILD\n",
                    move = "C: CHANGED 20,30 100x80\nC: MOVE 20,30\n",
                    show = "C: SHOW 1\nC: CHANGING 0,0 0x0 57\nC: CHANGED 20,30 100x80",
                    hidden = "H: CHANGING 20,130 0x0 1\nH: CHILD\nH: CHANGED 20,130 100x80\nH: MOVE 20,130";
  struct Adoption {
    const char *window, *to, *from;
    std::string lines, after; // where it stands on the screen, its parent, its ancestor, the focus
  };
  const Adoption adoptions[] = {{"C", "B", "A", hide + lose + go + move + show, "524,153,624,233 B B A"},
                                {"C", "B", "B", hide + go + show, "524,153,624,233 B B A"}, // where it is already
                                {"C", "A", "B", hide + go + move + show, "74,153,174,233 A A A"},
                                {"H", "B", "A", hidden, "524,253,624,333 B B A"},
                                {"H", "A", "B", hidden, "74,253,174,333 A A A"},
                                {"C", "desktop", "A", hide + go + move + show, "20,30,120,110 desktop desktop A"},
                                {"C", "A", "desktop", hide + go + move + show, "74,153,174,233 A A A"},
                                {"H", "desktop", "A", hidden, "20,130,120,210 desktop desktop A"}};
  SetFocus(c);
  for (const Adoption &to : adoptions) {
    SCOPED_TRACE(std::string(to.window) + " to " + to.to);
    const HWND window = windows.at(to.window);
    play("LSFX", {{[&] { EXPECT_EQ(names[SetParent(window, windows.at(to.to))], to.from); }, to.lines}});
    EXPECT_EQ(screenRect(window) + ' ' + names[GetParent(window)] + ' ' + names[GetAncestor(window, GA_PARENT)] + ' ' +
                  names[GetFocus()],
              to.after);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)), window == c ? kChild : DWORD{WS_CHILD});
  }
  EXPECT_EQ(GetWindow(a, GW_CHILD), c);
  SetLastError(ERROR_SUCCESS);
  EXPECT_FALSE(SetParent(a, a));
  EXPECT_FALSE(SetParent(a, c));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(WinState, APopupBecomesPartOfAWindowAndComesBack) {
  const HWND a = make("A", kTop, 50, 100, 400, 300), p = make("P", kPopup, 600, 500, 100, 80);
  const std::string lines = "P: SHOW\nP: CHANGING 0,0 0x0 83\nP: CHANGED 600,500 100x80\nP: CHANGING 600,500 0x0 1\n"
                            "P: CHANGED 600,500 100x80\nP: MOVE 600,500\nP: SHOW 1\nP: CHANGING 0,0 0x0 43\n"
                            "P: CHANGED 600,500 100x80";
  SetActiveWindow(a);
  play("LSX", {{[&] { EXPECT_EQ(SetParent(p, a), GetDesktopWindow()); }, lines}});
  EXPECT_EQ(screenRect(p), "654,623,754,703");
  EXPECT_EQ(GetAncestor(p, GA_PARENT), a);
  EXPECT_EQ(GetParent(p), nullptr); // which tells the owner of a popup
  EXPECT_TRUE(IsWindowVisible(p));
  play("LSX", {{[&] { EXPECT_EQ(SetParent(p, nullptr), a); }, lines}});
  EXPECT_EQ(screenRect(p), "600,500,700,580");
  EXPECT_EQ(GetAncestor(p, GA_PARENT), GetDesktopWindow());
  EXPECT_TRUE(IsWindowVisible(p));
}
