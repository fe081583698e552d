/* Pens, brushes, fonts and bitmaps, their registries, and blits. Part of drawing.h. */
#ifndef WQ_DRAWING_RESOURCES_H
#define WQ_DRAWING_RESOURCES_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A record describes an object. Create makes the platform's object from it and stores the handle; Delete deletes the
 * object. Create doesn't delete an older object of the record: the caller calls Delete first.
 *
 * A registry, a table of wqMain for each kind, holds copies of records under 32-bit ids. It makes an object at the
 * first Get, and owns it until Remove or WqMain_Term: callers of Get never delete a handle. An object gets its colour
 * when it is made. A later WqColorTbl_Insert only affects later objects. These rules hold for all four:
 *
 * - Insert copies the record into the registry. If memory is short the registry stays as it was. An existing id gets
 *   the new record. An object made from the old record lives on without an owner, since it may be in use. So a caller
 *   that replaces a resource calls Remove first.
 * - Get gives the object of an id. An unknown id gives null and makes nothing. If the object can't be made, Get gives
 *   null too, and the next Get tries again.
 * - Remove deletes the object of an id, if there is one, and removes the id. An unknown id does nothing.
 *
 * Everything here belongs to the thread that paints. */

/* ---- WqPen, WqPenTbl --------------------------------------------------------------------------------------------- */

typedef struct WqPen {
  HPEN handle;     /* null until made */
  uint32_t colour; /* a colour value */
  LOGPEN log;      /* lopnColor is set when the pen is made */
} WqPen;

/* Clears the record. */
WQ_API void WqPen_Init(WqPen *pen);

/* Does nothing. */
WQ_API void WqPen_Term(WqPen *pen);

/* Sets the pen's properties.
 * style: the platform's PS_... width: in logical units. colour: a colour value. */
WQ_API void WqPen_Param(WqPen *pen, uint32_t style, uint32_t width, uint32_t colour);

/* Makes the pen; handle is null on failure. */
WQ_API void WqPen_Create(WqPen *pen);

/* Deletes the pen, if it was made. */
WQ_API void WqPen_Delete(WqPen *pen);

/* id: WqDcObj_SelectStylePen uses (width << 16) | colour | style. */
WQ_API void WqPenTbl_Insert(uint32_t id, const WqPen *pen);
WQ_API HPEN WqPenTbl_Get(uint32_t id);
WQ_API void WqPenTbl_Remove(uint32_t id);

/* ---- WqBrush, WqBrushTbl ----------------------------------------------------------------------------------------- */

#define WQ_BRUSH_SOLID 0
#define WQ_BRUSH_HATCHED 0x200 /* with horizontal lines */

typedef struct WqBrush {
  HBRUSH handle;   /* null until made */
  int32_t style;   /* WQ_BRUSH_...; no brush is made for another style */
  uint32_t colour; /* a colour value */
} WqBrush;

/* Clears the record. */
WQ_API void WqBrush_Init(WqBrush *brush);

/* Sets the brush's properties.
 * style: WQ_BRUSH_... colour: a colour value. */
WQ_API void WqBrush_Param(WqBrush *brush, int32_t style, uint32_t colour);

/* Makes the brush; handle is null on failure. With any other style nothing happens. */
WQ_API void WqBrush_Create(WqBrush *brush);

/* Both delete the brush, if it was made. */
WQ_API void WqBrush_Delete(WqBrush *brush);
WQ_API void WqBrush_Term(WqBrush *brush);

/* id: WqDcObj_SelectBrush uses colour values. */
WQ_API void WqBrushTbl_Insert(uint32_t id, const WqBrush *brush);
WQ_API HBRUSH WqBrushTbl_Get(uint32_t id);
WQ_API void WqBrushTbl_Remove(uint32_t id);

/* ---- WqFont, WqFontTbl ------------------------------------------------------------------------------------------- */

#define WQ_FONT_BOLD 1u

typedef struct WqFont {
  HFONT handle; /* null until made */
  LOGFONTA log; /* the description for the platform */
  int32_t size; /* the height of a character without the space above it, in logical units */
  uint32_t style;
  char face[84]; /* a name of up to 31 bytes */
} WqFont;

/* Clears the record. */
WQ_API void WqFont_Init(WqFont *font);

/* Sets the font's properties. WqFont_LogDef or WqFont_LogEscapDef must follow.
 * face: cut at 31 bytes, between characters. size: see the record. style: 0 or WQ_FONT_BOLD; other bits don't count. */
WQ_API void WqFont_Param(WqFont *font, const char *face, int32_t size, uint32_t style);

/* Fill log from the rest of the record. Width, orientation, italics, underline and strike-out in log stay as they are.
 * escapement: of the line of text, in tenths of a degree. WqFont_LogDef doesn't change it. */
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

/* font: with a filled log. */
WQ_API void WqFontTbl_Insert(uint32_t id, const WqFont *font);
WQ_API HFONT WqFontTbl_Get(uint32_t id);
WQ_API void WqFontTbl_Remove(uint32_t id);

/* ---- WqBmp: a bitmap of the application's resources -------------------------------------------------------------- */

typedef struct WqBmp {
  HBITMAP handle;      /* set by WqBmp_Load; the caller deletes it */
  HINSTANCE instance;  /* set by the caller: the module */
  uint32_t resourceId; /* set by the caller: a number of 16 bits */
  int32_t cx;          /* set by the caller: the wanted size, 0 for the resource's own */
  int32_t cy;
} WqBmp;

/* Clears the record. */
WQ_API void WqBmp_Init(WqBmp *bmp);

/* Does nothing. */
WQ_API void WqBmp_Term(WqBmp *bmp);

/* Loads the bitmap; handle is null on failure. */
WQ_API void WqBmp_Load(WqBmp *bmp);

/* ---- WqBmpFile, WqBmpTbl: a bitmap from a BMP file --------------------------------------------------------------- */

typedef struct WqBmpFile {
  HBITMAP handle; /* null until made */
  char path[260];
} WqBmpFile;

/* Clears the record and sets its path.
 * path: cut at 259 bytes, between characters. */
WQ_API void WqBmpFile_Init(WqBmpFile *file, const char *path);

/* Result: the number of colours in a file's table: biClrUsed, or if that is 0, 16 for 4 bits a pixel, 256 for 8, 65536
 * for 16, and 2 for any other depth.
 * unused: has no effect. */
WQ_API uint32_t WqBmpFile_ColNum(const void *unused, const BITMAPINFOHEADER *header);

/* Makes the bitmap from the file, compatible with a context. handle is null on failure.
 *
 * The file's magic number and sizes are not checked, but the whole picture must lie in the file. With 1, 4 or 8 bits a
 * pixel and a header of 40 bytes, the pixel rows follow the colour table directly, at 54 + 4 x colours. Only if no
 * whole picture begins there, bfOffBits counts. With more bits or another header, the rows are at bfOffBits, which must
 * lie behind the headers and the table, or directly behind these if bfOffBits is 0.
 *
 * Accepted are also files of 16, 24 and 32 bits, with or without colour masks, rows from the top down, the oldest
 * header of 12 bytes, and run-length coded files. All other files are refused. An incomplete coded file is shown as far
 * as it goes, as if it ended behind its last complete code. Pixels outside the picture are left out, and pixels without
 * a code are black.
 * dc: null lets the platform choose the bitmap's format. */
WQ_API void WqBmpFile_Create(WqBmpFile *file, HDC dc);

/* Both delete the bitmap, if it was made. */
WQ_API void WqBmpFile_Delete(WqBmpFile *file);
WQ_API void WqBmpFile_Term(WqBmpFile *file);

/* The record is copied with its handle: if the bitmap is already made, the registry owns it from now on. Otherwise the
 * first Get makes it.
 * dc: the first Get makes the bitmap for this context; later ones get the same bitmap. */
WQ_API void WqBmpTbl_Insert(uint32_t id, const WqBmpFile *file);
WQ_API HBITMAP WqBmpTbl_Get(uint32_t id, HDC dc);
WQ_API void WqBmpTbl_Remove(uint32_t id);

/* ---- WqBmpDraw: a blit ------------------------------------------------------------------------------------------- */

typedef struct WqBmpDraw {
  HBITMAP bitmap; /* the caller's; must not be selected in a context */
  POINT src;      /* top left corner in the bitmap */
  POINT dst;      /* top left corner in the context, in logical units */
  SIZE size;
} WqBmpDraw;

/* Clears the record and sets its bitmap. */
WQ_API void WqBmpDraw_Init(WqBmpDraw *draw, HBITMAP bitmap);

/* Does nothing. */
WQ_API void WqBmpDraw_Term(WqBmpDraw *draw);

/* Sets the part to copy and its destination. */
WQ_API void WqBmpDraw_Param(WqBmpDraw *draw, const POINT *src, const POINT *dst, const SIZE *size);

/* Copies the part to the context. Without a bitmap nothing happens. */
WQ_API void WqBmpDraw_SrcCopy(const WqBmpDraw *draw, HDC dc);

/* Copies the part transparently, by the mask directly to its right in the bitmap: where the mask is white and the
 * picture black, the context stays as it is. Without a bitmap nothing happens. */
WQ_API void WqBmpDraw_SrcCopyWithMask(const WqBmpDraw *draw, HDC dc);

#ifdef __cplusplus
}
#endif

#endif
