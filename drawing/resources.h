/* Pens, brushes, fonts and bitmaps, their registries, and blits. Part of drawing.h. */
#ifndef WQ_DRAWING_RESOURCES_H
#define WQ_DRAWING_RESOURCES_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A record describes an object; Create makes the platform's object from it and stores its handle, and Delete deletes
 * that. A Create on a record that has a handle doesn't delete it: Delete comes first.
 *
 * A registry, a table of wqMain for each kind, holds copies of records under 32-bit ids and makes each object when it
 * is first asked for. It owns what it has made, until Remove or WqMain_Term: a handle from a Get is never deleted by its
 * receiver. Colours are resolved when an object is made and stay; a later WqColorTbl_Insert reaches later objects only.
 * These rules hold for all four:
 *
 * - Insert copies the record into the registry. If memory is short the registry stays as it was. An id that is there
 *   already gets the new record; an object that was made from the old one lives on without an owner, since somebody may
 *   be using it. Who replaces a resource calls Remove first.
 * - Get gives an id's object. An unknown id gives null and makes nothing. Where the making fails the answer is null too,
 *   and the next Get tries again.
 * - Remove deletes an id's object, if one was made, and forgets the id. An unknown id does nothing.
 *
 * Everything here belongs to the thread that paints. */

/* ---- WqPen, WqPenTbl ---------------------------------------------------------------------------------------------- */

typedef struct WqPen {
  HPEN handle;     /* null until made */
  uint32_t colour; /* a colour value */
  LOGPEN log;      /* lopnColor is set when the pen is made */
} WqPen;

/* Clears the record. */
WQ_API void WqPen_Init(WqPen *pen);

/* Does nothing. */
WQ_API void WqPen_Term(WqPen *pen);

/* Sets what the pen is to be.
 * style: the platform's PS_... width: in logical units. colour: a colour value. */
WQ_API void WqPen_Param(WqPen *pen, uint32_t style, uint32_t width, uint32_t colour);

/* Makes the pen; handle is null when that fails. */
WQ_API void WqPen_Create(WqPen *pen);

/* Deletes the pen, if it was made. */
WQ_API void WqPen_Delete(WqPen *pen);

/* id: those of WqDcObj_SelectStylePen are (width << 16) | colour | style. */
WQ_API void WqPenTbl_Insert(uint32_t id, const WqPen *pen);
WQ_API HPEN WqPenTbl_Get(uint32_t id);
WQ_API void WqPenTbl_Remove(uint32_t id);

/* ---- WqBrush, WqBrushTbl ------------------------------------------------------------------------------------------ */

#define WQ_BRUSH_SOLID 0
#define WQ_BRUSH_HATCHED 0x200 /* with horizontal lines */

typedef struct WqBrush {
  HBRUSH handle;   /* null until made */
  int32_t style;   /* WQ_BRUSH_...; with any other no brush is made */
  uint32_t colour; /* a colour value */
} WqBrush;

/* Clears the record. */
WQ_API void WqBrush_Init(WqBrush *brush);

/* Sets what the brush is to be.
 * style: WQ_BRUSH_... colour: a colour value. */
WQ_API void WqBrush_Param(WqBrush *brush, int32_t style, uint32_t colour);

/* Makes the brush; handle is null when that fails. With another style than the two nothing happens. */
WQ_API void WqBrush_Create(WqBrush *brush);

/* Both delete the brush, if it was made. */
WQ_API void WqBrush_Delete(WqBrush *brush);
WQ_API void WqBrush_Term(WqBrush *brush);

/* id: those of WqDcObj_SelectBrush are colour values. */
WQ_API void WqBrushTbl_Insert(uint32_t id, const WqBrush *brush);
WQ_API HBRUSH WqBrushTbl_Get(uint32_t id);
WQ_API void WqBrushTbl_Remove(uint32_t id);

/* ---- WqFont, WqFontTbl -------------------------------------------------------------------------------------------- */

#define WQ_FONT_BOLD 1u

typedef struct WqFont {
  HFONT handle; /* null until made */
  LOGFONTA log; /* what the font is made from */
  int32_t size; /* the height of a character without the space above it, in logical units */
  uint32_t style;
  char face[84]; /* a name of up to 31 bytes */
} WqFont;

/* Clears the record. */
WQ_API void WqFont_Init(WqFont *font);

/* Sets what the font is to be. WqFont_LogDef or WqFont_LogEscapDef follows.
 * face: cut at 31 bytes, between characters. size: see the record. style: 0 or WQ_FONT_BOLD; other bits don't count. */
WQ_API void WqFont_Param(WqFont *font, const char *face, int32_t size, uint32_t style);

/* Fill log from the rest of the record; its width, orientation, italics, underline and strike-out stay as they are.
 * escapement: of the line of text, in tenths of a degree. WqFont_LogDef leaves it as it is. */
WQ_API void WqFont_LogDef(WqFont *font);
WQ_API void WqFont_LogEscapDef(WqFont *font, int32_t escapement);

/* Makes the font from log.
 * Result: its handle, null on failure. */
WQ_API HFONT WqFont_Create(WqFont *font);

/* Both delete the font, if it was made. */
WQ_API void WqFont_Delete(WqFont *font);
WQ_API void WqFont_Term(WqFont *font);

/* Does nothing. */
WQ_API void WqFontTbl_Config(void);

/* font: with log filled in. */
WQ_API void WqFontTbl_Insert(uint32_t id, const WqFont *font);
WQ_API HFONT WqFontTbl_Get(uint32_t id);
WQ_API void WqFontTbl_Remove(uint32_t id);

/* ---- WqBmp: a bitmap of the application's resources ---------------------------------------------------------------- */

typedef struct WqBmp {
  HBITMAP handle;      /* set by WqBmp_Load; the caller deletes it */
  HINSTANCE instance;  /* these four are set by the caller: the module, */
  uint32_t resourceId; /* a number of 16 bits, */
  int32_t cx;          /* and the size wanted, 0 for that of the resource */
  int32_t cy;
} WqBmp;

/* Clears the record. */
WQ_API void WqBmp_Init(WqBmp *bmp);

/* Does nothing. */
WQ_API void WqBmp_Term(WqBmp *bmp);

/* Loads the bitmap; handle is null when that fails. */
WQ_API void WqBmp_Load(WqBmp *bmp);

/* ---- WqBmpFile, WqBmpTbl: a bitmap from a BMP file ----------------------------------------------------------------- */

typedef struct WqBmpFile {
  HBITMAP handle; /* null until made */
  char path[260];
} WqBmpFile;

/* Clears the record and sets its path.
 * path: cut at 259 bytes, between characters. */
WQ_API void WqBmpFile_Init(WqBmpFile *file, const char *path);

/* Result: how many colours a file's table has by its header: biClrUsed, or if that is 0, 16 for 4 bits a pixel, 256 for
 * 8, 65536 for 16, and 2 for any other number of bits.
 * unused: has no effect. */
WQ_API uint32_t WqBmpFile_ColNum(const void *unused, const BITMAPINFOHEADER *header);

/* Makes the bitmap from the file, compatible with a context. handle is null when that fails.
 *
 * Neither the file's magic nor its sizes are looked at, but the whole picture has to lie in the file. With 1, 4 or 8 bits
 * a pixel and a header of 40 bytes, the pixel rows follow the colour table directly, at 54 + 4 x colours; where bfOffBits
 * points counts only when no whole picture begins there. For more bits, and for other headers, the rows are where
 * bfOffBits points, behind the headers and the table, or directly behind these where it is 0.
 *
 * Files of 16, 24 and 32 bits, also with colour masks, rows from the top down, the oldest header of 12 bytes, and
 * run-length coded files are taken; everything else is refused. Of a coded file as much is shown as there is: a missing
 * end counts as one behind the last whole code, what lies outside the picture is left out, and pixels that no code sets
 * are black.
 * dc: null gives a bitmap of the platform's choice. */
WQ_API void WqBmpFile_Create(WqBmpFile *file, HDC dc);

/* Both delete the bitmap, if it was made. */
WQ_API void WqBmpFile_Delete(WqBmpFile *file);
WQ_API void WqBmpFile_Term(WqBmpFile *file);

/* The record is copied with its handle: a bitmap that is made already is the registry's from now on. Without one the
 * bitmap is made when it is asked for first.
 * dc: the bitmap suits it; later ones get the same bitmap. */
WQ_API void WqBmpTbl_Insert(uint32_t id, const WqBmpFile *file);
WQ_API HBITMAP WqBmpTbl_Get(uint32_t id, HDC dc);
WQ_API void WqBmpTbl_Remove(uint32_t id);

/* ---- WqBmpDraw: a blit --------------------------------------------------------------------------------------------- */

typedef struct WqBmpDraw {
  HBITMAP bitmap; /* the caller's; it is selected in no context */
  POINT src;      /* top left corner in the bitmap */
  POINT dst;      /* top left corner in the context, in logical units */
  SIZE size;
} WqBmpDraw;

/* Clears the record and sets its bitmap. */
WQ_API void WqBmpDraw_Init(WqBmpDraw *draw, HBITMAP bitmap);

/* Does nothing. */
WQ_API void WqBmpDraw_Term(WqBmpDraw *draw);

/* Sets what is copied and where to. */
WQ_API void WqBmpDraw_Param(WqBmpDraw *draw, const POINT *src, const POINT *dst, const SIZE *size);

/* Copies the part of the bitmap. Without a bitmap nothing happens. */
WQ_API void WqBmpDraw_SrcCopy(const WqBmpDraw *draw, HDC dc);

/* Lays the part over what is there, with the mask that the bitmap holds directly to the right of it: where the mask is
 * white and the picture black, the context stays as it is. Without a bitmap nothing happens. */
WQ_API void WqBmpDraw_SrcCopyWithMask(const WqBmpDraw *draw, HDC dc);

#ifdef __cplusplus
}
#endif

#endif
