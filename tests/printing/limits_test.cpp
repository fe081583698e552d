// Printing where something is short or has gone: the disk, a folder, a printer, paper. What comes of it is told, and no
// part of a document is left under any name.

#include "printing/prints.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <sys/resource.h>

namespace {

class LimitsTest : public testing::Test {
 protected:
  ~LimitsTest() override {
    if (dc_) DeleteDC(dc_);
    for (const auto &[name, value] : changed_)
      value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
  }

  void open(const char *printer, const DEVMODEA *mode = nullptr) {
    if (dc_) DeleteDC(dc_);
    dc_ = CreateDCA(nullptr, printer, nullptr, mode);
  }
  int begin(const char *file) const {
    const DOCINFOA info = {sizeof info, "Test", file, nullptr, 0};
    SetLastError(0);
    return StartDocA(dc_, &info);
  }
  // Result: what ended it, EndDoc's answer where nothing did.
  int print(const char *file, int pages) const {
    int result = begin(file);
    for (int page = 0; page < pages && result > 0; ++page) {
      result = StartPage(dc_);
      for (int line = 0; line < 50 && result > 0; ++line) TextOutA(dc_, 10, 20 * line, "some text of a page", 19);
      if (result > 0) result = EndPage(dc_);
    }
    const int ended = EndDoc(dc_);
    return result > 0 ? ended : result;
  }
  void set(const char *name, const std::string &value) {
    const char *const before = std::getenv(name);
    changed_.try_emplace(name, before ? before : "");
    setenv(name, value.c_str(), 1);
  }
  static void script(const char *name, const std::string &body) {
    writeFile(name, "#!/bin/sh\n" + body + "\n");
    std::filesystem::permissions(name, std::filesystem::perms::owner_all);
  }
  // A spooler that has this printer.
  void spooler(const std::string &printer) {
    const std::string here = std::filesystem::current_path().string();
    set("PATH", here + ":" + std::getenv("PATH"));
    set("TMPDIR", here + "/spool");
    std::filesystem::create_directory("spool");
    script("lpstat", "echo " + printer);
    script("lp", "cat \"$9\" >taken.pdf");
    Sleep(2100); // a list of printers is good for 2 s
  }
  static bool spoolIsEmpty() { return std::filesystem::is_empty("spool"); }

  const PrintFolder folder_;
  HDC dc_ = nullptr;
  std::map<std::string, std::string> changed_;
};

// As long as it lives no file can become longer.
class FileLimit {
 public:
  explicit FileLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit less = {bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &less);
  }
  ~FileLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FileLimit(const FileLimit &) = delete;
  FileLimit &operator=(const FileLimit &) = delete;

 private:
  void (*handler_)(int);
  rlimit before_{};
};

} // namespace

TEST_F(LimitsTest, AFullDiskEndsADocument) {
  open("PDF");
  const auto tried = [&](rlim_t bytes) {
    const FileLimit limit(bytes);
    return print("full.pdf", 200);
  };
  for (const rlim_t bytes : {0u, 100u, 30000u}) {
    EXPECT_EQ(tried(bytes), SP_OUTOFDISK) << bytes;
    EXPECT_EQ(PrintFolder::names(), "") << bytes;
  }
  EXPECT_GT(print("full.pdf", 1), 0) << "with room again";
  EXPECT_EQ(tried(100), SP_OUTOFDISK);
  EXPECT_EQ(pagesIn("full.pdf"), 1) << "the old document stays";
}

TEST_F(LimitsTest, AFolderThatTakesNoFileIsTold) {
  open("PDF");
  EXPECT_EQ(begin("C:\\proc\\a.pdf"), SP_ERROR);
  EXPECT_NE(GetLastError(), 0u);
  EXPECT_EQ(begin("gone/a.pdf"), SP_ERROR) << "no such folder";
  std::filesystem::create_directory("gone");
  ASSERT_GT(begin("gone/a.pdf"), 0);
  ASSERT_GT(StartPage(dc_), 0);
  std::filesystem::remove_all("gone");
  ASSERT_GT(EndPage(dc_), 0);
  EXPECT_EQ(EndDoc(dc_), SP_ERROR);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(PrintFolder::names(), "");
}

TEST_F(LimitsTest, APrinterThatVanishesIsTold) {
  spooler("Laser");
  open("Laser");
  ASSERT_NE(dc_, nullptr);
  EXPECT_GT(print(nullptr, 1), 0);
  EXPECT_EQ(pagesIn("taken.pdf"), 1);
  ASSERT_GT(begin(nullptr), 0);
  ASSERT_GT(StartPage(dc_), 0);
  script("lp", "exit 1"); // as it does for a printer that it doesn't know
  EXPECT_EQ(EndDoc(dc_), SP_ERROR);
  EXPECT_TRUE(spoolIsEmpty());
  script("lpstat", "exit 0");
  Sleep(2100);
  EXPECT_EQ(begin(nullptr), SP_ERROR);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PRINTER_NAME});
  EXPECT_TRUE(spoolIsEmpty());
  EXPECT_GT(print("still.pdf", 1), 0) << "a file needs no printer";
}

TEST_F(LimitsTest, OddPaperAndFewDotsAreWholeDocuments) {
  const struct {
    short width, length, dpi;
  } cases[] = {{1, 1, 600}, {1, 32767, 72}, {2100, 2970, 1}, {1, 1, 1}, {32767, 32767, 4800}};
  for (const auto &one : cases) {
    DEVMODEA mode{};
    mode.dmSize = sizeof mode;
    mode.dmFields = DM_PAPERWIDTH | DM_PAPERLENGTH | DM_PRINTQUALITY;
    mode.dmPaperWidth = one.width, mode.dmPaperLength = one.length, mode.dmPrintQuality = one.dpi;
    open("PDF", &mode);
    EXPECT_GT(print("odd.pdf", 2), 0) << one.width << "x" << one.length << " " << one.dpi;
    EXPECT_EQ(pagesIn("odd.pdf"), 2) << one.width << "x" << one.length << " " << one.dpi;
  }
  EXPECT_GT(print("none.pdf", 0), 0);
  EXPECT_EQ(PrintFolder::names(), "odd.pdf ") << "a document without pages is none";
}
