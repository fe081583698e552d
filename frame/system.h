/* Metrics of the screen. */
#ifndef WQ_FRAME_SYSTEM_H
#define WQ_FRAME_SYSTEM_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqSys: the screen ------------------------------------------------------------------------------------------- */

/* Store width and height of a maximised window's client area, or of the whole screen, in pixels.
 * Threads: any. */
WQ_API void WqSys_DesktopRect(SIZE *size);
WQ_API void WqSys_ScreenRes(SIZE *size);

#ifdef __cplusplus
}
#endif

#endif
