// Memory that runs out anywhere while printers are listed and a page is made. This program counts what C++ allocates
// too.

#include "printing/prints.h"
#include "support/allocation.h"

#include <cstdlib>
#include <cstring>
#include <new>

void *operator new(size_t size) {
  if (void *const block = std::malloc(size ? size : 1)) return block;
  throw std::bad_alloc();
}
void *operator new(size_t size, const std::nothrow_t &) noexcept { return std::malloc(size ? size : 1); }
void operator delete(void *block) noexcept { std::free(block); }
void operator delete(void *block, size_t) noexcept { std::free(block); }
void operator delete(void *block, const std::nothrow_t &) noexcept { std::free(block); }

TEST(Shortage, AListOfPrintersIsWholeOrNone) {
  BYTE room[4096];
  DWORD size = 0, count = 0;
  EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, room, sizeof room, &size, &count);
  const DWORD all = count;
  const auto before = openHandles();
  int failures = 0;
  for (int n = 1;; ++n) {
    BOOL done = FALSE;
    bool failed = false;
    {
      AllocationFailure failure(n);
      SetLastError(0);
      done = EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, 2, room, sizeof room, &size, &count);
      failed = failure.happened();
    }
    EXPECT_EQ(count, done ? all : 0) << n;
    if (!done) {
      EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY}) << n;
    }
    if (!failed) break;
    ++failures;
  }
  EXPECT_EQ(openHandles(), before);
  if (all > 0 && !onWindows()) {
    EXPECT_GT(failures, 0) << "nothing was counted";
  }
}

// Result: whether all of it was done.
static bool printPage() {
  const HDC dc = CreateDCA(nullptr, "PDF", nullptr, nullptr);
  const HBRUSH brush = CreateHatchBrush(HS_CROSS, RGB(200, 0, 0));
  const DOCINFOA info = {sizeof info, "short", "short.pdf", nullptr, 0};
  bool done = dc && brush && StartDocA(dc, &info) > 0 && StartPage(dc) > 0;
  if (done) {
    const RECT rect = {100, 100, 900, 700};
    const POINT corners[] = {{10, 10}, {500, 20}, {300, 400}};
    SelectObject(dc, brush);
    done = TextOutA(dc, 300, 300, "text \x93\xFA\x96\x7B", 9) && done;
    done = FillRect(dc, &rect, brush) && done;
    done = Polygon(dc, corners, 3) && done;
    SelectObject(dc, GetStockObject(WHITE_BRUSH));
    done = EndPage(dc) > 0 && done;
  }
  if (dc && EndDoc(dc) <= 0) done = false;
  if (brush) DeleteObject(brush);
  if (dc) DeleteDC(dc);
  return done;
}

TEST(Shortage, APageIsWholeOrLeavesNothing) {
  if (!hasFilePrinter()) GTEST_SKIP() << "there is no printer that writes files";
  const PrintFolder folder;
  ASSERT_TRUE(printPage());
  std::filesystem::remove("short.pdf");
  const auto before = openHandles();
  int failures = 0;
  for (int n = 1;; ++n) {
    bool done = false, failed = false;
    {
      AllocationFailure failure(n);
      done = printPage();
      failed = failure.happened();
    }
    const std::string names = PrintFolder::names();
    EXPECT_EQ(names, names.empty() ? "" : "short.pdf ") << n;
    if (done) {
      EXPECT_EQ(names, "short.pdf ") << n;
    }
    if (!names.empty()) {
      EXPECT_EQ(pagesIn("short.pdf"), 1) << n << ": a file of this name is whole";
    }
    EXPECT_EQ(openHandles(), before) << n;
    std::filesystem::remove("short.pdf");
    if (!failed) break;
    ++failures;
    ASSERT_LT(n, 5000);
  }
  EXPECT_GT(failures, 100) << "nothing was counted";
}
