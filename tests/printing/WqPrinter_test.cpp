// Printing through the library: the record, the order of a print, and what is left when something goes wrong.

#include "printing/prints.h"
#include "support/allocation.h"
#include "windows/objects.h"

#include <cstring>
#include <stdexcept>

namespace {

class WqPrinterTest : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    main_ = &made(nullptr, {100, 100, 400, 300}, [this](const WqMsg &msg) {
      if (msg.msg != WQM_PRINT_PAGE) return 0;
      auto *printer = reinterpret_cast<WqPrinter *>(msg.lParam);
      log += "asked " + std::to_string(msg.wParam) + " " + std::to_string(printer->pageCount) + ";";
      EXPECT_EQ(msg.hwnd, main_->hwnd);
      if (wanted >= 0) printer->pageCount = wanted;
      return 0;
    });
    WqMain_Config(main_->hwnd);
    log.clear();
    step = nullptr;
    wanted = -1;
  }
  // Prints with a procedure for pages.
  static int32_t onPage(WqPrinter *printer, int32_t page) {
    log += "page " + std::to_string(page) + ";";
    return step ? step(printer, page) : 0;
  }
  int32_t print(int32_t pages) {
    WqPrintJob job = {main_, onPage, pages};
    WqPrinter_Print(&job);
    return job.pageCount;
  }
  bool enabled() const { return IsWindowEnabled(main_->hwnd) != FALSE; }

  Window *main_ = nullptr;
  static inline std::string log;
  static inline std::function<int32_t(WqPrinter *, int32_t)> step;
  static inline int32_t wanted;
};

// Those that need a printer which asks nobody.
class WqPrinterPrintTest : public WqPrinterTest {
 protected:
  void SetUp() override {
    if (!hasFilePrinter()) GTEST_SKIP() << "there is no printer that writes files";
    WqPrinterTest::SetUp();
    WqPrinter_Init();
  }
  void TearDown() override {
    if (!IsSkipped()) WqPrinterTest::TearDown();
  }
  const PrintFolder folder_;
};

const WqPrinterDevice *deviceAt(const WqPrinter &printer, uint32_t place) {
  const WqList *node = printer.devices;
  for (; node && place > 0; --place) node = node->next;
  return node ? reinterpret_cast<const WqPrinterDevice *>(node->data) : nullptr;
}

} // namespace

TEST_F(WqPrinterTest, TheListHasTheLastPrinterFirst) {
  WqPrinter printer = {};
  DWORD size = 0, count = 0;
  EnumPrintersA(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, 2, nullptr, 0, &size, &count);
  for (int time = 0; time < 2; ++time) { // the second list comes in place of the first
    EXPECT_EQ(WqPrinter_ListDevice(&printer), size > 0 ? 1 : 0);
    EXPECT_EQ(printer.deviceCount != 0, size > 0);
    for (uint32_t i = 0; i < printer.deviceCount; ++i) {
      ASSERT_NE(deviceAt(printer, i), nullptr);
      EXPECT_EQ(deviceAt(printer, i)->number, printer.deviceCount - i);
    }
  }
  WqPrinter_Term(&printer);
  EXPECT_EQ(printer.devices, nullptr);
}

TEST_F(WqPrinterTest, NamesChooseADevice) {
  WqPrinter printer = {};
  WqPrinterDevice kept = {}, a = {1, "Laser", "x"}, b = {2, "Laser 2", "x"};
  printer.device = &kept;
  EXPECT_EQ(WqPrinter_SelectDevice(&printer, "any"), 0);
  EXPECT_EQ(printer.device, &kept) << "with an empty list";
  printer.devices = WqList_AddP(nullptr, reinterpret_cast<WqWord>(&a));
  printer.devices = WqList_AddP(printer.devices, reinterpret_cast<WqWord>(&b)), printer.deviceCount = 2;
  EXPECT_EQ(WqPrinter_SelectDevice(&printer, "Laser"), 1);
  EXPECT_EQ(printer.device, &a);
  EXPECT_EQ(WqPrinter_SelectDevice(&printer, "LASER"), 0);
  EXPECT_EQ(printer.device, nullptr);
  WqList_RemoveAll(printer.devices);
}

TEST_F(WqPrinterTest, SettingsAndNamesAreCopiedAsFarAsTheyGo) {
  WqPrinter printer = {};
  std::strcpy(printer.deviceName, "before");
  printer.devMode[0] = 7;
  EXPECT_EQ(WqPrinter_DevMode(&printer, nullptr), 0);
  EXPECT_EQ(printer.devMode[0], 7u);
  EXPECT_EQ(WqPrinter_DevName(&printer, nullptr), 0);
  EXPECT_STREQ(printer.deviceName, "");

  const HGLOBAL mode = GlobalAlloc(GHND, 200), names = GlobalAlloc(GHND, 300);
  std::memset(GlobalLock(mode), 0x5A, 200), GlobalUnlock(mode);
  auto *bytes = static_cast<char *>(GlobalLock(names));
  reinterpret_cast<DEVNAMES *>(bytes)->wDeviceOffset = 20;
  std::memset(bytes + 20, 'n', 200), GlobalUnlock(names);
  EXPECT_EQ(WqPrinter_DevMode(&printer, mode), 1);
  EXPECT_EQ(printer.devMode[36], 0x5A5A5A5Au);
  EXPECT_EQ(printer.deviceName[0], '\0') << "what lies before and behind is left alone";
  EXPECT_EQ(printer.paper.width, 0);
  EXPECT_EQ(WqPrinter_DevName(&printer, names), 1);
  EXPECT_EQ(std::string(printer.deviceName), std::string(83, 'n'));
  GlobalFree(mode), GlobalFree(names);
}

TEST_F(WqPrinterTest, AJobWithoutAWindowDoesNothing) {
  WqPrintJob job = {nullptr, onPage, 3};
  WqPrinter_Print(&job);
  EXPECT_EQ(log + std::to_string(job.pageCount), "3");
  WqPaper paper;
  std::memset(&paper, 1, sizeof paper);
  WqPaper_Init(&paper), WqPaper_Zoom(&paper, 55.5), paper.width = paper.height = 9, WqPaper_Size(&paper, nullptr);
  EXPECT_EQ(std::tuple(paper.zoom, paper.width, paper.height), std::tuple(55.5, 0, 0));
}

TEST_F(WqPrinterPrintTest, TheRecordDescribesTheDefaultPrinter) {
  const WqPrinter &printer = wqMain.printer;
  ASSERT_NE(printer.device, nullptr);
  EXPECT_STREQ(printer.device->name, printer.deviceName);
  EXPECT_STREQ(reinterpret_cast<const char *>(printer.devMode), printer.deviceName) << "with which settings begin";
  const WqPaper &paper = printer.paper;
  EXPECT_EQ(std::tuple(paper.width, paper.height, paper.zoom, printer.pageCount), std::tuple(21000, 29700, 100.0, 1));
}

TEST_F(WqPrinterPrintTest, AListThatMemoryIsShortForStaysAsItWas) {
  WqPrinter printer = {};
  ASSERT_EQ(WqPrinter_ListDevice(&printer), 1);
  const uint32_t all = printer.deviceCount;
  int refused = 0;
  for (int n = 1;; ++n) {
    AllocationFailure failure(n);
    const int done = WqPrinter_ListDevice(&printer);
    if (!failure.happened()) break;
    refused += !done;
    EXPECT_EQ(printer.deviceCount, done ? all - 1 : all) << n;
    EXPECT_EQ(deviceAt(printer, printer.deviceCount), nullptr) << n;
    ASSERT_EQ(WqPrinter_ListDevice(&printer), 1);
  }
  EXPECT_EQ(refused, 1);
  EXPECT_EQ(printer.deviceCount, all);
  WqPrinter_Term(&printer);
}

TEST_F(WqPrinterPrintTest, APageIsDrawnInPixelsOfTheScreen) {
  step = [&](WqPrinter *printer, int32_t page) {
    EXPECT_FALSE(enabled()) << "while it prints";
    WqDc &dc = printer->dc;
    EXPECT_EQ(std::tuple(dc.mode, dc.map.logPix, dc.draw.zoom), std::tuple(WQ_DC_PRINTER, 600, 1.0));
    SIZE window = {}, viewport = {};
    SetWindowExtEx(dc.hdc, 1, 1, &window);
    SetViewportExtEx(dc.hdc, 6, 6, &viewport);
    EXPECT_EQ(viewport.cx, 6 * window.cx);
    const RECT box = {100, 200, 300, 250};
    WqDcDraw_FillRect(&dc.draw, &box, WQ_COLOR_RED);
    WqDcDraw_InitText(&dc.draw, 1, WQ_COLOR_BLACK);
    const std::string text = "page " + std::to_string(page) + " of the report";
    WqDcDraw_Text(&dc.draw, text.c_str(), &box, DT_SINGLELINE | DT_VCENTER);
    return 0;
  };
  wanted = 2;
  EXPECT_EQ(print(5), 2) << "the pages that the window wanted";
  EXPECT_EQ(log, "asked 2 5;page 1;page 2;");
  EXPECT_TRUE(enabled());
  EXPECT_EQ(wqMain.printer.dc.hdc, nullptr);
  EXPECT_GE(wqMain.printer.printTime.wYear, 2020);
  EXPECT_EQ(PrintFolder::names(), "Document.pdf ");
  EXPECT_NE(textOf("Document.pdf").find("page 2 of the report"), std::string::npos);
  const PageImage page = pageOf("Document.pdf", 1, 100); // a unit is 6 of 600 dots
  EXPECT_EQ((std::vector{page.at(102, 202), page.at(297, 247), page.at(98, 202), page.at(297, 252)}),
            (std::vector{RGB(255, 0, 0), RGB(255, 0, 0), RGB(255, 255, 255), RGB(255, 255, 255)}));
}

TEST_F(WqPrinterPrintTest, AProcedureMakesADocumentLongerOrEndsIt) {
  const auto printed = [&](int32_t pages) { return log.clear(), print(pages), log; };
  step = [](WqPrinter *printer, int32_t page) { return page == 1 ? printer->pageCount = 3, 0 : 0; };
  EXPECT_EQ(printed(1), "asked 2 1;page 1;page 2;page 3;");
  EXPECT_EQ(pagesIn("Document.pdf"), 3);
  step = [](WqPrinter *, int32_t) { return 1; };
  EXPECT_EQ(printed(5), "asked 2 5;page 1;");
  EXPECT_EQ(pagesIn("Document (2).pdf"), 1);
  wanted = 0;
  EXPECT_EQ(printed(70000), "asked 2 70000;");
  WqPrintJob job = {main_, nullptr, 1}; // without a procedure
  wqMain.printer.printTime.wYear = 7, wanted = -1, WqPrinter_Print(&job);
  EXPECT_EQ(wqMain.printer.printTime.wYear, 7);
  EXPECT_EQ(PrintFolder::names(), "Document (2).pdf Document.pdf ");
}

TEST_F(WqPrinterPrintTest, AProcedureMayThrowOrPrintItself) {
  step = [](WqPrinter *, int32_t page) -> int32_t {
    if (page == 2) throw std::runtime_error("page");
    return 0;
  };
  EXPECT_THROW(print(3), std::runtime_error);
  EXPECT_TRUE(enabled());
  EXPECT_EQ(PrintFolder::names(), "");

  bool inner = false;
  step = [&](WqPrinter *printer, int32_t page) {
    if (page == 1 && !std::exchange(inner, true)) print(1);
    const RECT box = {10, 10, 400, 60};
    const HDC hdc = printer->dc.hdc;
    if (hdc) WqDcDraw_Text(&printer->dc.draw, ("page " + std::to_string(page)).c_str(), &box, DT_SINGLELINE);
    printer->pageCount = inner && page == 1 && hdc ? 1 : 2;
    return 0;
  };
  print(2);
  EXPECT_TRUE(enabled());
  EXPECT_EQ(pagesIn("Document.pdf"), 1) << "the one that was printed in between";
  EXPECT_EQ(pagesIn("Document (2).pdf"), 2);
  EXPECT_NE(textOf("Document (2).pdf").find("page 2"), std::string::npos);
}

TEST_F(WqPrinterPrintTest, ADocumentThatCanNotBeginHasNoPages) {
  std::filesystem::create_directory("gone");
  std::filesystem::current_path("gone");
  std::filesystem::remove("../gone");
  print(2);
  std::filesystem::current_path(std::filesystem::temp_directory_path()); // the folder of the test goes back from there
  EXPECT_EQ(log, "asked 2 2;");
  EXPECT_TRUE(enabled());
}
