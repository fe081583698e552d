// Boxes and dialogs as a person works with them: by the keyboard and by the mouse.

#include "display.h"

#include "support/boxes.h"
#include "support/files.h"

#include <chrono>

namespace {

// Acts while a dialog waits: one deed after another, each once the dialog has been in front for a while and nothing of
// the last deed is on its way any more.
class Person {
 public:
  using Deed = std::function<void(HWND dialog)>;

  explicit Person(std::vector<Deed> deeds) : deeds_(std::move(deeds)) {
    current_ = this;
    timer_ = SetTimer(nullptr, 0, 50, tick);
  }
  ~Person() {
    KillTimer(nullptr, timer_);
    current_ = nullptr;
  }
  Person(const Person &) = delete;
  Person &operator=(const Person &) = delete;

  bool gaveUp() const { return gaveUp_; }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kPace{500}, kPatience{8000};

  static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) { current_->look(); }
  void look() {
    const HWND dialog = frontDialog();
    if (!dialog) return;
    if (Clock::now() > last_ + kPatience) {
      gaveUp_ = true;
      for (const int id : {IDCANCEL, IDNO, IDOK}) PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
      return;
    }
    const bool inFront = GetForegroundWindow() == dialog;
    if (!inFront || dialog != front_) since_ = Clock::now();
    front_ = inFront ? dialog : nullptr;
    if (next_ == deeds_.size() || Clock::now() < std::max(last_, since_) + kPace) return;
    last_ = Clock::now();
    deeds_[next_++](dialog);
  }

  static inline Person *current_;
  const std::vector<Deed> deeds_;
  size_t next_ = 0;
  HWND front_ = nullptr;                                  // that has the keyboard
  Clock::time_point last_ = Clock::now(), since_ = last_; // of the last deed; of that dialog's coming to the front
  UINT_PTR timer_;
  bool gaveUp_ = false;
};

Person::Deed keys(std::vector<const char *> names) {
  return [=](HWND) {
    for (const char *name : names) user().type(name);
  };
}
void clickOn(HWND window, int x = 8, int y = 8) {
  RECT rect{};
  GetWindowRect(window, &rect);
  user().click(rect.left + x, rect.top + y);
}
Person::Deed click(int id, int x = 8, int y = 8) {
  return [=](HWND dialog) { clickOn(GetDlgItem(dialog, id), x, y); };
}

class DialogsByHand : public DisplayTest {
 protected:
  void SetUp() override {
    DisplayTest::SetUp();
    owner_ = show("owner");
    expectActive(owner_);
  }
  int box(UINT type, std::vector<Person::Deed> deeds) const {
    const Person person(std::move(deeds));
    const int answer = MessageBoxA(owner_, "text", "caption", type);
    return person.gaveUp() ? 99 : answer;
  }

  HWND owner_ = nullptr;
};

class FilesByHand : public DialogsByHand {
 protected:
  void SetUp() override {
    DialogsByHand::SetUp();
    for (const char *name : {"a.wav", "b.wav", "c.txt"}) writeFile(temp_.file(name), "");
    char before[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof before, before);
    folder_ = std::string(before) + "\\" + temp_.path();
  }
  std::string open(std::vector<Person::Deed> deeds) {
    char file[MAX_PATH] = "";
    OPENFILENAMEA choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = owner_;
    choice.lpstrFilter = "Wave\0*.wav\0Text\0*.txt\0";
    choice.lpstrFile = file, choice.nMaxFile = sizeof file;
    choice.lpstrInitialDir = folder_.c_str();
    choice.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_NOCHANGEDIR;
    const Person person(std::move(deeds));
    const BOOL chosen = GetOpenFileNameA(&choice);
    if (person.gaveUp()) return "stayed open";
    return chosen ? std::string(file).substr(folder_.size()) : "none";
  }

  const TempFolder temp_;
  std::string folder_;
};

constexpr int kList = 0x460, kFilters = 0x470;

} // namespace

TEST_F(DialogsByHand, ABoxIsAnsweredByKeys) {
  EXPECT_EQ(box(MB_YESNO, {keys({"Return"})}), IDYES);
  EXPECT_EQ(box(MB_YESNO, {keys({"n"})}), IDNO);
  EXPECT_EQ(box(MB_YESNOCANCEL, {keys({"Tab", "Tab", "space"})}), IDCANCEL);
  EXPECT_EQ(box(MB_OKCANCEL, {keys({"Escape"})}), IDCANCEL);
  expectActive(owner_);
}

TEST_F(DialogsByHand, ABoxIsAnsweredByTheMouse) {
  listen("M");
  EXPECT_EQ(box(MB_YESNO, {[&](HWND) { clickOn(owner_, 60, 120); }, click(IDNO)}), IDNO);
  EXPECT_EQ(count(told(""), "DOWN"), 0) << "the owner is pressed while it is disabled";
  EXPECT_EQ(box(MB_YESNOCANCEL, {[](HWND) { user().wish(user().window("caption"), User::Wish::close); }}), IDCANCEL)
      << "the window manager's close button";
  expectActive(owner_);
}

TEST_F(FilesByHand, ANameIsTyped) {
  EXPECT_EQ(open({keys({"b", "period", "w", "a", "v", "Return"})}), "\\b.wav");
  EXPECT_EQ(open({keys({"x", "Return"}), keys({"Return"}), keys({"Escape"})}), "none") << "there is no such file";
  expectActive(owner_);
}

TEST_F(FilesByHand, AFileIsChosenFromTheListAndTheFilterFromItsBox) {
  const auto twice = [](int row) {
    return [=](HWND dialog) {
      clickOn(GetDlgItem(dialog, kList), 40, row * 16 + 8);
      user().button(1, true), user().button(1, false);
    };
  };
  EXPECT_EQ(open({twice(1)}), "\\b.wav");
  const auto second = [](HWND dialog) { clickOn(GetWindow(dialog, GW_CHILD), 20, 24); };
  EXPECT_EQ(open({click(kFilters), second, twice(0)}), "\\c.txt");
}

TEST_F(DialogsByHand, PagesAreChosenForPrinting) {
  PRINTDLGA print{};
  print.lStructSize = sizeof print;
  print.hwndOwner = owner_;
  print.nFromPage = print.nMinPage = 1;
  print.nToPage = print.nMaxPage = 9;
  print.Flags = PD_HIDEPRINTTOFILE | PD_NOSELECTION;
  constexpr int kTo = 0x481;
  const Person person({click(kTo), keys({"End", "BackSpace", "5", "Return"})});
  EXPECT_TRUE(PrintDlgA(&print));
  EXPECT_FALSE(person.gaveUp());
  EXPECT_EQ(print.nFromPage, 1);
  EXPECT_EQ(print.nToPage, 5);
  EXPECT_TRUE(print.Flags & PD_PAGENUMS);
  GlobalFree(print.hDevMode), GlobalFree(print.hDevNames);
}
