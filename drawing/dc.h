/* The device-context record WqDc with its parts: the selection cache, the clip region, the unit converter, and zoomed
 * drawing. Part of drawing.h. */
#ifndef WQ_DRAWING_DC_H
#define WQ_DRAWING_DC_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* All drawing goes through a WqDc, on the screen and on paper alike:
 *
 *   WqDcDraw_FillRect(&dc->draw, &rect, WQ_COLOR_WHITE);
 *   WqDcDraw_InitLine(&dc->draw, 1, 0xFF0000FF);
 *   WqDcDraw_Line(&dc->draw, &from, &to);
 *
 * The parts read dc->hdc at each call. A user procedure gets a WqDc with WQM_PAINT. Elsewhere the caller makes one:
 *
 *   WqDc_Init(&dc, &wnd);
 *   WqDc_Get(&dc, WQ_DC_CLIENT);
 *   - drawing -
 *   WqDc_Release(&dc);
 *   WqDc_Term(&dc);
 *
 * Everything here belongs to the thread that paints or prints. A colour is a colour value: an id or a direct colour. */

typedef struct WqDc WqDc;
typedef struct WqWnd WqWnd;

/* ---- WqDcObj: the selection cache --------------------------------------------------------------------------------
 *
 * Selects pens, brushes and fonts by their properties, and restores the objects selected before at the end. For a
 * colour id the object comes from a registry, which keeps it for later. For a direct colour an object is made that
 * lives as long as the record. The object that the first selection of each kind replaces is remembered, except by a
 * selection with a direct colour: that kind is not restored then. */

/* WqDcObj.flags: the kinds that were selected */
#define WQ_DCOBJ_PEN 0x40000000u
#define WQ_DCOBJ_FONT 0x20000000u
#define WQ_DCOBJ_BRUSH 0x10000000u

typedef struct WqDcObj {
  WqDc *dc;
  uint32_t flags;    /* WQ_DCOBJ_... */
  WqStack saved;     /* replaced handles, at most one of each kind */
  WqStack temporary; /* handles that the record owns */
} WqDcObj;

/* Clears the record. */
WQ_API void WqDcObj_Init(WqDcObj *obj);

/* Links the record to the context for its selections. */
WQ_API void WqDcObj_Dc(WqDcObj *obj, WqDc *dc);

/* Restores the saved objects, unless the context is gone (hdc null) or none is linked, and deletes the temporary
 * objects. */
WQ_API void WqDcObj_Term(WqDcObj *obj);

/* Selects a pen. Its id in the registry is (width << 16) | colour | style. So colours that differ only in
 * bits that the style sets share a pen.
 * width: in logical units. style: the platform's PS_...
 * Result: the pen; null if it could not be made or kept, and the old pen stays selected. */
WQ_API HPEN WqDcObj_SelectStylePen(WqDcObj *obj, uint32_t width, uint32_t colour, uint32_t style);

/* Sets the text colour, and selects a font of the registry.
 * Result: the font; null for an unknown id, and the old font stays selected. */
WQ_API HFONT WqDcObj_SelectFont(WqDcObj *obj, uint32_t fontId, uint32_t colour);

/* Selects a brush. Its id in the registry is the colour value. So an application's brush with that id, such as a
 * hatched one, is selected; otherwise a solid brush.
 * Result: the brush; null if it could not be made or kept, and the old brush stays selected. */
WQ_API HBRUSH WqDcObj_SelectBrush(WqDcObj *obj, uint32_t colour);

/* ---- WqDcRgn: a clip rectangle for a while ----------------------------------------------------------------------- */

typedef struct WqDcRgn {
  WqDc *dc;
  HRGN region;      /* the rectangle in force */
  HRGN savedRegion; /* the clip region before it; null if there was none */
} WqDcRgn;

/* Clears the record. */
WQ_API void WqDcRgn_Init(WqDcRgn *rgn);

/* Does nothing. */
WQ_API void WqDcRgn_Term(WqDcRgn *rgn);

/* Links the record to the context for its clips. */
WQ_API void WqDcRgn_Dc(WqDcRgn *rgn, WqDc *dc);

/* Clips to a rectangle, which replaces the present clip region.
 * rect: in device units; right and bottom are exclusive. */
WQ_API void WqDcRgn_Create(WqDcRgn *rgn, const RECT *rect);

/* Ends the clip: the context gets back its former clip region, or none. One WqDcRgn_Delete follows each WqDcRgn_Create.
 * They don't nest within a record. */
WQ_API void WqDcRgn_Delete(WqDcRgn *rgn);

/* ---- WqDcMap: units ----------------------------------------------------------------------------------------------
 *
 * Converts between hundredths of a millimetre (Mm), points of 1/72 inch (Point) and device pixels (Pix). An inch is
 * 2540 Mm. Before WqDcMap_Update a map has the display's resolution. Both axes use the vertical one. */

typedef struct WqDcMap {
  WqDc *dc;
  int32_t prevMapMode; /* the platform's mode before the last WqDcMap_Mode */
  int32_t mapMode;     /* the last mode set or read; 0 before */
  int32_t logPix;      /* pixels per inch */
  double dpi;          /* the same */
  double mmPerPix;
  double pixPerMm;
  double pixPerPoint;
  double displayPixPerMm; /* pixPerMm of the display, whatever the map's resolution */
} WqDcMap;

/* Clears the record and sets it to the display's resolution. */
WQ_API void WqDcMap_Init(WqDcMap *map);

/* Does nothing. */
WQ_API void WqDcMap_Term(WqDcMap *map);

/* Links the record to a context, and reads its mapping mode if the context has a handle. */
WQ_API void WqDcMap_Dc(WqDcMap *map, WqDc *dc);

/* Sets the mapping mode of the linked context, which must have a handle.
 * mode: the platform's MM_... */
WQ_API void WqDcMap_Mode(WqDcMap *map, int32_t mode);

/* Result: the display's vertical pixels per inch, read at each call.
 * map: has no effect. */
WQ_API int32_t WqDcMap_LogPix(const WqDcMap *map);

/* Changes the map's resolution.
 * logPix: pixels per inch, above 0.
 * Result: the resolution before. */
WQ_API int32_t WqDcMap_Update(WqDcMap *map, int32_t logPix);

/* Convert a value, or each field of a record in place. The result is truncated toward zero. Only MmToPix rounds up, so
 * that a number of pixels comes back from Mm unchanged.
 * map: not used by PointToMm and MmToPoint.
 * Bad input: a result beyond 32 bits gives its low 32 bits. Beyond 64 bits, and for a map without a resolution, the
 * result has no meaning. */
WQ_API int32_t WqDcMap_PointToMm(const WqDcMap *map, int32_t value);
WQ_API void WqDcMap_PointToMm_SIZE(const WqDcMap *map, SIZE *size);
WQ_API void WqDcMap_PointToMm_POINT(const WqDcMap *map, POINT *point);
WQ_API void WqDcMap_PointToMm_RECT(const WqDcMap *map, RECT *rect);
WQ_API int32_t WqDcMap_PointToPix(const WqDcMap *map, int32_t value);
WQ_API void WqDcMap_PointToPix_SIZE(const WqDcMap *map, SIZE *size);
WQ_API void WqDcMap_PointToPix_POINT(const WqDcMap *map, POINT *point);
WQ_API void WqDcMap_PointToPix_RECT(const WqDcMap *map, RECT *rect);
WQ_API int32_t WqDcMap_MmToPoint(const WqDcMap *map, int32_t value);
WQ_API void WqDcMap_MmToPoint_SIZE(const WqDcMap *map, SIZE *size);
WQ_API void WqDcMap_MmToPoint_POINT(const WqDcMap *map, POINT *point);
WQ_API void WqDcMap_MmToPoint_RECT(const WqDcMap *map, RECT *rect);
WQ_API int32_t WqDcMap_MmToPix(const WqDcMap *map, int32_t value);
WQ_API void WqDcMap_MmToPix_SIZE(const WqDcMap *map, SIZE *size);
WQ_API void WqDcMap_MmToPix_POINT(const WqDcMap *map, POINT *point);
WQ_API void WqDcMap_MmToPix_RECT(const WqDcMap *map, RECT *rect);
WQ_API int32_t WqDcMap_PixToPoint(const WqDcMap *map, int32_t value);
WQ_API void WqDcMap_PixToPoint_SIZE(const WqDcMap *map, SIZE *size);
WQ_API void WqDcMap_PixToPoint_POINT(const WqDcMap *map, POINT *point);
WQ_API void WqDcMap_PixToPoint_RECT(const WqDcMap *map, RECT *rect);
WQ_API int32_t WqDcMap_PixToMm(const WqDcMap *map, int32_t value);
WQ_API void WqDcMap_PixToMm_SIZE(const WqDcMap *map, SIZE *size);
WQ_API void WqDcMap_PixToMm_POINT(const WqDcMap *map, POINT *point);
WQ_API void WqDcMap_PixToMm_RECT(const WqDcMap *map, RECT *rect);

/* Result: a value in pixels of the display, rounded up, whatever the map's resolution. */
WQ_API int32_t WqDcMap_MmToPixP(const WqDcMap *map, int32_t value);

/* ---- WqDcDraw: zoomed drawing ------------------------------------------------------------------------------------
 *
 * One rule converts every coordinate: it is multiplied by the zoom, rounded up, and moved by the base point. Widths of
 * pens, heights of fonts and the base point itself are not zoomed. Converted edges go to the platform unchanged: right
 * and bottom are exclusive there.
 *
 * Lines, outlines and fillings use the objects selected in the context. Functions with a colour select a brush for it.
 * Selected objects and modes stay set.
 *
 * Every drawing function sets drawn, even if the platform fails; only WqDcDraw_MoveTo doesn't. A paint pass leaves the
 * screen as it is if drawn was not set. */

typedef struct WqDcDraw {
  WqDc *dc;
  uint32_t drawn;       /* not 0 once something was drawn */
  int32_t prevForeMode; /* the platform's raster mode before the last WqDcDraw_ForeMode */
  int32_t foreMode;     /* the last mode set or read; 0 before */
  int32_t prevBackMode; /* likewise the background mode */
  int32_t backMode;
  POINT basePoint; /* in device units */
  double zoom;
} WqDcDraw;

/* Clears the record, with a zoom of 1.0. */
WQ_API void WqDcDraw_Init(WqDcDraw *draw);

/* Does nothing. */
WQ_API void WqDcDraw_Term(WqDcDraw *draw);

/* Links the record to a context, and reads both modes if the context has a handle. All functions below that draw, set a
 * mode or select an object need a linked context with a handle. */
WQ_API void WqDcDraw_Dc(WqDcDraw *draw, WqDc *dc);

/* Set the raster mode of pens and brushes, R2_..., or the background mode, TRANSPARENT or OPAQUE. */
WQ_API void WqDcDraw_ForeMode(WqDcDraw *draw, int32_t mode);
WQ_API void WqDcDraw_BackMode(WqDcDraw *draw, int32_t mode);

/* Sets the zoom.
 * percent: 100.0 is the natural size. */
WQ_API void WqDcDraw_Zoom(WqDcDraw *draw, double percent);

/* Sets the base point. */
WQ_API void WqDcDraw_Bp(WqDcDraw *draw, const POINT *basePoint);

/* Convert a record. The base point moves a size too.
 * converted: may be the same record. */
WQ_API void WqDcDraw_ConvRect(const WqDcDraw *draw, const RECT *rect, RECT *converted);
WQ_API void WqDcDraw_ConvSize(const WqDcDraw *draw, const SIZE *size, SIZE *converted);
WQ_API void WqDcDraw_ConvPoint(const WqDcDraw *draw, const POINT *point, POINT *converted);

/* Selects a solid pen for later lines and outlines.
 * width: in the context's units, not zoomed. */
WQ_API void WqDcDraw_InitLine(WqDcDraw *draw, uint32_t width, uint32_t colour);

/* Selects a font of the registry and the text colour. */
WQ_API void WqDcDraw_InitText(WqDcDraw *draw, uint32_t fontId, uint32_t colour);

/* Draw a frame one unit wide, or fill a rectangle. */
WQ_API void WqDcDraw_FrameRect(WqDcDraw *draw, const RECT *rect, uint32_t colour);
WQ_API void WqDcDraw_FillRect(WqDcDraw *draw, const RECT *rect, uint32_t colour);

/* Draws a filled rectangle with round corners and the pen's outline.
 * corner: width and height of the corners' ellipse, converted like a point, so the base point moves it. */
WQ_API void WqDcDraw_RoundRect(WqDcDraw *draw, const RECT *rect, const POINT *corner, uint32_t colour);

/* Draws a circle in the middle of a rectangle, with the shorter side as diameter. Of an odd rest, the larger half is
 * left free at the right or bottom. */
WQ_API void WqDcDraw_Circle(WqDcDraw *draw, const RECT *rect);

/* Draws an ellipse with the pen's outline, filled with the brush. */
WQ_API void WqDcDraw_Ellipse(WqDcDraw *draw, const RECT *rect);

/* Draw curves from the current position, a line through points, or a polygon. If memory is short for the converted
 * points nothing is drawn, and drawn stays as it was.
 * count: of points, not negative; three for each curve. */
WQ_API void WqDcDraw_PolyBezier(WqDcDraw *draw, const POINT *points, uint32_t count);
WQ_API void WqDcDraw_PolyLine(WqDcDraw *draw, const POINT *points, int32_t count);
WQ_API void WqDcDraw_Polygon(WqDcDraw *draw, const POINT *points, int32_t count);

/* Moves the current position. */
WQ_API void WqDcDraw_MoveTo(WqDcDraw *draw, const POINT *point);

/* Draw a line from the current position, or from a point. Its last pixel is left out and becomes the current
 * position. */
WQ_API void WqDcDraw_LineTo(WqDcDraw *draw, const POINT *point);
WQ_API void WqDcDraw_Line(WqDcDraw *draw, const POINT *from, const POINT *to);

/* Draw the platform's edges, focus frame and controls.
 * edge: EDGE_... and BDR_... flags: BF_... type: DFC_... state: DFCS_... */
WQ_API void WqDcDraw_DrawEdge(WqDcDraw *draw, const RECT *rect, uint32_t edge, uint32_t flags);
WQ_API void WqDcDraw_FocusRect(WqDcDraw *draw, const RECT *rect);
WQ_API void WqDcDraw_FrameControl(WqDcDraw *draw, const RECT *rect, uint32_t type, uint32_t state);

/* Draws a text.
 * format: the platform's DT_..., without DT_MODIFYSTRING. */
WQ_API void WqDcDraw_Text(WqDcDraw *draw, const char *text, const RECT *rect, uint32_t format);

/* Measures a text with the selected font, and sets drawn.
 * format: as for WqDcDraw_Text.
 * rect: is converted. It receives the space of the text in device units, with zoom and base point applied. */
WQ_API void WqDcDraw_GetTextRect(WqDcDraw *draw, const char *text, RECT *rect, uint32_t format);

/* ---- WqDc: the record -------------------------------------------------------------------------------------------- */

/* Sources of a context: one of five, in the low five bits of the mode. */
#define WQ_DC_DISPLAY 1u   /* the whole display; needs no window */
#define WQ_DC_WINDOW 2u    /* the window with its frame */
#define WQ_DC_CLIENT 4u    /* the window's client area */
#define WQ_DC_PRINTER 8u   /* none: the caller sets the handle and gives it back */
#define WQ_DC_EXTERNAL 16u /* likewise */
#define WQ_DC_PAINT 0x20u  /* with WQ_DC_CLIENT: only the area that needs paint */

struct WqDc {
  HDC hdc;       /* the present context, null for none */
  uint32_t mode; /* the mode of the last WqDc_Get, 0 for none */
  WqWnd *wnd;
  PAINTSTRUCT paint; /* of the last BeginPaint */
  WqDcObj obj;
  WqDcDraw draw;
  WqDcRgn rgn;
  WqDcMap map;
};

/* Prepares the record and links its parts. It has no context yet.
 * wnd: may be null for modes without a window. */
WQ_API void WqDc_Init(WqDc *dc, WqWnd *wnd);

/* Ends the record. Saved objects are selected back if there is a context, and temporary objects are deleted. A context
 * that was not released is given back as by WqDc_Release, except that of a client area, which stays in the record:
 * WqDc_EndPaint may have ended its paint, and the caller may still release any other. */
WQ_API void WqDc_Term(WqDc *dc);

/* Gets a context. If this fails, or the window doesn't exist, hdc is null, but the mode is stored.
 * Bad input: an invalid mode does nothing at all. */
WQ_API void WqDc_Get(WqDc *dc, uint32_t mode);

/* Gives the context back, which also ends a paint, and clears hdc and mode. With an invalid mode it does nothing. */
WQ_API void WqDc_Release(WqDc *dc);

/* The same as WqDc_Get with WQ_DC_CLIENT | WQ_DC_PAINT. */
WQ_API void WqDc_BeginPaint(WqDc *dc);

/* Ends a paint without a change in the record. WqDc_Release also clears the record. */
WQ_API void WqDc_EndPaint(WqDc *dc);

/* Exclude a rectangle from drawing, in the context's own coordinates; right and bottom are exclusive. */
WQ_API void WqDc_ExcludeRect(WqDc *dc, const RECT *rect);
WQ_API void WqDc_Exclude(WqDc *dc, int32_t left, int32_t top, int32_t right, int32_t bottom);

#ifdef __cplusplus
}
#endif

#endif
