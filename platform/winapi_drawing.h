/* The drawing half of the Windows API for other systems: contexts, objects, lines, shapes, bitmaps and text, with the
 * names, values and record layouts that the API documents. Part of winapi.h.
 *
 * Coordinates are logical ones unless it is said otherwise. Right and bottom edges lie outside. A handle that is none, or
 * no longer one, makes a call fail and do nothing. */
#ifndef PLATFORM_WINAPI_DRAWING_H
#define PLATFORM_WINAPI_DRAWING_H

#ifndef PLATFORM_WINAPI_H
#error "include platform/winapi.h"
#endif

#ifdef __cplusplus
extern "C" {
#endif

DECLARE_HANDLE(HPEN);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HPALETTE);

/* Colours. A colour of a palette (top byte 2) is drawn as the colour itself. */

#define RGB(red, green, blue) ((COLORREF)((BYTE)(red) | (DWORD)(BYTE)(green) << 8 | (DWORD)(BYTE)(blue) << 16))
#define PALETTERGB(red, green, blue) (0x02000000u | RGB(red, green, blue))
#define GetRValue(color) ((BYTE)(color))
#define GetGValue(color) ((BYTE)((color) >> 8))
#define GetBValue(color) ((BYTE)((color) >> 16))
#define CLR_INVALID 0xFFFFFFFFu

#define COLOR_SCROLLBAR 0
#define COLOR_BACKGROUND 1
#define COLOR_ACTIVECAPTION 2
#define COLOR_WINDOW 5
#define COLOR_WINDOWFRAME 6
#define COLOR_WINDOWTEXT 8
#define COLOR_APPWORKSPACE 12
#define COLOR_HIGHLIGHT 13
#define COLOR_BTNFACE 15
#define COLOR_BTNSHADOW 16
#define COLOR_BTNTEXT 18
#define COLOR_BTNHIGHLIGHT 20
#define COLOR_3DDKSHADOW 21
#define COLOR_3DLIGHT 22

PLATFORM_API DWORD WINAPI GetSysColor(int index);
PLATFORM_API HBRUSH WINAPI GetSysColorBrush(int index);

/* Contexts. */

#define DCX_WINDOW 0x00000001u

/* The display, with driver "DISPLAY": its numbers, and a context that draws nothing. End it with DeleteDC. */
PLATFORM_API HDC WINAPI CreateDCA(LPCSTR driver, LPCSTR device, LPCSTR output, const void *mode);
/* A context that draws on the bitmap selected into it; at first one of one black pixel. */
PLATFORM_API HDC WINAPI CreateCompatibleDC(HDC dc);
PLATFORM_API BOOL WINAPI DeleteDC(HDC dc);
/* The client area of a window, or of the screen, within what is seen of it; GetDCEx takes DCX_WINDOW for the whole
 * window. Give the context back with ReleaseDC. */
PLATFORM_API HDC WINAPI GetDC(HWND window);
PLATFORM_API HDC WINAPI GetDCEx(HWND window, HRGN region, DWORD flags);
PLATFORM_API int WINAPI ReleaseDC(HWND window, HDC dc);

#define HORZSIZE 4
#define VERTSIZE 6
#define HORZRES 8
#define VERTRES 10
#define BITSPIXEL 12
#define PLANES 14
#define NUMCOLORS 24
#define RASTERCAPS 38
#define LOGPIXELSX 88
#define LOGPIXELSY 90
#define PHYSICALWIDTH 110
#define PHYSICALHEIGHT 111
#define PHYSICALOFFSETX 112
#define PHYSICALOFFSETY 113

PLATFORM_API int WINAPI GetDeviceCaps(HDC dc, int index);

/* Mapping. A device coordinate is (logical - window origin) x viewport extent / window extent + viewport origin. */

#define MM_TEXT 1
#define MM_LOMETRIC 2
#define MM_HIMETRIC 3
#define MM_LOENGLISH 4
#define MM_HIENGLISH 5
#define MM_TWIPS 6
#define MM_ISOTROPIC 7
#define MM_ANISOTROPIC 8

PLATFORM_API int WINAPI GetMapMode(HDC dc);
PLATFORM_API int WINAPI SetMapMode(HDC dc, int mode);
PLATFORM_API BOOL WINAPI SetWindowOrgEx(HDC dc, int x, int y, POINT *previous);
PLATFORM_API BOOL WINAPI SetWindowExtEx(HDC dc, int x, int y, SIZE *previous);
PLATFORM_API BOOL WINAPI SetViewportOrgEx(HDC dc, int x, int y, POINT *previous);
PLATFORM_API BOOL WINAPI SetViewportExtEx(HDC dc, int x, int y, SIZE *previous);
PLATFORM_API BOOL WINAPI LPtoDP(HDC dc, POINT *points, int count);
PLATFORM_API BOOL WINAPI DPtoLP(HDC dc, POINT *points, int count);

/* Modes. */

#define R2_BLACK 1
#define R2_NOTMERGEPEN 2
#define R2_MASKNOTPEN 3
#define R2_NOTCOPYPEN 4
#define R2_MASKPENNOT 5
#define R2_NOT 6
#define R2_XORPEN 7
#define R2_NOTMASKPEN 8
#define R2_MASKPEN 9
#define R2_NOTXORPEN 10
#define R2_NOP 11
#define R2_MERGENOTPEN 12
#define R2_COPYPEN 13
#define R2_MERGEPENNOT 14
#define R2_MERGEPEN 15
#define R2_WHITE 16
#define TRANSPARENT 1
#define OPAQUE 2
#define ALTERNATE 1
#define WINDING 2

PLATFORM_API int WINAPI GetROP2(HDC dc);
PLATFORM_API int WINAPI SetROP2(HDC dc, int mode);
PLATFORM_API int WINAPI GetBkMode(HDC dc);
PLATFORM_API int WINAPI SetBkMode(HDC dc, int mode);
PLATFORM_API COLORREF WINAPI SetBkColor(HDC dc, COLORREF color);
PLATFORM_API COLORREF WINAPI GetTextColor(HDC dc);
PLATFORM_API COLORREF WINAPI SetTextColor(HDC dc, COLORREF color);
PLATFORM_API int WINAPI SetPolyFillMode(HDC dc, int mode);
PLATFORM_API BOOL WINAPI SetBrushOrgEx(HDC dc, int x, int y, POINT *previous);

/* Objects. One that is selected may be deleted: it goes when it is no longer selected. */

#define PS_SOLID 0
#define PS_DASH 1
#define PS_DOT 2
#define PS_DASHDOT 3
#define PS_DASHDOTDOT 4
#define PS_NULL 5
#define PS_INSIDEFRAME 6
#define BS_SOLID 0u
#define BS_NULL 1u
#define BS_HATCHED 2u
#define HS_HORIZONTAL 0
#define HS_VERTICAL 1
#define HS_FDIAGONAL 2
#define HS_BDIAGONAL 3
#define HS_CROSS 4
#define HS_DIAGCROSS 5

#define WHITE_BRUSH 0
#define LTGRAY_BRUSH 1
#define GRAY_BRUSH 2
#define DKGRAY_BRUSH 3
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define WHITE_PEN 6
#define BLACK_PEN 7
#define NULL_PEN 8
#define OEM_FIXED_FONT 10
#define ANSI_FIXED_FONT 11
#define ANSI_VAR_FONT 12
#define SYSTEM_FONT 13
#define DEVICE_DEFAULT_FONT 14
#define DEFAULT_PALETTE 15
#define SYSTEM_FIXED_FONT 16
#define DEFAULT_GUI_FONT 17

typedef struct tagLOGPEN {
  UINT lopnStyle;
  POINT lopnWidth;
  COLORREF lopnColor;
} LOGPEN;

typedef struct tagLOGBRUSH {
  UINT lbStyle;
  COLORREF lbColor;
  ULONG_PTR lbHatch;
} LOGBRUSH;

PLATFORM_API HPEN WINAPI CreatePenIndirect(const LOGPEN *pen);
PLATFORM_API HPEN WINAPI CreatePen(int style, int width, COLORREF color);
PLATFORM_API HBRUSH WINAPI CreateSolidBrush(COLORREF color);
PLATFORM_API HBRUSH WINAPI CreateHatchBrush(int hatch, COLORREF color);
PLATFORM_API HGDIOBJ WINAPI GetStockObject(int index);
/* Result: the object that was selected before; for a region the kind of region that results; null when that fails. */
PLATFORM_API HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ object);
/* Writes the object's description: LOGPEN, LOGBRUSH, LOGFONTA, BITMAP, or the number of a palette's entries. */
PLATFORM_API int WINAPI GetObjectA(HANDLE object, int size, void *description);
PLATFORM_API BOOL WINAPI DeleteObject(HGDIOBJ object);
PLATFORM_API BOOL WINAPI UnrealizeObject(HGDIOBJ object);

/* Regions, in device coordinates. */

#define ERROR 0
#define NULLREGION 1
#define SIMPLEREGION 2
#define COMPLEXREGION 3
#define RGN_AND 1
#define RGN_OR 2
#define RGN_XOR 3
#define RGN_DIFF 4
#define RGN_COPY 5

PLATFORM_API HRGN WINAPI CreateRectRgn(int left, int top, int right, int bottom);
PLATFORM_API HRGN WINAPI CreateRectRgnIndirect(const RECT *rect);
PLATFORM_API int WINAPI CombineRgn(HRGN result, HRGN first, HRGN second, int mode);
PLATFORM_API int WINAPI GetRgnBox(HRGN region, RECT *rect);
PLATFORM_API int WINAPI SelectClipRgn(HDC dc, HRGN region);
PLATFORM_API int WINAPI ExtSelectClipRgn(HDC dc, HRGN region, int mode);
/* Copies the context's own clip region. Result: 1, 0 when the context has none, -1 on failure. */
PLATFORM_API int WINAPI GetClipRgn(HDC dc, HRGN region);
PLATFORM_API int WINAPI ExcludeClipRect(HDC dc, int left, int top, int right, int bottom);
PLATFORM_API int WINAPI IntersectClipRect(HDC dc, int left, int top, int right, int bottom);
/* The rectangle round what the context can draw on. */
PLATFORM_API int WINAPI GetClipBox(HDC dc, RECT *rect);

/* Palettes. They can be selected; pixels are always true colours here. */

typedef struct tagPALETTEENTRY {
  BYTE peRed, peGreen, peBlue, peFlags;
} PALETTEENTRY;

typedef struct tagLOGPALETTE {
  WORD palVersion, palNumEntries;
  PALETTEENTRY palPalEntry[1];
} LOGPALETTE;

PLATFORM_API HPALETTE WINAPI CreatePalette(const LOGPALETTE *palette);
PLATFORM_API HPALETTE WINAPI SelectPalette(HDC dc, HPALETTE palette, BOOL background);
PLATFORM_API UINT WINAPI GetPaletteEntries(HPALETTE palette, UINT first, UINT count, PALETTEENTRY *entries);

/* Lines. A line leaves its last pixel out. */

PLATFORM_API BOOL WINAPI MoveToEx(HDC dc, int x, int y, POINT *previous);
PLATFORM_API BOOL WINAPI LineTo(HDC dc, int x, int y);
PLATFORM_API BOOL WINAPI Polyline(HDC dc, const POINT *points, int count);
PLATFORM_API BOOL WINAPI PolyBezierTo(HDC dc, const POINT *points, DWORD count);
PLATFORM_API COLORREF WINAPI SetPixel(HDC dc, int x, int y, COLORREF color);
PLATFORM_API COLORREF WINAPI GetPixel(HDC dc, int x, int y);

/* Shapes: outlined with the pen and filled with the brush. */

PLATFORM_API BOOL WINAPI Rectangle(HDC dc, int left, int top, int right, int bottom);
PLATFORM_API BOOL WINAPI RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height);
PLATFORM_API BOOL WINAPI Ellipse(HDC dc, int left, int top, int right, int bottom);
PLATFORM_API BOOL WINAPI Polygon(HDC dc, const POINT *points, int count);
/* With a brush, or a system colour plus 1. */
PLATFORM_API int WINAPI FillRect(HDC dc, const RECT *rect, HBRUSH brush);
PLATFORM_API int WINAPI FrameRect(HDC dc, const RECT *rect, HBRUSH brush);

#define BDR_RAISEDOUTER 1u
#define BDR_SUNKENOUTER 2u
#define BDR_RAISEDINNER 4u
#define BDR_SUNKENINNER 8u
#define EDGE_RAISED (BDR_RAISEDOUTER | BDR_RAISEDINNER)
#define EDGE_SUNKEN (BDR_SUNKENOUTER | BDR_SUNKENINNER)
#define EDGE_ETCHED (BDR_SUNKENOUTER | BDR_RAISEDINNER)
#define EDGE_BUMP (BDR_RAISEDOUTER | BDR_SUNKENINNER)
#define BF_LEFT 0x0001u
#define BF_TOP 0x0002u
#define BF_RIGHT 0x0004u
#define BF_BOTTOM 0x0008u
#define BF_RECT (BF_LEFT | BF_TOP | BF_RIGHT | BF_BOTTOM)
#define BF_DIAGONAL 0x0010u
#define BF_MIDDLE 0x0800u
#define BF_SOFT 0x1000u
#define BF_ADJUST 0x2000u
#define BF_FLAT 0x4000u
#define BF_MONO 0x8000u

#define DFC_CAPTION 1u
#define DFC_MENU 2u
#define DFC_SCROLL 3u
#define DFC_BUTTON 4u
#define DFCS_CAPTIONCLOSE 0x0000u
#define DFCS_CAPTIONMIN 0x0001u
#define DFCS_CAPTIONMAX 0x0002u
#define DFCS_CAPTIONRESTORE 0x0003u
#define DFCS_CAPTIONHELP 0x0004u
#define DFCS_MENUARROW 0x0000u
#define DFCS_MENUCHECK 0x0001u
#define DFCS_MENUBULLET 0x0002u
#define DFCS_SCROLLUP 0x0000u
#define DFCS_SCROLLDOWN 0x0001u
#define DFCS_SCROLLLEFT 0x0002u
#define DFCS_SCROLLRIGHT 0x0003u
#define DFCS_SCROLLCOMBOBOX 0x0005u
#define DFCS_SCROLLSIZEGRIP 0x0008u
#define DFCS_BUTTONCHECK 0x0000u
#define DFCS_BUTTONRADIO 0x0004u
#define DFCS_BUTTON3STATE 0x0008u
#define DFCS_BUTTONPUSH 0x0010u
#define DFCS_INACTIVE 0x0100u
#define DFCS_PUSHED 0x0200u
#define DFCS_CHECKED 0x0400u
#define DFCS_ADJUSTRECT 0x2000u
#define DFCS_FLAT 0x4000u
#define DFCS_MONO 0x8000u

/* The classic look. BF_ADJUST and DFCS_ADJUSTRECT shrink the rectangle to what is left inside. */
PLATFORM_API BOOL WINAPI DrawEdge(HDC dc, RECT *rect, UINT edge, UINT flags);
PLATFORM_API BOOL WINAPI DrawFrameControl(HDC dc, RECT *rect, UINT type, UINT state);
/* A dotted frame that a second call takes away again. */
PLATFORM_API BOOL WINAPI DrawFocusRect(HDC dc, const RECT *rect);

/* Bitmaps. */

#define BI_RGB 0u
#define BI_RLE8 1u
#define BI_RLE4 2u
#define BI_BITFIELDS 3u
#define CBM_INIT 4u
#define DIB_RGB_COLORS 0u
#define DIB_PAL_COLORS 1u
#define IMAGE_BITMAP 0u
#define LR_LOADFROMFILE 0x0010u

#pragma pack(push, 2)
typedef struct tagBITMAPFILEHEADER {
  WORD bfType;
  DWORD bfSize;
  WORD bfReserved1, bfReserved2;
  DWORD bfOffBits;
} BITMAPFILEHEADER;
#pragma pack(pop)

typedef struct tagBITMAPINFOHEADER {
  DWORD biSize;
  LONG biWidth, biHeight;
  WORD biPlanes, biBitCount;
  DWORD biCompression, biSizeImage;
  LONG biXPelsPerMeter, biYPelsPerMeter;
  DWORD biClrUsed, biClrImportant;
} BITMAPINFOHEADER;

typedef struct tagRGBQUAD {
  BYTE rgbBlue, rgbGreen, rgbRed, rgbReserved;
} RGBQUAD;

typedef struct tagBITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
  RGBQUAD bmiColors[1];
} BITMAPINFO;

typedef struct tagBITMAP {
  LONG bmType, bmWidth, bmHeight, bmWidthBytes;
  WORD bmPlanes, bmBitsPixel;
  void *bmBits;
} BITMAP;

PLATFORM_API HBITMAP WINAPI CreateCompatibleBitmap(HDC dc, int width, int height);
PLATFORM_API HBITMAP WINAPI CreateBitmap(int width, int height, UINT planes, UINT bits, const void *data);
/* With CBM_INIT filled from pixels of 1, 4, 8, 16, 24 or 32 bits, run-length coded ones too. */
PLATFORM_API HBITMAP WINAPI CreateDIBitmap(HDC dc, const BITMAPINFOHEADER *header, DWORD init, const void *bits,
                                           const BITMAPINFO *info, UINT colors);
/* A bitmap, an icon or a cursor of the instance's resources, scaled where a size is asked for; with LR_LOADFROMFILE one of a
 * file. */
PLATFORM_API HANDLE WINAPI LoadImageA(HINSTANCE instance, LPCSTR name, UINT type, int width, int height, UINT flags);

#define SRCCOPY 0x00CC0020u
#define SRCPAINT 0x00EE0086u
#define SRCAND 0x008800C6u
#define SRCINVERT 0x00660046u
#define SRCERASE 0x00440328u
#define NOTSRCCOPY 0x00330008u
#define NOTSRCERASE 0x001100A6u
#define MERGECOPY 0x00C000CAu
#define MERGEPAINT 0x00BB0226u
#define PATCOPY 0x00F00021u
#define PATPAINT 0x00FB0A09u
#define PATINVERT 0x005A0049u
#define DSTINVERT 0x00550009u
#define BLACKNESS 0x00000042u
#define WHITENESS 0x00FF0062u

PLATFORM_API BOOL WINAPI BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                                DWORD operation);
PLATFORM_API BOOL WINAPI PatBlt(HDC dc, int x, int y, int width, int height, DWORD operation);

/* Text, in code page 932. */

#define LF_FACESIZE 32
#define FW_DONTCARE 0
#define FW_NORMAL 400
#define FW_BOLD 700
#define ANSI_CHARSET 0
#define DEFAULT_CHARSET 1
#define SHIFTJIS_CHARSET 128
#define OUT_DEFAULT_PRECIS 0
#define OUT_TT_PRECIS 4
#define CLIP_DEFAULT_PRECIS 0
#define DEFAULT_QUALITY 0
#define DEFAULT_PITCH 0
#define FIXED_PITCH 1
#define VARIABLE_PITCH 2

typedef struct tagLOGFONTA {
  LONG lfHeight, lfWidth, lfEscapement, lfOrientation, lfWeight;
  BYTE lfItalic, lfUnderline, lfStrikeOut, lfCharSet, lfOutPrecision, lfClipPrecision, lfQuality, lfPitchAndFamily;
  CHAR lfFaceName[LF_FACESIZE];
} LOGFONTA;

typedef struct tagTEXTMETRICA {
  LONG tmHeight, tmAscent, tmDescent, tmInternalLeading, tmExternalLeading, tmAveCharWidth, tmMaxCharWidth, tmWeight,
      tmOverhang, tmDigitizedAspectX, tmDigitizedAspectY;
  BYTE tmFirstChar, tmLastChar, tmDefaultChar, tmBreakChar, tmItalic, tmUnderlined, tmStruckOut, tmPitchAndFamily,
      tmCharSet;
} TEXTMETRICA;

#define TA_NOUPDATECP 0u
#define TA_UPDATECP 1u
#define TA_LEFT 0u
#define TA_RIGHT 2u
#define TA_CENTER 6u
#define TA_TOP 0u
#define TA_BOTTOM 8u
#define TA_BASELINE 24u

#define DT_TOP 0x0000u
#define DT_LEFT 0x0000u
#define DT_CENTER 0x0001u
#define DT_RIGHT 0x0002u
#define DT_VCENTER 0x0004u
#define DT_BOTTOM 0x0008u
#define DT_WORDBREAK 0x0010u
#define DT_SINGLELINE 0x0020u
#define DT_EXPANDTABS 0x0040u
#define DT_TABSTOP 0x0080u
#define DT_NOCLIP 0x0100u
#define DT_EXTERNALLEADING 0x0200u
#define DT_CALCRECT 0x0400u
#define DT_NOPREFIX 0x0800u
#define DT_EDITCONTROL 0x2000u
#define DT_PATH_ELLIPSIS 0x4000u
#define DT_END_ELLIPSIS 0x8000u
#define DT_MODIFYSTRING 0x00010000u
#define DT_WORD_ELLIPSIS 0x00040000u
#define DT_HIDEPREFIX 0x00100000u
#define DT_PREFIXONLY 0x00200000u

/* A face that is not installed gets the nearest one that has Japanese characters. */
PLATFORM_API HFONT WINAPI CreateFontIndirectA(const LOGFONTA *font);
PLATFORM_API BOOL WINAPI GetTextMetricsA(HDC dc, TEXTMETRICA *metrics);
PLATFORM_API UINT WINAPI SetTextAlign(HDC dc, UINT align);
PLATFORM_API BOOL WINAPI GetTextExtentPoint32A(HDC dc, LPCSTR text, int length, SIZE *size);
PLATFORM_API BOOL WINAPI TextOutA(HDC dc, int x, int y, LPCSTR text, int length);
/* length: -1 for a text with an end mark. Result: the height of the text, 0 on failure. */
PLATFORM_API int WINAPI DrawTextA(HDC dc, LPCSTR text, int length, RECT *rect, UINT format);

#ifdef __cplusplus
}
#endif

#endif
