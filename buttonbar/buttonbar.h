/* Button bars: buttons from a sheet of pictures, in the client area of a window. */
#ifndef WQ_BUTTONBAR_BUTTONBAR_H
#define WQ_BUTTONBAR_BUTTONBAR_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A window has at most one bar. A bar has fields, and a field has buttons. They are not windows: they are painted over
 * the window's own drawing, and get mouse messages before the window. The owner of the window sets WQ_DS_MBB and a user
 * procedure in its object, since otherwise nothing is painted. It enters the bitmaps with WqBmpTbl_Insert, builds the
 * bar once the window exists, and handles WQM_MBB_NOTIFY:
 *
 *   static const WqMbbFieldDesc fields[] = {{1, 7, 2, 0, 0, 48, 24}}; - bitmap 7, 2 buttons, at the corner
 *   static const WqMbbBtnDesc buttons[] = {{10, 0, 0, 0, {0, 0, 23, 23}, "Open", 0},
 *                                          {11, 0, 0, 1, {24, 0, 47, 23}, "Save", 0}};
 *   WqMbb_Config(window, fields, buttons, 1);
 *
 * The youngest one comes first in lists, in look-ups and under the mouse. Of two equal ids the younger one is found. Of
 * two overlapping buttons the younger one is hit, while the older one is painted over it.
 *
 * Pictures. A field's bitmap holds pictures of the whole field in 16 columns and 6 rows. A button chooses a column with
 * WQ_MBB_COLUMN. The rows are, from the top: disabled; disabled and down; at rest; down; selected; selected and down. A
 * disabled button doesn't show that it is selected. Neighbouring pictures are one cell apart, and a button has the same
 * place in each picture as in the field. Without the bitmap the window stays as it is there.
 *
 * Edges. A button from 0 to 15 is painted 16 pixels wide, but takes the mouse on only 15 of them: the right and bottom
 * edges of its rect are inclusive for painting and exclusive for the mouse.
 *
 * The mouse. For each move over a button, even a disabled one, its window gets WQM_MBB_PRESS, and then the button is
 * selected. The button selected before is unselected first, and its window gets WQ_MBB_EVENT_LEAVE, unless the pointer
 * is still on it. Only one button of all windows is selected. A move beside the buttons does nothing: a timer
 * (WQ_MBB_TIMER_HOVER) notices at the next tick of WqTimer that the pointer has left. The timer measures from the
 * corner of the window with its frame, not from the client area. So a window with a bar should have no frame at the
 * left and the top.
 *
 * A press on a button that isn't disabled sends WQ_MBB_EVENT_PRESS. If its owner then calls WqMbbBtn_Down, it gets
 * WQ_MBB_EVENT_REPEAT at each tick, until it calls WqMbbBtn_Up or WqMbb_RepeatEnd, or any button is pressed. The second
 * press of a double click is an ordinary press, but is dropped for a button with WQ_MBB_NO_DOUBLE. A release sends
 * WQ_MBB_EVENT_RELEASE for the button under it, even a disabled one, wherever the press was.
 *
 * The user procedure of a window with a bar gets neither WM_MOUSEMOVE nor WM_LBUTTONUP. It gets presses after the bar,
 * except those that WQ_MBB_NO_DOUBLE drops. While WqTimer is stopped, no pointer is noticed to have left, and no button
 * is repeated.
 *
 * Life. A bar lives until WqMbbTbl_Remove or WqMain_Term, even without its window. It may be removed or replaced in any
 * call of its owner, even in its own notifications. Its timers end with it, and notifications still due for its buttons
 * are not sent. Buttons can be added at any time, and appear when the window is painted next. Single buttons can't be
 * removed.
 *
 * Short memory. If memory is short for a field or button, it is left out, a field with its buttons, and everything else
 * is made. fieldCount and buttonCount count the existing ones.
 *
 * Everything here belongs to the thread of the windows. A bar, field or button may only be null where the description
 * says so. */

typedef struct WqMbb WqMbb;
typedef struct WqMbbField WqMbbField;
typedef struct WqMbbBtn WqMbbBtn;

/* WqMbbBtn.flags; the other bits are the owner's */
#define WQ_MBB_COLUMN 0x0000000Fu   /* the picture's column, 0 to 15 */
#define WQ_MBB_DOWN 0x00020000u     /* shown as pressed, and repeated */
#define WQ_MBB_DISABLED 0x00040000u /* takes no presses */
#define WQ_MBB_SELECTED 0x00080000u /* the pointer is on it */

/* Pins. A paint pass puts the button at this edge of the client area, whatever its rect says across the edge. The
 * origin of its field moves along, and with it all buttons of the field. Only one pin of a button has an effect: top
 * before bottom before left before right. */
#define WQ_MBB_PIN_LEFT 0x00100000u
#define WQ_MBB_PIN_RIGHT 0x00200000u
#define WQ_MBB_PIN_TOP 0x00400000u
#define WQ_MBB_PIN_BOTTOM 0x00800000u

/* WqMbbBtn.options; other bits have no effect */
#define WQ_MBB_NO_DOUBLE 0x00010000u /* the second press of a double click is dropped */

/* WqTimerElem.id of the timers of bars. At most one of each exists. */
#define WQ_MBB_TIMER_HOVER 0x80000003u
#define WQ_MBB_TIMER_REPEAT 0x80000005u

struct WqMbb {
  WqList *fields; /* of WqMbbField, newest first */
  HWND window;
  uint32_t fieldCount;
};

struct WqMbbField {
  WqList *buttons; /* of WqMbbBtn, newest first */
  uint16_t id;
  uint16_t bitmapId; /* of WqBmpTbl_Insert; an unknown id shows nothing */
  int32_t originX;   /* of the field's coordinates, in the client area; changed by pinned buttons */
  int32_t originY;
  int32_t cellWidth; /* from one picture in the bitmap to the next, in pixels */
  int32_t cellHeight;
  RECT rect; /* holds the field's origin and all buttons, in field coordinates; it only grows */
  uint32_t buttonCount;
  WqMbb *bar;
};

struct WqMbbBtn {
  uint16_t id;
  WqWord userData; /* the owner's */
  uint32_t flags;  /* WQ_MBB_... */
  RECT rect;       /* in field coordinates */
  char text[84];   /* the owner's */
  WqMbbField *field;
  uint32_t options; /* WQ_MBB_NO_DOUBLE */
};

/* One row of a table of fields. */
typedef struct WqMbbFieldDesc {
  uint16_t id;
  uint16_t bitmapId;
  uint32_t buttonCount; /* the number of the field's rows in the table of buttons */
  int32_t originX;
  int32_t originY;
  int32_t cellWidth;
  int32_t cellHeight;
} WqMbbFieldDesc;

/* One row of a table of buttons. */
typedef struct WqMbbBtnDesc {
  uint16_t id;
  uint16_t unused;
  uint32_t userData;
  uint32_t flags; /* WQ_MBB_... */
  RECT rect;
  char text[84]; /* without a NUL cut at 83 bytes, between characters */
  uint32_t options;
} WqMbbBtnDesc;

/* ---- WqMbb: a bar ------------------------------------------------------------------------------------------------ */

/* Builds a window's bar from tables, which are not needed afterwards. WqMbbTbl_Get gives the bar. If memory is short
 * for the bar itself, the registry stays as it was.
 * fields: may be null if fieldCount is 0, which makes an empty bar. buttons: the rows of all fields one after
 * the other, as many as the fields' buttonCount says. */
WQ_API void WqMbb_Config(HWND window, const WqMbbFieldDesc *fields, const WqMbbBtnDesc *buttons, uint32_t fieldCount);

/* Makes an empty bar and enters it in the registry, as WqMbbTbl_Insert does.
 * Result: the bar, the registry's; null if memory is short. */
WQ_API WqMbb *WqMbb_Create(HWND window);

/* Finds a field of a bar.
 * bar: null gives null.
 * Result: the youngest field with that id, or null. */
WQ_API WqMbbField *WqMbb_Get(const WqMbb *bar, uint16_t fieldId);

/* Ends the repetition of a button that is down. */
WQ_API void WqMbb_RepeatEnd(void);

/* ---- WqMbbField: a group of buttons with one origin and one bitmap ----------------------------------------------- */

/* Makes a field and adds it to a bar, even if another field has the id.
 * bar: null gives null. origin: in the client area. cell: see WqMbbField.
 * Result: the field, the bar's; null if memory is short, and the bar stays as it was. */
WQ_API WqMbbField *WqMbbField_Create(WqMbb *bar, uint16_t id, uint16_t bitmapId, const POINT *origin, const SIZE *cell);

/* Finds a button of a field.
 * field: null gives null.
 * Result: the youngest button with that id, or null. */
WQ_API WqMbbBtn *WqMbbField_Get(const WqMbbField *field, uint16_t buttonId);

/* ---- WqMbbBtn: a button ------------------------------------------------------------------------------------------ */

/* Makes a button and adds it to a field, whose rect grows, even if another button has the id.
 * field: null gives null. userData: for the caller only. flags: WQ_MBB_... rect: in field coordinates.
 * text: cut at 83 bytes, between characters. options: WQ_MBB_NO_DOUBLE or 0.
 * Result: the button, the bar's; null if memory is short, and the field stays as it was. */
WQ_API WqMbbBtn *WqMbbBtn_Create(WqMbbField *field, uint16_t id, WqWord userData, uint32_t flags, const RECT *rect,
                                 const char *text, uint32_t options);

/* Result: the button of a window's bar, found with WqMbb_Get and WqMbbField_Get, or null. */
WQ_API WqMbbBtn *WqMbbBtn_Get(HWND window, uint16_t fieldId, uint16_t buttonId);

/* Set and clear WQ_MBB_SELECTED or WQ_MBB_DOWN. If that changes the button, and its bar has a window, its place is
 * marked for repainting. */
WQ_API void WqMbbBtn_Select(WqMbbBtn *button);
WQ_API void WqMbbBtn_UnSelect(WqMbbBtn *button);
WQ_API void WqMbbBtn_Down(WqMbbBtn *button);
WQ_API void WqMbbBtn_Up(WqMbbBtn *button);

/* Lets a button take presses, or not. Its place is marked for repainting even if nothing changes.
 * enable: not 0 lets it. */
WQ_API void WqMbbBtn_Enable(WqMbbBtn *button, int32_t enable);

/* Sets all flags, including those of the state. Its place is marked for repainting in any case. */
WQ_API void WqMbbBtn_Update(WqMbbBtn *button, uint32_t flags);

/* Marks the button's place for repainting. In a bar without a window that is the whole screen. */
WQ_API void WqMbbBtn_UpdatePaint(WqMbbBtn *button);

/* ---- WqMbbTbl: the registry of bars ---------------------------------------------------------------------------------
 *
 * wqMain.mbbTbl holds the bars under their windows, and owns them. */

/* Result: the window's bar, or null. */
WQ_API WqMbb *WqMbbTbl_Get(HWND window);

/* Enters a bar under its own window. An older bar of this window lives on, but can't be found: an owner that has kept
 * its pointer can enter it again, and then remove it. If memory is short the registry stays as it was.
 * window: has no effect. bar: from WqMbb_Create. */
WQ_API void WqMbbTbl_Insert(HWND window, WqMbb *bar);

/* Removes a window's bar and frees it with its fields and buttons. Without a bar nothing happens. */
WQ_API void WqMbbTbl_Remove(HWND window);

#ifdef __cplusplus
}
#endif

#endif
