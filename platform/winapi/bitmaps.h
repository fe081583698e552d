/* Bitmaps, and copying of pixels. */
#ifndef PLATFORM_WINAPI_BITMAPS_H
#define PLATFORM_WINAPI_BITMAPS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

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

/* The oldest form of the header. Its colour table has three bytes for each colour. */
typedef struct tagBITMAPCOREHEADER {
  DWORD bcSize;
  WORD bcWidth, bcHeight, bcPlanes, bcBitCount;
} BITMAPCOREHEADER;

typedef struct tagRGBTRIPLE {
  BYTE rgbtBlue, rgbtGreen, rgbtRed;
} RGBTRIPLE;

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
/* With CBM_INIT the bitmap is filled from pixels of 1, 4, 8, 16, 24 or 32 bits, run-length coded or not. */
PLATFORM_API HBITMAP WINAPI CreateDIBitmap(HDC dc, const BITMAPINFOHEADER *header, DWORD init, const void *bits,
                                           const BITMAPINFO *info, UINT colors);
/* Copies rows of pixels with 24 or 32 bits. first: the first row, counted from the bottom, or from the top for a
 * negative height. info: the wanted form; gets the size of the pixels in bytes. bits: null copies nothing. With null
 * and a form of 0 bits a pixel, info gets the bitmap's own form. Pixels of the form outside of the bitmap are black.
 * Result: the number of rows that lie in the bitmap; without bits not 0; 0 for other forms. */
PLATFORM_API int WINAPI GetDIBits(HDC dc, HBITMAP bitmap, UINT first, UINT rows, void *bits, BITMAPINFO *info,
                                  UINT colors);
/* Loads a bitmap, an icon or a cursor from the instance's resources, or with LR_LOADFROMFILE from a file. If a size is
 * given, the image is scaled to it. */
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

#ifdef __cplusplus
}
#endif

#endif
