// The viewer under a user's hand: its dialogs, boxes, dropped files, prints and the debug window, here and on Windows.

#include "notes.h"
#include "printing/prints.h"
#include "support/boxes.h"
#include "support/library.h"
#include "support/program.h"
#include "viewer.h"

#include <cstring>
#include <deque>
#include <memory>
#include <sstream>

namespace {

void makeRecording(const std::string &name, uint32_t frames) {
  WqPcmBuf samples;
  ASSERT_TRUE(WqPcmBuf_Alloc(&samples, 8000, frames, 16, 2));
  for (uint32_t frame = 0; frame < frames; ++frame) {
    const int16_t values[] = {static_cast<int16_t>(frame * 977), static_cast<int16_t>(frame * 31)};
    WqPcmBuf_Add(&samples, values, sizeof values);
  }
  ASSERT_TRUE(WqPcmBuf_WriteWavFile(&samples, name.c_str()));
  WqPcmBuf_Term(&samples);
}

// Does one thing after another, each as soon as its time has come, from a timer of whatever loop runs.
class Script {
 public:
  struct Step {
    std::string title;         // of the window in front, a dialog before the viewer
    std::function<void()> act; // on it
  };
  explicit Script(std::vector<Step> steps) : steps_(steps.begin(), steps.end()) {
    current_ = this;
    timer_ = SetTimer(nullptr, 0, 40, tick);
  }
  ~Script() {
    KillTimer(nullptr, timer_);
    current_ = nullptr;
    EXPECT_EQ(steps_.size(), 0u) << "waits for \"" << (steps_.empty() ? "" : steps_.front().title) << "\", sees \""
                                 << seen_ << '"';
  }
  static HWND front() {
    const HWND dialog = frontDialog();
    return dialog ? dialog : wqMain.mainWnd;
  }

 private:
  static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
    if (current_) current_->step();
  }
  void step() {
    const HWND window = front();
    const std::string title = textOf(window);
    same_ = title == seen_ ? same_ + 1 : 0;
    seen_ = title;
    if (steps_.empty() || ++waited_ > 250) return giveUp(window);
    if (title != steps_.front().title || same_ < 3) return; // its first messages are through
    const std::function<void()> act = steps_.front().act;
    steps_.pop_front();
    waited_ = same_ = 0;
    act();
  }
  // So that no test hangs.
  static void giveUp(HWND window) {
    const bool isDialog = window != wqMain.mainWnd;
    for (const int id : {IDCANCEL, IDOK})
      if (isDialog) PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
    if (!isDialog) PostMessageA(window, WM_CLOSE, 0, 0);
  }

  static inline Script *current_ = nullptr;
  std::deque<Step> steps_;
  UINT_PTR timer_;
  std::string seen_;
  int same_ = 0, waited_ = 0;
};

void press(BYTE letter) {
  for (const BYTE key : {BYTE{VK_CONTROL}, letter}) keybd_event(key, 0, 0, 0);
  for (const BYTE key : {letter, BYTE{VK_CONTROL}}) keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
}

// Answers a dialog for files.
void type(const std::string &name) {
  const HWND dialog = frontDialog(), field = GetDlgItem(dialog, 1148); // or 1152 on Wine
  SetWindowTextA(field ? field : GetDlgItem(dialog, 1152), name.c_str());
  PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}

void answerBox() { PostMessageA(frontDialog(), WM_COMMAND, IDOK, 0); }

std::string boxText() {
  std::string all;
  for (HWND child = GetWindow(frontDialog(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    all += textOf(child) + '\n';
  return all;
}

void drop(const std::string &file) {
  DROPFILES head{};
  head.pFiles = sizeof head;
  const HGLOBAL block = GlobalAlloc(GHND, sizeof head + file.size() + 2);
  auto *const bytes = static_cast<char *>(GlobalLock(block));
  std::memcpy(bytes, &head, sizeof head);
  std::memcpy(bytes + sizeof head, file.c_str(), file.size());
  GlobalUnlock(block);
  PostMessageA(wqMain.mainWnd, WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
}

void closeViewer() { PostMessageA(wqMain.mainWnd, WM_CLOSE, 0, 0); }

} // namespace

class ViewerTest : public LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    makeRecording("a.wav", 300);
    makeRecording("b.wav", 500);
    writeFile("no.wav", "no sound at all, but some text that is long enough for a header");
  }
  void TearDown() override {
    scene_.reset();
    LibraryTest::TearDown();
  }
  // Shows a.wav until the steps are done.
  void view(std::vector<Script::Step> steps) {
    ASSERT_EQ(scene_->recording.open("a.wav"), "");
    scene_->name = "a.wav";
    viewer_ = std::make_unique<Viewer>(*scene_, settings_);
    const Script script(std::move(steps));
    EXPECT_TRUE(viewer_->run());
  }
  static constexpr const char *kA = "a.wav - levelview", *kB = "b.wav - levelview", *kBox = "levelview";

  const PrintFolder here_;
  const std::string folder_ = [] {
    char folder[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof folder, folder);
    return std::string(folder);
  }();
  const KeepsDialogs kept_;
  std::optional<Scene> scene_ = std::optional<Scene>(std::in_place);
  Settings settings_;
  std::unique_ptr<Viewer> viewer_;
};

TEST_F(ViewerTest, DialogsChooseARecordingAndAPicturesName) {
  SIZE client{};
  view({{kA, [] { press('O'); }},
        {"Open a recording", [] { type("b.wav"); }},
        {kB, [] { press('S'); }},
        {"Save a picture of the window",
         [&] {
           RECT area{};
           GetClientRect(wqMain.mainWnd, &area);
           client = {area.right, area.bottom};
           type("shot");
         }},
        {kB, [] { press('O'); }},
        {"Open a recording", [] { PostMessageA(frontDialog(), WM_COMMAND, IDCANCEL, 0); }},
        {kB, closeViewer}});
  EXPECT_EQ(settings_.lastFile, folder_ + "\\b.wav");
  EXPECT_EQ(settings_.folder, folder_);
  EXPECT_EQ(scene_->recording.frames(), 500u);
  EXPECT_TRUE(scene_->ready());
  WqBmpFile picture;
  WqBmpFile_Init(&picture, "shot.bmp");
  const HDC screen = GetDC(nullptr);
  WqBmpFile_Create(&picture, screen);
  ReleaseDC(nullptr, screen);
  BITMAP size{};
  GetObjectA(picture.handle, sizeof size, &size);
  EXPECT_EQ(size.bmWidth, client.cx);
  EXPECT_EQ(size.bmHeight, client.cy);
  const HDC dc = CreateCompatibleDC(nullptr);
  SelectObject(dc, picture.handle);
  EXPECT_EQ(GetPixel(dc, 1, 1), WqColorTbl_Get(colourPanel)) << "of the bar";
  DeleteDC(dc);
  WqBmpFile_Term(&picture);
}

TEST_F(ViewerTest, DroppedFilesAreShownOrRefusedInABox) {
  view({{kA, [] { drop("b.wav"); }},
        {kB, [] { drop("no.wav"); }},
        {kBox,
         [] {
           EXPECT_NE(boxText().find("no.wav\n\nnot RIFF/WAVE"), std::string::npos) << boxText();
           EXPECT_EQ(GetWindow(frontDialog(), GW_OWNER), wqMain.mainWnd);
           answerBox();
         }},
        {kB, [] { drop("missing.wav"); }},
        {kBox,
         [] {
           EXPECT_NE(boxText().find("cannot open"), std::string::npos) << boxText();
           answerBox();
         }},
        {kB, [] { drop("a.wav"); }},
        {kA, closeViewer}});
  EXPECT_EQ(scene_->recording.frames(), 300u);
  EXPECT_EQ(settings_.lastFile, folder_ + "\\a.wav");
}

// The window may be closed between two pieces of a file.
TEST_F(ViewerTest, ClosesWhileItReads) {
  makeRecording("big.wav", 1500000);
  view({{kA, [] { drop("big.wav"), closeViewer(); }}});
  EXPECT_EQ(settings_.lastFile, folder_ + "\\big.wav");
  EXPECT_FALSE(scene_->ready());
}

TEST_F(ViewerTest, PrintsWhatItShows) {
  if (!hasFilePrinter()) GTEST_SKIP() << "there is no printer that asks nobody";
  constexpr char kPrint[] = "\x88\xF3\x8D\xFC"; // the caption of the layer's dialog
  view({{kA, [] { press('P'); }}, {kPrint, answerBox}, {kBox, answerBox}, {kA, closeViewer}});
  EXPECT_EQ(pagesIn("Document.pdf"), 2);
  EXPECT_NE(textOf(std::string("Document.pdf")).find("a.wav"), std::string::npos);
}

TEST_F(ViewerTest, TheDebugWindowShowsTheLogAndKeepsItsPlace) {
  const std::string ini = "viewer.ini";
  settings_.debug = true;
  const auto open = [&] { // as at the start of a run
    WqDbgWnd_Init();
    settings_.load(ini);
    WqDbgWnd_Show(1);
    return FindWindowA(nullptr, "Debug Window");
  };
  const auto end = [](HWND window) { WqDbgWnd_Term(), DestroyWindow(window); };
  const HWND first = open();
  ASSERT_NE(first, nullptr);
  note("a line");
  char line[100] = "";
  SendMessageA(GetWindow(first, GW_CHILD), LB_GETTEXT, 0, reinterpret_cast<LPARAM>(line));
  EXPECT_STREQ(line, "a line");
  EXPECT_EQ(WqLog_GetCount(), 1u);
  SetWindowPos(first, nullptr, 140, 150, 300, 250, SWP_NOZORDER);
  ASSERT_TRUE(settings_.save(ini));
  end(first);

  Settings without; // a run without that window
  without.load(ini);
  ASSERT_TRUE(without.save(ini));
  const HWND second = open();
  EXPECT_EQ(screenRect(second), "140,150,440,400");
  end(second);
  WqLog_Flush();
}

// What --print writes has every figure of --report, and page numbers.
TEST(LevelviewPrint, HasAllFiguresOfTheReport) {
  if (!hasFilePrinter()) GTEST_SKIP() << "there is no printer that asks nobody";
  const TempFolder folder;
  const std::string name = folder.file("a.wav"), pdf = folder.file("out.pdf");
  makeRecording(name, 3000);
  const std::string whole = readFile(name);
  for (const size_t size : {whole.size(), whole.size() - 1000}) { // one that is cut short too
    writeFile(name, whole.substr(0, size));
    const ProgramResult printed = runProgram("levelview", {"--print", "--output", pdf, "--range", "2.5", name});
    EXPECT_EQ(printed.out + printed.err + std::to_string(printed.status), "0");
    EXPECT_EQ(pagesIn(pdf), 2);
    const std::string text = textOf(pdf);
    std::istringstream report(runProgram("levelview", {"--report", "--range", "2.5", name}).out);
    int figures = 0;
    for (std::string key, value; report >> key && std::getline(report >> std::ws, value); ++figures)
      EXPECT_NE(text.find(" " + value), std::string::npos) << key << " " << value << "\n" << text;
    EXPECT_EQ(figures, size == whole.size() ? 27 : 28);
    for (const char *wanted : {"a.wav", "page 1 of 2", "page 2 of 2", "sample", "dBV"})
      EXPECT_NE(text.find(wanted), std::string::npos) << wanted << "\n" << text;
  }
}

TEST(LevelviewPrint, TellsWhatFails) {
  const TempFolder folder;
  const std::string name = folder.file("a.wav"), pdf = folder.file("no folder/out.pdf");
  makeRecording(name, 10);
  const struct {
    std::vector<std::string> line;
    int status;
    std::string reason;
  } rows[] = {{{"--print"}, 2, "--print needs a file"},
              {{"--output", pdf, name}, 2, "--output goes with --print"},
              {{"--print", name, "--output"}, 2, "--output needs a file"},
              {{"--print", "--output", pdf, folder.file("b.wav")}, 1, "cannot open"},
              {{"--print", "--output", pdf, name}, 1, "no folder/out.pdf"}};
  for (const auto &row : rows) {
    const ProgramResult result = runProgram("levelview", row.line);
    EXPECT_EQ(result.status, row.status) << row.reason;
    EXPECT_NE(result.err.find(row.reason), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << "one line: " << result.err;
  }
}
