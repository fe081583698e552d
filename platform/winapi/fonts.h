/* Fonts, and text drawn with them, in code page 932. */
#ifndef PLATFORM_WINAPI_FONTS_H
#define PLATFORM_WINAPI_FONTS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

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

/* A face that isn't installed is replaced by the nearest one with Japanese characters. */
PLATFORM_API HFONT WINAPI CreateFontIndirectA(const LOGFONTA *font);
PLATFORM_API BOOL WINAPI GetTextMetricsA(HDC dc, TEXTMETRICA *metrics);
PLATFORM_API UINT WINAPI SetTextAlign(HDC dc, UINT align);
PLATFORM_API BOOL WINAPI GetTextExtentPoint32A(HDC dc, LPCSTR text, int length, SIZE *size);
PLATFORM_API BOOL WINAPI TextOutA(HDC dc, int x, int y, LPCSTR text, int length);
/* length: -1 for a text that ends with NUL. Result: the height of the text, 0 on failure. */
PLATFORM_API int WINAPI DrawTextA(HDC dc, LPCSTR text, int length, RECT *rect, UINT format);

#ifdef __cplusplus
}
#endif

#endif
