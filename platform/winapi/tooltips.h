/* The tooltip control: a small window with a text that comes up beside the pointer when it rests over a tool, which is a
 * window or a rectangle of one.
 *
 * A tip is plain: TTS_BALLOON, TTS_NOANIMATE and TTS_NOFADE are taken and change nothing. It takes neither the focus nor
 * the pointer, and stays on the work area. */
#ifndef PLATFORM_WINAPI_TOOLTIPS_H
#define PLATFORM_WINAPI_TOOLTIPS_H

#include "platform/winapi/messages.h"

#ifdef __cplusplus
extern "C" {
#endif

#define TOOLTIPS_CLASSA "tooltips_class32"

#define TTS_ALWAYSTIP 0x01u /* also while the owner isn't active */
#define TTS_NOPREFIX 0x02u  /* without it '&' is left out (&& stands for one), and a tab ends the text */
#define TTS_NOANIMATE 0x10u
#define TTS_NOFADE 0x20u
#define TTS_BALLOON 0x40u

#define TTF_IDISHWND 0x0001u  /* the tool is a window, and uId its handle */
#define TTF_CENTERTIP 0x0002u /* the tip stands below the middle of the tool */
#define TTF_RTLREADING 0x0004u
#define TTF_SUBCLASS 0x0010u /* the control sees the window's mouse messages by itself, in the thread that made both */
#define TTF_TRACK 0x0020u    /* the tip comes by TTM_TRACKACTIVATE alone */
#define TTF_ABSOLUTE 0x0080u
#define TTF_TRANSPARENT 0x0100u
#define TTF_DI_SETITEM 0x8000u /* in the answer to TTN_NEEDTEXTA: it is not asked for again */

#define TTDT_AUTOMATIC 0u
#define TTDT_RESHOW 1u
#define TTDT_AUTOPOP 2u
#define TTDT_INITIAL 3u

/* A text that TTN_NEEDTEXTA asks for. */
#define LPSTR_TEXTCALLBACKA ((LPSTR)(INT_PTR)-1)

/* hwnd and uId together name a tool. */
typedef struct tagTOOLINFOA {
  UINT cbSize; /* TTTOOLINFOA_V..._SIZE */
  UINT uFlags;
  HWND hwnd; /* that the tool lies in, and that is asked and told */
  UINT_PTR uId;
  RECT rect; /* in hwnd's client area; not with TTF_IDISHWND */
  HINSTANCE hinst;
  LPSTR lpszText; /* a text, LPSTR_TEXTCALLBACKA, or the number of a string of hinst's */
  LPARAM lParam;
  void *lpReserved;
} TTTOOLINFOA;
typedef TTTOOLINFOA TOOLINFOA;

/* Records without their last members are older ones. */
#define TTTOOLINFOA_V1_SIZE ((UINT)offsetof(TTTOOLINFOA, lParam))
#define TTTOOLINFOA_V2_SIZE ((UINT)offsetof(TTTOOLINFOA, lpReserved))
#define TTTOOLINFOA_V3_SIZE ((UINT)sizeof(TTTOOLINFOA))

typedef struct _TT_HITTESTINFOA {
  HWND hwnd;
  POINT pt; /* in its client area */
  TTTOOLINFOA ti;
} TTHITTESTINFOA;

/* Messages to the control; lParam is a TTTOOLINFOA where nothing else is told. It is read and written as far as its cbSize
 * tells. A text is written where lpszText points: 80 bytes with the end mark. */

#define TTM_ACTIVATE (WM_USER + 1) /* wParam: FALSE takes the tip down, and none comes until TRUE */
#define TTM_SETDELAYTIME                                                                                               \
  (WM_USER + 3)                    /* wParam: TTDT_...; low word of lParam: milliseconds, negative for the default */
#define TTM_ADDTOOLA (WM_USER + 4) /* FALSE for a record of another size */
#define TTM_DELTOOLA (WM_USER + 5) /* the first one of that name */
#define TTM_NEWTOOLRECTA (WM_USER + 6)    /* rect */
#define TTM_RELAYEVENT (WM_USER + 7)      /* lParam: a MSG of the mouse */
#define TTM_GETTOOLINFOA (WM_USER + 8)    /* all but the name is written; FALSE without that tool */
#define TTM_SETTOOLINFOA (WM_USER + 9)    /* all but the name */
#define TTM_HITTESTA (WM_USER + 10)       /* lParam: a TTHITTESTINFOA, whose ti is written */
#define TTM_GETTEXTA (WM_USER + 11)       /* wParam: room in lpszText; 0 stands for 80 */
#define TTM_UPDATETIPTEXTA (WM_USER + 12) /* hinst and lpszText */
#define TTM_GETTOOLCOUNT (WM_USER + 13)
#define TTM_ENUMTOOLSA (WM_USER + 14)      /* wParam: its number, in the order of adding */
#define TTM_GETCURRENTTOOLA (WM_USER + 15) /* the one whose tip is up; FALSE without one. lParam may be null */
#define TTM_WINDOWFROMPOINT (WM_USER + 16) /* the control asks itself which window is at a POINT of the screen */
#define TTM_TRACKACTIVATE (WM_USER + 17)   /* wParam: whether the tip is up */
#define TTM_TRACKPOSITION (WM_USER + 18)   /* lParam: x and y on the screen */
#define TTM_SETTIPBKCOLOR (WM_USER + 19)
#define TTM_SETTIPTEXTCOLOR (WM_USER + 20)
#define TTM_GETDELAYTIME (WM_USER + 21) /* wParam: TTDT_... */
#define TTM_GETTIPBKCOLOR (WM_USER + 22)
#define TTM_GETTIPTEXTCOLOR (WM_USER + 23)
#define TTM_SETMAXTIPWIDTH                                                                                             \
  (WM_USER + 24) /* lParam: where lines end; -1 for one line, in which line ends mean nothing */
#define TTM_GETMAXTIPWIDTH (WM_USER + 25)
#define TTM_SETMARGIN (WM_USER + 26) /* lParam: a RECT of four widths round the text */
#define TTM_GETMARGIN (WM_USER + 27)
#define TTM_POP (WM_USER + 28)           /* takes the tip down */
#define TTM_UPDATE (WM_USER + 29)        /* draws it again */
#define TTM_GETBUBBLESIZE (WM_USER + 30) /* width and height of the tool's tip */
#define TTM_ADJUSTRECT (WM_USER + 31)    /* lParam: a RECT; wParam: from text to window, else from window to text */

/* Notifications, by WM_NOTIFY to the tool's hwnd: wParam is uId. */

#define TTN_NEEDTEXTA ((UINT)-520) /* lParam: an NMTTDISPINFOA */
#define TTN_SHOW ((UINT)-521)      /* the tip has its place and comes up next: it can be moved now */
#define TTN_POP ((UINT)-522)       /* it goes next */

typedef struct tagNMTTDISPINFOA {
  NMHDR hdr;
  LPSTR lpszText;  /* points to szText; the answer: a text, or the number of a string of hinst's */
  char szText[80]; /* room for a short one, which needs no end mark when it fills it */
  HINSTANCE hinst;
  UINT uFlags;   /* the tool's */
  LPARAM lParam; /* the tool's */
} NMTTDISPINFOA;
typedef NMTTDISPINFOA TOOLTIPTEXTA;

#ifdef __cplusplus
}
#endif

#endif
