/* Metrics of the system. Lengths are in pixels. */
#ifndef PLATFORM_WINAPI_METRICS_H
#define PLATFORM_WINAPI_METRICS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define SM_CXSCREEN 0
#define SM_CYSCREEN 1
#define SM_CXVSCROLL 2
#define SM_CYHSCROLL 3
#define SM_CYCAPTION 4
#define SM_CXBORDER 5
#define SM_CYBORDER 6
#define SM_CXFIXEDFRAME 7
#define SM_CYFIXEDFRAME 8
#define SM_CXICON 11
#define SM_CYICON 12
#define SM_CXCURSOR 13
#define SM_CYCURSOR 14
#define SM_CYMENU 15
#define SM_CXFULLSCREEN 16
#define SM_CYFULLSCREEN 17
#define SM_MOUSEPRESENT 19
#define SM_CXMIN 28
#define SM_CYMIN 29
#define SM_CXSIZE 30
#define SM_CYSIZE 31
#define SM_CXFRAME 32
#define SM_CYFRAME 33
#define SM_CXMINTRACK 34
#define SM_CYMINTRACK 35
#define SM_CXDOUBLECLK 36
#define SM_CYDOUBLECLK 37
#define SM_CMOUSEBUTTONS 43
#define SM_CXEDGE 45
#define SM_CYEDGE 46
#define SM_CXSMICON 49
#define SM_CYSMICON 50
#define SM_CYSMCAPTION 51
#define SM_CXMAXTRACK 59
#define SM_CYMAXTRACK 60
#define SM_CXMAXIMIZED 61
#define SM_CYMAXIMIZED 62
#define SM_CXDRAG 68
#define SM_CYDRAG 69
#define SM_MOUSEWHEELPRESENT 75
#define SM_XVIRTUALSCREEN 76
#define SM_YVIRTUALSCREEN 77
#define SM_CXVIRTUALSCREEN 78
#define SM_CYVIRTUALSCREEN 79

PLATFORM_API int WINAPI GetSystemMetrics(int index);

/* Gives the program real pixels, and the real resolution in LOGPIXELSX and LOGPIXELSY. Otherwise the desktop scales it
 * as a whole, and it sees a screen of 96 pixels an inch. Fails after the first window or metric. */
PLATFORM_API BOOL WINAPI SetProcessDPIAware(void);
PLATFORM_API BOOL WINAPI IsProcessDPIAware(void);

#ifdef __cplusplus
}
#endif

#endif
