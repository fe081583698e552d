/* Messages to the user. */
#ifndef PLATFORM_WINAPI_BOXES_H
#define PLATFORM_WINAPI_BOXES_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Buttons, icon, default button, and the relation to other windows. */

#define MB_OK 0x0000u
#define MB_OKCANCEL 0x0001u
#define MB_ABORTRETRYIGNORE 0x0002u
#define MB_YESNOCANCEL 0x0003u
#define MB_YESNO 0x0004u
#define MB_RETRYCANCEL 0x0005u
#define MB_CANCELTRYCONTINUE 0x0006u
#define MB_TYPEMASK 0x000Fu

#define MB_ICONHAND 0x0010u
#define MB_ICONQUESTION 0x0020u
#define MB_ICONEXCLAMATION 0x0030u
#define MB_ICONASTERISK 0x0040u
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONSTOP MB_ICONHAND
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_ICONMASK 0x00F0u

#define MB_DEFBUTTON1 0x0000u
#define MB_DEFBUTTON2 0x0100u
#define MB_DEFBUTTON3 0x0200u
#define MB_DEFBUTTON4 0x0300u
#define MB_DEFMASK 0x0F00u

#define MB_APPLMODAL 0x0000u
#define MB_SYSTEMMODAL 0x1000u /* also above all windows */
#define MB_TASKMODAL 0x2000u   /* without an owner it disables all windows of the thread */

#define MB_HELP 0x4000u /* one button more, which leaves the box open and asks the owner for help, as F1 does */

#define MB_SETFOREGROUND 0x00010000u
#define MB_TOPMOST 0x00040000u

#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7
#define IDHELP 9
#define IDTRYAGAIN 10
#define IDCONTINUE 11

/* The record to which lParam of WM_HELP points. */
typedef struct tagHELPINFO {
  UINT cbSize;
  int iContextType; /* HELPINFO_WINDOW */
  int iCtrlId;      /* of the control with the focus */
  HANDLE hItemHandle;
  UINT_PTR dwContextId;
  POINT MousePos;
} HELPINFO;

#define HELPINFO_WINDOW 1

/* Shows a text with buttons and waits for one of them. The owner is disabled meanwhile; messages of the thread are
 * dispatched.
 * text: lines break at "\n", and long lines at the box's width. caption: null for that of an error.
 * Result: the button. Escape and the close box give IDCANCEL if the box has a Cancel button, and IDOK if OK is its only
 * button. 0 if the box fails, or if the owner is destroyed meanwhile.
 * Without a display caption and text go to standard error, and the default button is returned at once. */
PLATFORM_API int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);

#ifdef __cplusplus
}
#endif

#endif
