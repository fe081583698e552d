/* Button bars: buttons from a sheet of pictures, in the client area of a window. */
#ifndef WQ_BUTTONBAR_BUTTONBAR_H
#define WQ_BUTTONBAR_BUTTONBAR_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A window carries at most one bar. A bar has fields, a field has buttons, and neither are windows: they are painted
 * over what the window draws, and the mouse is theirs before it is the window's. Whoever owns the window gives its
 * object WQ_DS_MBB and a user procedure, without which nothing is painted; enters the bitmaps with WqBmpTbl_Insert;
 * builds the bar once there is a window; and listens to WQM_MBB_NOTIFY:
 *
 *   static const WqMbbFieldDesc fields[] = {{1, 7, 2, 0, 0, 48, 24}}; - bitmap 7, 2 buttons, at the corner
 *   static const WqMbbBtnDesc buttons[] = {{10, 0, 0, 0, {0, 0, 23, 23}, "Open", 0},
 *                                          {11, 0, 0, 1, {24, 0, 47, 23}, "Save", 0}};
 *   WqMbb_Config(window, fields, buttons, 1);
 *
 * The youngest goes first, in lists, in look-ups and under the mouse: of two equal ids the younger one is found, and of
 * two buttons that overlap the younger one is hit, while the older one is painted over it.
 *
 * Pictures. A field's bitmap holds the whole field many times: in 16 columns, of which a button chooses one with
 * WQ_MBB_COLUMN, and in 6 rows, from the top: disabled; disabled and down; at rest; down; selected; selected and down.
 * What is disabled doesn't show that it is selected. From one picture to the next it is one cell, and in each of them a
 * button has the place that it has in the field. Without the bitmap the window stays as it is there.
 *
 * Edges. A button from 0 to 15 is painted 16 pixels wide, and takes the mouse on 15 of them: the right and the bottom
 * edge of its rect are inside for the one, outside for the other.
 *
 * The mouse. For each move over a button, disabled or not, its window gets WQM_MBB_PRESS; then the button is selected.
 * The one that was so before is unselected first and its window told WQ_MBB_EVENT_LEAVE, unless the pointer is still on
 * it; in all windows together there is one. A move beside the buttons does nothing: that the pointer has left is found
 * out by a timer (WQ_MBB_TIMER_HOVER), at the next tick of WqTimer. It measures from the corner of the window with its
 * frame, not from that of the client area, so a window with a bar had better have no frame at the left and at the top.
 *
 * A press on a button that isn't disabled sends WQ_MBB_EVENT_PRESS. An owner that answers it with WqMbbBtn_Down gets
 * WQ_MBB_EVENT_REPEAT with each tick until it calls WqMbbBtn_Up or WqMbb_RepeatEnd, or any button is pressed. The
 * second press of a double click is a press like others, but none for a button with WQ_MBB_NO_DOUBLE. A release sends
 * WQ_MBB_EVENT_RELEASE for the button under it, wherever the press was, to disabled ones too.
 *
 * Of a window with a bar the user procedure sees neither WM_MOUSEMOVE nor WM_LBUTTONUP. It does see presses, after the
 * bar, but not a second one that WQ_MBB_NO_DOUBLE drops. While WqTimer is stopped nobody notices that the pointer has
 * left, and nothing is repeated.
 *
 * Life. A bar lives until WqMbbTbl_Remove or WqMain_Term, whether its window does or not. It may be removed or replaced
 * whenever its owner is called, by its own notifications too: timers that hold its buttons end with it, and what was
 * still to be sent for them isn't sent. Buttons can be added at any time, and show when the window is painted next;
 * none goes alone.
 *
 * Short memory. What there is no memory for is left out, a field with its buttons, and all else is made: what a bar has
 * is whole. fieldCount and buttonCount tell how much that is.
 *
 * Everything here belongs to the thread of the windows. Null in place of a bar, field or button is taken only where
 * that is said. */

typedef struct WqMbb WqMbb;
typedef struct WqMbbField WqMbbField;
typedef struct WqMbbBtn WqMbbBtn;

/* WqMbbBtn.flags; the other bits are the owner's */
#define WQ_MBB_COLUMN 0x0000000Fu   /* the picture's column, 0 to 15 */
#define WQ_MBB_DOWN 0x00020000u     /* shown as pressed, and repeated */
#define WQ_MBB_DISABLED 0x00040000u /* takes no presses */
#define WQ_MBB_SELECTED 0x00080000u /* the pointer is on it */

/* Pins: a paint pass puts the button at this edge of the client area, whatever its rect says across the edge, and with
 * it the origin of its field, which all buttons of the field follow. Of several only one has an effect: top before
 * bottom before left before right. */
#define WQ_MBB_PIN_LEFT 0x00100000u
#define WQ_MBB_PIN_RIGHT 0x00200000u
#define WQ_MBB_PIN_TOP 0x00400000u
#define WQ_MBB_PIN_BOTTOM 0x00800000u

/* WqMbbBtn.options; other bits have no effect */
#define WQ_MBB_NO_DOUBLE 0x00010000u /* the second press of a double click is dropped */

/* WqTimerElem.id of the timers that bars use, one of each at most */
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
  uint16_t bitmapId; /* of WqBmpTbl_Insert; an unknown one shows nothing */
  int32_t originX;   /* of the field's coordinates, in the client area; pinned buttons change it */
  int32_t originY;
  int32_t cellWidth; /* from one picture in the bitmap to the next, in pixels */
  int32_t cellHeight;
  RECT rect; /* holds the field's origin and all buttons, in field coordinates; it never gets smaller */
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
  uint32_t buttonCount; /* how many rows of the table of buttons are this field's */
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
  char text[84]; /* cut at 83 bytes, between characters, where the end mark is missing */
  uint32_t options;
} WqMbbBtnDesc;

/* ---- WqMbb: a bar ------------------------------------------------------------------------------------------------ */

/* Builds a window's bar from tables, which are not needed afterwards. WqMbbTbl_Get gives the bar then. If there is no
 * memory even for the bar itself, the registry stays as it was.
 * fields: may be null when fieldCount is 0, which makes an empty bar. buttons: the buttons of the first field, behind
 * them those of the second, and so on: as many as the fields say, which is the caller's to get right. */
WQ_API void WqMbb_Config(HWND window, const WqMbbFieldDesc *fields, const WqMbbBtnDesc *buttons, uint32_t fieldCount);

/* Makes an empty bar and enters it in the registry, as WqMbbTbl_Insert does.
 * Result: the bar, the registry's; null if memory is short. */
WQ_API WqMbb *WqMbb_Create(HWND window);

/* Finds a field of a bar.
 * bar: null gives null.
 * Result: the youngest one with that id, null without one. */
WQ_API WqMbbField *WqMbb_Get(const WqMbb *bar, uint16_t fieldId);

/* Ends the repetition of a button that is down. */
WQ_API void WqMbb_RepeatEnd(void);

/* ---- WqMbbField: a group of buttons with one origin and one bitmap ----------------------------------------------- */

/* Makes a field and adds it to a bar. Whether the id is in use isn't looked at.
 * bar: null gives null. origin: in the client area. cell: see WqMbbField.
 * Result: the field, the bar's; null if memory is short, and the bar stays as it was. */
WQ_API WqMbbField *WqMbbField_Create(WqMbb *bar, uint16_t id, uint16_t bitmapId, const POINT *origin, const SIZE *cell);

/* Finds a button of a field.
 * field: null gives null.
 * Result: the youngest one with that id, null without one. */
WQ_API WqMbbBtn *WqMbbField_Get(const WqMbbField *field, uint16_t buttonId);

/* ---- WqMbbBtn: a button ------------------------------------------------------------------------------------------ */

/* Makes a button and adds it to a field, whose rect grows. Whether the id is in use isn't looked at.
 * field: null gives null. userData: the caller's, never looked at. flags: WQ_MBB_... rect: in field coordinates.
 * text: cut at 83 bytes, between characters. options: WQ_MBB_NO_DOUBLE or 0.
 * Result: the button, the bar's; null if memory is short, and the field stays as it was. */
WQ_API WqMbbBtn *WqMbbBtn_Create(WqMbbField *field, uint16_t id, WqWord userData, uint32_t flags, const RECT *rect,
                                 const char *text, uint32_t options);

/* Result: the button of a window's bar, found with WqMbb_Get and WqMbbField_Get; null when there is none. */
WQ_API WqMbbBtn *WqMbbBtn_Get(HWND window, uint16_t fieldId, uint16_t buttonId);

/* Set and clear WQ_MBB_SELECTED or WQ_MBB_DOWN. If that changes the button, and its bar has a window, its place there
 * is to be painted anew. */
WQ_API void WqMbbBtn_Select(WqMbbBtn *button);
WQ_API void WqMbbBtn_UnSelect(WqMbbBtn *button);
WQ_API void WqMbbBtn_Down(WqMbbBtn *button);
WQ_API void WqMbbBtn_Up(WqMbbBtn *button);

/* Lets a button take presses, or not. Its place is to be painted anew whether that changes anything or not.
 * enable: not 0 to let it. */
WQ_API void WqMbbBtn_Enable(WqMbbBtn *button, int32_t enable);

/* Sets all flags, those of the state too. Its place is to be painted anew in any case. */
WQ_API void WqMbbBtn_Update(WqMbbBtn *button, uint32_t flags);

/* Asks for the button's place to be painted anew. In a bar without a window that is everything on the screen. */
WQ_API void WqMbbBtn_UpdatePaint(WqMbbBtn *button);

/* ---- WqMbbTbl: the registry of bars ---------------------------------------------------------------------------------
 *
 * wqMain.mbbTbl holds the bars under their windows, and owns them. */

/* Result: the window's bar; null without one. */
WQ_API WqMbb *WqMbbTbl_Get(HWND window);

/* Enters a bar under its own window. A bar that this window had before lives on without being found: only its owner,
 * who has kept the pointer, can enter it again, and remove it then. If memory is short the registry stays as it was.
 * window: has no effect. bar: from WqMbb_Create. */
WQ_API void WqMbbTbl_Insert(HWND window, WqMbb *bar);

/* Removes a window's bar and frees it with its fields and buttons. Without one nothing happens. */
WQ_API void WqMbbTbl_Remove(HWND window);

#ifdef __cplusplus
}
#endif

#endif
