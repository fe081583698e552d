/* The tooltip control: a small window with a text. It appears beside the pointer when the pointer rests over a tool,
 * which is a window or a rectangle of one.
 *
 * TTS_BALLOON, TTS_NOANIMATE and TTS_NOFADE are accepted without effect. A tip takes neither the focus nor the pointer,
 * and stays in the work area. */
#ifndef PLATFORM_WINAPI_TOOLTIPS_H
#define PLATFORM_WINAPI_TOOLTIPS_H

#include "platform/winapi/messages.h"

#ifdef __cplusplus
extern "C" {
#endif

#define TOOLTIPS_CLASSA "tooltips_class32"

#define TTS_ALWAYSTIP 0x01u /* also while the owner isn't active */
#define TTS_NOPREFIX 0x02u  /* otherwise '&' is left out (&& stands for one), and a tab ends the text */
#define TTS_NOANIMATE 0x10u
#define TTS_NOFADE 0x20u
#define TTS_BALLOON 0x40u

#define TTF_IDISHWND 0x0001u  /* the tool is a window, and uId its handle */
#define TTF_CENTERTIP 0x0002u /* the tip is centered below the tool */
#define TTF_RTLREADING 0x0004u
#define TTF_SUBCLASS 0x0010u /* the control gets the window's mouse messages by itself, if one thread has made both */
#define TTF_TRACK 0x0020u    /* only TTM_TRACKACTIVATE shows the tip */
#define TTF_ABSOLUTE 0x0080u
#define TTF_TRANSPARENT 0x0100u
#define TTF_DI_SETITEM 0x8000u /* in the answer to TTN_NEEDTEXTA: the control keeps the text */

#define TTDT_AUTOMATIC 0u
#define TTDT_RESHOW 1u
#define TTDT_AUTOPOP 2u
#define TTDT_INITIAL 3u

/* Stands for a text that TTN_NEEDTEXTA asks for. */
#define LPSTR_TEXTCALLBACKA ((LPSTR)(INT_PTR)-1)

/* hwnd and uId together name a tool. */
typedef struct tagTOOLINFOA {
  UINT cbSize; /* TTTOOLINFOA_V..._SIZE */
  UINT uFlags;
  HWND hwnd; /* the window of the tool, which gets its notifications */
  UINT_PTR uId;
  RECT rect; /* in hwnd's client area; not with TTF_IDISHWND */
  HINSTANCE hinst;
  LPSTR lpszText; /* a text, LPSTR_TEXTCALLBACKA, or the number of a string in hinst */
  LPARAM lParam;
  void *lpReserved;
} TTTOOLINFOA;
typedef TTTOOLINFOA TOOLINFOA;

/* Sizes of older records, which lack the last members. */
#define TTTOOLINFOA_V1_SIZE ((UINT)offsetof(TTTOOLINFOA, lParam))
#define TTTOOLINFOA_V2_SIZE ((UINT)offsetof(TTTOOLINFOA, lpReserved))
#define TTTOOLINFOA_V3_SIZE ((UINT)sizeof(TTTOOLINFOA))

typedef struct _TT_HITTESTINFOA {
  HWND hwnd;
  POINT pt; /* in the window's client area */
  TTTOOLINFOA ti;
} TTHITTESTINFOA;

/* Messages to the control. lParam is a TTTOOLINFOA unless a comment says otherwise. Only the members within its cbSize
 * are read and written. A text is written to lpszText: up to 80 bytes with its NUL. */

#define TTM_ACTIVATE (WM_USER + 1) /* wParam: FALSE hides the tip, and no tip appears until TRUE */
#define TTM_SETDELAYTIME                                                                                               \
  (WM_USER + 3)                    /* wParam: TTDT_...; low word of lParam: milliseconds, negative for the default */
#define TTM_ADDTOOLA (WM_USER + 4) /* FALSE for a record of another size */
#define TTM_DELTOOLA (WM_USER + 5) /* the first tool of that name */
#define TTM_NEWTOOLRECTA (WM_USER + 6)    /* rect */
#define TTM_RELAYEVENT (WM_USER + 7)      /* lParam: a MSG with a mouse message */
#define TTM_GETTOOLINFOA (WM_USER + 8)    /* writes all but the name; FALSE for an unknown tool */
#define TTM_SETTOOLINFOA (WM_USER + 9)    /* changes all but the name */
#define TTM_HITTESTA (WM_USER + 10)       /* lParam: a TTHITTESTINFOA; its ti is written */
#define TTM_GETTEXTA (WM_USER + 11)       /* wParam: room in lpszText; 0 stands for 80 */
#define TTM_UPDATETIPTEXTA (WM_USER + 12) /* hinst and lpszText */
#define TTM_GETTOOLCOUNT (WM_USER + 13)
#define TTM_ENUMTOOLSA (WM_USER + 14)      /* wParam: the tool's number, in the order of adding */
#define TTM_GETCURRENTTOOLA (WM_USER + 15) /* the tool of the visible tip; FALSE without one. lParam may be null */
#define TTM_WINDOWFROMPOINT (WM_USER + 16) /* lParam: a POINT; sent to the control itself, to find a window */
#define TTM_TRACKACTIVATE (WM_USER + 17)   /* wParam: whether to show the tip */
#define TTM_TRACKPOSITION (WM_USER + 18)   /* lParam: x and y on the screen */
#define TTM_SETTIPBKCOLOR (WM_USER + 19)
#define TTM_SETTIPTEXTCOLOR (WM_USER + 20)
#define TTM_GETDELAYTIME (WM_USER + 21) /* wParam: TTDT_... */
#define TTM_GETTIPBKCOLOR (WM_USER + 22)
#define TTM_GETTIPTEXTCOLOR (WM_USER + 23)
#define TTM_SETMAXTIPWIDTH (WM_USER + 24) /* lParam: the width at which lines break; -1 for a single line */
#define TTM_GETMAXTIPWIDTH (WM_USER + 25)
#define TTM_SETMARGIN (WM_USER + 26) /* lParam: a RECT of four widths round the text */
#define TTM_GETMARGIN (WM_USER + 27)
#define TTM_POP (WM_USER + 28)           /* hides the tip */
#define TTM_UPDATE (WM_USER + 29)        /* redraws the tip */
#define TTM_GETBUBBLESIZE (WM_USER + 30) /* width and height of the tool's tip */
#define TTM_ADJUSTRECT (WM_USER + 31)    /* lParam: a RECT; wParam: TRUE from text to window, FALSE back */

/* Notifications: WM_NOTIFY to the tool's hwnd. wParam is uId. */

#define TTN_NEEDTEXTA ((UINT)-520) /* lParam: an NMTTDISPINFOA */
#define TTN_SHOW ((UINT)-521)      /* the tip has its place and is about to appear; the program can move it now */
#define TTN_POP ((UINT)-522)       /* the tip is about to go */

typedef struct tagNMTTDISPINFOA {
  NMHDR hdr;
  LPSTR lpszText;  /* points to szText; the answer is a text, or the number of a string in hinst */
  char szText[80]; /* room for a short text, without a NUL if the text fills it */
  HINSTANCE hinst;
  UINT uFlags;   /* the tool's */
  LPARAM lParam; /* the tool's */
} NMTTDISPINFOA;
typedef NMTTDISPINFOA TOOLTIPTEXTA;

#ifdef __cplusplus
}
#endif

#endif
