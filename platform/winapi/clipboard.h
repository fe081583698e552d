/* The clipboard, which is the desktop's; without a display it is the program's own. */
#ifndef PLATFORM_WINAPI_CLIPBOARD_H
#define PLATFORM_WINAPI_CLIPBOARD_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Formats. Data are a block of global memory, but for those that say something else. */
#define CF_TEXT 1u   /* in code page 932, with a NUL at the end */
#define CF_BITMAP 2u /* an HBITMAP */
#define CF_METAFILEPICT 3u
#define CF_SYLK 4u
#define CF_DIF 5u
#define CF_TIFF 6u
#define CF_OEMTEXT 7u /* the same as CF_TEXT here */
#define CF_DIB 8u     /* a BITMAPINFO with its colours, and the pixels */
#define CF_PALETTE 9u /* an HPALETTE */
#define CF_PENDATA 10u
#define CF_RIFF 11u
#define CF_WAVE 12u
#define CF_UNICODETEXT 13u /* UTF-16 with a NUL at the end */
#define CF_ENHMETAFILE 14u
#define CF_HDROP 15u
#define CF_LOCALE 16u /* the LCID of the text beside it */
#define CF_DIBV5 17u  /* as CF_DIB, with a BITMAPV5HEADER */
#define CF_OWNERDISPLAY 0x0080u
#define CF_DSPTEXT 0x0081u
#define CF_DSPBITMAP 0x0082u
#define CF_DSPMETAFILEPICT 0x0083u
#define CF_DSPENHMETAFILE 0x008Eu
#define CF_PRIVATEFIRST 0x0200u /* the owner's own: any number stands for the data, and nobody frees it for the owner */
#define CF_PRIVATELAST 0x02FFu
#define CF_GDIOBJFIRST 0x0300u
#define CF_GDIOBJLAST 0x03FFu

/* To the owner. WM_RENDERFORMAT: somebody asks for a promised format, wParam; the owner gives it with SetClipboardData,
 * without opening the clipboard. WM_RENDERALLFORMATS: the owner ends and has promises left; it opens the clipboard to
 * keep them. WM_DESTROYCLIPBOARD: the clipboard is emptied, or another program has put something there. */
#define WM_RENDERFORMAT 0x0305u
#define WM_RENDERALLFORMATS 0x0306u
#define WM_DESTROYCLIPBOARD 0x0307u
/* To the first window in the chain of viewers: the content has changed; wParam, a viewer, leaves the chain, and lParam is
 * the one behind it. */
#define WM_DRAWCLIPBOARD 0x0308u
#define WM_CHANGECBCHAIN 0x030Du
/* Posted to the listeners: the content has changed. */
#define WM_CLIPBOARDUPDATE 0x031Du

/* Opens the clipboard for a window of the program, or for none, until CloseClipboard. One thread of the program has it
 * open at a time; one that opens it for the same window, or for none as well, takes it over. Other programs are not kept
 * out: what they put there meanwhile counts from CloseClipboard on.
 * Result: FALSE, with ERROR_ACCESS_DENIED, while it is open for another one. */
PLATFORM_API BOOL WINAPI OpenClipboard(HWND window);

/* Closes it. What has changed is now the desktop's, together with the formats that can be made of it: CF_TEXT,
 * CF_OEMTEXT, CF_UNICODETEXT and CF_LOCALE of each other, and CF_BITMAP, CF_DIB and CF_DIBV5. */
PLATFORM_API BOOL WINAPI CloseClipboard(void);

/* These three ask for the clipboard to be opened by the calling thread, and leave ERROR_CLIPBOARD_NOT_OPEN else. */

/* Takes everything off the clipboard and makes the window that it is open for the owner. The one before gets
 * WM_DESTROYCLIPBOARD first. */
PLATFORM_API BOOL WINAPI EmptyClipboard(void);

/* Puts data there, in the place of those in the same format. They are the clipboard's from then on: the program may read
 * them, but neither change nor free them. An owner that was sent WM_RENDERFORMAT gives the format without opening.
 * data: null promises the format, for an owner that will be asked with WM_RENDERFORMAT.
 * Result: data; null for a promise, and with an error for a handle that is none. */
PLATFORM_API HANDLE WINAPI SetClipboardData(UINT format, HANDLE data);

/* Result: the data, good until the clipboard is closed and never to be changed or freed; null when there are none, and when
 * whoever has them, an owner or another program, doesn't give them within two seconds. Messages that other threads send
 * are served meanwhile. Text of other programs has its line ends made to CR LF, their pictures come as CF_DIB. */
PLATFORM_API HANDLE WINAPI GetClipboardData(UINT format);

/* The formats in the order in which they came, after a format; 0 begins.
 * Result: 0 behind the last one, with ERROR_SUCCESS. */
PLATFORM_API UINT WINAPI EnumClipboardFormats(UINT format);

/* What follows needs no opened clipboard. */

PLATFORM_API int WINAPI CountClipboardFormats(void);
PLATFORM_API BOOL WINAPI IsClipboardFormatAvailable(UINT format);
/* Result: the first one of the list that is there, 0 on an empty clipboard, -1 when there are only others. */
PLATFORM_API int WINAPI GetPriorityClipboardFormat(UINT *formats, int count);

/* Result: null when the window has ended, when there was none, and when another program is the owner. */
PLATFORM_API HWND WINAPI GetClipboardOwner(void);
PLATFORM_API HWND WINAPI GetOpenClipboardWindow(void);
/* Result: a number that is another one after each change. */
PLATFORM_API DWORD WINAPI GetClipboardSequenceNumber(void);

/* A format with a name, the same in all programs and for the name in capital or small letters.
 * Result: 0 for a name that is empty or longer than 255 bytes. */
PLATFORM_API UINT WINAPI RegisterClipboardFormatA(LPCSTR name);
/* Result: the length of the name; 0 for a format without one, and with ERROR_MORE_DATA when the room is short. */
PLATFORM_API int WINAPI GetClipboardFormatNameA(UINT format, LPSTR name, int size);

/* Listeners are told of changes, each by itself. */
PLATFORM_API BOOL WINAPI AddClipboardFormatListener(HWND window);
PLATFORM_API BOOL WINAPI RemoveClipboardFormatListener(HWND window);

/* Viewers are a chain: each passes what it gets on to the next one, which SetClipboardViewer answered. */
PLATFORM_API HWND WINAPI SetClipboardViewer(HWND window);
PLATFORM_API HWND WINAPI GetClipboardViewer(void);
PLATFORM_API BOOL WINAPI ChangeClipboardChain(HWND window, HWND next);

#ifdef __cplusplus
}
#endif

#endif
