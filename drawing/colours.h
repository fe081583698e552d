/* Colours: arithmetic, the table of colour ids, the palette. Part of drawing.h. */
#ifndef WQ_DRAWING_COLOURS_H
#define WQ_DRAWING_COLOURS_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A platform colour, COLORREF, is 0x00BBGGRR, or 0x02BBGGRR for the nearest colour in the palette. Drawing functions
 * take a colour value instead, a word with two meanings:
 *
 *   0xFFBBGGRR  a direct colour: that colour
 *   else        a colour id in the low 8 bits, which wqMain.colorTbl turns into a colour; the other bits don't count
 *
 * Everything here belongs to the thread that paints. Only WqColor and WqColorSet may be used on any thread. */

#define WQ_COLOR_DIRECT 0xFF000000u /* the top byte of a direct colour */

/* ---- WqColor, WqColorSet: arithmetic ----------------------------------------------------------------------------- */

/* Result: the middle of two colours, each channel truncated, with top byte 2. The top bytes of the arguments don't
 * count. */
WQ_API COLORREF WqColor_Neutral(COLORREF colour, COLORREF other);

/* Result: the grey of the same brightness, 0.1 blue + 0.3 red + 0.6 green, truncated, with top byte 2. */
WQ_API COLORREF WqColor_BW(COLORREF colour);

/* Stores a colour's channels in the order of a BMP file: blue, green, red.
 * entry: three bytes. */
WQ_API void WqColor_RGB(COLORREF colour, void *entry);

/* Both do nothing. */
WQ_API void WqColorSet_Init(WqWord a, WqWord b);
WQ_API void WqColorSet_Term(WqWord a);

/* ---- WqColorTbl: the colour of each id ---------------------------------------------------------------------------
 *
 * Ids 0 to 127 and 176 to 255 are the application's. WqMain_Init enters the other ids, and reads the system's colours
 * for them. When the system's colours change, only WqColorTbl_InitSystem reads them again. */

#define WQ_COLOR_BLACK 128u
#define WQ_COLOR_WHITE 129u
#define WQ_COLOR_RED 130u
#define WQ_COLOR_YELLOW 131u
#define WQ_COLOR_GREEN 132u
#define WQ_COLOR_CYAN 133u
#define WQ_COLOR_BLUE 134u
#define WQ_COLOR_MAGENTA 135u
#define WQ_COLOR_GREY 136u
#define WQ_COLOR_LIGHT_GREY 137u
#define WQ_COLOR_DARK_RED 138u
#define WQ_COLOR_DARK_YELLOW 139u
#define WQ_COLOR_DARK_GREEN 140u
#define WQ_COLOR_DARK_CYAN 141u
#define WQ_COLOR_DARK_BLUE 142u
#define WQ_COLOR_DARK_MAGENTA 143u

/* Plus the platform's COLOR_..., 0 to 24: the system's colour. */
#define WQ_COLOR_SYSTEM 144u

/* Shades of the system's colours, each the middle of two others:
 *   169  button face, button shadow             173  white, highlight
 *   170  button shadow, dark shadow             174  171, 172
 *   171  button face, highlight                 175  application workspace, dark shadow
 *   172  171, 173 */
#define WQ_COLOR_SHADES 169u

/* An entry of wqMain.colorTbl. Its key is the id's low 8 bits. */
typedef struct WqColorEntry {
  COLORREF colour;
  uint32_t id; /* the whole id word */
} WqColorEntry;

/* Starts a table, and enters the library's ids in wqMain.colorTbl. If memory is short the table lacks some colours, or
 * all of them.
 * table: wqMain.colorTbl; its old content is lost. bucketCount: at least 1. */
WQ_API void WqColorTbl_Init(WqHash *table, uint32_t bucketCount);

/* Frees a table with its entries. */
WQ_API void WqColorTbl_Term(WqHash *table);

/* Enters the ids 128 to 175 with their colours, those of the system as they are at present.
 * unused: has no effect. */
WQ_API void WqColorTbl_InitSystem(const void *unused);

/* Does nothing. */
WQ_API void WqColorTbl_InitUser(const void *unused);

/* Enters or replaces the colour of any id. Existing pens and brushes keep their colour. If memory is short the table
 * stays as it was.
 * id: the low 8 bits are the key. */
WQ_API void WqColorTbl_Insert(uint32_t id, COLORREF colour);

/* Removes an id. An unknown id, or one with bit 7 set, changes nothing. */
WQ_API void WqColorTbl_Remove(uint32_t id);

/* Result: the colour of a colour value: of a direct colour the low 24 bits, of an id the entered colour with its top
 * byte; 0, black, for an unknown id. */
WQ_API COLORREF WqColorTbl_Get(uint32_t colourValue);

/* ---- WqColorPal: a palette from a BMP file -----------------------------------------------------------------------
 *
 * A palette holds colours in the form of a BMP file. The platform's palette is made from them, with six greys replaced
 * by shades of the desktop:
 * on the look of the desktop:
 *
 *   WqColorPal_Init(&palette, 0);
 *   WqColorPal_Bmp(&palette, "C:/art/bar.bmp");
 *   WqColorPal_InitReplace(&palette);     - after the last change of the entries
 *   WqColorPal_Create(&palette);
 *   WqColorPal_Select(&palette, dc);
 *   WqColorPal_Term(&palette);
 *
 * The library's own palette, wqMain.palette, is selected into the context of every paint pass. It holds no colours. */

#define WQ_PAL_ENTRIES 236

typedef struct WqColorReplace {
  int32_t index;   /* the entry with the grey, -1 for none */
  COLORREF colour; /* the replacement */
} WqColorReplace;

typedef struct WqColorPal {
  HPALETTE handle;    /* the platform's palette, owned; null if there is none */
  uint32_t baseCount; /* entries from the file */
  uint32_t count;     /* entries in use */
  RGBQUAD entries[WQ_PAL_ENTRIES];
  WqColorReplace replace[6]; /* of the greys 0xE6E6E6, 0xE0E0E0, 0xC0C0C0, 0xADADAD, 0x808080, 0x424242 */
} WqColorPal;

/* Clears the record and runs WqColorPal_Create, which makes the platform's palette without entries.
 * unused: has no effect. */
WQ_API void WqColorPal_Init(WqColorPal *palette, WqWord unused);

/* Deletes the platform's palette, if there is one; the entries stay. */
WQ_API void WqColorPal_Term(WqColorPal *palette);

/* Takes the colours behind the headers of a BMP file, as many as the file says, at most 236. The platform's palette
 * doesn't change before WqColorPal_Create.
 * path: cut at 259 bytes.
 * Bad input: the record stays as it was for a file that can't be read or is shorter than its two headers, for more than
 * 256 colours, and for 16 bits a pixel without a number of colours. Nothing else in the headers is checked: other
 * depths above 8 bits count as 256 colours, whatever these bytes are. Entries beyond the file's end are black. */
WQ_API void WqColorPal_Bmp(WqColorPal *palette, const char *path);

/* Removes the colours that were added. */
WQ_API void WqColorPal_InitCount(WqColorPal *palette);

/* Adds a colour behind the last entry, unless an entry has it already. Added colours don't reach the platform's
 * palette.
 * Result: the index of the entry; -1 if all 236 entries are in use, even if one of them has the colour. */
WQ_API int32_t WqColorPal_Add(WqColorPal *palette, COLORREF colour);

/* Result: an entry's colour with top byte 0; 0 if index is not below count. */
WQ_API COLORREF WqColorPal_FindData(const WqColorPal *palette, uint32_t index);

/* Result: the index of the first entry with a colour, without regard to its top byte; -1 if there is none. */
WQ_API int32_t WqColorPal_FindIx(const WqColorPal *palette, COLORREF colour);

/* Finds the six greys and stores their entries. Without this call all six count as entry 0. */
WQ_API void WqColorPal_InitReplace(WqColorPal *palette);

/* Removes the added colours, and makes a new palette of the platform from the entries. Shades of the system's present
 * colours replace the greys in it. The entries stay as they are. */
WQ_API void WqColorPal_Create(WqColorPal *palette);

/* The second half of WqColorPal_Create: computes the six shades, stores them in place of the greys, and makes the
 * platform's palette, which becomes handle. An older palette is not deleted.
 * log: is changed. A grey whose index is not below palNumEntries is left out. */
WQ_API void WqColorPal_Replace(WqColorPal *palette, LOGPALETTE *log);

/* Selects the platform's palette, if there is one, as a foreground palette. It is not realised. */
WQ_API void WqColorPal_Select(const WqColorPal *palette, HDC dc);

#ifdef __cplusplus
}
#endif

#endif
