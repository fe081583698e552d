/* The library's start and end, and its global block. The block holds records of many families. So only sources include
 * this header, never the families' headers. */
#ifndef WQ_FRAME_MAIN_H
#define WQ_FRAME_MAIN_H

#include "containers/containers.h"
#include "drawing/drawing.h"
#include "frame/types.h"
#include "printing/printing.h"
#include "windows/windows.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqMain: start and end --------------------------------------------------------------------------------------- */

/* The one block of the process: read by the library and the application, changed by the library. */
typedef struct WqMainBlock {
  HINSTANCE instance;  /* the application's instance handle */
  HWND mainWnd;        /* the application's main window; null until WqMain_Config */
  uint32_t allocCount; /* live blocks of WqMem; only informative */
  WqList *wndList;     /* all window objects ever initialised, newest first */
  WqColorPal palette;  /* selected into the contexts that windows paint on */
  WqHash colorTbl;     /* registry of WqColorEntry */
  WqHash fontTbl;      /* registry of WqFont */
  WqHash bmpTbl;       /* registry of WqBmpFile */
  WqHash brushTbl;     /* registry of WqBrush */
  WqHash penTbl;       /* registry of WqPen */
  WqHash mbbTbl;       /* registry of button bars, by window handle */
  WqTimerState timer;
  HINSTANCE tooltipStrInst; /* the instance with the strings of tips */
  WqTooltip tooltip;
  WqClipBoard clipBoard;
  WqPrinter printer; /* empty until WqPrinter_Init */
} WqMainBlock;

extern WQ_API WqMainBlock wqMain;

/* Starts the library. Clears wqMain, prepares the platform's controls and COM for the thread, registers the window
 * class, and makes the palette and the registries. The registry of colours gets the library's own colours. This call
 * must come before all others that use wqMain. Failures are not reported; a registry that could not be made stays
 * empty.
 * instance: the application's instance handle; null is enough for a program without resources.
 * Threads: the thread that will run the message loop. */
WQ_API void WqMain_Init(HINSTANCE instance);

/* Tells the library the application's main window, and makes the tooltip, owned by that window. Called once, after the
 * window was made. Window objects whose window exists already don't become tools of the tooltip.
 * Result: 1.
 * Threads: that of WqMain_Init. */
WQ_API int WqMain_Config(HWND mainWnd);

/* Ends the library. Frees the timers without telling them, ends the tooltip, and frees the registries with all their
 * records and drawing objects, the palette, and the lists of printers and window objects. Leaves COM. The window class
 * and open windows stay: these still get their messages, but their layout stops. This is the last call, after
 * WqTimer_Stop. A second call does nothing more.
 * Threads: that of WqMain_Init. */
WQ_API void WqMain_Term(void);

#ifdef __cplusplus
}
#endif

#endif
