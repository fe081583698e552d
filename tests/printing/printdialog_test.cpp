// The print dialog, answered as a user would.

#include "printing/prints.h"
#include "support/boxes.h"

#include <cstring>

namespace {

// Ids of its fields, which are the platform's.
constexpr int kBrowse = 0x402, kToFile = 0x410, kCollate = 0x411, kLandscape = 0x412, kAll = 0x420, kPart = 0x421,
              kPages = 0x422, kPaper = 0x471, kPrinter = 0x473, kFrom = 0x480, kTo = 0x481, kCopies = 0x482,
              kFile = 0x483;

class PrintDialog : public DesktopTest {
 protected:
  void SetUp() override {
    if (!hasFilePrinter()) GTEST_SKIP() << "there is no printer that writes files";
    record_.lStructSize = sizeof record_;
    record_.nMinPage = 1, record_.nMaxPage = 9;
    record_.nFromPage = 3, record_.nToPage = 4;
    record_.nCopies = 2;
  }
  void TearDown() override { forget(); }
  void forget() { freeAnswer(record_); }

  // Result: the flags that tell the choice, with copies and pages; or why there is none.
  std::string show(DWORD flags, std::vector<Answerer::Step> steps) {
    forget();
    record_.Flags = flags;
    const Answerer answerer(std::move(steps));
    const BOOL chosen = PrintDlgA(&record_);
    if (answerer.gaveUp()) return "stayed open";
    if (!chosen) return "none " + std::to_string(CommDlgExtendedError());
    std::string told;
    const std::pair<DWORD, const char *> known[] = {
        {PD_PAGENUMS, "pages "}, {PD_SELECTION, "part "}, {PD_COLLATE, "collated "}, {PD_PRINTTOFILE, "file "}};
    for (const auto &[flag, word] : known)
      if (record_.Flags & flag) told += word;
    return told + std::to_string(record_.nCopies) + "x " + std::to_string(record_.nFromPage) + "-" +
           std::to_string(record_.nToPage);
  }
  DEVMODEA settings() const {
    DEVMODEA copy{};
    std::memcpy(&copy, GlobalLock(record_.hDevMode), sizeof copy);
    GlobalUnlock(record_.hDevMode);
    return copy;
  }
  std::string output() const {
    const auto *bytes = static_cast<const char *>(GlobalLock(record_.hDevNames));
    const std::string port = bytes + reinterpret_cast<const DEVNAMES *>(bytes)->wOutputOffset;
    GlobalUnlock(record_.hDevNames);
    return port;
  }
  int print(const char *name) const {
    const DOCINFOA info = {sizeof info, name, nullptr, nullptr, 0};
    const int started = StartDocA(record_.hDC, &info);
    return started > 0 && StartPage(record_.hDC) > 0 && EndPage(record_.hDC) > 0 ? EndDoc(record_.hDC) : started;
  }

  const PrintFolder folder_;
  const KeepsDialogs open_;
  PRINTDLGA record_{};
};

void press(HWND dialog, int id) { PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0); }
void click(HWND dialog, int id) { SendMessageA(GetDlgItem(dialog, id), BM_CLICK, 0, 0); }
Answerer::Step accept() {
  return [](HWND dialog) { press(dialog, IDOK); };
}
// Types texts, clicks what is named with an empty one, and accepts.
Answerer::Step fill(std::vector<std::pair<int, std::string>> fields) {
  return [=](HWND dialog) {
    for (const auto &[id, text] : fields) {
      if (text.empty())
        click(dialog, id);
      else
        SetWindowTextA(GetDlgItem(dialog, id), text.c_str());
    }
    press(dialog, IDOK);
  };
}

} // namespace

TEST_F(PrintDialog, WhatIsChosenComesBack) {
  const struct {
    DWORD flags;
    std::vector<std::pair<int, std::string>> fields;
    const char *told;
  } cases[] = {{0, {}, "2x 3-4"},
               {PD_PAGENUMS | PD_COLLATE, {}, "pages collated 2x 3-4"},
               {PD_PAGENUMS, {{kAll, ""}}, "2x 3-4"},
               {0, {{kFrom, "2"}, {kTo, "9"}, {kCopies, "7"}}, "pages 7x 2-9"},
               {PD_SELECTION, {}, "part 2x 3-4"},
               {PD_SELECTION | PD_NOSELECTION, {{kPart, ""}}, "2x 3-4"},
               {PD_PAGENUMS | PD_NOPAGENUMS, {{kPages, ""}, {kFrom, "5"}}, "2x 3-4"},
               {0, {{kCollate, ""}, {kToFile, ""}}, "collated file 2x 3-4"},
               {PD_PRINTTOFILE | PD_DISABLEPRINTTOFILE, {{kToFile, ""}}, "file 2x 3-4"},
               {PD_USEDEVMODECOPIES, {{kCopies, "5"}, {kCollate, ""}}, "1x 3-4"}};
  for (const auto &one : cases) {
    record_.nFromPage = 3, record_.nToPage = 4, record_.nCopies = 2;
    EXPECT_EQ(show(one.flags, {fill(one.fields)}), one.told) << std::hex << one.flags;
    const bool inSettings = one.flags & PD_USEDEVMODECOPIES;
    EXPECT_EQ(settings().dmCopies, inSettings ? 5 : 1);
    EXPECT_EQ(settings().dmCollate, inSettings ? DMCOLLATE_FALSE : DMCOLLATE_TRUE) << "was on, and was clicked";
  }
}

TEST_F(PrintDialog, WhatMakesNoSenseIsRefusedAndCancelledChangesNothing) {
  const auto tried = [&](std::vector<std::pair<int, std::string>> fields) {
    return show(0, {fill(std::move(fields)), accept(), [](HWND dialog) { press(dialog, IDCANCEL); }});
  };
  EXPECT_EQ(tried({{kFrom, "5"}, {kTo, "10"}}), "none 0") << "beyond the last page";
  EXPECT_EQ(tried({{kFrom, "5"}, {kTo, "2"}}), "none 0");
  EXPECT_EQ(tried({{kCopies, "0"}}), "none 0");
  EXPECT_EQ(tried({{kFile, "nowhere\\a.pdf"}}), "none 0");
  EXPECT_EQ(record_.hDevMode, nullptr);
  EXPECT_EQ(record_.nFromPage, 3);
}

TEST_F(PrintDialog, FieldsAreOpenWhereTheFlagsLetThem) {
  const auto seen = [&](DWORD flags) {
    std::string closed;
    show(flags, {[&](HWND dialog) {
           for (const auto &[id, name] : {std::pair(kPages, "pages "), {kPart, "part "}, {kToFile, "file "}}) {
             const HWND field = GetDlgItem(dialog, id);
             if (!field || !IsWindowEnabled(field)) closed += field ? name : "no " + std::string(name);
           }
           press(dialog, IDCANCEL);
         }});
    return closed;
  };
  EXPECT_EQ(seen(0), "");
  EXPECT_EQ(seen(PD_NOPAGENUMS | PD_NOSELECTION | PD_HIDEPRINTTOFILE), "pages part no file ");
  EXPECT_EQ(seen(PD_DISABLEPRINTTOFILE), "file ");
  record_.nMaxPage = 1;
  EXPECT_EQ(seen(0), "pages ") << "there is one page";
  record_.nMaxPage = 0;
  EXPECT_EQ(seen(0), "pages ") << "there is none";
}

TEST_F(PrintDialog, PaperIsChosenFromAList) {
  std::string sheet;
  const auto choose = [&](HWND dialog) {
    const HWND papers = GetDlgItem(dialog, kPaper);
    SetFocus(papers);
    for (const BYTE key : std::vector<BYTE>{VK_F4, VK_DOWN, VK_DOWN, VK_DOWN, VK_UP, VK_RETURN})
      keybd_event(key, 0, 0, 0), keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
  };
  const auto look = [&](HWND dialog) {
    const HWND papers = GetDlgItem(dialog, kPaper);
    char text[40] = "";
    const LRESULT at = SendMessageA(papers, CB_GETCURSEL, 0, 0);
    SendMessageA(papers, CB_GETLBTEXT, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(text));
    sheet = text;
    click(dialog, kLandscape);
    press(dialog, IDOK);
  };
  EXPECT_EQ(show(PD_RETURNDC, {choose, look}), "2x 3-4");
  EXPECT_EQ(sheet, "Legal");
  EXPECT_EQ(settings().dmPaperSize, DMPAPER_LEGAL);
  EXPECT_EQ(GetDeviceCaps(record_.hDC, HORZSIZE), 356) << "landscape";
  const auto escape = [](HWND dialog) {
    SendMessageA(GetDlgItem(dialog, kPrinter), CB_SHOWDROPDOWN, TRUE, 0);
    SetFocus(GetDlgItem(dialog, kPrinter));
    keybd_event(VK_ESCAPE, 0, 0, 0), keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
  };
  EXPECT_EQ(show(0, {escape, accept()}), "2x 3-4") << "Escape closes the list only";
}

TEST_F(PrintDialog, TheFileIsWrittenWhereTheUserWantsIt) {
  EXPECT_EQ(show(PD_RETURNDC, {fill({{kFile, "mine.pdf"}})}), "2x 3-4");
  EXPECT_EQ(output().substr(output().find_last_of('\\') + 1), "mine.pdf");
  EXPECT_GT(print("a"), 0);
  EXPECT_GT(print("a"), 0) << "the user has agreed to one document there";
  EXPECT_EQ(PrintFolder::names(), "a.pdf mine.pdf ");
  const auto no = [](HWND box) { press(box, IDNO); };
  EXPECT_EQ(show(0, {fill({{kFile, "mine.pdf"}}), no, [](HWND dialog) { press(dialog, IDCANCEL); }}), "none 0");
  const auto browse = [](HWND dialog) { press(dialog, kBrowse); };
  const auto type = [](HWND dialog) {
    SetWindowTextA(GetDlgItem(dialog, 0x47C), "other");
    press(dialog, IDOK);
  };
  EXPECT_EQ(show(PD_RETURNDC, {browse, type, accept()}), "2x 3-4");
  EXPECT_GT(print("b"), 0);
  EXPECT_EQ(PrintFolder::names(), "a.pdf mine.pdf other.pdf ");
}

namespace {
int hookBegan;
UINT_PTR CALLBACK takeOver(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    hookBegan = reinterpret_cast<PRINTDLGA *>(lParam)->nCopies;
    SetWindowTextA(GetDlgItem(dialog, kCopies), "6");
  }
  return message == WM_COMMAND && LOWORD(wParam) == IDCANCEL; // and so nobody cancels
}
} // namespace

TEST_F(PrintDialog, AHookSeesTheMessagesFirst) {
  record_.lpfnPrintHook = takeOver;
  const auto cancel = [](HWND dialog) { press(dialog, IDCANCEL); };
  EXPECT_EQ(show(PD_ENABLEPRINTHOOK, {cancel, accept()}), "6x 3-4");
  EXPECT_EQ(hookBegan, 2);
}

TEST_F(PrintDialog, ErrorsAreTold) {
  EXPECT_FALSE(PrintDlgA(nullptr));
  EXPECT_EQ(CommDlgExtendedError(), CDERR_INITIALIZATION);
  EXPECT_EQ(show(PD_ENABLEPRINTHOOK, {}), "none " + std::to_string(CDERR_NOHOOK));
  record_.hDevMode = GlobalAlloc(GHND, sizeof(DEVMODEA));
  record_.Flags = PD_RETURNDEFAULT;
  EXPECT_FALSE(PrintDlgA(&record_));
  EXPECT_EQ(CommDlgExtendedError(), PDERR_RETDEFFAILURE);
  record_.lStructSize = 5;
  EXPECT_FALSE(PrintDlgA(&record_));
  EXPECT_EQ(CommDlgExtendedError(), CDERR_STRUCTSIZE);
}
