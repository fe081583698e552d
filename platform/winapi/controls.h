/* The system's controls: windows of classes that the system registers. */
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
  DWORD dwICC; /* ICC_...; each of the above registers the tooltip */
} INITCOMMONCONTROLSEX;

/* Register the classes. Further calls do nothing. FALSE for a record of another size. */
PLATFORM_API void WINAPI InitCommonControls(void);
PLATFORM_API BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX *controls);

#ifdef __cplusplus
}
#endif

#endif
