// The printer in use, and documents. Everything that a print makes is released at the end of its scope, even if a
// procedure throws: the context with an incomplete document, the dialog's memory, and the disabled state of the main
// window.

#include "printing/printing.h"

#include "frame/main.h"
#include "frame/memory.h"
#include "text/double_byte.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace {

constexpr DWORD kPrinters = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
constexpr DWORD kAsk = PD_NOSELECTION | PD_RETURNDC | PD_USEDEVMODECOPIESANDCOLLATE | PD_HIDEPRINTTOFILE;
constexpr WPARAM kPrintPage = 2; // distinguishes WQM_PRINT_PAGE from other notices of a print
constexpr char kDocumentName[] = "Document";

struct Unlock {
  HGLOBAL block;
  void operator()(const void *) const { GlobalUnlock(block); }
};

// The locked bytes of a block; null if it can't be locked.
std::unique_ptr<const char, Unlock> bytesOf(HGLOBAL block) {
  const auto *bytes = block ? static_cast<const char *>(GlobalLock(block)) : nullptr;
  return std::unique_ptr<const char, Unlock>(bytes, Unlock{block});
}

// The print dialog's record, and the memory that the dialog gives back.
class Dialog {
 public:
  explicit Dialog(int32_t pages) : dialog_{} {
    dialog_.lStructSize = sizeof dialog_;
    dialog_.hwndOwner = wqMain.mainWnd;
    dialog_.nFromPage = dialog_.nMinPage = 1;
    dialog_.nToPage = dialog_.nMaxPage = static_cast<WORD>(pages);
  }
  ~Dialog() {
    if (dialog_.hDC) DeleteDC(dialog_.hDC);
    for (const HGLOBAL block : {dialog_.hDevMode, dialog_.hDevNames})
      if (block) GlobalFree(block);
  }
  Dialog(const Dialog &) = delete;
  Dialog &operator=(const Dialog &) = delete;

  // Shows the dialog, or with PD_RETURNDEFAULT only asks for the default. The printer's record gets the result.
  bool ask(WqPrinter *printer, DWORD flags) {
    dialog_.Flags = flags;
    const bool answered = PrintDlgA(&dialog_) != 0;
    if (answered || flags & PD_RETURNDEFAULT) {
      WqPrinter_DevMode(printer, dialog_.hDevMode);
      WqPrinter_DevName(printer, dialog_.hDevNames);
    }
    return answered;
  }
  HDC hdc() const { return dialog_.hDC; }
  // Hands the context over to the caller.
  HDC takeDc() { return std::exchange(dialog_.hDC, nullptr); }

 private:
  PRINTDLGA dialog_;
};

// Disables the main window in its scope.
class Disabled {
 public:
  Disabled() { EnableWindow(wqMain.mainWnd, FALSE); }
  ~Disabled() {
    EnableWindow(wqMain.mainWnd, TRUE);
    SetFocus(wqMain.mainWnd);
  }
  Disabled(const Disabled &) = delete;
  Disabled &operator=(const Disabled &) = delete;
};

void attachDc(WqPrinter *printer, HDC hdc) {
  WqDc *dc = &printer->dc;
  const int logPix = GetDeviceCaps(hdc, LOGPIXELSY);
  dc->hdc = hdc;
  dc->mode = WQ_DC_PRINTER;
  WqDcDraw_Dc(&dc->draw, dc);
  WqDcObj_Dc(&dc->obj, dc);
  WqDcMap_Update(&dc->map, logPix);
  WqDcDraw_Zoom(&dc->draw, 100.0);
}

// Makes the printer's record a context, and owns that context, for the duration of a print.
class Attached {
 public:
  Attached(WqPrinter *printer, WqWnd *wnd, HDC hdc) : printer_(printer), wnd_(wnd), hdc_(hdc) { attach(); }
  ~Attached() {
    WqDc_Release(&printer_->dc);
    WqDc_Term(&printer_->dc);
    DeleteDC(hdc_);
  }
  Attached(const Attached &) = delete;
  Attached &operator=(const Attached &) = delete;

  WqPrinter *printer() const { return printer_; }
  HDC hdc() const { return hdc_; }
  // Restores the record's context if a procedure has printed another document.
  void again() const {
    if (printer_->dc.hdc != hdc_) attach();
  }

 private:
  void attach() const {
    WqDc_Init(&printer_->dc, wnd_);
    attachDc(printer_, hdc_);
  }

  WqPrinter *const printer_;
  WqWnd *const wnd_;
  const HDC hdc_;
};

// Printer dots in a pixel of the screen.
int scaleOf(const WqPrinter *printer) {
  return static_cast<int>(printer->dc.map.dpi / WqDcMap_LogPix(&printer->dc.map));
}

void setMapping(WqPrinter *printer, HDC hdc) {
  SetMapMode(hdc, MM_ISOTROPIC);
  SetBkMode(hdc, TRANSPARENT);
  const int scale = scaleOf(printer);
  SetWindowOrgEx(hdc, 0, 0, &printer->savedWindowOrg);
  SetViewportOrgEx(hdc, 0, 0, &printer->savedViewportOrg);
  SetWindowExtEx(hdc, 1, 1, &printer->savedWindowExt);
  SetViewportExtEx(hdc, scale, scale, &printer->savedViewportExt);
}

void restoreMapping(const WqPrinter *printer, HDC hdc) {
  SetWindowOrgEx(hdc, printer->savedWindowOrg.x, printer->savedWindowOrg.y, nullptr);
  SetViewportOrgEx(hdc, printer->savedViewportOrg.x, printer->savedViewportOrg.y, nullptr);
  SetWindowExtEx(hdc, printer->savedWindowExt.cx, printer->savedWindowExt.cy, nullptr);
  SetViewportExtEx(hdc, printer->savedViewportExt.cx, printer->savedViewportExt.cy, nullptr);
}

// Result: whether printing goes on with the next page.
bool printPage(const Attached &context, WqPageProc draw, int32_t page) {
  WqPrinter *printer = context.printer();
  const HDC hdc = context.hdc();
  context.again();
  StartPage(hdc);
  setMapping(printer, hdc);
  const bool goesOn = draw(printer, page) == 0;
  restoreMapping(printer, hdc);
  EndPage(hdc);
  return goesOn;
}

void printPages(const Attached &context, WqPageProc draw) {
  GetLocalTime(&context.printer()->printTime);
  for (int32_t page = 1; page <= context.printer()->pageCount; ++page)
    if (!printPage(context, draw, page)) return;
}

void printDocument(const Attached &context, WqPageProc draw) {
  DOCINFOA info = {};
  info.cbSize = sizeof info;
  info.lpszDocName = kDocumentName;
  if (StartDocA(context.hdc(), &info) < 0) return;
  if (draw) printPages(context, draw);
  EndDoc(context.hdc());
}

void tellWindow(WqPrinter *printer, WqPrintJob *job) {
  WqMsg msg = {job->wnd->hwnd, WQM_PRINT_PAGE, kPrintPage, reinterpret_cast<LPARAM>(printer)};
  job->wnd->userProc(job->wnd, &msg);
  job->pageCount = printer->pageCount;
}

WqPrinterDevice *makeDevice(uint32_t number, const PRINTER_INFO_2A &info) {
  auto *device = static_cast<WqPrinterDevice *>(WqMem_Alloc(sizeof(WqPrinterDevice)));
  if (!device) return nullptr;
  device->number = number;
  wqCopyFitting(device->name, info.pPrinterName ? info.pPrinterName : "");
  wqCopyFitting(device->driver, info.pDriverName ? info.pDriverName : "");
  return device;
}

void addDevice(WqPrinter *printer, uint32_t number, const PRINTER_INFO_2A &info) {
  WqPrinterDevice *device = makeDevice(number, info);
  WqList *head = device ? WqList_AddP(printer->devices, reinterpret_cast<WqWord>(device)) : nullptr;
  if (!head) {
    WqMem_Free(device);
    return;
  }
  printer->devices = head;
  ++printer->deviceCount;
}

void removeDevices(WqPrinter *printer) {
  WqList_RemoveAllWith(printer->devices);
  printer->devices = nullptr;
  printer->deviceCount = 0;
}

} // namespace

void WqPrinter_Init() {
  WqPrinter *printer = &wqMain.printer;
  *printer = {};
  WqPrinter_ListDevice(printer);
  Dialog dialog(0);
  dialog.ask(printer, PD_RETURNDEFAULT | PD_RETURNDC);
  WqPrinter_SelectDevice(printer, printer->deviceName);
  WqPaper_Size(&printer->paper, dialog.hdc());
  WqPaper_Zoom(&printer->paper, 100.0);
  printer->pageCount = 1;
}

void WqPrinter_Term(WqPrinter *printer) {
  removeDevices(printer);
  printer->device = nullptr;
}

void WqPrinter_Print(WqPrintJob *job) {
  if (!job->wnd) return;
  WqPrinter *printer = &wqMain.printer;
  printer->pageCount = job->pageCount;
  Dialog dialog(job->pageCount);
  dialog.ask(printer, PD_RETURNDEFAULT);
  if (!dialog.ask(printer, kAsk)) return;
  WqPaper_Size(&printer->paper, dialog.hdc());
  WqPaper_Zoom(&printer->paper, 100.0);
  const Disabled mainWindow;
  const Attached context(printer, job->wnd, dialog.takeDc());
  tellWindow(printer, job);
  printDocument(context, job->pageProc);
}

int WqPrinter_ListDevice(WqPrinter *printer) {
  DWORD size = 0, count = 0;
  if (EnumPrintersA(kPrinters, nullptr, 2, nullptr, 0, &size, &count)) return 0; // there are no printers
  const std::unique_ptr<BYTE, void (*)(void *)> buffer(static_cast<BYTE *>(WqMem_Alloc(size)), WqMem_Free);
  if (!buffer || !EnumPrintersA(kPrinters, nullptr, 2, buffer.get(), size, &size, &count)) return 0;
  removeDevices(printer);
  const auto *infos = reinterpret_cast<const PRINTER_INFO_2A *>(buffer.get());
  for (DWORD i = 0; i < count; ++i) addDevice(printer, i + 1, infos[i]);
  return 1;
}

int WqPrinter_DevMode(WqPrinter *printer, HGLOBAL devMode) {
  const auto bytes = bytesOf(devMode);
  if (!bytes) return 0;
  std::memcpy(printer->devMode, bytes.get(), std::min(sizeof printer->devMode, size_t{GlobalSize(devMode)}));
  return 1;
}

int WqPrinter_DevName(WqPrinter *printer, HGLOBAL devNames) {
  printer->deviceName[0] = '\0';
  const auto bytes = bytesOf(devNames);
  if (!bytes) return 0;
  wqCopyFitting(printer->deviceName, bytes.get() + reinterpret_cast<const DEVNAMES *>(bytes.get())->wDeviceOffset);
  return 1;
}

int WqPrinter_SelectDevice(WqPrinter *printer, const char *name) {
  if (printer->deviceCount == 0) return 0;
  printer->device = nullptr;
  for (const WqList *node = printer->devices; node; node = node->next) {
    auto *device = reinterpret_cast<WqPrinterDevice *>(node->data);
    if (std::strcmp(device->name, name) != 0) continue;
    printer->device = device;
    return 1;
  }
  return 0;
}
