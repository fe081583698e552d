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

/* ---- WqPaper: the size of a page ---------------------------------------------------------------------------------- */

typedef struct WqPaper {
  int32_t width; /* in hundredths of a millimetre, in steps of whole ones */
  int32_t height;
  double zoom; /* in percent */
} WqPaper;

/* Clear the record. */
WQ_API void WqPaper_Init(WqPaper *paper);
WQ_API void WqPaper_Term(WqPaper *paper);

/* Stores the size of what a context can draw on.
 * hdc: null stores 0 for both. */
WQ_API void WqPaper_Size(WqPaper *paper, HDC hdc);

/* Stores a zoom.
 * percent: 100.0 is the natural size. */
WQ_API void WqPaper_Zoom(WqPaper *paper, double percent);

/* ---- WqPrinter: printing ------------------------------------------------------------------------------------------
 *
 * One record, wqMain.printer, stands for the printer in use. A page is drawn as a window is: the record begins with a
 * WqDc, and a unit of its context is a pixel of the screen, in whole dots of the printer.
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

/* A printer of this machine, a block from WqMem. */
typedef struct WqPrinterDevice {
  uint32_t number; /* its place in the platform's list, from 1 on */
  char name[256];  /* longer names are cut, as are those of drivers */
  char driver[256];
} WqPrinterDevice;

typedef struct WqPrinter {
  WqDc dc; /* of the page; first, so that the record can be taken for it */
  uint32_t deviceCount;
  WqList *devices;         /* of WqPrinterDevice, the last one listed first */
  WqPrinterDevice *device; /* the one in use, null when it is not in the list */
  char deviceName[84];     /* the name of the one in use; longer ones are cut */
  uint32_t devMode[37];    /* the beginning of its settings, a DEVMODEA */
  WqPaper paper;
  int32_t pageCount;    /* read anew before each page */
  POINT savedWindowOrg; /* the context's mapping before the page */
  POINT savedViewportOrg;
  SIZE savedWindowExt;
  SIZE savedViewportExt;
  SYSTEMTIME printTime; /* when the pages began, in local time */
} WqPrinter;

/* Draws a page.
 * page: from 1 on.
 * Result: 0 to go on; anything else makes this page the last one. */
typedef int32_t (*WqPageProc)(WqPrinter *printer, int32_t page);

typedef struct WqPrintJob {
  WqWnd *wnd;          /* which prints, and has a user procedure; null for nothing to be done */
  WqPageProc pageProc; /* null for a document without pages */
  int32_t pageCount;   /* the pages for the dialog; afterwards those that the window wanted */
} WqPrintJob;

/* Makes wqMain.printer ready for the default printer: lists the printers, and stores its settings, name and paper, with a
 * zoom of 100.0 and one page. It comes after WqMain_Config. On a machine without printers the record is empty. */
WQ_API void WqPrinter_Init(void);

/* Frees the list of printers. WqMain_Term does it for wqMain.printer. */
WQ_API void WqPrinter_Term(WqPrinter *printer);

/* Prints a document with wqMain.printer.
 *
 * The platform's dialog comes first; when the user gives up nothing else happens, and the record has the default printer's
 * settings and name then. Otherwise the record gets those of the chosen printer, its paper and its context, and the main
 * window is disabled until the end. The window's user procedure gets WQM_PRINT_PAGE and may change pageCount. Then each
 * page is drawn, whatever range the dialog was given. Before each, the mapping is set to MM_ISOTROPIC and the background to
 * TRANSPARENT; a printer coarser than the screen can't have that mapping and keeps its dots as units. At the end the main
 * window gets the focus.
 *
 * Failures are not reported: a document that can't begin has no pages. What a procedure throws passes through, and the
 * document is given up. A page whose procedure prints another document has no context after that. */
WQ_API void WqPrinter_Print(WqPrintJob *job);

/* Lists the printers of this machine anew; device becomes invalid.
 * Result: 1; 0 when there are none or they can't be listed, and the list stays as it was. When memory is short for one
 * it is left out. */
WQ_API int WqPrinter_ListDevice(WqPrinter *printer);

/* Stores settings.
 * devMode: global memory, which stays the caller's.
 * Result: 1; 0 for null and for memory that can't be locked, and nothing is stored. */
WQ_API int WqPrinter_DevMode(WqPrinter *printer, HGLOBAL devMode);

/* Stores the device's name out of a DEVNAMES.
 * devNames: global memory, which stays the caller's.
 * Result: 1; 0 for null and for memory that can't be locked, and the name is empty then. */
WQ_API int WqPrinter_DevName(WqPrinter *printer, HGLOBAL devNames);

/* Makes a printer of the list the one in use.
 * name: is compared byte by byte.
 * Result: 1; 0 when it is not there: device is null then, but stays as it was when the list is empty. */
WQ_API int WqPrinter_SelectDevice(WqPrinter *printer, const char *name);

#ifdef __cplusplus
}
#endif

#endif
