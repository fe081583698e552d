/* The library's start and end, and the one global block. The block holds something of many families, so no header of
 * theirs includes this one, only sources do. */
#ifndef WQ_FRAME_MAIN_H
#define WQ_FRAME_MAIN_H

#include "containers/containers.h"
#include "drawing/drawing.h"
#include "frame/types.h"
#include "windows/windows.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqMain: start and end --------------------------------------------------------------------------------------- */

/* The one block of the process: read by the library and the application, changed by the library. */
typedef struct WqMainBlock {
  HINSTANCE instance;  /* the application's instance handle */
  HWND mainWnd;        /* the application's main window; null until WqMain_Config */
  uint32_t allocCount; /* live blocks of WqMem; nothing in the library depends on it */
  WqList *wndList;     /* all window objects ever initialised, newest first */
  WqColorPal palette;  /* selected into the contexts that windows paint on */
  WqHash colorTbl;     /* the registries: of WqColorEntry, */
  WqHash fontTbl;      /* WqFont, */
  WqHash bmpTbl;       /* WqBmpFile, */
  WqHash brushTbl;     /* WqBrush, */
  WqHash penTbl;       /* WqPen, */
  WqHash mbbTbl;       /* and the button bars, each under its window's handle */
  WqTimerState timer;
  HINSTANCE tooltipStrInst; /* whose string resources tips are taken from */
  WqTooltip tooltip;
  WqClipBoard clipBoard;
} WqMainBlock;

extern WQ_API WqMainBlock wqMain;

/* Starts the library: clears wqMain, makes the platform's controls and COM ready for the thread, registers the window
 * class, and makes the palette and the registries, that of the colours with the library's own. It comes before every
 * call that touches wqMain. Failures are not reported; a registry that could not be made holds nothing.
 * instance: the application's instance handle; null serves for a program without resources.
 * Threads: the thread that will run the message loop. */
WQ_API void WqMain_Init(HINSTANCE instance);

/* Tells the library the application's main window, and makes the tooltip, which that window owns. Called once, after
 * that window was made. Window objects that have a window already are no tools of the tooltip.
 * Result: 1.
 * Threads: that of WqMain_Init. */
WQ_API int WqMain_Config(HWND mainWnd);

/* Ends the library: frees the timers, which are not told, ends the tooltip, frees the registries with all they hold and
 * have made, the palette, and the list of window objects, and leaves COM. Windows stay, and so does the window class; a
 * window that is open still gets its messages, while what snaps to others stays where it is. It is the last call, and
 * comes after WqTimer_Stop. A second one finds nothing more of the library's to do.
 * Threads: that of WqMain_Init. */
WQ_API void WqMain_Term(void);

#ifdef __cplusplus
}
#endif

#endif
