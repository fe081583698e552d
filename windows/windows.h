/* Windows: window objects with snap layout, messages and their loop, timers, tooltips, the clipboard, debug output. */
#ifndef WQ_WINDOWS_WINDOWS_H
#define WQ_WINDOWS_WINDOWS_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* All of this belongs to one thread, that of WqMain_Init, which makes the windows and gets their messages. User
 * procedures and timer callbacks run on it too, inside the functions that send or dispatch messages. They may call any
 * function, so functions can be entered again before they have returned. They may end any window, even their own. */

/* ---- Messages ----------------------------------------------------------------------------------------------------
 *
 * The library's own messages reach a user procedure like the platform's. The numbers 0x810A to 0x8128 are reserved for
 * them. The main window is wqMain.mainWnd; while that is null, messages to the main window are dropped. */

typedef struct WqWnd WqWnd;

typedef struct WqMsg {
  HWND hwnd;
  uint32_t msg;
  WPARAM wParam;
  LPARAM lParam;
} WqMsg;

/* Gets the messages of a window object's window; WqWnd_DefProc says which ones and when.
 * Result: 0 if it did not handle the message. Otherwise wnd->result is the message's answer; the library never clears
 * it. */
typedef int32_t (*WqUserProc)(WqWnd *wnd, WqMsg *msg);

/* The window shall draw itself: wParam the WqDc for it, valid during the call. Not sent through the platform: the user
 * procedure is called directly, and its answer doesn't count. See WqWnd_DefProc. */
#define WQM_PAINT 0x810Au

/* The window shall lay itself out again. Sent to the window itself after a change of its size, wParam its own handle;
 * to the objects in a window object's dependants that asked for it, wParam that object's handle; and by WqWnd_Create,
 * wParam 0. */
#define WQM_LAYOUT 0x810Bu

/* To the parent, when a window ends: wParam the WqWnd that ends, lParam its id. */
#define WQM_CHILD_DESTROYED 0x810Cu

/* From WqCmd_Send and WqCmd_Post: wParam the WqCmd. */
#define WQM_COMMAND 0x810Du

/* To the window itself: wParam WQ_MOUSE_..., lParam the POINT of the cursor in client coordinates, valid during the
 * call. A press with an answer other than 0 captures the mouse: drags and the release follow. */
#define WQM_MOUSE 0x810Fu
#define WQ_MOUSE_RELEASE 0u
#define WQ_MOUSE_PRESS 1u
#define WQ_MOUSE_DRAG 2u

/* To the window of a button bar: wParam WQ_MBB_EVENT_..., lParam the WqMbbBtn. See buttonbar.h. */
#define WQM_MBB_NOTIFY 0x8110u
#define WQ_MBB_EVENT_RELEASE 1u /* the left button was released over it */
#define WQ_MBB_EVENT_PRESS 2u   /* it was pressed */
#define WQ_MBB_EVENT_REPEAT 3u  /* it is still pressed */
#define WQ_MBB_EVENT_LEAVE 5u   /* the pointer has left it */

/* To the window itself, for a context menu: wParam the POINT on the screen, valid during the call. An answer other than
 * 0 prevents the platform's own handling. */
#define WQM_CONTEXT 0x8111u

/* To the main window, for a key pressed in any window: wParam the virtual key, lParam WQ_KEY_... bits. An answer other
 * than 0 prevents the platform's own handling. */
#define WQM_KEY 0x8112u
#define WQ_KEY_CONTROL 1u
#define WQ_KEY_SHIFT 2u
#define WQ_KEY_ALT 4u

/* To the main window, for every WM_MOUSEMOVE of any window: wParam 0x300. */
#define WQM_MOUSE_MOVED 0x8113u

/* To the window of a button bar, for each move over a button: wParam its id, lParam the POINT in its field's
 * coordinates, valid during the call. */
#define WQM_MBB_PRESS 0x8115u

/* To the window of a print, before its first page: wParam 2, lParam the WqPrinter, whose pageCount the window may
 * change. Not sent through the platform: the user procedure is called directly, and its answer doesn't count. */
#define WQM_PRINT_PAGE 0x8116u

/* To the main window, for every WM_LBUTTONDOWN of any window. */
#define WQM_BUTTON_DOWN 0x8127u

/* To the main window, for every WM_MOUSEWHEEL of any window: wParam the WqWheel, valid during the call. */
#define WQM_WHEEL 0x8128u

typedef struct WqWheel {
  int32_t notches; /* positive toward the user; 0 for less than a whole notch */
  int32_t x;       /* of the cursor, on the screen */
  int32_t y;
  uint32_t keys; /* the platform's MK_... */
} WqWheel;

/* ---- WqWnd: window objects ---------------------------------------------------------------------------------------
 *
 * A window object is a record of the caller that stands for a window of the platform. The caller fills it in, and then
 * makes the window with WqWnd_Create:
 *
 *   WqWnd_Init(&wnd);
 *   WqWnd_Parent(&wnd, &frame);
 *   WqWnd_Style(&wnd, WS_CHILD | WS_VISIBLE);
 *   WqWnd_UserProc(&wnd, procedure);
 *   WqWnd_SnapL(&wnd, NULL);   - its left side follows the parent's
 *   WqWnd_SnapR(&wnd, &list);  - its right side follows the left side of another window
 *   WqWnd_Create(&wnd);
 *
 * A record may be the first member of a larger one. From WqWnd_Init until WqMain_Term it must stay in place and valid,
 * even without a window, because layouts visit all records. After the end of the window hwnd is null, and only
 * WqWnd_Init prepares the record for another window. Functions that need a window do nothing without one, and return 0.
 *
 * rect holds the window's place in the client coordinates of the parent's window, or on the screen without a parent.
 * The functions read right and bottom in different ways, and say so.
 *
 * Snap layout. Each side can be snapped to another window object, the target, or to the client area of the parent's
 * window, with a margin. A side lies against the facing side of its target: left against right, top against bottom, and
 * so on. After the layout of a window object, the objects that have it as a target are laid out, the newest object
 * first. Each is followed by its own dependent objects, and the first object's window moves after all of them. In a
 * circle of targets no layout is right: an object whose layout has not ended is not laid out again, so that the walk
 * ends. Each object in the circle is then right relative to those before it. */

/* WqWnd.flags */
#define WQ_DS_MBB 0x00002000u           /* the window's button bar is painted, and gets its messages first */
#define WQ_DS_BKGRND 0x00004000u        /* the window shows its background picture, below its drawing */
#define WQ_DS_SNAP_L 0x00100000u        /* the left side is snapped */
#define WQ_DS_SNAP_R 0x00200000u        /* the right side is snapped */
#define WQ_DS_SNAP_T 0x00400000u        /* the top is snapped */
#define WQ_DS_SNAP_B 0x00800000u        /* the bottom is snapped */
#define WQ_DS_NO_MOVE_PAINT 0x10000000u /* a window that only moves is not painted again */
#define WQ_DS_KEEP_W 0x20000000u        /* a snapped left or right side takes the opposite side along */
#define WQ_DS_KEEP_H 0x40000000u        /* a snapped top or bottom takes the opposite side along */
#define WQ_DS_LAYOUT 0x60F00000u        /* any of the six layout flags: the four sides, and the two that keep */

/* WqWnd.id; the other bits are the application's */
#define WQ_ID_HIDE 0x80000000u /* WqWnd_Show with 0 hides the window, and doesn't end it */
#define WQ_ID_BASE 0x40000000u /* in every id, without an effect */
#define WQ_ID_QUIT 0x00100000u /* the end of this window ends the message loop */

/* WqWnd.msgReq */
#define WQ_MSGREQ_LAYOUT 0x00000001u /* WQM_LAYOUT; the other bits are the application's */

/* The properties for making a window. */
typedef struct WqWndParam {
  uint32_t style;     /* the platform's WS_... */
  uint32_t exStyle;   /* WS_EX_... */
  char className[81]; /* empty stands for "WQ_WND_CLASS" */
  char title[81];
} WqWndParam;

struct WqWnd {
  uint32_t flags; /* WQ_DS_...; bits without a name have no effect */
  RECT rect;
  uint32_t id;   /* WQ_ID_... and the application's small number */
  HWND hwnd;     /* null without a window */
  WqWnd *parent; /* null for a top-level window */
  WqUserProc userProc;
  int32_t result;     /* the answer to a message that userProc has handled */
  WqList *dependants; /* the objects that asked this one for messages */
  uint32_t msgReq;    /* the messages that this object asks its parent for: WQ_MSGREQ_... */
  RECT maxRect;       /* empty if unset */
  RECT minRect;       /* empty if unset */
  WqWnd *snapLeft;    /* the targets; null stands for the parent's client area */
  WqWnd *snapTop;
  WqWnd *snapRight;
  WqWnd *snapBottom;
  int32_t marginLeft; /* in pixels, added to the place of the snapped side */
  int32_t marginTop;
  int32_t marginRight;
  int32_t marginBottom;
  int32_t bkgrndBmp;       /* the background picture's id in wqMain.bmpTbl, -1 for none */
  SIZE bkgrndSize;         /* the visible part of the picture */
  POINT bkgrndPos;         /* its place in the client area */
  WqWndParam *createParam; /* owned; null after WqWnd_Create */
};

/* Clears the record, enters it in wqMain.wndList and makes its createParam. If memory is short, createParam is null and
 * id is 0: no window can be made. */
WQ_API void WqWnd_Init(WqWnd *wnd);

/* Frees a createParam that WqWnd_Create has not used. wqMain.wndList keeps the record, and a window stays. */
WQ_API void WqWnd_Term(WqWnd *wnd);

/* Sets the window class. It has no effect after the window was made.
 * className: cut at 80 bytes, between characters. */
WQ_API void WqWnd_ClassName(WqWnd *wnd, const char *className);

/* Adds bits to the id. */
WQ_API void WqWnd_ID(WqWnd *wnd, uint32_t id);

/* Adds bits to the flags. */
WQ_API void WqWnd_Ds(WqWnd *wnd, uint32_t bits);

/* Clears bits in the flags. The targets stay, so the object is still laid out after them. */
WQ_API void WqWnd_ClearSnap(WqWnd *wnd, uint32_t bits);

/* Sets the parent.
 * parent: null for a top-level window. */
WQ_API void WqWnd_Parent(WqWnd *wnd, WqWnd *parent);

/* Add bits to the style or to the extended style, of the existing window or of the one to be made. */
WQ_API void WqWnd_Style(WqWnd *wnd, uint32_t bits);
WQ_API void WqWnd_ExStyle(WqWnd *wnd, uint32_t bits);

/* Sets the title of the existing window, or of the one to be made.
 * title: for a window to be made cut at 80 bytes, between characters. */
WQ_API void WqWnd_Title(WqWnd *wnd, const char *title);

/* Sets the user procedure.
 * userProc: null for none. */
WQ_API void WqWnd_UserProc(WqWnd *wnd, WqUserProc userProc);

/* Sets the background picture, which WQ_DS_BKGRND shows.
 * bitmapId: an id of WqBmpTbl_Insert, -1 for none. size: the part of the picture to show. position: in the client
 * area. */
WQ_API void WqWnd_BkgrndBitmap(WqWnd *wnd, int32_t bitmapId, const SIZE *size, const POINT *position);

/* Replaces all properties for making the window. It has no effect after the window was made.
 * param: is copied; its texts are cut at 80 bytes. */
WQ_API void WqWnd_InitHeapParam(WqWnd *wnd, const WqWndParam *param);

/* Does nothing.
 * Result: 1. */
WQ_API int WqWnd_Config(WqWnd *wnd);

/* The one function that moves a window. It stores the rectangle, widens it to hold maxRect and then cuts it to minRect,
 * if these are set. It applies the snaps with WqWnd_Align, if there are any, and moves the window if an edge has
 * changed. Right and bottom are exclusive here: the window's width is right - left. The window is marked for
 * repainting, except with WQ_DS_NO_MOVE_PAINT.
 * wnd: null does nothing. rect: null lays out the present rectangle. */
WQ_API void WqWnd_Rect(WqWnd *wnd, const RECT *rect);

/* Applies the snaps to the rectangle, left and right before top and bottom. Then it lays out the objects that have this
 * one as a target, with their own dependent objects. The window itself doesn't move. */
WQ_API void WqWnd_Align(WqWnd *wnd);

/* Calls WqWnd_Rect. Then the objects in dependants that asked for it are told to lay themselves out. */
WQ_API void WqWnd_Resize(WqWnd *wnd, const RECT *rect);

/* Change the rectangle and pass it to WqWnd_Rect. WqWnd_Pos moves it by an offset. WqWnd_Left and WqWnd_Top move one
 * side. The others move the right or the bottom side: right = left + width in WqWnd_Size, and right = left + width - 1
 * in WqWnd_Width, likewise for the height. */
WQ_API void WqWnd_Pos(WqWnd *wnd, const POINT *offset);
WQ_API void WqWnd_Top(WqWnd *wnd, int32_t top);
WQ_API void WqWnd_Left(WqWnd *wnd, int32_t left);
WQ_API void WqWnd_Size(WqWnd *wnd, const SIZE *size);
WQ_API void WqWnd_Width(WqWnd *wnd, int32_t width);
WQ_API void WqWnd_Height(WqWnd *wnd, int32_t height);

/* Set maxRect and minRect, and lay an existing window out again. Their sizes limit the window while the user drags its
 * frame, as the largest and the smallest size. WqWnd_Rect says how they limit its rectangle.
 * rect: an empty rectangle unsets the limit. */
WQ_API void WqWnd_Max(WqWnd *wnd, const RECT *rect);
WQ_API void WqWnd_Min(WqWnd *wnd, const RECT *rect);

/* Snap one side, without a layout.
 * target: null stands for the parent's client area. */
WQ_API void WqWnd_SnapL(WqWnd *wnd, WqWnd *target);
WQ_API void WqWnd_SnapT(WqWnd *wnd, WqWnd *target);
WQ_API void WqWnd_SnapR(WqWnd *wnd, WqWnd *target);
WQ_API void WqWnd_SnapB(WqWnd *wnd, WqWnd *target);

/* Sets the four margins, without a layout.
 * margin: in pixels; a negative margin keeps a side inside a right or bottom edge. */
WQ_API void WqWnd_SnapMargin(WqWnd *wnd, const RECT *margin);

/* Both do nothing. */
WQ_API void WqWnd_MaxSize(WqWnd *wnd, WqWord a, WqWord b);
WQ_API void WqWnd_MixSize(WqWnd *wnd, WqWord a, WqWord b);

/* Moves the window to the middle of another one, in screen coordinates. Moves rect by the distance between their top
 * left corners.
 * other: null, or an object without a window, stands for the desktop. */
WQ_API void WqWnd_Center(WqWnd *wnd, WqWnd *other);

/* Keeps the window above all windows that are not topmost.
 * Result: not 0 on success. */
WQ_API BOOL WqWnd_OrderTop(WqWnd *wnd);

/* Result: 1 if the point lies in the client area or directly at its right or bottom edge, else 0.
 * point: on the screen. */
WQ_API int WqWnd_HitTest(WqWnd *wnd, const POINT *point);

/* Registers the window class "WQ_WND_CLASS", as WqMain_Init does.
 * Result: 1; 0 if the platform refuses, as for a second call. */
WQ_API int WqWnd_RegClass(HINSTANCE instance);

/* Makes the window, with a width of right - left + 1 and likewise for the height. Afterwards rect is the platform's
 * place for it, with right and bottom exclusive. An object with snaps asks its parent for WQM_LAYOUT and is laid out.
 * Every window becomes a tool of the tooltip. createParam is freed, even on failure.
 * Result: the window; null without createParam, if the platform refuses, and if the window has ended meanwhile. */
WQ_API HWND WqWnd_Create(WqWnd *wnd);

/* Shows the window, which is made if necessary. Or ends it; with WQ_ID_HIDE it is hidden instead.
 * show: not 0 to show.
 * Result: 1; 0 if there is no window to hide or it can't be made. */
WQ_API int WqWnd_Show(WqWnd *wnd, int show);

/* Makes the window translucent, or opaque. Before the window is made, only its style is set.
 * percent: 0, invisible, to 100, opaque. */
WQ_API void WqWnd_Layered(WqWnd *wnd, uint32_t percent);

/* Removes the style that WqWnd_Layered has set. */
WQ_API void WqWnd_LayeredOff(WqWnd *wnd);

/* Lets the window take input, or not.
 * enable: not 0 lets it. */
WQ_API void WqWnd_Enable(WqWnd *wnd, int enable);

/* Gives the window the focus. */
WQ_API void WqWnd_Focus(WqWnd *wnd);

/* Asks the parent for messages: enters the object in the parent's dependants, again at each call, and each entry gets
 * each message. Without a parent nothing happens.
 * mask: WQ_MSGREQ_... bits, added to the present ones. */
WQ_API void WqWnd_SetMsgReq(WqWnd *wnd, uint32_t mask);

/* Clears bits of msgReq. Removes all entries of the object from the parent's dependants, even if other bits stay. */
WQ_API void WqWnd_DelMsgReq(WqWnd *wnd, uint32_t mask);

/* Result: a device context of the client area, to be released with ReleaseDC; null without a window. */
WQ_API HDC WqWnd_GetDC(WqWnd *wnd);

/* Marks a part of the client area for repainting, without erasing.
 * rect: null for the whole client area. */
WQ_API void WqWnd_InvalidateRect(WqWnd *wnd, const RECT *rect);

/* Paints at once if paint is due. */
WQ_API void WqWnd_Update(WqWnd *wnd);

/* Disables or enables an item of the window's system menu.
 * item: the platform's SC_... disable: not 0 disables, 0 enables, the reverse of WqWnd_Enable. */
WQ_API void WqWnd_EnableMenuItem(WqWnd *wnd, uint32_t item, int disable);

/* ---- WqWndLst: lists of window objects ---------------------------------------------------------------------------
 *
 * A list of window objects, such as dependants, is a WqList whose data are WqWnd pointers. The objects stay their
 * owners'. Only these functions may remove its nodes; they may do so even during WqWndLst_SendAll. */

/* Adds an object at the head, even if it is in the list already. If memory is short the list stays as it was. */
WQ_API void WqWndLst_Add(WqList **list, WqWnd *wnd);

/* Removes every entry of an object. */
WQ_API void WqWndLst_Remove(WqList **list, WqWnd *wnd);

/* Removes all entries. */
WQ_API void WqWndLst_RemoveAll(WqList **list);

/* Sends a message to the objects of a list, from the head, whose msgReq shares a bit with the mask. Entries added
 * meanwhile don't get it. Neither do entries removed before their turn. */
WQ_API void WqWndLst_SendAll(WqList **list, uint32_t mask, uint32_t msg, WPARAM wParam, LPARAM lParam);

/* ---- WqWnd_DefProc: the window procedure, and the queue ---------------------------------------------------------- */

/* The procedure of all windows of the class "WQ_WND_CLASS". WM_CREATE binds the window to its creation parameter, the
 * object. WM_DESTROY unbinds it. Messages before and after go to the platform's default.
 *
 * Between them the user procedure gets every message except WM_PAINT, WM_GETMINMAXINFO and WM_MOUSEWHEEL. Messages that
 * it doesn't handle go to the platform's default, with these exceptions:
 * - WM_SIZE and WM_SIZING with wParam 0 or 2 post WQM_LAYOUT to the window itself. All of them are answered 1. So a
 *   user procedure that handles WM_SIZE prevents the layout.
 * - WM_ERASEBKGND is answered 1; nothing is erased.
 * - WM_NOTIFY with TTN_NEEDTEXTA gives the window's title to the tooltip, and is answered 1.
 * - WM_CONTEXTMENU and WM_KEYDOWN send WQM_CONTEXT and WQM_KEY, and are answered 1 if these are not answered 0.
 * - WQM_LAYOUT from elsewhere lays the window out with WqWnd_Rect. The message then goes on to the objects in
 *   dependants. WQM_LAYOUT from the window itself only goes on to them. The answer is 0.
 * - WQM_MOUSE is answered 0.
 * Before the user procedure gets WM_MOUSEMOVE, WM_LBUTTONDOWN and WM_LBUTTONUP, the library's messages for them are
 * sent, and with WQ_DS_MBB the button bar gets them. The bar only lets presses pass. A visible tip is hidden before the
 * user procedure gets a press of the left or right button, WM_KEYDOWN or WM_KEYUP. If any of this ends the window, the
 * user procedure doesn't get the message.
 *
 * WM_PAINT makes a bitmap as large as the client area, with undefined content. The background picture is copied into it
 * if WQ_DS_BKGRND is set. The user procedure gets WQM_PAINT with a WqDc that draws on the bitmap, at a zoom of 1.0,
 * with background mode TRANSPARENT. With WQ_DS_MBB the button bar is painted over that. Then the part that needs paint
 * is copied to the window, but only if WQ_DS_BKGRND is set or something was drawn through WqDcDraw. So a user procedure
 * draws all of its area or nothing. If memory is short for the bitmap, the user procedure is called all the same, and
 * the window stays as it is.
 *
 * At its end a window tells its parent, leaves all lists except wqMain.wndList, and ends the message loop if it has
 * WQ_ID_QUIT. WM_DESTROY is the last message for its user procedure; hwnd is still set then, but the window is already
 * unbound. */
WQ_API LRESULT CALLBACK WqWnd_DefProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

/* Dispatches all messages of the thread, until there are no more. A WM_QUIT is removed too, and ends no loop then. */
WQ_API void WqWnd_WaitQueEmpty(void);

/* WqWnd_WaitQueEmpty that drops messages of one number. Dropping WM_PAINT leaves nothing to be painted. */
WQ_API void WqWnd_RemoveQueMsg(uint32_t msg);

/* WqWnd_WaitQueEmpty that drops WM_TIMER of one timer.
 * timerId: the platform's. */
WQ_API void WqWnd_RemoveQueTimerMsg(UINT_PTR timerId);

/* ---- WqMsg: a message as a record -------------------------------------------------------------------------------- */

/* Clears the record. */
WQ_API void WqMsg_Init(WqMsg *msg);

/* Does nothing. */
WQ_API void WqMsg_Term(WqMsg *msg);

/* Sets the four fields. */
WQ_API void WqMsg_Set(WqMsg *msg, HWND hwnd, uint32_t number, WPARAM wParam, LPARAM lParam);

/* Sends the message.
 * Result: the answer. */
WQ_API LRESULT WqMsg_Send(const WqMsg *msg);

/* Posts the message.
 * Result: not 0 on success. */
WQ_API BOOL WqMsg_Post(const WqMsg *msg);

/* ---- WqCmd: a command to a window -------------------------------------------------------------------------------- */

typedef struct WqCmd {
  HWND target;     /* null: the command has no effect */
  WqWord words[3]; /* the application's */
} WqCmd;

/* Clears the record and sets its target. */
WQ_API void WqCmd_Init(WqCmd *cmd, HWND target);

/* Clears the record. */
WQ_API void WqCmd_Term(WqCmd *cmd);

/* Send or post WQM_COMMAND, with the record itself, to the target. A posted record must stay valid until it
 * has arrived. */
WQ_API void WqCmd_Send(WqCmd *cmd);
WQ_API void WqCmd_Post(WqCmd *cmd);

/* ---- WqMsgLp: the message loop ----------------------------------------------------------------------------------- */

typedef struct WqMsgLp {
  WqWord unused;
} WqMsgLp;

/* Clears the record. */
WQ_API void WqMsgLp_Init(WqMsgLp *loop);

/* All do nothing: PostQuitMessage ends the loop, and accelerators are not supported. */
WQ_API void WqMsgLp_Term(WqMsgLp *loop);
WQ_API void WqMsgLp_Stop(WqMsgLp *loop);
WQ_API void WqMsgLp_LoadAccel(WqMsgLp *loop, WqWord accelerators);

/* Gets, translates and dispatches all messages of the thread until WM_QUIT comes, or getting messages fails. */
WQ_API void WqMsgLp_Start(WqMsgLp *loop);

/* ---- WqTimer: timers ---------------------------------------------------------------------------------------------
 *
 * Any number of timers run on one tick of 100 ms. The tick comes with the thread's messages, so timers stop while the
 * thread dispatches none. A period counts from the first tick after the timer was inserted, and ends at a tick. The
 * time beyond the period is dropped: a period of 150 ms lasts 200. */

/* Events of a timer's callback. */
#define WQ_TIMER_DUE 0u      /* the period is over; an answer other than 0 ends the timer */
#define WQ_TIMER_INSERTED 1u /* the timer has started */
#define WQ_TIMER_REMOVED 2u  /* the timer ends; it is in no list any more */

/* id, userData: the timer's.
 * Result: only counts for WQ_TIMER_DUE. A callback may insert timers and remove any, even its own. It may stop the
 * service, or dispatch messages, which may include further ticks. */
typedef int32_t (*WqTimerProc)(uint32_t event, uint32_t id, WqWord userData);

typedef struct WqTimerElem {
  uint32_t id; /* the caller's; several timers may share one */
  WqTimerProc proc;
  WqWord userData;
  uint32_t lastTick; /* the platform's tick at the last update, in milliseconds; 0 before the first */
  uint32_t elapsed;  /* milliseconds that have passed of the period */
  uint32_t period;   /* in milliseconds, at least 1 */
} WqTimerElem;

/* wqMain.timer */
typedef struct WqTimerState {
  WqList *list;     /* the live timers, newest first */
  uint32_t running; /* not 0 between start and stop */
  UINT_PTR timerId; /* the platform's timer, 0 when stopped */
} WqTimerState;

/* Starts the tick. If it runs already, nothing happens. Timers that an earlier stop left go on. */
WQ_API void WqTimer_Start(void);

/* Stops the tick. Messages of the thread are dispatched meanwhile, except pending ticks. Timers stay and are not told.
 * During a tick, the timers still due are not told either. If stopped already, nothing happens. It must come before
 * WqMain_Term, which frees the timers. */
WQ_API void WqTimer_Stop(void);

/* Starts a timer and tells it so. Without the service, or if memory is short, nothing happens.
 * elem: is copied. */
WQ_API void WqTimer_Insert(const WqTimerElem *elem);

/* Ends all timers with an id, and tells each. Without the service nothing happens. */
WQ_API void WqTimer_Remove(uint32_t id);

/* Clears all fields. */
WQ_API void WqTimerElem_Init(WqTimerElem *elem);

/* Does nothing. */
WQ_API void WqTimerElem_Term(WqTimerElem *elem);

/* Sets four fields; lastTick and elapsed stay as WqTimerElem_Init left them.
 * period: in milliseconds. */
WQ_API void WqTimerElem_Param(WqTimerElem *elem, uint32_t id, WqTimerProc proc, WqWord userData, uint32_t period);

/* Adds the time since the last update, across the tick's wrap. The first update only starts the count.
 * tick: the platform's, in milliseconds.
 * Result: 1 if the period is over, and the next one begins; else 0. */
WQ_API int WqTimerElem_Update(WqTimerElem *elem, uint32_t tick);

/* ---- WqTooltip: tips ---------------------------------------------------------------------------------------------
 *
 * The application has one tooltip, from WqMain_Config until WqMain_Term. At any other time these functions do nothing.
 * A window object is one of its tools from WqWnd_Create until its window ends: when the pointer rests over the window,
 * its title appears as a tip. Before that the window gets WM_NOTIFY with the code TTN_NEEDTEXTA. A user procedure with
 * another text for the tip sets it and returns not 0:
 *
 *   case WM_NOTIFY:
 *     if (((NMHDR *)msg->lParam)->code != TTN_NEEDTEXTA) return 0;
 *     WqTooltip_SetText((NMTTDISPINFOA *)msg->lParam, "Peak of the left channel");
 *     return 1;
 *
 * A window with an empty text or without a title gets no tip. A tip disappears after 30 seconds, when a mouse button or
 * a key is pressed in a window object, and when the pointer has moved too far: by the width or height within which two
 * clicks make a double click. */

/* wqMain.tooltip */
typedef struct WqTooltip {
  HWND hwnd;      /* the platform's control, or null */
  POINT anchor;   /* the pointer's place on the screen when the tip was painted */
  uint32_t shown; /* not 0 while the tip is visible */
  char text[256]; /* of the last tip */
} WqTooltip;

/* Clears the record. */
WQ_API void WqTooltip_Init(WqTooltip *tooltip);

/* Makes the control, owned by the main window. If the platform refuses, there are no tips. */
WQ_API void WqTooltip_Create(WqTooltip *tooltip);

/* Ends wqMain.tooltip's control.
 * unused: any value. */
WQ_API void WqTooltip_Term(WqWord unused);

/* Sets the instance whose string resources WqTooltip_AddRect and WqTooltip_LoadString use. Existing tools keep
 * theirs. */
WQ_API void WqTooltip_StrResInst(HINSTANCE instance);

/* Makes a window a tool. Its text is asked for whenever its tip is about to appear.
 * hwnd: the window that is asked. id: the handle of the window that is the tool. */
WQ_API void WqTooltip_Add(HWND hwnd, WqWord id);

/* Makes an object's window a tool, as WqWnd_Create does. */
WQ_API void WqTooltip_AddWnd(WqWnd *wnd);

/* Makes a part of a window a tool. Its text is a string resource.
 * rect: in the window's client area; right and bottom are exclusive. id: names the tool in that window, and is the
 * number of the string, 1 to 65535. */
WQ_API void WqTooltip_AddRect(HWND hwnd, const RECT *rect, uint32_t id);

/* Removes a tool: that of WqTooltip_Add or WqTooltip_AddRect with the same window and id. */
WQ_API void WqTooltip_Remove(HWND hwnd, WqWord id);

/* Removes the tool of WqTooltip_AddWnd, as the end of the window does. */
WQ_API void WqTooltip_RemoveWnd(WqWnd *wnd);

/* These give a tip its text, while the window is asked for it. The text stays in wqMain.tooltip until the next one;
 * info->lpszText is set to it.
 * info: lParam of the WM_NOTIFY. */

/* Sets a string resource as text, cut at 255 bytes.
 * instance: of the string; null for that of WqTooltip_StrResInst. id: its number.
 * Result: 1; 0 if there is no such string, or it is empty. */
WQ_API int WqTooltip_LoadString(NMTTDISPINFOA *info, HINSTANCE instance, uint32_t id);

/* Sets a text, cut at 255 bytes. */
WQ_API void WqTooltip_SetText(NMTTDISPINFOA *info, const char *text);

/* Formatted print, cut at 255 bytes between characters. */
WQ_API void WqTooltip_Printf(NMTTDISPINFOA *info, const char *format, ...) WQ_PRINTF(2, 3);

/* Sets a window's title as text, cut at 255 bytes; '&' at its beginning is left out. */
WQ_API void WqTooltip_WindowText(NMTTDISPINFOA *info, HWND hwnd);

/* The window procedure in front of the control's own. It keeps shown and anchor, and hides the tip when the pointer has
 * moved too far. */
WQ_API LRESULT CALLBACK WqTooltip_Proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

/* ---- WqClipBoard: the clipboard -----------------------------------------------------------------------------------
 *
 * For an application's Copy and Paste commands. The main window opens the clipboard and owns the application's data
 * there. Data are only promised: when another program needs them, the main window gets WM_RENDERFORMAT, or
 * WM_RENDERALLFORMATS at its end, and sets them with SetClipboardData. It calls WqClipBoard_CallBack, which calls the
 * procedure that makes the data. Errors of the platform are ignored: while another window has the clipboard open,
 * nothing is found and nothing promised. */

/* Makes promised data. The first three words are those of WqClipBoard_CallBack; format, userData: of the promise. */
typedef WqWord (*WqClipBoardProc)(WqWord arg1, WqWord arg2, WqWord arg3, uint32_t format, WqWord userData);

/* wqMain.clipBoard. A mask has a bit for each format below 16 (1 << CF_TEXT is 2), and bits that private formats share:
 * (format - 0x1F0) modulo 32 for 0x200 to 0x2FF. Private formats only count while the main window is the clipboard's
 * owner, since other applications give them other meanings. All other formats have no bit. */
typedef struct WqClipBoard {
  uint32_t available; /* the result of the last WqClipBoard_GetFormat, before the paste mask */
  uint32_t pasteMask; /* the formats that the application can paste */
  uint32_t copyMask;  /* the application's own words */
  uint32_t cutMask;
  uint32_t format; /* of the last promise */
  WqWord userData;
  WqClipBoardProc callback; /* or null */
} WqClipBoard;

/* Clears all fields. */
WQ_API void WqClipBoard_Init(WqClipBoard *clipBoard);

/* Does nothing. */
WQ_API void WqClipBoard_Term(WqClipBoard *clipBoard);

/* Sets the formats that the application can paste. */
WQ_API void WqClipBoard_Paste(uint32_t mask);

/* Sets text as the only format that the application can paste. */
WQ_API void WqClipBoard_OnlyText(void);

/* These store a word for the application. */
WQ_API void WqClipBoard_Copy(uint32_t word);
WQ_API void WqClipBoard_Cut(uint32_t word);

/* Looks at the present content of the clipboard.
 * Result: the bits of the formats that the application can paste. */
WQ_API uint32_t WqClipBoard_GetFormat(void);

/* Copies the text on the clipboard, in code page 932, as far as it fits; it may be cut within a character. Without a
 * text, and with size 0, the buffer stays as it is.
 * size: of the buffer in bytes, including the NUL.
 * Result: 0. */
WQ_API int WqClipBoard_GetText(char *buffer, uint32_t size);

/* Empties the clipboard. */
WQ_API void WqClipBoard_Delete(void);

/* Promises data of one format only.
 * userData, callback: for WqClipBoard_CallBack, until the next promise. callback may be null. */
WQ_API void WqClipBoard_SetOne(uint32_t format, WqWord userData, WqClipBoardProc callback);

/* Promises a format, and plain text behind it. For a format with bit 0x80 an enhanced metafile is promised before
 * both. */
WQ_API void WqClipBoard_Set(uint32_t format, WqWord userData, WqClipBoardProc callback);

/* Calls the procedure of the last promise. Only the caller and the procedure know the meaning of the words.
 * Result: its answer; 0 without a procedure. */
WQ_API WqWord WqClipBoard_CallBack(WqWord arg1, WqWord arg2, WqWord arg3);

/* ---- WqDbgWnd: the debug window ----------------------------------------------------------------------------------
 *
 * One small window with a list of lines. Its place is kept in the settings:
 *
 *   WqDbgWnd_Init();
 *   WqDbgWnd_Config(&cfg);    - reading: makes the window, unless the settings say otherwise
 *   WqDbgWnd_Show(1);
 *   WqDbgWnd_Format("%d blocks", count);
 *   WqDbgWnd_Config(&cfg);    - writing
 *   WqDbgWnd_Term();
 *
 * Lines may come from any thread; the call waits until the window's thread takes messages. Lines printed before the
 * window exists are lost. Closing the window only hides it, and its lines stay. WQM_KEY to it goes on to the main
 * window. */

typedef struct WqCfg WqCfg;

/* Prepares the window, which isn't made yet, and makes its font. WqMain_Init must come before. */
WQ_API void WqDbgWnd_Init(void);

/* Loads or saves the key "DbgWnd" of section "StartUp", by the mode of cfg: the edges of the window on the screen, and
 * 1, the default, if the window is made at the start, else 0. Then makes the window, hidden, if that is set and it
 * doesn't exist. An empty rectangle is ignored.
 * cfg: has that section set afterwards. */
WQ_API void WqDbgWnd_Config(WqCfg *cfg);

/* Hides the window, and deletes its font. The window itself ends with the process, or by DestroyWindow. */
WQ_API void WqDbgWnd_Term(void);

/* Shows the window, which is made if necessary, or hides it.
 * show: not 0 to show. */
WQ_API void WqDbgWnd_Show(int show);

/* Result: not 0 if the window is visible. */
WQ_API BOOL WqDbgWnd_IsShow(void);

/* Gives the window, existing or not, the style that keeps it above others. */
WQ_API void WqDbgWnd_TopMost(void);

/* Removes all lines. */
WQ_API void WqDbgWnd_Clear(void);

/* Adds a line below the others. */
WQ_API void WqDbgWnd_Print(const char *text);

/* Formatted print of a line, cut at 255 bytes between characters.
 * Result: the number of bytes in the line. */
WQ_API int32_t WqDbgWnd_Format(const char *format, ...) WQ_PRINTF(1, 2);

/* Add lines of eight items of 8, 16 or 32 bits each, in hexadecimal, in the machine's byte order. A line begins with
 * the number of its first item.
 * data: needs no alignment. count: of items; 0 adds nothing. */
WQ_API void WqDbgWnd_DumpHex2(const void *data, uint32_t count);
WQ_API void WqDbgWnd_DumpHex4(const void *data, uint32_t count);
WQ_API void WqDbgWnd_DumpHex8(const void *data, uint32_t count);

/* Replaces InvalidateRect in programs that want to see their repaints: the area flashes, black or white at random, and
 * nothing is repainted. Suspect requests also add a line: for the whole screen, from a thread that doesn't own the
 * window, with erasing.
 * hwnd: null stands for the screen. rect: in client coordinates, right and bottom exclusive; null stands for the client
 * area. erase: as for InvalidateRect. */
WQ_API void WqInvalidateRectDbg(HWND hwnd, const RECT *rect, int erase);

/* ---- WqMsgBox: message boxes --------------------------------------------------------------------------------------
 *
 * The main window owns the boxes and is disabled while one is open; messages and timers go on. A null caption stands
 * for the main window's title, cut at 255 bytes, or if that is empty for "アプリケーションメッセージ".
 * Results: the id of the button, from MessageBoxA. */

/* Shows a text. style: MB_... bits. */
WQ_API int WqMsgBox_Show(const char *text, const char *caption, uint32_t style);

/* Shows a string resource of wqMain.instance, cut at 255 bytes. id: an existing one. */
WQ_API int WqMsgBox_ShowFromID(uint32_t id, const char *caption, uint32_t style);

/* Show a string resource with an OK button and the icon of an information or an error. All windows of the thread are
 * disabled. */
WQ_API int WqMsgBox_Information(uint32_t id, const char *caption);
WQ_API int WqMsgBox_FatalError(uint32_t id, const char *caption);

/* ---- WqFileDialog: choosing a file to open or to save -------------------------------------------------------------
 *
 * The record is the caller's. WqFileDialog_Init comes first, then WqFileDialog_SetOC or WqFileDialog_SetOCEx, then the
 * texts, in any order. The dialog can be shown several times. Texts are cut at 259 bytes. */

#define WQ_FILEDIALOG_OPEN 0x01u  /* to open a file; without it, to save one */
#define WQ_FILEDIALOG_KEPT 0x02u  /* kept for the caller, without an effect */
#define WQ_FILEDIALOG_SHOWN 0x10u /* the dialog is open now */

typedef struct WqFileDialog {
  OPENFILENAMEA ofn; /* points to the texts below */
  uint32_t mode;     /* WQ_FILEDIALOG_... */
  char title[260];
  char fileName[260]; /* the name at first, then the chosen path */
  char defExt[260];   /* added to names without an extension */
  char dir[260];      /* the folder at first */
  char filter[260];   /* pairs of a text and a pattern, each with its NUL */
  char *filterEnd;    /* the place for the next pair */
} WqFileDialog;

/* Clears the record, links its texts with ofn, and sets the current folder. The record must stay in place from now
 * on. */
WQ_API void WqFileDialog_Init(WqFileDialog *dialog);

/* Does nothing. */
WQ_API void WqFileDialog_Term(WqFileDialog *dialog);

/* Sets the purpose of the dialog and the rest of ofn; the texts and filters stay. dialog may be null.
 * mode: WQ_FILEDIALOG_OPEN, WQ_FILEDIALOG_KEPT. flags: further OFN_... bits. A dialog to open only takes existing
 * files. A dialog to save asks before it takes an existing file. */
WQ_API void WqFileDialog_SetOC(WqFileDialog *dialog, uint32_t mode);
WQ_API void WqFileDialog_SetOCEx(WqFileDialog *dialog, uint32_t mode, uint32_t flags);

/* These copy a text into the record. With a null argument they do nothing. */
WQ_API void WqFileDialog_Title(WqFileDialog *dialog, const char *text);
WQ_API void WqFileDialog_FileName(WqFileDialog *dialog, const char *text);
WQ_API void WqFileDialog_Dir(WqFileDialog *dialog, const char *text);

/* Adds a filter, shown as "name(*.extension)". With a null argument it does nothing. A filter that doesn't fit the
 * record is left out.
 * extension: without a point. isDefault: not 0 makes it the default extension too. */
WQ_API void WqFileDialog_AddExt(WqFileDialog *dialog, const char *name, const char *extension, int32_t isDefault);

/* Shows the dialog over the main window, which gets the focus afterwards. The current folder stays as it was.
 * Result: not 0 if the user chose a file: fileName is its path then, and dir its folder. 0, with fileName and dir as
 * before, if not, and if this record's dialog is open already. */
WQ_API int WqFileDialog_Show(WqFileDialog *dialog);

/* Result: 1 if the file is to be opened only for reading, else 0. */
WQ_API int WqFileDialog_IsReadOnly(const WqFileDialog *dialog);

#ifdef __cplusplus
}
#endif

#endif
