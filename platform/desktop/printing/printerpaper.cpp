// Documents. One goes to a file: the one that was asked for, or a hidden one that the spooler gets.

#include <spawn.h> // before the API's names, one of which its parameters have too

#include "platform/desktop/printing/printerpaper.h"

#include "platform/desktop/drawing/above.h"
#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"
#include "platform/kernel/paths.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int kOutOfMemory = ENOMEM;
constexpr size_t kLongestName = 200; // bytes of a file's name that come from a document's

int resultOf(int error) {
  SetLastError(errorOf(error));
  switch (error) {
  case ENOSPC:
  case EDQUOT:
  case EFBIG: return SP_OUTOFDISK;
  case ENOMEM: return SP_OUTOFMEMORY;
  default: return SP_ERROR;
  }
}

// What has a meaning in names, here or on Windows.
constexpr std::string_view kUnwanted = "/\\:*?\"<>|";

// A file's name for a document's, with an underscore for each of these.
std::string fileNameFor(std::string title) {
  if (title.ends_with(".pdf")) title.resize(title.size() - 4);
  size_t size = std::min(title.size(), kLongestName);
  while (size > 0 && size < title.size() && (title[size] & 0xC0) == 0x80) --size;
  title.resize(size);
  for (char &byte : title)
    if (static_cast<unsigned char>(byte) < ' ' || kUnwanted.find(byte) != std::string_view::npos) byte = '_';
  if (title.empty()) title = "Document";
  if (title[0] == '.') title[0] = '_';
  return title + ".pdf";
}

std::string folderForSpool() {
  const char *folder = std::getenv("TMPDIR");
  return folder && *folder ? folder : "/tmp";
}

} // namespace

PrinterPaper::PrinterPaper(Printer printer, const DEVMODEA *mode)
    : printer_(std::move(printer)), settings_(settingsOf(printer_, mode)), form_(pageOf(printer_, settings_)) {}

int PrinterPaper::caps(int index) const {
  const auto millimetres = [](int pixels, int dpi) { return (pixels * 254 + 5 * dpi) / (10 * dpi); };
  switch (index) {
  case TECHNOLOGY: return DT_RASPRINTER;
  case HORZSIZE: return millimetres(form_.inner.width(), form_.dpiX);
  case VERTSIZE: return millimetres(form_.inner.height(), form_.dpiY);
  case HORZRES: return form_.inner.width();
  case VERTRES: return form_.inner.height();
  case BITSPIXEL: return 24;
  case PLANES: return 1;
  case NUMCOLORS: return -1; // more than a palette has
  case RASTERCAPS: return 0x2A99;
  case LOGPIXELSX: return form_.dpiX;
  case LOGPIXELSY: return form_.dpiY;
  case PHYSICALWIDTH: return form_.sheet.width();
  case PHYSICALHEIGHT: return form_.sheet.height();
  case PHYSICALOFFSETX: return form_.inner.left();
  case PHYSICALOFFSETY: return form_.inner.top();
  default: return 0;
  }
}

template <typename Draw> void PrinterPaper::onPage(Draw draw) {
  if (error_ != 0) return;
  try {
    draw(*pages_);
  } catch (const std::bad_alloc &) {
    error_ = kOutOfMemory;
    throw;
  }
}

void PrinterPaper::fill(const QRegion &clip, const QRect &rect, const Ink &ink) {
  onPage([&](PdfPages &pages) { pages.fill(clip, rect, ink); });
}

void PrinterPaper::draw(const QRegion &clip, const PaperPath &path, int mode, const Ink *ink, const Pencil *pencil) {
  onPage([&](PdfPages &pages) { pages.draw(clip, path, mode, ink, pencil); });
}

void PrinterPaper::text(const QRegion &clip, const PaperText &text) {
  onPage([&](PdfPages &pages) { pages.text(clip, text); });
}

void PrinterPaper::picture(const QRegion &clip, const QRectF &rect, const QImage &image) {
  onPage([&](PdfPages &pages) { pages.picture(clip, rect, image); });
}

int PrinterPaper::startDocument(const DOCINFOA &info) {
  static std::atomic<int> serial;
  if (pages_ || onlyTells) return SP_ERROR;
  title_ = utf8FromCodePage(info.lpszDocName ? info.lpszDocName : "");
  auto output = std::make_unique<OutputFile>();
  const bool named = info.lpszOutput && *info.lpszOutput && std::strcmp(info.lpszOutput, printer_.port.c_str()) != 0;
  const std::string wanted = named ? info.lpszOutput : file;
  std::string path = wanted.empty() ? fileNameFor(title_) : nativePath(wanted.c_str());
  if (path.empty()) return SP_ERROR; // with the error set
  const bool spools = wanted.empty() && !printer_.queue.empty();
  if (spools && !printerOf(printer_.name.c_str())) { // it has gone since it was chosen
    SetLastError(ERROR_INVALID_PRINTER_NAME);
    return SP_ERROR;
  }
  if (spools) path = folderForSpool() + "/" + path;
  Descriptor made = output->begin(path, !wanted.empty(), spools ? 0600 : 0666); // the spooler's folder is everybody's
  if (!made.valid()) return resultOf(errno);
  pages_ = std::make_unique<PdfPages>(std::move(made), utf16FromUtf8(title_));
  output_ = std::move(output);
  if (!named) file.clear(); // the user has agreed to one document there
  error_ = 0;
  spools_ = spools;
  return ++serial;
}

int PrinterPaper::startPage() {
  if (!pages_ || pages_->within()) return SP_ERROR;
  if (error_ != 0) return resultOf(error_);
  pages_->begin(form_);
  return 1;
}

int PrinterPaper::endPage() {
  if (!pages_ || !pages_->within()) return SP_ERROR;
  onPage([&](PdfPages &pages) { error_ = pages.end(); });
  return error_ == 0 ? 1 : resultOf(error_);
}

int PrinterPaper::endDocument() {
  if (!pages_) return SP_ERROR;
  const auto pages = std::move(pages_);
  const auto output = std::move(output_);
  if (error_ == 0 && pages->within()) error_ = pages->end();
  if (error_ == 0 && pages->count() == 0) return 1;
  if (error_ == 0) error_ = pages->finish();
  if (error_ == 0) error_ = spools_ ? spool(output->current()) : output->keep();
  return error_ == 0 ? 1 : resultOf(error_);
}

int PrinterPaper::abortDocument() {
  if (!pages_) return SP_ERROR;
  pages_.reset();
  output_.reset();
  return 1;
}

// The spooler copies the file before its program ends.
int PrinterPaper::spool(const std::string &path) const {
  const std::string copies = std::to_string(settings_.dmCopies);
  const char *arguments[] = {"lp", "-s",           "-d", printer_.queue.c_str(), "-n",   copies.c_str(),
                             "-t", title_.c_str(), "--", path.c_str(),           nullptr};
  const DesktopUnlock others;
  pid_t child = 0;
  if (const int error = posix_spawnp(&child, "lp", nullptr, nullptr, const_cast<char **>(arguments), environ))
    return error;
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) return errno;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : EIO;
}

bool PrinterPaper::reset(const DEVMODEA *mode) {
  if (hasPage()) return false;
  settings_ = settingsOf(printer_, mode);
  form_ = pageOf(printer_, settings_);
  return true;
}

std::shared_ptr<PrinterPaper> printerPaperOf(HDC dc) {
  const auto context = dcOf(dc);
  return context ? std::dynamic_pointer_cast<PrinterPaper>(context->paper) : nullptr;
}

std::shared_ptr<Paper> above::paperOf(const char *name, const DEVMODEA *mode) {
  std::optional<Printer> printer = name ? printerOf(name) : std::nullopt;
  return printer ? std::make_shared<PrinterPaper>(std::move(*printer), mode) : nullptr;
}

} // namespace platform
