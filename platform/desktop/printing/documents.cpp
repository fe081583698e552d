// The functions of the API that print a document.

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/printing/printerpaper.h"

namespace platform {

namespace {

template <typename Body> int withPaper(HDC dc, Body body) {
  return locked<int>(SP_OUTOFMEMORY, [&]() -> int {
    const std::shared_ptr<PrinterPaper> paper = printerPaperOf(dc);
    if (paper) return body(*paper);
    SetLastError(ERROR_INVALID_HANDLE);
    return SP_ERROR;
  });
}

} // namespace

} // namespace platform

using namespace platform;

int StartDocA(HDC dc, const DOCINFOA *info) {
  return withPaper(dc, [&](PrinterPaper &paper) { return info ? paper.startDocument(*info) : SP_ERROR; });
}

int StartPage(HDC dc) {
  return withPaper(dc, [](PrinterPaper &paper) { return paper.startPage(); });
}

int EndPage(HDC dc) {
  return withPaper(dc, [&](PrinterPaper &paper) -> int {
    const int ended = paper.endPage();
    if (ended <= 0 || !paper.abortProcedure) return ended;
    if (callOut(paper.abortProcedure, dc, 0)) return ended;
    paper.abortDocument();
    return SP_APPABORT;
  });
}

int EndDoc(HDC dc) {
  return withPaper(dc, [](PrinterPaper &paper) { return paper.endDocument(); });
}

int AbortDoc(HDC dc) {
  return withPaper(dc, [](PrinterPaper &paper) { return paper.abortDocument(); });
}

int SetAbortProc(HDC dc, ABORTPROC procedure) {
  return withPaper(dc, [&](PrinterPaper &paper) {
    paper.abortProcedure = procedure;
    return 1;
  });
}

HDC ResetDCA(HDC dc, const DEVMODEA *mode) {
  return locked<HDC>(nullptr, [&]() -> HDC {
    const std::shared_ptr<PrinterPaper> paper = printerPaperOf(dc);
    if (!paper || !paper->reset(mode)) return nullptr;
    dcOf(dc)->clipChanged();
    return dc;
  });
}
