// Dialogs for files: the list of filters, what a hook hears of the user's steps, and names of other scripts.
#include "support/boxes.h"
#include "support/desktop.h"
#include "support/files.h"

constexpr int kName = 1148, kWineName = 1152, kFilters = 0x470, kList = 0x460, kUp = 0x500;

static std::string told; // to the hook

static UINT_PTR CALLBACK hook(HWND window, UINT message, WPARAM, LPARAM lParam) {
  if (message != WM_NOTIFY) return 0;
  const auto *notice = reinterpret_cast<const OFNOTIFYA *>(lParam);
  const std::pair<UINT, const char *> known[] = {{CDN_INITDONE, "begin"},
                                                 {CDN_FOLDERCHANGE, "folder"},
                                                 {CDN_SELCHANGE, "select"},
                                                 {CDN_TYPECHANGE, "type"},
                                                 {CDN_FILEOK, "ok"}};
  for (const auto &[code, word] : known) {
    if (notice->hdr.code != code) continue;
    told += word;
    char spec[MAX_PATH] = "";
    if (code == CDN_SELCHANGE) {
      SendMessageA(GetParent(window), CDM_GETSPEC, sizeof spec, reinterpret_cast<LPARAM>(spec));
      told += "(" + std::string(spec) + ")";
    }
    if (code == CDN_TYPECHANGE) told += std::to_string(notice->lpOFN->nFilterIndex);
    told += " ";
  }
  return 0;
}

class WinChooser : public DesktopTest {
 protected:
  void SetUp() override {
    told.clear();
    for (const char *name : {"a.wav", "b.aif", "c.txt"}) writeFile(temp_.file(name), "");
    GetCurrentDirectoryA(sizeof before_, before_);
    folder_ = std::string(before_) + "\\" + temp_.path();
    CreateDirectoryA((folder_ + "\\sub").c_str(), nullptr);
    choice_.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
    choice_.lpstrFilter = "Sound\0*.wav;*.aif\0Text\0*.txt\0All\0*.*\0";
    choice_.nFilterIndex = 1;
    choice_.lpstrFile = file_, choice_.nMaxFile = sizeof file_;
    choice_.lpstrInitialDir = folder_.c_str();
    choice_.Flags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    choice_.lpfnHook = hook;
  }
  // What follows the folder in the path; or why there is none.
  std::string open(std::vector<Answerer::Step> steps) {
    file_[0] = 0;
    const Answerer answerer(std::move(steps));
    const BOOL chosen = GetOpenFileNameA(&choice_);
    char now[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof now, now);
    EXPECT_STREQ(now, before_) << "the current folder has changed";
    if (answerer.gaveUp()) return "stayed open";
    if (!chosen) return "none " + std::to_string(CommDlgExtendedError());
    return std::string(file_).substr(folder_.size());
  }
  static Answerer::Step keys(int id, std::vector<BYTE> typed) {
    return [=](HWND dialog) {
      SetFocus(GetDlgItem(dialog, id));
      for (const BYTE key : typed) keybd_event(key, 0, 0, 0), keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    };
  }
  static Answerer::Step press(int id) {
    return [=](HWND dialog) { PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0); };
  }
  static Answerer::Step type(const std::string &text) {
    return [=](HWND dialog) {
      const HWND field = GetDlgItem(dialog, kName);
      SetWindowTextA(field ? field : GetDlgItem(dialog, kWineName), text.c_str());
      PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    };
  }

  const TempFolder temp_;
  std::string folder_;
  OPENFILENAMEA choice_{};
  char file_[600] = "", before_[MAX_PATH] = "";
  const KeepsDialogs kept_;
};

TEST_F(WinChooser, FiltersAreABoxWithAListAndChooseByAnyOfTheirPatterns) {
  std::string filters;
  LRESULT chosen = -1;
  const auto look = [&](HWND dialog) {
    const HWND box = GetDlgItem(dialog, kFilters);
    for (LRESULT i = 0; i < SendMessageA(box, CB_GETCOUNT, 0, 0); ++i) {
      char text[100] = "";
      SendMessageA(box, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
      filters += text + std::string(" ");
    }
    chosen = SendMessageA(box, CB_GETCURSEL, 0, 0);
  };
  EXPECT_EQ(open({look, type("b.aif")}), "\\b.aif");
  EXPECT_EQ(filters, "Sound Text All ");
  EXPECT_EQ(chosen, 0);
  EXPECT_EQ(choice_.nFilterIndex, 1u);
}

// The list of files is the layer's own.
TEST_F(WinChooser, TheHookHearsOfEveryStep) {
  if (onWindows()) GTEST_SKIP() << "the system's list works otherwise";
  EXPECT_EQ(open({keys(kList, {VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN})}), "\\b.aif");
  EXPECT_EQ(told, "begin folder select() select(a.wav) select(b.aif) ok ");
  told.clear();
  EXPECT_EQ(
      open({keys(kFilters, {VK_F4, VK_DOWN, VK_RETURN}), type("sub"), press(kUp), keys(kList, {VK_END, VK_RETURN})}),
      "\\c.txt");
  EXPECT_EQ(told, "begin folder type2 folder folder select(c.txt) ok ");
  EXPECT_EQ(choice_.nFilterIndex, 2u);
}

TEST_F(WinChooser, TheMouseChoosesFromTheListOfFilters) {
  if (onWindows()) GTEST_SKIP() << "the system's box works otherwise";
  const auto at = [](int row) {
    return [=](HWND dialog) {
      RECT box{}; // of the field, or of the list, which is in front of all
      GetWindowRect(row ? GetWindow(dialog, GW_CHILD) : GetDlgItem(dialog, kFilters), &box);
      SetCursorPos(box.left + 20, box.top + (row ? row * 16 - 8 : 10));
    };
  };
  const auto click = [](HWND) {
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0), mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
  };
  std::string open1, open2;
  const auto state = [](std::string &to) {
    return [&](HWND dialog) {
      to = SendMessageA(GetDlgItem(dialog, kFilters), CB_GETDROPPEDSTATE, 0, 0) ? "open" : "closed";
    };
  };
  EXPECT_EQ(open({at(0), click, state(open1), at(3), click, state(open2), press(IDCANCEL)}), "none 0");
  EXPECT_EQ(open1 + " " + open2, "open closed");
  EXPECT_EQ(told, "begin folder type3 ");
}

#ifndef _WIN32
// What code page 932 lacks.
TEST_F(WinChooser, NamesOfOtherScriptsAreListedAndComeBackUsable) {
  writeFile(temp_.file("zé한\xFF.wav"), "found");
  EXPECT_EQ(open({keys(kList, {VK_END, VK_RETURN})}).substr(0, 2), "\\z");
  FILE *const file = platformOpenStream(file_, "rb");
  ASSERT_NE(file, nullptr) << file_;
  char bytes[6] = "";
  EXPECT_EQ(std::fread(bytes, 1, 5, file), 5u);
  std::fclose(file);
  EXPECT_STREQ(bytes, "found");
}
#endif

TEST_F(WinChooser, AnEndOfTheProgramIsNoChoice) {
  const UINT_PTR late = SetTimer(nullptr, 0, 3000, nullptr);
  const BOOL chosen = [&] {
    const Answerer answerer({[](HWND) { PostQuitMessage(3); }});
    return GetOpenFileNameA(&choice_);
  }();
  if (!onWine()) { // which answers as if OK had been pressed
    EXPECT_FALSE(chosen);
  }
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0)) {
    ASSERT_NE(message.message, UINT{WM_TIMER}) << "it is lost";
  }
  EXPECT_EQ(message.wParam, 3u) << "the loop outside sees it";
  KillTimer(nullptr, late);
}
