/* The system's controls: windows of classes that the system brings. */
#ifndef PLATFORM_WINAPI_CONTROLS_H
#define PLATFORM_WINAPI_CONTROLS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define ICC_TREEVIEW_CLASSES 0x0002u
#define ICC_BAR_CLASSES 0x0004u
#define ICC_TAB_CLASSES 0x0008u
#define ICC_WIN95_CLASSES 0x00FFu

typedef struct tagINITCOMMONCONTROLSEX {
  DWORD dwSize;
  DWORD dwICC; /* ICC_...; each of those above brings the tooltip */
} INITCOMMONCONTROLSEX;

/* Register the classes, as often as they are called. FALSE for a record of another size. */
PLATFORM_API void WINAPI InitCommonControls(void);
PLATFORM_API BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX *controls);

#ifdef __cplusplus
}
#endif

#endif
