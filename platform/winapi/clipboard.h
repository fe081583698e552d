/* The clipboard of the desktop. Without a display it is the program's own. */
#ifndef PLATFORM_WINAPI_CLIPBOARD_H
#define PLATFORM_WINAPI_CLIPBOARD_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Formats. The data are a block of global memory unless a comment says otherwise. */
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
#define CF_PRIVATEFIRST 0x0200u /* private: the data are any number, never freed for the owner */
#define CF_PRIVATELAST 0x02FFu
#define CF_GDIOBJFIRST 0x0300u
#define CF_GDIOBJLAST 0x03FFu

/* Sent to the owner. WM_RENDERFORMAT: a promised format, wParam, is needed. The owner sets it with SetClipboardData,
 * without opening the clipboard. WM_RENDERALLFORMATS: the owner is destroyed with promises left. It opens the clipboard
 * to keep them. WM_DESTROYCLIPBOARD: the clipboard is emptied, or another program has taken it. */
#define WM_RENDERFORMAT 0x0305u
#define WM_RENDERALLFORMATS 0x0306u
#define WM_DESTROYCLIPBOARD 0x0307u
/* Sent to the first window in the chain of viewers. WM_DRAWCLIPBOARD: the content has changed. WM_CHANGECBCHAIN: the
 * viewer wParam leaves the chain, and lParam is the next one behind it. */
#define WM_DRAWCLIPBOARD 0x0308u
#define WM_CHANGECBCHAIN 0x030Du
/* Posted to the listeners: the content has changed. */
#define WM_CLIPBOARDUPDATE 0x031Du

/* Opens the clipboard for a window of the program, or for none, until CloseClipboard. One thread of the program has it
 * open at a time. A thread that opens it for the same window, or for none again, takes it over. Other programs can
 * change the clipboard meanwhile; their change counts from CloseClipboard on.
 * Result: FALSE, with ERROR_ACCESS_DENIED, while it is open for another window. */
PLATFORM_API BOOL WINAPI OpenClipboard(HWND window);

/* Closes the clipboard. Changes go to the desktop now, together with the formats that can be made from the new data:
 * CF_TEXT, CF_OEMTEXT, CF_UNICODETEXT and CF_LOCALE from each other, and CF_BITMAP, CF_DIB and CF_DIBV5. */
PLATFORM_API BOOL WINAPI CloseClipboard(void);

/* The next three functions fail with ERROR_CLIPBOARD_NOT_OPEN unless the calling thread has opened the clipboard. */

/* Empties the clipboard. The window that it is open for becomes the owner. The owner before gets WM_DESTROYCLIPBOARD
 * first. */
PLATFORM_API BOOL WINAPI EmptyClipboard(void);

/* Sets the data of a format, and replaces older data. The clipboard owns the data from then on: the program may read
 * them, but neither change nor free them. An owner that was sent WM_RENDERFORMAT calls this without opening.
 * data: null promises the format. The owner gets WM_RENDERFORMAT when the data are needed.
 * Result: data; null for a promise, and null with an error for an invalid handle. */
PLATFORM_API HANDLE WINAPI SetClipboardData(UINT format, HANDLE data);

/* Result: the data; null if there are none, or if their owner or program doesn't give them within two seconds. Data are
 * valid until the clipboard is closed, and must not be changed or freed. Messages that other threads send are served
 * meanwhile. Text of other programs gets CR LF as line ends, and their pictures come as CF_DIB. */
PLATFORM_API HANDLE WINAPI GetClipboardData(UINT format);

/* Lists the formats in the order of adding. format: the one before, or 0 for the first.
 * Result: the next format; 0 behind the last one, with ERROR_SUCCESS. */
PLATFORM_API UINT WINAPI EnumClipboardFormats(UINT format);

/* The following functions don't need the clipboard to be open. */

PLATFORM_API int WINAPI CountClipboardFormats(void);
PLATFORM_API BOOL WINAPI IsClipboardFormatAvailable(UINT format);
/* Result: the first available format of the list; 0 on an empty clipboard, -1 if none of the list is available. */
PLATFORM_API int WINAPI GetPriorityClipboardFormat(UINT *formats, int count);

/* Result: null without an owner, after the owner's end, and if another program is the owner. */
PLATFORM_API HWND WINAPI GetClipboardOwner(void);
PLATFORM_API HWND WINAPI GetOpenClipboardWindow(void);
/* Result: a number that differs after each change. */
PLATFORM_API DWORD WINAPI GetClipboardSequenceNumber(void);

/* Registers a format by its name, or finds it. The number is the same in all programs. Case doesn't count.
 * Result: 0 for a name that is empty or longer than 255 bytes. */
PLATFORM_API UINT WINAPI RegisterClipboardFormatA(LPCSTR name);
/* Result: the length of the name; 0 for a format without a name. 0 with ERROR_MORE_DATA if the room is too small. */
PLATFORM_API int WINAPI GetClipboardFormatNameA(UINT format, LPSTR name, int size);

/* Each listener is told of changes directly. */
PLATFORM_API BOOL WINAPI AddClipboardFormatListener(HWND window);
PLATFORM_API BOOL WINAPI RemoveClipboardFormatListener(HWND window);

/* Viewers form a chain: each passes its messages to the next viewer, which SetClipboardViewer returned. */
PLATFORM_API HWND WINAPI SetClipboardViewer(HWND window);
PLATFORM_API HWND WINAPI GetClipboardViewer(void);
PLATFORM_API BOOL WINAPI ChangeClipboardChain(HWND window, HWND next);

#ifdef __cplusplus
}
#endif

#endif
