// The list of printers, their settings, and the print dialog as it answers unattended.

#include "printing/prints.h"

#include <cstring>

namespace {

constexpr DWORD kAll = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;

class PrintersTest : public testing::Test {
 protected:
  void SetUp() override { before_ = openHandles(); }
  void TearDown() override { EXPECT_EQ(openHandles(), before_); }

 private:
  std::vector<size_t> before_;
};

// Those that need a printer which asks nobody.
class PrintDialogTest : public PrintersTest {
 protected:
  void SetUp() override {
    if (!hasFilePrinter()) GTEST_SKIP() << "there is no printer that writes files";
    PrintersTest::SetUp();
    dialog_.lStructSize = sizeof dialog_;
    dialog_.nFromPage = dialog_.nMinPage = 1;
    dialog_.nToPage = dialog_.nMaxPage = 3;
  }
  void TearDown() override {
    forget();
    if (!IsSkipped()) PrintersTest::TearDown();
  }
  void forget() { freeAnswer(dialog_); }
  // Changes the settings in the dialog's memory.
  template <typename Change> void change(Change change) {
    auto *mode = static_cast<DEVMODEA *>(GlobalLock(dialog_.hDevMode));
    ASSERT_NE(mode, nullptr);
    change(*mode);
    GlobalUnlock(dialog_.hDevMode);
  }
  std::string deviceName() const {
    const auto *bytes = static_cast<const char *>(GlobalLock(dialog_.hDevNames));
    const std::string name = bytes ? bytes + reinterpret_cast<const DEVNAMES *>(bytes)->wDeviceOffset : "";
    GlobalUnlock(dialog_.hDevNames);
    return name;
  }
  int caps(int index) const { return GetDeviceCaps(dialog_.hDC, index); }

  PRINTDLGA dialog_{};
};

// The names in a list of records, which fits the buffer that it asks for.
template <typename Info> std::vector<std::string> names(DWORD level, LPSTR Info::*name) {
  DWORD size = 0, count = 0;
  if (EnumPrintersA(kAll, nullptr, level, nullptr, 0, &size, &count)) return {};
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER}) << level;
  std::vector<char> buffer(size);
  auto *const bytes = reinterpret_cast<BYTE *>(buffer.data());
  EXPECT_FALSE(EnumPrintersA(kAll, nullptr, level, bytes, size - 1, &size, &count)) << level;
  EXPECT_TRUE(EnumPrintersA(kAll, nullptr, level, bytes, size, &size, &count)) << level;
  std::vector<std::string> all;
  for (DWORD i = 0; i < count; ++i) all.emplace_back(reinterpret_cast<const Info *>(bytes)[i].*name);
  return all;
}

} // namespace

TEST_F(PrintersTest, AreTheSameOnAllLevels) {
  const std::vector<std::string> all = names(2, &PRINTER_INFO_2A::pPrinterName);
  EXPECT_EQ(names(1, &PRINTER_INFO_1A::pName), all);
  EXPECT_EQ(names(4, &PRINTER_INFO_4A::pPrinterName), all);
  EXPECT_EQ(names(5, &PRINTER_INFO_5A::pPrinterName), all);

  char name[300] = "";
  DWORD room = 0;
  EXPECT_FALSE(GetDefaultPrinterA(nullptr, &room));
  EXPECT_EQ(GetLastError(), DWORD(all.empty() ? ERROR_FILE_NOT_FOUND : ERROR_INSUFFICIENT_BUFFER));
  if (all.empty()) return;
  ASSERT_TRUE(GetDefaultPrinterA(name, &room));
  EXPECT_EQ(room, std::strlen(name) + 1);
  EXPECT_NE(std::find(all.begin(), all.end(), name), all.end()) << name;
}

TEST_F(PrintDialogTest, GivesTheDefaultPrinter) {
  dialog_.Flags = PD_RETURNDEFAULT | PD_RETURNDC;
  ASSERT_TRUE(PrintDlgA(&dialog_));
  char name[300] = "";
  DWORD room = sizeof name;
  ASSERT_TRUE(GetDefaultPrinterA(name, &room));
  EXPECT_EQ(deviceName(), name);
  EXPECT_EQ(caps(TECHNOLOGY), DT_RASPRINTER);
  EXPECT_FALSE(PrintDlgA(&dialog_)) << "with memory handed in";
}

TEST_F(PrintDialogTest, AcceptsWhatItBeginsWith) {
  dialog_.Flags = PD_RETURNDEFAULT;
  ASSERT_TRUE(PrintDlgA(&dialog_));
  EXPECT_EQ(dialog_.hDC, nullptr);
  change([](DEVMODEA &mode) {
    EXPECT_EQ(mode.dmPaperSize, DMPAPER_A4);
    mode.dmOrientation = DMORIENT_LANDSCAPE;
    mode.dmPrintQuality = mode.dmYResolution = 72;
    mode.dmCopies = 3;
  });
  dialog_.Flags = PD_NOSELECTION | PD_RETURNDC | PD_USEDEVMODECOPIESANDCOLLATE | PD_HIDEPRINTTOFILE;
  ASSERT_TRUE(PrintDlgA(&dialog_));
  EXPECT_EQ(std::tuple(caps(HORZSIZE), caps(VERTSIZE), caps(LOGPIXELSX), caps(HORZRES)), std::tuple(297, 210, 72, 842));
  EXPECT_EQ(dialog_.nCopies, 1) << "the settings tell the real number";
  change([](DEVMODEA &mode) { EXPECT_EQ(mode.dmCopies, 3); });
}

TEST_F(PrintDialogTest, TakesSheetsOfAnySize) {
  const struct {
    DWORD fields;
    short sheet, width, length;
    int widthTold, heightTold;
  } rows[] = {{DM_PAPERSIZE, DMPAPER_LETTER, 0, 0, 216, 279},
              {DM_PAPERSIZE, 9999, 0, 0, 210, 297},
              {DM_PAPERSIZE | DM_PAPERWIDTH | DM_PAPERLENGTH, 0, 800, 32767, 80, 3277},
              {DM_PAPERWIDTH | DM_PAPERLENGTH, 0, -5, 1, 210, 0},
              {0, DMPAPER_A3, 500, 500, 210, 297}};
  for (const auto &row : rows) {
    DEVMODEA mode{};
    mode.dmSize = sizeof mode, mode.dmFields = row.fields, mode.dmPaperSize = row.sheet;
    mode.dmPaperWidth = row.width, mode.dmPaperLength = row.length;
    dialog_.hDC = CreateDCA(nullptr, "PDF", nullptr, &mode);
    EXPECT_EQ(std::tuple(caps(HORZSIZE), caps(VERTSIZE)), std::tuple(row.widthTold, row.heightTold)) << row.width;
    EXPECT_GT(caps(VERTRES), 0) << row.length;
    forget();
  }
  EXPECT_EQ(CreateDCA("WINSPOOL", "no such printer", nullptr, nullptr), nullptr);
}

TEST_F(PrintDialogTest, RefusesAPrinterThatIsGoneAndMemoryThatHoldsNone) {
  const char kNames[] = "\x08\0\x0C\0\x12\0\0\0drv\0nobody\0x"; // offsets 8, 12, 18
  dialog_.hDevNames = GlobalAlloc(GHND, sizeof kNames);
  std::memcpy(GlobalLock(dialog_.hDevNames), kNames, sizeof kNames);
  GlobalUnlock(dialog_.hDevNames);
  dialog_.Flags = PD_RETURNDC;
  EXPECT_FALSE(PrintDlgA(&dialog_));
  forget();
  dialog_.hDevMode = GlobalAlloc(GHND, 4); // too small for settings
  EXPECT_TRUE(PrintDlgA(&dialog_)) << "as without any";
  EXPECT_GE(GlobalSize(dialog_.hDevMode), sizeof(DEVMODEA));
  forget();
  dialog_.lStructSize = 1;
  EXPECT_FALSE(PrintDlgA(&dialog_));
}

TEST_F(PrintDialogTest, AnInformationContextPrintsNothing) {
  dialog_.Flags = PD_RETURNIC;
  ASSERT_TRUE(PrintDlgA(&dialog_));
  EXPECT_EQ(caps(HORZSIZE), 210);
  const DOCINFOA info = {sizeof info, "never", nullptr, nullptr, 0};
  EXPECT_LE(StartDocA(dialog_.hDC, &info), 0);
  EXPECT_FALSE(fileExists("never.pdf"));
}
