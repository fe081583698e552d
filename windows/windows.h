/* Windows: window objects with snap layout, messages and their loop, timers, tooltips, the clipboard, debug output. */
#ifndef WQ_WINDOWS_WINDOWS_H
#define WQ_WINDOWS_WINDOWS_H

#include "containers/containers.h"
#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* All of this belongs to one thread. It is the thread of WqMain_Init, which makes the windows and gets their messages.
 * What it calls of the program, user procedures and timer callbacks, runs on it too, from inside the calls that send or
 * dispatch messages, and may call any function, so that they can be entered again before they have returned. They may
 * end any window, their own too. */

/* ---- Messages ----------------------------------------------------------------------------------------------------
 *
 * The library's own messages reach a user procedure like the platform's. The numbers 0x810A to 0x8128 are kept for
 * them. The main window is wqMain.mainWnd; as long as it is null, what is meant for it goes nowhere. */

typedef struct WqWnd WqWnd;

typedef struct WqMsg {
  HWND hwnd;
  uint32_t msg;
  WPARAM wParam;
  LPARAM lParam;
} WqMsg;

/* Sees the messages of a window object's window; which ones, and when, is told at WqWnd_DefProc.
 * Result: 0 when it did not handle the message; else the message's answer is wnd->result, which nobody clears. */
typedef int32_t (*WqUserProc)(WqWnd *wnd, WqMsg *msg);

/* The window shall draw itself: wParam the WqDc to draw with, valid during the call. Not sent through the platform: the
 * user procedure is called directly, and its answer doesn't count. See WqWnd_DefProc. */
#define WQM_PAINT 0x810Au

/* The window shall lay itself out again. To itself after its size has changed, wParam its own handle; to the objects in
 * a window object's list that asked for it, wParam that object's handle; from WqWnd_Create, wParam 0. */
#define WQM_LAYOUT 0x810Bu

/* To the parent, when a window ends: wParam the WqWnd that ends, lParam its id. */
#define WQM_CHILD_DESTROYED 0x810Cu

/* From WqCmd_Send and WqCmd_Post: wParam the WqCmd. */
#define WQM_COMMAND 0x810Du

/* To the window itself: wParam WQ_MOUSE_..., lParam the POINT of the cursor in client coordinates, valid during the
 * call. A press that gets an answer other than 0 captures the mouse: drags and the release follow. */
#define WQM_MOUSE 0x810Fu
#define WQ_MOUSE_RELEASE 0u
#define WQ_MOUSE_PRESS 1u
#define WQ_MOUSE_DRAG 2u

/* To the window of a button bar: wParam WQ_MBB_EVENT_..., lParam the WqMbbBtn. When, is told in buttonbar.h. */
#define WQM_MBB_NOTIFY 0x8110u
#define WQ_MBB_EVENT_RELEASE 1u /* the left button was released over it */
#define WQ_MBB_EVENT_PRESS 2u   /* it was pressed */
#define WQ_MBB_EVENT_REPEAT 3u  /* it is still down */
#define WQ_MBB_EVENT_LEAVE 5u   /* the pointer has left it */

/* To the window itself, for a context menu: wParam the POINT on the screen, valid during the call. An answer other than
 * 0 keeps the platform from its own handling. */
#define WQM_CONTEXT 0x8111u

/* To the main window, for a key pressed in any window: wParam the virtual key, lParam WQ_KEY_... bits. An answer other
 * than 0 keeps the platform from its own handling. */
#define WQM_KEY 0x8112u
#define WQ_KEY_CONTROL 1u
#define WQ_KEY_SHIFT 2u
#define WQ_KEY_ALT 4u

/* To the main window, for every WM_MOUSEMOVE of any window: wParam 0x300. */
#define WQM_MOUSE_MOVED 0x8113u

/* To the window of a button bar, for each move over a button: wParam its id, lParam the POINT in the coordinates of its
 * field, valid during the call. */
#define WQM_MBB_PRESS 0x8115u

/* To the window of a print, before its first page: wParam 2, lParam the WqPrinter, whose pageCount it may change. Not sent
 * through the platform: the user procedure is called directly, and its answer doesn't count. */
#define WQM_PRINT_PAGE 0x8116u

/* To the main window, for every WM_LBUTTONDOWN of any window. */
#define WQM_BUTTON_DOWN 0x8127u

/* To the main window, for every WM_MOUSEWHEEL of any window: wParam the WqWheel, valid during the call. */
#define WQM_WHEEL 0x8128u

typedef struct WqWheel {
  int32_t notches; /* toward the user is positive; 0 for less than a whole notch */
  int32_t x;       /* of the cursor, on the screen */
  int32_t y;
  uint32_t keys; /* the platform's MK_... */
} WqWheel;

/* ---- WqWnd: window objects ---------------------------------------------------------------------------------------
 *
 * A window object is a record of the caller's that stands for a window of the platform. The caller fills it in, and
 * then makes the window with WqWnd_Create:
 *
 *   WqWnd_Init(&wnd);
 *   WqWnd_Parent(&wnd, &frame);
 *   WqWnd_Style(&wnd, WS_CHILD | WS_VISIBLE);
 *   WqWnd_UserProc(&wnd, procedure);
 *   WqWnd_SnapL(&wnd, NULL);   - its left side follows the parent's
 *   WqWnd_SnapR(&wnd, &list);  - its right side follows the left side of another window
 *   WqWnd_Create(&wnd);
 *
 * A record may stand at the beginning of a larger one. From WqWnd_Init until WqMain_Term it stays where it is and valid,
 * with a window or without: layouts look at all of them. When the window has ended, hwnd is null again, and only
 * WqWnd_Init makes the record fit for another one. What needs a window does nothing, and answers 0, without one.
 *
 * rect holds the window's place in the client coordinates of the parent's window, or on the screen when there is no
 * parent. The functions differ in how they read right and bottom, and say so.
 *
 * Snap layout. Each side can be tied to another window object, the target, or to the client area of the parent's window,
 * with a margin. A side lies against the facing side of its target: left against right, top against bottom, and so on.
 * When a window object is laid out, the objects whose targets name it are laid out after it, with those that depend on
 * them, one branch after the other, the newest object first; and it moves itself when they have moved. Ties in a circle
 * have no layout that is right: an object whose layout has not ended is not entered again by it, so that the walk ends,
 * and each object in the circle lies right to those before it. */

/* WqWnd.flags */
#define WQ_DS_MBB 0x00002000u           /* the window's button bar is painted, and sees its messages first */
#define WQ_DS_BKGRND 0x00004000u        /* the window shows its background picture, below what is drawn */
#define WQ_DS_SNAP_L 0x00100000u        /* the left side is snapped, */
#define WQ_DS_SNAP_R 0x00200000u        /* the right side, */
#define WQ_DS_SNAP_T 0x00400000u        /* the top, */
#define WQ_DS_SNAP_B 0x00800000u        /* the bottom */
#define WQ_DS_NO_MOVE_PAINT 0x10000000u /* a window that only moves is not painted again */
#define WQ_DS_KEEP_W 0x20000000u        /* a snapped left or right side takes the opposite side along */
#define WQ_DS_KEEP_H 0x40000000u        /* a snapped top or bottom takes the opposite side along */
#define WQ_DS_LAYOUT 0x60F00000u        /* any of the six that lay out: the four sides, the two that keep */

/* WqWnd.id; the other bits are the application's */
#define WQ_ID_HIDE 0x80000000u /* WqWnd_Show with 0 hides the window and doesn't end it */
#define WQ_ID_BASE 0x40000000u /* in every id, without an effect */
#define WQ_ID_QUIT 0x00100000u /* the end of this window ends the message loop */

/* WqWnd.msgReq */
#define WQ_MSGREQ_LAYOUT 0x00000001u /* WQM_LAYOUT; the other bits are the application's */

/* What a window is made with. */
typedef struct WqWndParam {
  uint32_t style;     /* the platform's WS_... */
  uint32_t exStyle;   /* WS_EX_... */
  char className[81]; /* empty: "WQ_WND_CLASS" */
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
  uint32_t msgReq;    /* what this object asked its parent for: WQ_MSGREQ_... */
  RECT maxRect;       /* empty: unset */
  RECT minRect;       /* empty: unset */
  WqWnd *snapLeft;    /* the targets; null stands for the parent's client area */
  WqWnd *snapTop;
  WqWnd *snapRight;
  WqWnd *snapBottom;
  int32_t marginLeft; /* in pixels, added to the place that the snapped side lies against */
  int32_t marginTop;
  int32_t marginRight;
  int32_t marginBottom;
  int32_t bkgrndBmp;       /* the background picture's id in wqMain.bmpTbl, -1 for none */
  SIZE bkgrndSize;         /* the part of the picture that is shown */
  POINT bkgrndPos;         /* where, in the client area */
  WqWndParam *createParam; /* owned; null once the window was made, or could not be made */
};

/* Clears the record, enters it in wqMain.wndList and makes its createParam. If memory is short createParam is null and
 * id stays 0: no window can be made. */
WQ_API void WqWnd_Init(WqWnd *wnd);

/* Frees a createParam that WqWnd_Create has not taken. wqMain.wndList keeps the record, and a window lives on. */
WQ_API void WqWnd_Term(WqWnd *wnd);

/* Sets the window class. Once the window was made it has no effect.
 * className: cut at 80 bytes, between characters. */
WQ_API void WqWnd_ClassName(WqWnd *wnd, const char *className);

/* Adds bits to the id. */
WQ_API void WqWnd_ID(WqWnd *wnd, uint32_t id);

/* Adds bits to the flags. */
WQ_API void WqWnd_Ds(WqWnd *wnd, uint32_t bits);

/* Clears bits in the flags. The targets stay, and so does the layout that follows them. */
WQ_API void WqWnd_ClearSnap(WqWnd *wnd, uint32_t bits);

/* Sets the parent.
 * parent: null for a top-level window. */
WQ_API void WqWnd_Parent(WqWnd *wnd, WqWnd *parent);

/* Add bits to the style or to the extended style of the window: the one to be made, or the one there is. */
WQ_API void WqWnd_Style(WqWnd *wnd, uint32_t bits);
WQ_API void WqWnd_ExStyle(WqWnd *wnd, uint32_t bits);

/* Sets the title of the window to be made, or of the one there is.
 * title: that of a window to be made is cut at 80 bytes, between characters. */
WQ_API void WqWnd_Title(WqWnd *wnd, const char *title);

/* Sets the user procedure.
 * userProc: null for none. */
WQ_API void WqWnd_UserProc(WqWnd *wnd, WqUserProc userProc);

/* Sets the background picture, which WQ_DS_BKGRND shows.
 * bitmapId: an id of WqBmpTbl_Insert, -1 for none. size: the part of the picture to show. position: where, in the client area. */
WQ_API void WqWnd_BkgrndBitmap(WqWnd *wnd, int32_t bitmapId, const SIZE *size, const POINT *position);

/* Replaces all that the window is to be made with. Once the window was made it has no effect.
 * param: is copied; its texts are cut at 80 bytes. */
WQ_API void WqWnd_InitHeapParam(WqWnd *wnd, const WqWndParam *param);

/* Does nothing.
 * Result: 1. */
WQ_API int WqWnd_Config(WqWnd *wnd);

/* The one place where a window moves: stores the rectangle, widens it to hold maxRect and then cuts it to minRect, if
 * those are set, applies the snaps with WqWnd_Align if there are any, and moves the window if an edge has changed. Right
 * and bottom lie outside here: the window's width is right - left. The window is painted anew, but see
 * WQ_DS_NO_MOVE_PAINT.
 * wnd: null does nothing. rect: null lays out the rectangle that is there. */
WQ_API void WqWnd_Rect(WqWnd *wnd, const RECT *rect);

/* Applies the snaps to the rectangle, the left and right sides before top and bottom, and lays out the objects that have
 * this one as a target, together with what depends on them. The window itself doesn't move. */
WQ_API void WqWnd_Align(WqWnd *wnd);

/* WqWnd_Rect; then the objects in dependants that asked for it are told to lay themselves out. */
WQ_API void WqWnd_Resize(WqWnd *wnd, const RECT *rect);

/* All these change the rectangle and pass it to WqWnd_Rect. WqWnd_Pos moves it by an offset; WqWnd_Left and WqWnd_Top
 * move one side; the others move the right or the bottom side: right = left + width in WqWnd_Size, and
 * right = left + width - 1 in WqWnd_Width, likewise for the height. */
WQ_API void WqWnd_Pos(WqWnd *wnd, const POINT *offset);
WQ_API void WqWnd_Top(WqWnd *wnd, int32_t top);
WQ_API void WqWnd_Left(WqWnd *wnd, int32_t left);
WQ_API void WqWnd_Size(WqWnd *wnd, const SIZE *size);
WQ_API void WqWnd_Width(WqWnd *wnd, int32_t width);
WQ_API void WqWnd_Height(WqWnd *wnd, int32_t height);

/* Set maxRect and minRect, and lay the window out again if there is one. Their sizes are the largest and the smallest
 * to which the user can drag the window; on WqWnd_Rect they work as told there.
 * rect: an empty one unsets. */
WQ_API void WqWnd_Max(WqWnd *wnd, const RECT *rect);
WQ_API void WqWnd_Min(WqWnd *wnd, const RECT *rect);

/* Snap one side. No layout follows.
 * target: null stands for the parent's client area. */
WQ_API void WqWnd_SnapL(WqWnd *wnd, WqWnd *target);
WQ_API void WqWnd_SnapT(WqWnd *wnd, WqWnd *target);
WQ_API void WqWnd_SnapR(WqWnd *wnd, WqWnd *target);
WQ_API void WqWnd_SnapB(WqWnd *wnd, WqWnd *target);

/* Sets the four margins. No layout follows.
 * margin: in pixels; those that hold a side inside a right or bottom edge are negative. */
WQ_API void WqWnd_SnapMargin(WqWnd *wnd, const RECT *margin);

/* Both do nothing. */
WQ_API void WqWnd_MaxSize(WqWnd *wnd, WqWord a, WqWord b);
WQ_API void WqWnd_MixSize(WqWnd *wnd, WqWord a, WqWord b);

/* Moves the window to the middle of another one, in screen coordinates, and rect by the distance that then lies between
 * their top left corners.
 * other: null, or an object without a window, stands for the desktop. */
WQ_API void WqWnd_Center(WqWnd *wnd, WqWnd *other);

/* Keeps the window above all that are not kept so.
 * Result: not 0 on success. */
WQ_API BOOL WqWnd_OrderTop(WqWnd *wnd);

/* Result: 1 when the point lies in the client area or directly at its right or bottom edge, else 0.
 * point: on the screen. */
WQ_API int WqWnd_HitTest(WqWnd *wnd, const POINT *point);

/* Registers the window class "WQ_WND_CLASS", as WqMain_Init does.
 * Result: 1; 0 when the platform refuses, as it does the second time. */
WQ_API int WqWnd_RegClass(HINSTANCE instance);

/* Makes the window, with a width of right - left + 1 and likewise for the height; then rect is what the platform made of
 * it, with right and bottom outside. An object with snaps asks its parent for WQM_LAYOUT and is laid out, and each becomes
 * a tool of the tooltip. createParam is freed, whatever the result.
 * Result: the window; null without createParam, when the platform refuses, and when the window has ended meanwhile. */
WQ_API HWND WqWnd_Create(WqWnd *wnd);

/* Shows the window, which is made if there is none; or ends it or, with WQ_ID_HIDE, hides it.
 * show: not 0 to show.
 * Result: 1; 0 when there is no window to hide and when none can be made. */
WQ_API int WqWnd_Show(WqWnd *wnd, int show);

/* Makes the window translucent, or opaque. Before the window is made, only the style for it is set.
 * percent: 0, invisible, to 100, opaque. */
WQ_API void WqWnd_Layered(WqWnd *wnd, uint32_t percent);

/* Takes the style that WqWnd_Layered set from the window. */
WQ_API void WqWnd_LayeredOff(WqWnd *wnd);

/* Lets the window take input, or not.
 * enable: not 0 to let it. */
WQ_API void WqWnd_Enable(WqWnd *wnd, int enable);

/* Gives the window the focus. */
WQ_API void WqWnd_Focus(WqWnd *wnd);

/* Asks the parent for messages: enters the object in the parent's dependants, once more with each call, and each entry
 * gets each message. Without a parent nothing happens.
 * mask: WQ_MSGREQ_... bits, added to those asked for before. */
WQ_API void WqWnd_SetMsgReq(WqWnd *wnd, uint32_t mask);

/* Takes bits back, and the object with all its entries out of the parent's dependants, whatever bits stay. */
WQ_API void WqWnd_DelMsgReq(WqWnd *wnd, uint32_t mask);

/* Result: a device context of the client area, given back with ReleaseDC; null without a window. */
WQ_API HDC WqWnd_GetDC(WqWnd *wnd);

/* Marks a part of the client area to be painted anew, without erasing.
 * rect: null for the whole. */
WQ_API void WqWnd_InvalidateRect(WqWnd *wnd, const RECT *rect);

/* Paints at once what is to be painted. */
WQ_API void WqWnd_Update(WqWnd *wnd);

/* Disables or enables an item of the window's system menu.
 * item: the platform's SC_... disable: not 0 disables, 0 enables, the reverse of WqWnd_Enable. */
WQ_API void WqWnd_EnableMenuItem(WqWnd *wnd, uint32_t item, int disable);

/* ---- WqWndLst: lists of window objects ---------------------------------------------------------------------------
 *
 * A list of window objects, as dependants is one, is a WqList whose data are WqWnd pointers. The objects stay their
 * owners'. Its nodes go away through these functions only; then they may go away while WqWndLst_SendAll is under way. */

/* Enters an object at the head, however often it stands there already. If memory is short the list stays as it was. */
WQ_API void WqWndLst_Add(WqList **list, WqWnd *wnd);

/* Takes out every entry of an object. */
WQ_API void WqWndLst_Remove(WqList **list, WqWnd *wnd);

/* Takes out all entries. */
WQ_API void WqWndLst_RemoveAll(WqList **list);

/* Sends a message to the objects of a list, from the head, whose msgReq shares a bit with the mask. Entries that come
 * meanwhile get none, nor do those that go before it is their turn. */
WQ_API void WqWndLst_SendAll(WqList **list, uint32_t mask, uint32_t msg, WPARAM wParam, LPARAM lParam);

/* ---- WqWnd_DefProc: the window procedure, and the queue ---------------------------------------------------------- */

/* The procedure of all windows of the class "WQ_WND_CLASS". WM_CREATE binds the window to the object that is its
 * creation parameter, and WM_DESTROY unbinds it; whatever comes before and after goes to the platform's default.
 *
 * Between them the user procedure sees every message but WM_PAINT, WM_GETMINMAXINFO and WM_MOUSEWHEEL. What it leaves
 * alone goes to the platform's default, with these exceptions:
 * - WM_SIZE and WM_SIZING with wParam 0 or 2 post WQM_LAYOUT to the window itself, and any of them is answered 1. So a
 *   user procedure that handles WM_SIZE stops the layout.
 * - WM_ERASEBKGND is answered 1; nothing is erased.
 * - WM_NOTIFY with TTN_NEEDTEXTA gives the window's title to the tooltip, and is answered 1.
 * - WM_CONTEXTMENU and WM_KEYDOWN send WQM_CONTEXT and WQM_KEY, and are answered 1 when those are not answered 0.
 * - WQM_LAYOUT from elsewhere lays the window out with WqWnd_Rect. It then goes on to the objects in dependants, and so
 *   does one from the window itself, which is not laid out. The answer is 0.
 * - WQM_MOUSE is answered 0.
 * Before the user procedure sees WM_MOUSEMOVE, WM_LBUTTONDOWN and WM_LBUTTONUP, the notices for them have gone out, and
 * the button bar, with WQ_DS_MBB, has had them; it lets only presses pass. A tip that is
 * up has gone before it sees a press of the left or right button or any WM_KEYDOWN or WM_KEYUP. When all that ended the
 * window, the user procedure sees no more of it.
 *
 * WM_PAINT makes a bitmap as large as the client area, with what it happens to hold. The background picture, if
 * WQ_DS_BKGRND is set, is copied into it, and the user procedure gets WQM_PAINT with a WqDc that draws on it, at a zoom
 * of 1.0, its background mode TRANSPARENT. Over that the button bar is painted, if WQ_DS_MBB is set. Then the part that
 * is to be painted is copied to the window, but only if WQ_DS_BKGRND is set or something was drawn through WqDcDraw: so a
 * user procedure draws all of its area or nothing. Where memory for the bitmap is short, it is called all the same and
 * the window stays as it is.
 *
 * At its end a window tells its parent, leaves all lists but wqMain.wndList, ends the message loop if it has WQ_ID_QUIT,
 * and as the last message its user procedure sees WM_DESTROY, with hwnd still there; the bond is cut already. */
WQ_API LRESULT CALLBACK WqWnd_DefProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

/* Dispatches all messages of the thread, until there are none. A WM_QUIT is taken out too, and ends no loop then. */
WQ_API void WqWnd_WaitQueEmpty(void);

/* As WqWnd_WaitQueEmpty, but messages of one number are dropped. Dropping WM_PAINT leaves nothing to be painted. */
WQ_API void WqWnd_RemoveQueMsg(uint32_t msg);

/* As WqWnd_WaitQueEmpty, but WM_TIMER of one timer is dropped.
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
  HWND target;     /* null: the command goes nowhere */
  WqWord words[3]; /* the application's */
} WqCmd;

/* Clears the record and sets its target. */
WQ_API void WqCmd_Init(WqCmd *cmd, HWND target);

/* Clears the record. */
WQ_API void WqCmd_Term(WqCmd *cmd);

/* Send or post WQM_COMMAND, with the record itself, to the target. A posted record stays valid until it has arrived. */
WQ_API void WqCmd_Send(WqCmd *cmd);
WQ_API void WqCmd_Post(WqCmd *cmd);

/* ---- WqMsgLp: the message loop ----------------------------------------------------------------------------------- */

typedef struct WqMsgLp {
  WqWord unused;
} WqMsgLp;

/* Clears the record. */
WQ_API void WqMsgLp_Init(WqMsgLp *loop);

/* All do nothing: the loop ends through PostQuitMessage, and knows no accelerators. */
WQ_API void WqMsgLp_Term(WqMsgLp *loop);
WQ_API void WqMsgLp_Stop(WqMsgLp *loop);
WQ_API void WqMsgLp_LoadAccel(WqMsgLp *loop, WqWord accelerators);

/* Gets, translates and dispatches all messages of the thread until WM_QUIT comes, or until there can't be any. */
WQ_API void WqMsgLp_Start(WqMsgLp *loop);

/* ---- WqTimer: timers ---------------------------------------------------------------------------------------------
 *
 * Any number of timers run on one tick of 100 ms. The tick comes with the thread's messages, so that timers stand still
 * while it dispatches none. A period counts from the first tick after the timer was inserted and ends with a tick; what
 * goes beyond it is dropped: a period of 150 ms lasts 200. */

/* What a timer's callback is told. */
#define WQ_TIMER_DUE 0u      /* the period is over; an answer other than 0 ends the timer */
#define WQ_TIMER_INSERTED 1u /* the timer has begun */
#define WQ_TIMER_REMOVED 2u  /* the timer ends; it stands in no list any more */

/* id, userData: the timer's.
 * Result: counts for WQ_TIMER_DUE only. A callback may insert timers and remove any, its own too, stop the service, or
 * dispatch messages, among them further ticks. */
typedef int32_t (*WqTimerProc)(uint32_t event, uint32_t id, WqWord userData);

typedef struct WqTimerElem {
  uint32_t id; /* the caller's; several timers may share one */
  WqTimerProc proc;
  WqWord userData;
  uint32_t lastTick; /* the platform's tick at the last update, in milliseconds; 0 before the first */
  uint32_t elapsed;  /* milliseconds of the period that are over */
  uint32_t period;   /* in milliseconds, at least 1 */
} WqTimerElem;

/* wqMain.timer */
typedef struct WqTimerState {
  WqList *list;     /* the live timers, newest first */
  uint32_t running; /* not 0 between start and stop */
  UINT_PTR timerId; /* the platform's timer, 0 when stopped */
} WqTimerState;

/* Starts the tick. While it runs nothing happens. Timers that an earlier stop left go on. */
WQ_API void WqTimer_Start(void);

/* Stops the tick; the messages of the thread are dispatched meanwhile, but for pending ticks. Timers stay where they are
 * and are told nothing; of those that are due in the tick under way the rest is not told either. While stopped nothing
 * happens. It comes before WqMain_Term, which frees the timers. */
WQ_API void WqTimer_Stop(void);

/* Begins a timer and tells it so. Without the service, or if memory is short, nothing happens.
 * elem: is copied. */
WQ_API void WqTimer_Insert(const WqTimerElem *elem);

/* Ends all timers with an id; each is told first. Without the service nothing happens. */
WQ_API void WqTimer_Remove(uint32_t id);

/* Clears all fields. */
WQ_API void WqTimerElem_Init(WqTimerElem *elem);

/* Does nothing. */
WQ_API void WqTimerElem_Term(WqTimerElem *elem);

/* Sets four fields; lastTick and elapsed stay as WqTimerElem_Init left them.
 * period: in milliseconds. */
WQ_API void WqTimerElem_Param(WqTimerElem *elem, uint32_t id, WqTimerProc proc, WqWord userData, uint32_t period);

/* Counts the time since the last update, across the tick's wrap. The first update only starts the count.
 * tick: the platform's, in milliseconds.
 * Result: 1 when the period is over, and the next one begins; else 0. */
WQ_API int WqTimerElem_Update(WqTimerElem *elem, uint32_t tick);

/* ---- WqTooltip: tips ---------------------------------------------------------------------------------------------
 *
 * There is one tooltip for the whole application, from WqMain_Config until WqMain_Term. At any other time these functions
 * do nothing. A window object is a tool of it from WqWnd_Create until its window ends: when the
 * pointer rests over the window, its title comes up as a tip. The window is asked before, by WM_NOTIFY with the code
 * TTN_NEEDTEXTA, and a user procedure that answers with a text of its own returns not 0:
 *
 *   case WM_NOTIFY:
 *     if (((NMHDR *)msg->lParam)->code != TTN_NEEDTEXTA) return 0;
 *     WqTooltip_SetText((NMTTDISPINFOA *)msg->lParam, "Peak of the left channel");
 *     return 1;
 *
 * An empty text brings no tip, and neither does a window without a title. A tip goes after 30 seconds, when a mouse button
 * or a key is pressed in a window object, and when the pointer has moved away from where it was then by the width or height
 * within which two clicks make a double click. */

/* wqMain.tooltip */
typedef struct WqTooltip {
  HWND hwnd;      /* the platform's control; null without one */
  POINT anchor;   /* where the pointer was when the tip was painted, on the screen */
  uint32_t shown; /* not 0 while the tip is up */
  char text[256]; /* of the tip that was asked for last */
} WqTooltip;

/* Clears the record. */
WQ_API void WqTooltip_Init(WqTooltip *tooltip);

/* Makes the control, owned by the main window. Where the platform refuses, there are no tips. */
WQ_API void WqTooltip_Create(WqTooltip *tooltip);

/* Ends wqMain.tooltip's control.
 * unused: any value. */
WQ_API void WqTooltip_Term(WqWord unused);

/* Sets whose string resources WqTooltip_AddRect and WqTooltip_LoadString use. Tools that are there keep theirs. */
WQ_API void WqTooltip_StrResInst(HINSTANCE instance);

/* Makes a window a tool; its text is asked for whenever it is to come up.
 * hwnd: the window that is asked. id: the handle of the window that is the tool. */
WQ_API void WqTooltip_Add(HWND hwnd, WqWord id);

/* Makes an object's window a tool, as WqWnd_Create does. */
WQ_API void WqTooltip_AddWnd(WqWnd *wnd);

/* Makes a part of a window a tool. Its text is a string resource.
 * rect: in the window's client area, right and bottom outside. id: names the tool in that window and is the number of the
 * string, 1 to 65535. */
WQ_API void WqTooltip_AddRect(HWND hwnd, const RECT *rect, uint32_t id);

/* Takes a tool back: that of WqTooltip_Add or WqTooltip_AddRect with the same window and id. */
WQ_API void WqTooltip_Remove(HWND hwnd, WqWord id);

/* Takes back what WqTooltip_AddWnd made, as the end of the window does. */
WQ_API void WqTooltip_RemoveWnd(WqWnd *wnd);

/* These give a tip its text, while the window is being asked for it. The text is kept in wqMain.tooltip until the next one;
 * info->lpszText is set to it.
 * info: lParam of that WM_NOTIFY. */

/* A string resource, cut at 255 bytes.
 * instance: whose; null for that of WqTooltip_StrResInst. id: its number.
 * Result: 1; 0 when there is no such string, or when it is empty. */
WQ_API int WqTooltip_LoadString(NMTTDISPINFOA *info, HINSTANCE instance, uint32_t id);

/* A text. Of a longer one it is the first 255 bytes. */
WQ_API void WqTooltip_SetText(NMTTDISPINFOA *info, const char *text);

/* Formatted print, cut at 255 bytes between characters. */
WQ_API void WqTooltip_Printf(NMTTDISPINFOA *info, const char *format, ...) WQ_PRINTF(2, 3);

/* A window's title, cut at 255 bytes; '&' at its beginning is left out. */
WQ_API void WqTooltip_WindowText(NMTTDISPINFOA *info, HWND hwnd);

/* The window procedure in front of the control's own. It keeps shown and anchor, and takes the tip down when the pointer
 * has moved too far. */
WQ_API LRESULT CALLBACK WqTooltip_Proc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

/* ---- WqClipBoard: the clipboard -----------------------------------------------------------------------------------
 *
 * What an application has to know for its Copy and Paste commands. Its main window opens the clipboard and owns what the
 * application puts there. Data are only promised: when somebody wants them, the main window gets WM_RENDERFORMAT, or
 * WM_RENDERALLFORMATS at its end, and gives them with SetClipboardData; WqClipBoard_CallBack brings it to the procedure
 * that can make them. Errors of the platform are passed over, so that nothing is found, and nothing promised, while
 * another one has the clipboard open. */

/* Makes promised data. The first three are what WqClipBoard_CallBack was given; format, userData: of the promise. */
typedef WqWord (*WqClipBoardProc)(WqWord arg1, WqWord arg2, WqWord arg3, uint32_t format, WqWord userData);

/* wqMain.clipBoard. A mask has a bit for each format below 16 (1 << CF_TEXT is 2), and bits that private formats share:
 * (format - 0x1F0) modulo 32 for 0x200 to 0x2FF. Those count only while the main window is the clipboard's owner, since
 * they mean something else in any other application. Further formats have no bit. */
typedef struct WqClipBoard {
  uint32_t available; /* what the last WqClipBoard_GetFormat has found */
  uint32_t pasteMask; /* what the application can paste */
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

/* Says which formats the application can paste. */
WQ_API void WqClipBoard_Paste(uint32_t mask);

/* The same for an application that pastes nothing but text. */
WQ_API void WqClipBoard_OnlyText(void);

/* These keep a word for the application. */
WQ_API void WqClipBoard_Copy(uint32_t word);
WQ_API void WqClipBoard_Cut(uint32_t word);

/* Looks at what is on the clipboard now.
 * Result: the bits of what the application can paste of it. */
WQ_API uint32_t WqClipBoard_GetFormat(void);

/* Fetches the text on the clipboard, in code page 932, as far as it fits; it is cut between bytes. Without a text, and
 * with a size of 0, the buffer stays as it is.
 * size: of the buffer in bytes, its last one for the NUL.
 * Result: 0. */
WQ_API int WqClipBoard_GetText(char *buffer, uint32_t size);

/* Empties the clipboard. */
WQ_API void WqClipBoard_Delete(void);

/* Promises data of one format, and nothing else.
 * userData, callback: for WqClipBoard_CallBack, until the next promise. callback may be null. */
WQ_API void WqClipBoard_SetOne(uint32_t format, WqWord userData, WqClipBoardProc callback);

/* The same, and plain text as well, as the last one; for a format with bit 0x80 an enhanced metafile too, as the first. */
WQ_API void WqClipBoard_Set(uint32_t format, WqWord userData, WqClipBoardProc callback);

/* Calls the procedure of the last promise. What the words mean is between it and the caller.
 * Result: its answer; 0 when there is none. */
WQ_API WqWord WqClipBoard_CallBack(WqWord arg1, WqWord arg2, WqWord arg3);

/* ---- WqDbgWnd: the debug window ----------------------------------------------------------------------------------
 *
 * One small window with a list of lines, which stays in the settings with its place:
 *
 *   WqDbgWnd_Init();
 *   WqDbgWnd_Config(&cfg);    - reading: makes the window, unless the settings say otherwise
 *   WqDbgWnd_Show(1);
 *   WqDbgWnd_Format("%d blocks", count);
 *   WqDbgWnd_Config(&cfg);    - writing
 *   WqDbgWnd_Term();
 *
 * Lines may come from any thread; the call waits until the window's thread takes messages. What is printed before there
 * is a window is lost. A window that is closed is only hidden, and its lines stay. Keys that are told to it go on to the
 * main window. */

typedef struct WqCfg WqCfg;

/* Describes the window, which isn't made yet, and makes its font. It comes after WqMain_Init. */
WQ_API void WqDbgWnd_Init(void);

/* Loads or saves key "DbgWnd" of section "StartUp", by the mode of cfg: the edges of the window on the screen, and 1 for a
 * window that is made at the start, the default, or 0. Then makes the window if it is to be made and isn't there; it
 * stays hidden. An empty rectangle isn't taken.
 * cfg: goes on with that section. */
WQ_API void WqDbgWnd_Config(WqCfg *cfg);

/* Hides the window, and deletes its font. The window itself goes with the process, or by DestroyWindow. */
WQ_API void WqDbgWnd_Term(void);

/* Shows the window, which is made if there is none, or hides it.
 * show: not 0 to show. */
WQ_API void WqDbgWnd_Show(int show);

/* Result: not 0 when the window is shown. */
WQ_API BOOL WqDbgWnd_IsShow(void);

/* Gives the window, or the one to be made, the style that keeps it above others. */
WQ_API void WqDbgWnd_TopMost(void);

/* Takes all lines away. */
WQ_API void WqDbgWnd_Clear(void);

/* Adds a line below the others. */
WQ_API void WqDbgWnd_Print(const char *text);

/* Formatted print of a line, cut at 255 bytes between characters.
 * Result: the number of bytes in the line. */
WQ_API int32_t WqDbgWnd_Format(const char *format, ...) WQ_PRINTF(1, 2);

/* Add lines of eight items each, in hexadecimal, as the machine reads them: of 8, 16 and 32 bits. In front stands the
 * number of the line's first item.
 * data: may lie anywhere in memory. count: of items; 0 adds nothing. */
WQ_API void WqDbgWnd_DumpHex2(const void *data, uint32_t count);
WQ_API void WqDbgWnd_DumpHex4(const void *data, uint32_t count);
WQ_API void WqDbgWnd_DumpHex8(const void *data, uint32_t count);

/* Stands for InvalidateRect where a program wants to see what it repaints: the area flashes, black or white by chance, and
 * nothing is painted anew. Requests that are suspect add a line: for the whole screen, from a thread that doesn't own
 * the window, with erasing.
 * hwnd: null stands for the screen. rect: in client coordinates, right and bottom outside; null stands for the client
 * area. erase: as for InvalidateRect. */
WQ_API void WqInvalidateRectDbg(HWND hwnd, const RECT *rect, int erase);

/* ---- WqMsgBox: message boxes --------------------------------------------------------------------------------------
 *
 * The main window owns them and is disabled while one is open; messages and timers go on. A caption of null stands for the
 * main window's title, of which 255 bytes count, and where that is empty for "アプリケーションメッセージ".
 * Results: that of MessageBoxA, the id of the button. */

/* Shows a text. style: MB_... bits. */
WQ_API int WqMsgBox_Show(const char *text, const char *caption, uint32_t style);

/* Shows a string resource of wqMain.instance, of which 255 bytes count. id: one that exists. */
WQ_API int WqMsgBox_ShowFromID(uint32_t id, const char *caption, uint32_t style);

/* The same with an OK button, the icon of an information or of an error, and all windows of the thread disabled. */
WQ_API int WqMsgBox_Information(uint32_t id, const char *caption);
WQ_API int WqMsgBox_FatalError(uint32_t id, const char *caption);

/* ---- WqFileDialog: choosing a file to open or to save -------------------------------------------------------------
 *
 * The record is the caller's. WqFileDialog_Init comes first, then WqFileDialog_SetOC or WqFileDialog_SetOCEx, then the texts,
 * in any order; the dialog can be shown again and again. Texts are cut at 259 bytes. */

#define WQ_FILEDIALOG_OPEN 0x01u  /* to open a file; else to save one */
#define WQ_FILEDIALOG_KEPT 0x02u  /* kept for the caller, without a meaning */
#define WQ_FILEDIALOG_SHOWN 0x10u /* the dialog is open now */

typedef struct WqFileDialog {
  OPENFILENAMEA ofn; /* points to the texts below */
  uint32_t mode;     /* WQ_FILEDIALOG_... */
  char title[260];
  char fileName[260]; /* to begin with, and what was chosen */
  char defExt[260];   /* added to names without an extension */
  char dir[260];      /* where the dialog begins */
  char filter[260];   /* pairs of a text and a pattern, each with its NUL */
  char *filterEnd;    /* where the next pair goes */
} WqFileDialog;

/* Clears the record, ties its texts to ofn, and begins in the current folder. The record stays where it is from now on. */
WQ_API void WqFileDialog_Init(WqFileDialog *dialog);

/* Does nothing. */
WQ_API void WqFileDialog_Term(WqFileDialog *dialog);

/* Decides what the dialog is for and sets the rest of ofn; the texts and filters stay. Null is allowed.
 * mode: WQ_FILEDIALOG_OPEN, WQ_FILEDIALOG_KEPT. flags: OFN_... bits beside those that are always set. A dialog that opens
 * takes only files that exist, one that saves asks before it takes one that does. */
WQ_API void WqFileDialog_SetOC(WqFileDialog *dialog, uint32_t mode);
WQ_API void WqFileDialog_SetOCEx(WqFileDialog *dialog, uint32_t mode, uint32_t flags);

/* These copy a text into the record. With a null argument they do nothing. */
WQ_API void WqFileDialog_Title(WqFileDialog *dialog, const char *text);
WQ_API void WqFileDialog_FileName(WqFileDialog *dialog, const char *text);
WQ_API void WqFileDialog_Dir(WqFileDialog *dialog, const char *text);

/* Adds a filter, shown as "name(*.extension)". With a null argument it does nothing; one that the record has no more room
 * for is left out.
 * extension: without a point. isDefault: other than 0 makes it the default extension too. */
WQ_API void WqFileDialog_AddExt(WqFileDialog *dialog, const char *name, const char *extension, int32_t isDefault);

/* Shows the dialog over the main window, which has the focus afterwards. The current folder stays what it was.
 * Result: other than 0 when a file was chosen: fileName is its path then, and dir its folder. 0, with fileName and dir as
 * before, when not, and when this record's dialog is open already. */
WQ_API int WqFileDialog_Show(WqFileDialog *dialog);

/* Result: 1 when the file is to be opened for reading only, else 0. */
WQ_API int WqFileDialog_IsReadOnly(const WqFileDialog *dialog);

#ifdef __cplusplus
}
#endif

#endif
