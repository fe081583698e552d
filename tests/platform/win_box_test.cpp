// Message boxes.
#include "platform/errors.h"
#include "support/boxes.h"
#include "support/clips.h"
#include "support/desktop.h"
#include "support/input.h"

#include <stdexcept>

constexpr DWORD kTop = WS_OVERLAPPEDWINDOW | WS_VISIBLE;

// The ids of its buttons, from left to right, and of the default one in brackets.
static std::string buttonsOf(HWND box) {
  std::string ids;
  for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    char name[16] = "";
    GetClassNameA(child, name, sizeof name);
    if (std::string(name) != "Button" || !IsWindowVisible(child)) continue;
    const std::string id = std::to_string(GetDlgCtrlID(child));
    ids += (ids.empty() ? "" : " ") + (GetFocus() == child ? "[" + id + "]" : id);
  }
  return ids;
}

class WinBox : public DesktopTest {
 protected:
  // A box that this is done to. Result: what it answers, or 99 when nothing of that ended it.
  int show(UINT type, std::vector<Answerer::Step> steps, HWND owner = nullptr, const char *text = "text") {
    const Answerer answerer(std::move(steps));
    const int answer = MessageBoxA(owner, text, "caption", type);
    return answerer.gaveUp() ? 99 : answer;
  }
  int keys(UINT type, std::vector<BYTE> typed) {
    return show(type, {[=](HWND) {
                  for (const BYTE key : typed) tap({key, 0});
                }});
  }

  const KeepsDialogs open;
};

TEST_F(WinBox, EachSetHasItsButtonsAndAnswersThem) {
  const struct {
    UINT type;
    std::vector<int> ids;
    std::string seen;
  } sets[] = {{MB_OK, {1}, "[1]"},
              {MB_OKCANCEL, {1, 2}, "[1] 2"},
              {MB_ABORTRETRYIGNORE, {3, 4, 5}, "[3] 4 5"},
              {MB_YESNOCANCEL, {6, 7, 2}, "[6] 7 2"},
              {MB_YESNO, {6, 7}, "[6] 7"},
              {MB_RETRYCANCEL, {4, 2}, "[4] 2"},
              {MB_CANCELTRYCONTINUE, {2, 10, 11}, "[2] 10 11"},
              {MB_YESNO | MB_DEFBUTTON2, {7}, "6 [7]"},
              {MB_YESNOCANCEL | MB_DEFBUTTON3, {2}, "6 7 [2]"},
              {MB_OKCANCEL | MB_ICONHAND | MB_DEFBUTTON2, {2}, "1 [2]"}};
  for (const auto &set : sets)
    for (const int id : set.ids) {
      std::string seen;
      EXPECT_EQ(show(set.type, {[&](HWND box) { seen = buttonsOf(box), pressing(id)(box); }}), id) << set.type;
      EXPECT_EQ(seen, set.seen) << set.type;
    }
}

TEST_F(WinBox, KeysAnswerAndMoveAmongTheButtons) {
  EXPECT_EQ(keys(MB_YESNO, {VK_RETURN}), IDYES);
  EXPECT_EQ(keys(MB_YESNO | MB_DEFBUTTON2, {VK_RETURN}), IDNO);
  EXPECT_EQ(keys(MB_YESNOCANCEL, {VK_TAB, VK_RETURN}), IDNO);
  EXPECT_EQ(keys(MB_YESNOCANCEL, {VK_RIGHT, VK_RIGHT, VK_SPACE}), IDCANCEL);
  EXPECT_EQ(keys(MB_YESNOCANCEL, {VK_LEFT, VK_RETURN}), IDCANCEL) << "round the end";
  EXPECT_EQ(keys(MB_YESNO, {'N'}), IDNO) << "the letter that the button marks";
  EXPECT_EQ(keys(MB_OKCANCEL, {VK_ESCAPE}), IDCANCEL);
  EXPECT_EQ(keys(MB_CANCELTRYCONTINUE, {'X', VK_ESCAPE}), IDCANCEL);
}

// Wine closes boxes that have no button for it, and answers 2 where OK is all there is.
TEST_F(WinBox, EscapeAndTheCloseBoxStandForCancelWhereThereIsOne) {
  const auto close = [](HWND box) { PostMessageA(box, WM_SYSCOMMAND, SC_CLOSE, 0); };
  EXPECT_EQ(show(MB_YESNOCANCEL, {close}), IDCANCEL);
  EXPECT_EQ(show(MB_RETRYCANCEL, {[](HWND box) { PostMessageA(box, WM_CLOSE, 0, 0); }}), IDCANCEL);
  if (onWine()) return;
  EXPECT_EQ(show(MB_OK, {close}), IDOK);
  EXPECT_EQ(keys(MB_OK, {VK_ESCAPE}), IDOK);
  UINT state = 0;
  const auto look = [&](HWND box) {
    state = GetMenuState(GetSystemMenu(box, FALSE), SC_CLOSE, MF_BYCOMMAND);
    tap({VK_ESCAPE, 0}), PostMessageA(box, WM_CLOSE, 0, 0);
  };
  for (const auto &[type, first] : {std::pair{MB_YESNO, IDYES}, {MB_ABORTRETRYIGNORE, IDABORT}}) {
    EXPECT_EQ(show(type, {look, [](HWND) { tap({VK_RETURN, 0}); }}), first);
    EXPECT_TRUE(state & MF_GRAYED) << type;
  }
}

TEST_F(WinBox, ControlAndCCopyTheBoxAsText) {
  if (onWine()) GTEST_SKIP() << "Wine doesn't copy it";
  const auto copy = [](HWND) { press(kControl), tap({'C', 0}), release(kControl); };
  EXPECT_EQ(show(MB_RETRYCANCEL, {copy, pressing(IDCANCEL)}, nullptr, "some text"), IDCANCEL);
  const std::string copied = lookAt(CF_TEXT), line(27, '-');
  emptyClipboard();
  EXPECT_EQ(copied.substr(0, copied.find("some text") + 9), line + "\r\ncaption\r\n" + line + "\r\nsome text");
  EXPECT_EQ(copied.find('&'), std::string::npos);
}

TEST_F(WinBox, TheMouseAnswers) {
  EXPECT_EQ(show(MB_YESNO,
                 {[](HWND box) { move(GetDlgItem(box, IDNO), 5, 5); }, [](HWND) { button(MOUSEEVENTF_LEFTDOWN); },
                  [](HWND box) { move(GetDlgItem(box, IDNO), 5, -20), button(MOUSEEVENTF_LEFTUP); }, // let go outside
                  [](HWND box) { move(GetDlgItem(box, IDNO), 6, 6); }, [](HWND) { click(); }}),
            IDNO);
}

TEST_F(WinBox, TheOwnerIsDisabledUntilTheBoxIsAnswered) {
  const HWND owner = make("A", kTop, 100, 100, 300, 200), child = make("C", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50, owner);
  SetActiveWindow(owner), pump(30);
  record("FL");
  std::string seen;
  EXPECT_EQ(show(MB_OK, {[&](HWND box) {
                   seen = std::string(IsWindowEnabled(owner) ? "on " : "off ") +
                          (GetWindow(box, GW_OWNER) == owner ? "owned " : "") + textOf(box) +
                          (GetActiveWindow() == box ? " active" : "");
                   pressing(IDOK)(box);
                 }},
                 child),
            IDOK);
  EXPECT_EQ(seen, "off owned caption active");
  EXPECT_EQ(pump(), "A: KILLFOCUS none\nA: ENABLE\nA: ACTIVATE new\nA: ENABLE 1\nA: ACTIVATE 1 new\nA: SETFOCUS new");
  EXPECT_EQ(GetFocus(), owner);

  // a disabled owner stays disabled, but not on Wine
  if (onWine()) return;
  EnableWindow(owner, FALSE);
  EXPECT_EQ(show(MB_OK, {pressing(IDOK)}, owner), IDOK);
  EXPECT_FALSE(IsWindowEnabled(owner));
  EnableWindow(owner, TRUE);
}

TEST_F(WinBox, ATaskModalBoxDisablesAllWindowsOfTheThread) {
  const HWND a = make("A", kTop, 0, 0, 200, 100), b = make("B", kTop, 300, 0, 200, 100);
  std::string seen;
  const auto look = [&](HWND box) {
    seen = std::to_string(IsWindowEnabled(a)) + std::to_string(IsWindowEnabled(b));
    pressing(IDOK)(box);
  };
  EXPECT_EQ(show(MB_OK, {look}), IDOK);
  EXPECT_EQ(seen, "11");
  EXPECT_EQ(show(MB_TASKMODAL, {look}), IDOK);
  EXPECT_EQ(seen, "00");
  EXPECT_TRUE(IsWindowEnabled(a));
  EXPECT_TRUE(IsWindowEnabled(b));
}

TEST_F(WinBox, MessagesTimersAndSecondBoxesGoOnInside) {
  const HWND owner = make("A", kTop, 100, 100, 300, 200);
  pump(30);
  int inner = 0;
  answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT &result) {
    if (message == WM_USER + 1) inner = MessageBoxA(owner, "second", "inner", MB_YESNO);
    return result = 5, message >= WM_USER;
  };
  record("O");
  std::string front;
  EXPECT_EQ(show(MB_OK,
                 {[&](HWND) { PostMessageA(owner, WM_USER, 1, 2), PostMessageA(owner, WM_USER + 1, 0, 0); },
                  [&](HWND box) { front = textOf(box), pressing(IDNO)(box); }, pressing(IDOK)},
                 owner),
            IDOK);
  EXPECT_EQ(front, "inner");
  EXPECT_EQ(inner, IDNO);
  EXPECT_EQ(take(), "A: USER+0 1 2\nA: USER+1 0");
  EXPECT_TRUE(IsWindowEnabled(owner));
}

TEST_F(WinBox, AQuitEndsTheBoxAndIsKept) {
  const HWND owner = make("A", kTop, 100, 100, 300, 200);
  show(MB_OK, {[](HWND) { PostQuitMessage(7); }}, owner);
  MSG message{};
  ASSERT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7u);
  EXPECT_EQ(frontDialog(), nullptr);
  EXPECT_EQ(IsWindowEnabled(owner), !onWine()) << "Wine leaves it disabled";
}

TEST_F(WinBox, AnOwnerThatEndsTakesTheBoxWithIt) {
  const HWND owner = make("A", kTop, 100, 100, 300, 200), other = make("B", kTop, 500, 100, 300, 200);
  EXPECT_EQ(show(MB_YESNO, {[&](HWND) { DestroyWindow(owner); }}, owner), 0);
  EXPECT_TRUE(IsWindowEnabled(other));
  EXPECT_EQ(frontDialog(), nullptr);
}

TEST_F(WinBox, TextsOfAnyLengthFitTheScreen) {
  std::string text;
  while (text.size() < 10000) text += "many words and some more\n";
  RECT screen{}, seen{};
  GetWindowRect(GetDesktopWindow(), &screen);
  const auto look = [&](HWND box) { GetWindowRect(box, &seen), pressing(IDOK)(box); };
  EXPECT_EQ(show(MB_OK, {look}, nullptr, std::string(2000, 'w').c_str()), IDOK);
  const LONG most = onWine() ? 100000 : screen.right - screen.left; // Wine breaks no words
  EXPECT_LE(seen.right - seen.left, most);
  EXPECT_EQ(show(MB_OK, {look}, nullptr, text.c_str()), IDOK);
  EXPECT_GT(seen.bottom - seen.top, 300);
  EXPECT_EQ(show(MB_OK, {look}, nullptr, nullptr), IDOK);
  const LONG small = seen.bottom - seen.top;
  EXPECT_LT(small, 200);
  EXPECT_EQ(show(MB_OK | MB_ICONQUESTION, {look}, nullptr, "x"), IDOK);
  EXPECT_GT(seen.bottom - seen.top, small) << "room for the icon";
}

TEST_F(WinBox, WhatIsNoOwnerOrNoSetIsRefused) {
  if (onWine()) GTEST_SKIP() << "Wine answers -1, and shows all buttons";
  const HWND gone = make("A", kTop, 0, 0, 99, 99);
  DestroyWindow(gone);
  expectErrors({{"owner", [&] { return MessageBoxA(gone, "", "", MB_OK) == 0; }, ERROR_INVALID_WINDOW_HANDLE},
                {"set", [] { return MessageBoxA(nullptr, "", "", 7) == 0; }, ERROR_INVALID_MSGBOX_STYLE}});
}

TEST_F(WinBox, WhatAProcedureThrowsInsideReachesTheCallerAndLeavesNothing) {
  if (onWindows()) GTEST_SKIP() << "Windows has frames of its own there that nothing unwinds";
  const HWND owner = make("A", kTop, 100, 100, 300, 200);
  answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &) {
    if (message == WM_USER) throw std::runtime_error("told");
    return false;
  };
  const auto handles = openHandles();
  const auto box = [&] { show(MB_OK, {[&](HWND) { PostMessageA(owner, WM_USER, 0, 0); }}, owner); };
  EXPECT_THROW(box(), std::runtime_error);
  EXPECT_EQ(frontDialog(), nullptr);
  EXPECT_TRUE(IsWindowEnabled(owner));
  EXPECT_EQ(openHandles(), handles);
  EXPECT_EQ(show(MB_YESNO, {pressing(IDNO)}, owner), IDNO);
}

TEST_F(WinBox, AThousandBoxesLeaveNothing) {
  if (onWindows()) GTEST_SKIP() << "what Windows keeps is its own";
  const HWND owner = make("A", kTop, 100, 100, 300, 200);
  answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &) {
    if (message == WM_USER) SendMessageA(frontDialog(), WM_COMMAND, IDYES, 0);
    return message == WM_USER;
  };
  expectNothingLeft([&] {
    PostMessageA(owner, WM_USER, 0, 0);
    const int id = MessageBoxA(owner, "text", "caption", MB_YESNO | MB_ICONHAND);
    return pump(), id == IDYES;
  });
}

TEST(WinBoxUnseen, IsWrittenAndAnsweredAtOnce) {
  if (hasDisplay()) GTEST_SKIP() << "there is somebody to ask";
  testing::internal::CaptureStderr();
  EXPECT_EQ(MessageBoxA(nullptr, "\x83\x65\x83\x58\x83\x67", "caption", MB_YESNO | MB_DEFBUTTON2), IDNO);
  EXPECT_EQ(MessageBoxA(nullptr, "again", nullptr, MB_OK), IDOK);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "caption: テスト\nエラー: again\n");
}
