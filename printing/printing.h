/* Printing: the print dialog, documents drawn page by page, the list of printers, and the size of paper. */
#ifndef WQ_PRINTING_PRINTING_H
#define WQ_PRINTING_PRINTING_H

#include "containers/containers.h"
#include "drawing/dc.h"
#include "frame/types.h"
#include "windows/windows.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqPaper: the size of a page --------------------------------------------------------------------------------- */

typedef struct WqPaper {
  int32_t width; /* of the area that can be drawn on, in hundredths of a millimetre, a multiple of 100 */
  int32_t height;
  double zoom; /* in percent */
} WqPaper;

/* Clear the record. */
WQ_API void WqPaper_Init(WqPaper *paper);
WQ_API void WqPaper_Term(WqPaper *paper);

/* Stores the size of the area that a context can draw on.
 * hdc: null stores 0 for both. */
WQ_API void WqPaper_Size(WqPaper *paper, HDC hdc);

/* Stores a zoom.
 * percent: 100.0 is the natural size. */
WQ_API void WqPaper_Zoom(WqPaper *paper, double percent);

/* ---- WqPrinter: printing ------------------------------------------------------------------------------------------
 *
 * One record, wqMain.printer, stands for the printer in use. A page is drawn like a window: the record begins with a
 * WqDc. The unit of its context is a pixel of the screen, made of whole dots of the printer.
 *
 *   static int32_t drawPage(WqPrinter *printer, int32_t page) {
 *     WqDcDraw_FillRect(&printer->dc.draw, &rect, WQ_COLOR_WHITE);
 *     return 0;
 *   }
 *
 *   WqPrintJob job = {&wnd, drawPage, 2};
 *   WqPrinter_Print(&job);
 *
 * Everything here belongs to the thread of the windows. */

/* A printer of this machine, in a block from WqMem. */
typedef struct WqPrinterDevice {
  uint32_t number; /* its place in the platform's list, from 1 */
  char name[256];  /* cut if too long, like the driver's name */
  char driver[256];
} WqPrinterDevice;

typedef struct WqPrinter {
  WqDc dc; /* of the page; the first member, so that a pointer to the record is one to the WqDc */
  uint32_t deviceCount;
  WqList *devices;         /* of WqPrinterDevice, in reverse order */
  WqPrinterDevice *device; /* the printer in use, null if it is not in the list */
  char deviceName[84];     /* the name of the printer in use, cut if too long */
  uint32_t devMode[37];    /* the beginning of the DEVMODEA of the printer in use */
  WqPaper paper;
  int32_t pageCount;    /* read again before each page */
  POINT savedWindowOrg; /* the context's mapping before the page */
  POINT savedViewportOrg;
  SIZE savedWindowExt;
  SIZE savedViewportExt;
  SYSTEMTIME printTime; /* local time when the first page began */
} WqPrinter;

/* Draws a page.
 * page: from 1.
 * Result: 0 to go on; anything else makes this page the last one. */
typedef int32_t (*WqPageProc)(WqPrinter *printer, int32_t page);

typedef struct WqPrintJob {
  WqWnd *wnd;          /* prints, and has a user procedure; null for no print */
  WqPageProc pageProc; /* null for a document without pages */
  int32_t pageCount;   /* the number of pages for the dialog; afterwards the number that the window set */
} WqPrintJob;

/* Prepares wqMain.printer for the default printer: lists the printers, and stores its settings, name and paper, with a
 * zoom of 100.0 and one page. WqMain_Config must come before. On a machine without printers the record is empty. */
WQ_API void WqPrinter_Init(void);

/* Frees the list of printers. WqMain_Term frees that of wqMain.printer. */
WQ_API void WqPrinter_Term(WqPrinter *printer);

/* Prints a document with wqMain.printer.
 *
 * The platform's dialog comes first. If the user cancels it, nothing else happens, but the record has the default
 * printer's settings and name then. Otherwise the record gets those of the chosen printer, its paper and its context,
 * and the main window is disabled until the end. The window's user procedure gets WQM_PRINT_PAGE and may change
 * pageCount. Then all pages are drawn, whatever range the user chose in the dialog. Before each page, the mapping is
 * set to MM_ISOTROPIC and the background to TRANSPARENT. A printer that is coarser than the screen can't have this
 * mapping, and its dots stay the units. At the end the main window gets the focus.
 *
 * Failures are not reported: a document that can't begin has no pages. Exceptions of a procedure pass through, and the
 * document is given up. If a page's procedure prints another document, the page has no context after that. */
WQ_API void WqPrinter_Print(WqPrintJob *job);

/* Lists the printers of this machine again; device becomes invalid.
 * Result: 1; 0 if there are none or they can't be listed, and the list stays as it was. A printer is left out if memory
 * is short for it. */
WQ_API int WqPrinter_ListDevice(WqPrinter *printer);

/* Stores settings.
 * devMode: global memory, which stays the caller's.
 * Result: 1; 0 for null and for memory that can't be locked, and nothing is stored. */
WQ_API int WqPrinter_DevMode(WqPrinter *printer, HGLOBAL devMode);

/* Stores the device name from a DEVNAMES.
 * devNames: global memory, which stays the caller's.
 * Result: 1; 0 for null and for memory that can't be locked, and the name is empty then. */
WQ_API int WqPrinter_DevName(WqPrinter *printer, HGLOBAL devNames);

/* Selects a printer from the list.
 * name: is compared byte by byte.
 * Result: 1; 0 if it is not in the list: device is null then, but stays as it was if the list is empty. */
WQ_API int WqPrinter_SelectDevice(WqPrinter *printer, const char *name);

#ifdef __cplusplus
}
#endif

#endif
