/* Icons and cursors: loading from resources and files, making, describing and drawing.
 *
 * An icon has several images. A handle stands for one of them: the image of the requested size, or the best one
 * stretched. Among images of one size the one with the most colours counts. */
#ifndef PLATFORM_WINAPI_ICONS_H
#define PLATFORM_WINAPI_ICONS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The system's own icons and cursors, with instance null. LoadImageA loads them in sizes other than 32. */

#define IDI_APPLICATION MAKEINTRESOURCEA(32512)
#define IDI_HAND MAKEINTRESOURCEA(32513)
#define IDI_QUESTION MAKEINTRESOURCEA(32514)
#define IDI_EXCLAMATION MAKEINTRESOURCEA(32515)
#define IDI_ASTERISK MAKEINTRESOURCEA(32516)
#define IDI_WINLOGO MAKEINTRESOURCEA(32517)
#define IDI_SHIELD MAKEINTRESOURCEA(32518)
#define IDI_ERROR IDI_HAND
#define IDI_WARNING IDI_EXCLAMATION
#define IDI_INFORMATION IDI_ASTERISK

#define IDC_ARROW MAKEINTRESOURCEA(32512)
#define IDC_IBEAM MAKEINTRESOURCEA(32513)
#define IDC_WAIT MAKEINTRESOURCEA(32514)
#define IDC_CROSS MAKEINTRESOURCEA(32515)
#define IDC_UPARROW MAKEINTRESOURCEA(32516)
#define IDC_SIZENWSE MAKEINTRESOURCEA(32642)
#define IDC_SIZENESW MAKEINTRESOURCEA(32643)
#define IDC_SIZEWE MAKEINTRESOURCEA(32644)
#define IDC_SIZENS MAKEINTRESOURCEA(32645)
#define IDC_SIZEALL MAKEINTRESOURCEA(32646)
#define IDC_NO MAKEINTRESOURCEA(32648)
#define IDC_HAND MAKEINTRESOURCEA(32649)
#define IDC_APPSTARTING MAKEINTRESOURCEA(32650)
#define IDC_HELP MAKEINTRESOURCEA(32651)

/* Loading in the size of the system's metrics. The handle is shared: every call gives the same one, and it is never
 * destroyed. */
PLATFORM_API HICON WINAPI LoadIconA(HINSTANCE instance, LPCSTR name);
PLATFORM_API HCURSOR WINAPI LoadCursorA(HINSTANCE instance, LPCSTR name);

/* Sets the shape of the pointer over the program's windows; null for none. Result: the cursor before. */
PLATFORM_API HCURSOR WINAPI SetCursor(HCURSOR cursor);
PLATFORM_API HCURSOR WINAPI GetCursor(void);

/* For WM_SETICON and WM_GETICON. */
#define ICON_SMALL 0
#define ICON_BIG 1

/* For LoadImageA, which is declared with the bitmaps. Without LR_DEFAULTSIZE a size of 0 is that of the first image. */
#define IMAGE_ICON 1u
#define IMAGE_CURSOR 2u
#define LR_DEFAULTCOLOR 0x0000u
#define LR_COPYRETURNORG 0x0004u
#define LR_COPYDELETEORG 0x0008u
#define LR_DEFAULTSIZE 0x0040u
#define LR_COPYFROMRESOURCE 0x4000u
#define LR_SHARED 0x8000u

/* Copies a bitmap, an icon or a cursor, and stretches it if another size is given. With LR_COPYFROMRESOURCE an icon is
 * loaded again, from its best image for the size. */
PLATFORM_API HANDLE WINAPI CopyImage(HANDLE image, UINT type, int width, int height, UINT flags);
PLATFORM_API HICON WINAPI CopyIcon(HICON icon);
#define CopyCursor(cursor) ((HCURSOR)CopyIcon((HICON)(cursor)))

/* Icons loaded with LR_SHARED are not destroyed. */
PLATFORM_API BOOL WINAPI DestroyIcon(HICON icon);
PLATFORM_API BOOL WINAPI DestroyCursor(HCURSOR cursor);

/* Icons from bitmaps. The mask has one bit for each pixel. Where it is 0 the picture covers the ground; where it is 1
 * the picture's bits invert the ground's. Without a colour bitmap the mask is twice as high, and the picture is its
 * lower half. A new colour bitmap of 32 bits may have alpha; drawing on the bitmap removes the alpha. */
typedef struct _ICONINFO {
  BOOL fIcon; /* FALSE for a cursor */
  DWORD xHotspot, yHotspot;
  HBITMAP hbmMask, hbmColor;
} ICONINFO;

/* The bitmaps are copied, and stay the caller's. */
PLATFORM_API HICON WINAPI CreateIconIndirect(ICONINFO *info);
/* The bitmaps are new, and the caller deletes them. */
PLATFORM_API BOOL WINAPI GetIconInfo(HICON icon, ICONINFO *info);
/* Makes a monochrome cursor. mask, picture: rows padded to whole words of 16 bits. */
PLATFORM_API HCURSOR WINAPI CreateCursor(HINSTANCE instance, int xHotspot, int yHotspot, int width, int height,
                                         const void *mask, const void *picture);

#define DI_MASK 0x0001u
#define DI_IMAGE 0x0002u
#define DI_NORMAL 0x0003u
#define DI_COMPAT 0x0004u
#define DI_DEFAULTSIZE 0x0008u

/* Draws in the size of the system's metrics. */
PLATFORM_API BOOL WINAPI DrawIcon(HDC dc, int x, int y, HICON icon);
/* width, height: 0 for the icon's own size, or with DI_DEFAULTSIZE for that of the metrics. ground: null, or a brush
 * that fills the rectangle first. */
PLATFORM_API BOOL WINAPI DrawIconEx(HDC dc, int x, int y, HICON icon, int width, int height, UINT step, HBRUSH ground,
                                    UINT flags);

#ifdef __cplusplus
}
#endif

#endif
