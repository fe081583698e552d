// Message boxes with a button for help, and with a text that fills the screen.
#include "support/boxes.h"
#include "support/desktop.h"
#include "support/input.h"

static std::string helped; // ids of the controls that the owner was asked about

class WinBoxHelp : public DesktopTest {
 protected:
  void SetUp() override {
    helped.clear();
    answer = [](HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT &result) {
      if (message != WM_HELP) return false;
      const auto *info = reinterpret_cast<const HELPINFO *>(lParam);
      helped += std::to_string(info->iCtrlId) + (info->iContextType == HELPINFO_WINDOW ? "" : " no window");
      helped +=
          wParam || info->cbSize != sizeof *info || GetDlgCtrlID(static_cast<HWND>(info->hItemHandle)) != info->iCtrlId
              ? " wrong "
              : " ";
      result = TRUE;
      return true;
    };
  }
  // What the box answers once it is told to, or 99.
  int show(UINT type, Answerer::Step step, int last, const std::string &text = "text") {
    const HWND owner = make("A", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 300, 200);
    const Answerer answerer(
        {std::move(step), [=](HWND box) { PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(last), 0); }});
    const int answered = MessageBoxA(owner, text.c_str(), "caption", type);
    DestroyWindow(owner);
    return answerer.gaveUp() ? 99 : answered;
  }
  const KeepsDialogs open_;
};

static void press(BYTE key) { keybd_event(key, 0, 0, 0), keybd_event(key, 0, KEYEVENTF_KEYUP, 0); }

TEST_F(WinBoxHelp, TheOwnerIsAskedAndTheBoxStays) {
  if (onWine()) GTEST_SKIP() << "Wine doesn't ask for the button, and asks twice for the key";
  const auto click = [](HWND box) { PostMessageA(box, WM_COMMAND, IDHELP, 0); };
  const auto key = [](HWND) { press(VK_F1); };
  EXPECT_EQ(show(MB_OKCANCEL | MB_HELP, click, IDCANCEL), IDCANCEL);
  EXPECT_EQ(helped, "1 ") << "the button with the focus";
  helped.clear();
  EXPECT_EQ(show(MB_YESNO | MB_HELP | MB_DEFBUTTON2, key, IDNO), IDNO);
  EXPECT_EQ(helped, "7 ");
  helped.clear();
  EXPECT_EQ(show(MB_YESNO, click, IDNO), IDNO);
  EXPECT_EQ(helped, "") << "without such a button";
}

TEST_F(WinBoxHelp, TheButtonStandsBehindTheOthers) {
  std::vector<int> ids;
  const auto look = [&](HWND box) {
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
      if (SendMessageA(child, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) ids.push_back(GetDlgCtrlID(child));
    if (GetDlgCtrlID(GetFocus()) == IDHELP) ids.push_back(0);
  };
  EXPECT_EQ(show(MB_ABORTRETRYIGNORE | MB_HELP | MB_DEFBUTTON4, look, IDRETRY), IDRETRY);
  const std::vector<int> expected = {IDABORT, IDRETRY, IDIGNORE, IDHELP, 0};
  if (onWindows()) return; // which may have others that are hidden
  EXPECT_EQ(ids, expected);
}

TEST_F(WinBoxHelp, ATextOfTenThousandBytesWrapsAndStaysOnTheScreen) {
  std::string words;
  while (words.size() < 10000) words += "some words ";
  std::string japanese;
  while (japanese.size() < 10000) japanese += "\x93\xFA\x96\x7B";
  for (const std::string &text : {words, japanese, std::string(10000, 'x'), std::string(10000, '\n')}) {
    RECT rect{}, button{};
    const auto look = [&](HWND box) { GetWindowRect(box, &rect), GetWindowRect(GetDlgItem(box, IDYES), &button); };
    EXPECT_EQ(show(MB_YESNO | MB_ICONHAND, look, IDNO, text), IDNO);
    if (onWindows()) continue; // whose boxes grow beyond it
    EXPECT_GE(rect.top, 0) << text.substr(0, 4);
    EXPECT_GE(rect.left, 0) << text.substr(0, 4);
    EXPECT_LE(rect.right, GetSystemMetrics(SM_CXSCREEN)) << text.substr(0, 4);
    EXPECT_LE(rect.bottom, GetSystemMetrics(SM_CYSCREEN)) << text.substr(0, 4);
    EXPECT_LT(button.bottom, rect.bottom) << text.substr(0, 4);
  }
}
