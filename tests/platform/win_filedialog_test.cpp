// The dialogs that choose files and folders.
#include "support/boxes.h"
#include "support/desktop.h"
#include "support/files.h"
#include "support/input.h"

#include <filesystem>

constexpr int kName = 1148, kWineName = 1152; // the field, which Wine makes otherwise

static std::string currentFolder() {
  char folder[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof folder, folder);
  return folder;
}

// The texts up to the end of the list, with bars between them.
static std::string listed(const char *texts) {
  std::string all;
  for (; *texts; texts += std::string(texts).size() + 1) all += (all.empty() ? "" : "|") + std::string(texts);
  return all;
}

static std::string told; // to the hook
static int refusals;

static UINT_PTR CALLBACK hook(HWND window, UINT message, WPARAM, LPARAM lParam) {
  if (message == WM_INITDIALOG) told = "begin ";
  if (message != WM_NOTIFY) return 0;
  const auto *notice = reinterpret_cast<const OFNOTIFYA *>(lParam);
  if (notice->hdr.hwndFrom != GetParent(window)) told += "from elsewhere ";
  switch (notice->hdr.code) {
  case CDN_INITDONE: told += "done "; return 0;
  case CDN_FOLDERCHANGE: told += "folder "; return 0;
  case CDN_FILEOK: {
    char path[MAX_PATH] = "", folder[MAX_PATH] = "";
    const LRESULT length =
        SendMessageA(GetParent(window), CDM_GETFILEPATH, sizeof path, reinterpret_cast<LPARAM>(path));
    SendMessageA(GetParent(window), CDM_GETFOLDERPATH, sizeof folder, reinterpret_cast<LPARAM>(folder));
    told += "ok " + std::string(path).substr(std::string(folder).size()) + " " +
            (length == static_cast<LRESULT>(std::string(path).size()) + 1 ? "" : "another length ");
    if (refusals-- <= 0) return 0;
    SetWindowLongPtrA(window, DWLP_MSGRESULT, 1);
    return 1;
  }
  default: return 0;
  }
}

class WinFileDialog : public DesktopTest {
 protected:
  void SetUp() override {
    for (const char *name : {"a.wav", "b.wav", "c d.txt", "noext"}) writeFile(temp_.file(name), "");
    std::filesystem::create_directory(temp_.file("sub"));
    writeFile(temp_.file("sub/x.wav"), "");
    folder_ = before_ + "\\" + temp_.path();
    choice_.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
    choice_.lpstrFilter = "Wave\0*.wav;*.aif\0Text\0*.txt\0All\0*.*\0";
    choice_.nFilterIndex = 1;
    choice_.lpstrFile = file_, choice_.nMaxFile = sizeof file_;
    choice_.lpstrFileTitle = title_, choice_.nMaxFileTitle = sizeof title_;
    choice_.lpstrInitialDir = folder_.c_str();
    choice_.Flags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_NOCHANGEDIR;
    choice_.lpfnHook = hook;
    refusals = 0;
  }
  void TearDown() override { SetCurrentDirectoryA(before_.c_str()); }

  static Answerer::Step type(const std::string &text) {
    return [=](HWND dialog) {
      const HWND field = GetDlgItem(dialog, kName);
      SetWindowTextA(field ? field : GetDlgItem(dialog, kWineName), text.c_str());
      pressing(IDOK)(dialog);
    };
  }
  static Answerer::Step keys(std::vector<BYTE> typed) {
    return [=](HWND dialog) {
      if (const HWND list = GetDlgItem(dialog, 0x460)) SetFocus(list);
      for (const BYTE key : typed) tap({key, 0});
    };
  }
  // Result: what follows the folder in the path, the offsets of its name and its extension; or why there is none.
  std::string show(bool opens, DWORD flags, std::vector<Answerer::Step> steps) {
    OPENFILENAMEA choice = choice_;
    std::snprintf(file_, sizeof file_, "%s", given_.c_str());
    choice.Flags |= flags;
    const Answerer answerer(std::move(steps));
    const BOOL chosen = (opens ? GetOpenFileNameA : GetSaveFileNameA)(&choice);
    flags_ = choice.Flags, filter_ = choice.nFilterIndex;
    if (answerer.gaveUp()) return "stayed open";
    if (!chosen) return "none " + std::to_string(CommDlgExtendedError());
    const std::string path = file_;
    if (path.compare(0, folder_.size(), folder_) != 0) return path;
    const auto from = static_cast<int>(folder_.size());
    return path.substr(folder_.size()) + " " + std::to_string(choice.nFileOffset - from) + " " +
           std::to_string(choice.nFileExtension ? choice.nFileExtension - from : 0);
  }
  std::string open(const std::string &text, DWORD flags = 0) { return show(true, flags, {type(text)}); }
  std::string save(const std::string &text, DWORD flags = 0) { return show(false, flags, {type(text)}); }

  const std::string before_ = currentFolder();
  const TempFolder temp_;
  std::string folder_, given_; // a name to begin with
  OPENFILENAMEA choice_{};
  char file_[600] = "", title_[MAX_PATH] = "old";
  DWORD flags_ = 0, filter_ = 0;
  const KeepsDialogs kept_;
};

TEST_F(WinFileDialog, ANameBecomesAPathWithItsParts) {
  EXPECT_EQ(open("a.wav"), "\\a.wav 1 3");
  EXPECT_STREQ(title_, "a.wav");
  EXPECT_EQ(filter_, 1u);
  EXPECT_EQ(open("noext"), "\\noext 1 0");
  EXPECT_EQ(open("sub\\x.wav"), "\\sub\\x.wav 5 7");
  EXPECT_EQ(open("sub\\..\\a.wav"), "\\a.wav 1 3");
  EXPECT_EQ(open("\"c d.txt\""), "\\c d.txt 1 5");
  EXPECT_EQ(open(folder_ + "\\b.wav"), "\\b.wav 1 3");
  EXPECT_EQ(show(true, 0, {pressing(IDCANCEL)}), "none 0");
  EXPECT_EQ(currentFolder(), before_);
  given_ = folder_ + "\\sub\\x.wav";
  EXPECT_EQ(show(true, 0, {pressing(IDOK)}), "\\sub\\x.wav 5 7");
  given_ = "a.wav";
  EXPECT_EQ(show(true, 0, {pressing(IDOK)}), "\\a.wav 1 3");
}

TEST_F(WinFileDialog, AnExtensionIsAddedToANameWithoutOne) {
  choice_.lpstrDefExt = "dat";
  EXPECT_EQ(save("new"), "\\new.wav 1 5") << "the filter's";
  EXPECT_EQ(save("new.abc"), "\\new.abc 1 5");
  choice_.nFilterIndex = 3;
  EXPECT_EQ(save("new"), "\\new.dat 1 5") << "the default one, where the filter has none";
  EXPECT_FALSE(flags_ & OFN_EXTENSIONDIFFERENT);
  EXPECT_EQ(open("noext"), "\\noext 1 0") << "as it is, where there is such a file";
  choice_.lpstrDefExt = nullptr;
  EXPECT_EQ(save("new"), "\\new 1 0");
}

// Answers the dialog's question too, and cancels what is still open then.
TEST_F(WinFileDialog, WhatMustBeThereIsAskedFor) {
  const auto refused = [&](bool opens, const char *name, DWORD flags) {
    return show(opens, flags, {type(name), pressing(IDOK), pressing(IDCANCEL)});
  };
  EXPECT_EQ(open("zz.wav"), "\\zz.wav 1 4");
  EXPECT_EQ(refused(true, "zz.wav", OFN_FILEMUSTEXIST), "none 0");
  EXPECT_EQ(open("a.wav", OFN_FILEMUSTEXIST), "\\a.wav 1 3");
  EXPECT_EQ(refused(true, "nowhere\\a.wav", OFN_PATHMUSTEXIST), "none 0");
  EXPECT_EQ(refused(false, "nowhere\\a.wav", OFN_PATHMUSTEXIST), "none 0");
  EXPECT_EQ(save("zz.wav", OFN_FILEMUSTEXIST), "\\zz.wav 1 4") << "counts when opening only";
  EXPECT_EQ(refused(true, "a<b", 0), "none 0");
}

TEST_F(WinFileDialog, AFileIsReplacedWhenTheUserWantsIt) {
  HWND dialog = nullptr, owner = nullptr;
  const auto first = [&](HWND shown) { dialog = shown, type("a.wav")(shown); };
  const auto agree = [&](HWND box) { owner = GetWindow(box, GW_OWNER), pressing(IDYES)(box); };
  EXPECT_EQ(show(false, OFN_OVERWRITEPROMPT, {first, agree}), "\\a.wav 1 3");
  EXPECT_EQ(owner, dialog);
  EXPECT_EQ(show(false, OFN_OVERWRITEPROMPT, {type("a.wav"), pressing(IDNO), type("b2.wav")}), "\\b2.wav 1 4");
}

TEST_F(WinFileDialog, SeveralNamesComeBehindTheirFolder) {
  EXPECT_EQ(show(true, OFN_ALLOWMULTISELECT, {type("\"a.wav\" \"b.wav\"")}), " 1 0");
  EXPECT_EQ(listed(file_), folder_ + "|a.wav|b.wav");
  EXPECT_EQ(open("a.wav", OFN_ALLOWMULTISELECT), "\\a.wav 1 3");
  EXPECT_EQ(listed(file_), folder_ + "\\a.wav") << "the list of one ends too";
}

TEST_F(WinFileDialog, TooLittleRoomIsToldWithWhatIsNeeded) {
  choice_.nMaxFile = 5;
  EXPECT_EQ(open("a.wav"), "none " + std::to_string(FNERR_BUFFERTOOSMALL));
  const size_t needed = static_cast<BYTE>(file_[0]) | static_cast<size_t>(static_cast<BYTE>(file_[1])) << 8;
  EXPECT_EQ(needed, folder_.size() + 7);
  choice_.lStructSize = 5;
  if (!onWine()) { // which tells 0 or that
    EXPECT_EQ(open("a.wav"), "none " + std::to_string(CDERR_STRUCTSIZE));
  }
}

TEST_F(WinFileDialog, FoldersAreEntered) {
  choice_.Flags &= ~DWORD{OFN_NOCHANGEDIR};
  if (!onWine()) {
    EXPECT_EQ(show(true, 0, {type("sub"), type("x.wav")}), "\\sub\\x.wav 5 7");
  }
  std::string folder(MAX_PATH, '\0');
  const auto look = [&](HWND dialog) {
    SendMessageA(dialog, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(folder.data()));
    pressing(IDCANCEL)(dialog);
  };
  EXPECT_EQ(show(true, 0, {type("sub"), look}), "none 0");
  EXPECT_STREQ(folder.c_str(), (folder_ + "\\sub").c_str());
}

// The list is the layer's own.
TEST_F(WinFileDialog, TheListShowsWhatTheFilterNamesAndKeysChooseFromIt) {
  if (onWindows()) GTEST_SKIP() << "the system's list works otherwise";
  EXPECT_EQ(show(true, 0, {keys({VK_END, VK_RETURN})}), "\\b.wav 1 3");
  EXPECT_EQ(show(true, 0, {keys({VK_DOWN, VK_RETURN}), keys({VK_DOWN, VK_RETURN})}), "\\sub\\x.wav 5 7");
  choice_.nFilterIndex = 2;
  EXPECT_EQ(show(true, 0, {keys({VK_END, VK_RETURN})}), "\\c d.txt 1 5");
  EXPECT_EQ(show(true, 0, {type("b*"), keys({VK_END, VK_RETURN})}), "\\b.wav 1 3");
}

TEST_F(WinFileDialog, TheHookHearsOfItAndMayRefuse) {
  refusals = 1;
  EXPECT_EQ(show(true, 0, {type("a.wav"), pressing(IDOK)}), "\\a.wav 1 3");
  EXPECT_EQ(told, "begin done folder ok \\a.wav ok \\a.wav ");
}

TEST_F(WinFileDialog, ReadingOnlyIsTheUsersChoice) {
  if (onWine()) GTEST_SKIP() << "Wine leaves a bit that was set";
  open("a.wav", OFN_READONLY);
  EXPECT_TRUE(flags_ & OFN_READONLY);
  show(true, OFN_READONLY,
       {[](HWND dialog) { SendMessageA(GetDlgItem(dialog, 0x410), BM_CLICK, 0, 0); }, type("a.wav")});
  EXPECT_FALSE(flags_ & OFN_READONLY);
}

TEST_F(WinFileDialog, NamesInOtherScriptsComeBackUsable) {
  const std::string name = "\x95\x5C.wav"; // whose second byte is a backslash
  std::fclose(platformOpenStream((folder_ + "\\" + name).c_str(), "wb"));
  EXPECT_EQ(open(name, OFN_FILEMUSTEXIST), "\\" + name + " 1 4");
  FILE *const file = platformOpenStream(file_, "rb");
  ASSERT_NE(file, nullptr);
  std::fclose(file);
}

TEST_F(WinFileDialog, AThousandLeaveNothing) {
  if (onWindows()) GTEST_SKIP() << "what Windows keeps is its own";
  const HWND owner = make("A", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 300, 200);
  answer = [](HWND, UINT message, WPARAM, LPARAM, LRESULT &) {
    if (message == WM_USER) SendMessageA(frontDialog(), WM_COMMAND, IDOK, 0);
    return message == WM_USER;
  };
  choice_.hwndOwner = owner;
  expectNothingLeft([&] {
    std::snprintf(file_, sizeof file_, "a.wav");
    PostMessageA(owner, WM_USER, 0, 0);
    const BOOL chosen = GetOpenFileNameA(&choice_);
    return pump(), chosen;
  });
}

// ---- Folders

struct Browsing {
  std::string start, heard, chosen;
};

static int CALLBACK browsed(HWND dialog, UINT message, LPARAM list, LPARAM data) {
  auto *const browsing = reinterpret_cast<Browsing *>(data);
  char path[MAX_PATH] = "";
  if (message == BFFM_SELCHANGED) {
    SHGetPathFromIDListA(reinterpret_cast<LPCITEMIDLIST>(list), path);
    browsing->heard = path;
  }
  if (message == BFFM_INITIALIZED)
    SendMessageA(dialog, BFFM_SETSELECTIONA, TRUE, reinterpret_cast<LPARAM>(browsing->start.c_str()));
  return 0;
}

static bool browse(Browsing &browsing, std::vector<Answerer::Step> steps) {
  BROWSEINFOA how{};
  how.lpszTitle = "prompt", how.lpfn = browsed, how.lParam = reinterpret_cast<LPARAM>(&browsing);
  const Answerer answerer(std::move(steps));
  const LPITEMIDLIST list = SHBrowseForFolderA(&how);
  if (!list) return false;
  char path[MAX_PATH] = "";
  EXPECT_TRUE(SHGetPathFromIDListA(list, path));
  browsing.chosen = path;
  IMalloc *allocator = nullptr;
  EXPECT_EQ(SHGetMalloc(&allocator), S_OK);
  allocator->Free(list), allocator->Release();
  return true;
}

TEST_F(WinFileDialog, AFolderIsChosenAndGivenBack) {
  CoInitialize(nullptr);
  // Wine's tree doesn't get to every folder of the system below
  const std::string wanted = onWine() ? "C:\\windows\\system32" : folder_ + "\\sub";
  Browsing browsing{wanted, "", ""};
  EXPECT_TRUE(browse(browsing, {pressing(IDOK)}));
  EXPECT_EQ(browsing.chosen, wanted);
  EXPECT_EQ(browsing.heard, wanted);
  EXPECT_FALSE(browse(browsing, {pressing(IDCANCEL)}));
  CoUninitialize();
  char path[MAX_PATH] = "kept";
  EXPECT_FALSE(SHGetPathFromIDListA(nullptr, path));
}

TEST_F(WinFileDialog, KeysWalkTheTreeOfFolders) {
  if (onWindows()) GTEST_SKIP() << "the system's tree works otherwise";
  Browsing browsing{folder_, "", ""};
  EXPECT_TRUE(browse(browsing, {keys({VK_RIGHT, VK_DOWN, VK_RETURN})}));
  EXPECT_EQ(browsing.chosen, folder_ + "\\sub");
  EXPECT_TRUE(browse(browsing, {keys({VK_RIGHT, VK_DOWN, VK_LEFT, VK_RETURN})}));
  EXPECT_EQ(browsing.chosen, folder_);
}

TEST(WinFileDialogUnseen, ChoosesNothingAtOnce) {
  if (hasDisplay()) GTEST_SKIP() << "there is somebody to ask";
  char file[MAX_PATH] = "";
  OPENFILENAMEA choice{};
  choice.lStructSize = sizeof choice, choice.lpstrFile = file, choice.nMaxFile = sizeof file;
  EXPECT_FALSE(GetOpenFileNameA(&choice));
  EXPECT_FALSE(GetSaveFileNameA(&choice));
  EXPECT_EQ(CommDlgExtendedError(), 0u);
  BROWSEINFOA how{};
  EXPECT_EQ(SHBrowseForFolderA(&how), nullptr);
}
