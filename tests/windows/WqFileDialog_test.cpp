#include "objects.h"
#include "support/boxes.h"
#include "support/desktop.h"
#include "support/files.h"

#include <memory>

static std::string currentFolder() {
  char folder[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof folder, folder);
  return folder;
}

class FileDialogTest : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    writeFile(temp_->file("a.wav"), "");
    folder_ = currentFolder() + "\\" + temp_->path();
    WqFileDialog_Init(&dialog);
  }
  void TearDown() override {
    temp_.reset();
    ObjectTest::TearDown();
  }
  static Answerer::Step type(const std::string &text, int button = IDOK) {
    return [=](HWND box) {
      const HWND field = GetDlgItem(box, 1148); // or 1152 on Wine
      SetWindowTextA(field ? field : GetDlgItem(box, 1152), text.c_str());
      PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    };
  }
  int show(std::vector<Answerer::Step> steps) {
    const Answerer answerer(std::move(steps));
    return WqFileDialog_Show(&dialog);
  }

  std::unique_ptr<TempFolder> temp_ = std::make_unique<TempFolder>();
  std::string folder_;
  WqFileDialog dialog;
  const KeepsDialogs kept_;
};

TEST_F(FileDialogTest, TheRecordTiesItsTextsTogether) {
  const OPENFILENAMEA &ofn = dialog.ofn;
  EXPECT_EQ(std::tuple(ofn.lpstrTitle, ofn.lpstrFile, ofn.lpstrDefExt, ofn.lpstrInitialDir, ofn.lpstrFilter),
            std::tuple(dialog.title, dialog.fileName, dialog.defExt, dialog.dir, dialog.filter));
  EXPECT_EQ(dialog.dir, currentFolder());
  wqMain.mainWnd = made(nullptr, {0, 0, 200, 100}).hwnd;
  WqFileDialog_AddExt(&dialog, "Wave", "wav", 0), WqFileDialog_SetOC(&dialog, 0xFF);
  EXPECT_EQ(std::tuple(dialog.mode, ofn.Flags, ofn.hwndOwner, ofn.nMaxFile),
            std::tuple(3u, 0xA1024u, wqMain.mainWnd, 260u));
  WqFileDialog_SetOCEx(&dialog, 0, OFN_READONLY);
  EXPECT_EQ(std::tuple(dialog.mode, ofn.Flags, WqFileDialog_IsReadOnly(&dialog)), std::tuple(0u, 0xA1027u, 1));
  EXPECT_STREQ(dialog.filter, "Wave(*.wav)") << "stays";
  WqFileDialog_SetOC(nullptr, 1);
}

TEST_F(FileDialogTest, FiltersAreAppendedInPairs) {
  WqFileDialog_AddExt(&dialog, "Wave", "wav", 1);
  WqFileDialog_AddExt(&dialog, "Text", "txt", 0);
  WqFileDialog_AddExt(&dialog, nullptr, "no", 1);
  WqFileDialog_AddExt(&dialog, "No", nullptr, 1);
  WqFileDialog_AddExt(nullptr, "No", "no", 1);
  const std::string all("Wave(*.wav)\0*.wav\0Text(*.txt)\0*.txt\0\0", 37);
  EXPECT_EQ(std::string(dialog.filter, all.size()), all);
  EXPECT_EQ(dialog.filterEnd, dialog.filter + all.size() - 1);
  EXPECT_STREQ(dialog.defExt, "wav");
  // 36 bytes are used; what takes all the rest but the last NUL fits, a byte more doesn't
  WqFileDialog_AddExt(&dialog, std::string(260 - 1 - 36 - 8 - 2 + 1, 'n').c_str(), "x", 0);
  EXPECT_EQ(dialog.filterEnd, dialog.filter + 36);
  WqFileDialog_AddExt(&dialog, std::string(260 - 1 - 36 - 8 - 2, 'n').c_str(), "x", 0);
  EXPECT_EQ(dialog.filterEnd, dialog.filter + 259);
  EXPECT_EQ(*dialog.filterEnd, '\0');
}

TEST_F(FileDialogTest, AChosenFileAndItsFolderStayInTheRecord) {
  const std::string before = currentFolder();
  wqMain.mainWnd = made(nullptr, {0, 0, 200, 100}).hwnd;
  WqFileDialog_SetOC(&dialog, WQ_FILEDIALOG_OPEN);
  WqFileDialog_Title(&dialog, "Choose");
  WqFileDialog_Dir(&dialog, folder_.c_str());
  WqFileDialog_AddExt(&dialog, "Wave", "wav", 1);
  std::string seen;
  EXPECT_NE(show({[&](HWND box) { seen = textOf(box), type("a.wav")(box); }}), 0);
  EXPECT_EQ(seen + ' ' + dialog.fileName + ' ' + dialog.dir, "Choose " + folder_ + "\\a.wav " + folder_);
  EXPECT_EQ(dialog.mode, WQ_FILEDIALOG_OPEN);
  EXPECT_EQ(currentFolder(), before);
  EXPECT_TRUE(IsWindowEnabled(wqMain.mainWnd));
  EXPECT_EQ(GetFocus(), wqMain.mainWnd);

  WqFileDialog_FileName(&dialog, "kept");
  EXPECT_EQ(show({type("typed", IDCANCEL)}), 0);
  EXPECT_EQ(dialog.fileName + std::string(" ") + dialog.dir, "kept " + folder_);

  WqFileDialog_FileName(&dialog, "");
  WqFileDialog_SetOC(&dialog, 0);
  EXPECT_NE(show({type("new")}), 0);
  EXPECT_EQ(dialog.fileName, folder_ + "\\new.wav");
}

TEST_F(FileDialogTest, ARecordIsShownOnceAtATime) {
  wqMain.mainWnd = made(nullptr, {0, 0, 200, 100}).hwnd;
  WqFileDialog_SetOC(&dialog, WQ_FILEDIALOG_OPEN), WqFileDialog_Dir(&dialog, folder_.c_str());
  uint32_t mode = 0;
  int inner = -1;
  const auto again = [&](HWND box) { mode = dialog.mode, inner = WqFileDialog_Show(&dialog), type("a.wav")(box); };
  EXPECT_NE(show({again}), 0);
  EXPECT_EQ(std::tuple(mode, inner), std::tuple(WQ_FILEDIALOG_OPEN | WQ_FILEDIALOG_SHOWN, 0));
}

TEST_F(FileDialogTest, AFolderIsChosenWithACaption) {
  CoInitialize(nullptr);
  if (onWine()) folder_ = "C:\\windows\\system32"; // its tree doesn't get to every folder of the system below
  wqMain.mainWnd = made(nullptr, {0, 0, 200, 100}).hwnd;
  char chosen[MAX_PATH] = "kept";
  std::string seen;
  const auto press = [&](int id) {
    return [&, id](HWND box) {
      seen = textOf(box) + (GetWindow(box, GW_OWNER) == wqMain.mainWnd ? " owned" : "");
      PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(id), 0);
    };
  };
  const auto choose = [&](int id, int bits) {
    const Answerer answerer({press(id)});
    return WqDir_Dlg(folder_.c_str(), "Caption", "prompt", bits, chosen);
  };
  EXPECT_EQ(choose(IDCANCEL, 0), 0);
  EXPECT_EQ(std::string(chosen) + ' ' + seen, "kept Caption owned");
  EXPECT_EQ(choose(IDOK, 1), 1);
  EXPECT_EQ(chosen, folder_);
  CoUninitialize();
}
