/* The list box: the control of class "LISTBOX", which every program finds registered. It shows lines one below the
 * other, and the user selects one or several of them.
 *
 * Texts end with NUL and are copied. Without LBS_HASSTRINGS an owner-drawn list box holds a word for each item in place
 * of a text. Not supported: several columns, tab stops, lists of files. A program can't register a class
 * of this name. */
#ifndef PLATFORM_WINAPI_LISTBOX_H
#define PLATFORM_WINAPI_LISTBOX_H

#include "platform/winapi/dialogs.h"
#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LBS_NOTIFY 0x0001u /* the parent gets LBN_... by WM_COMMAND */
#define LBS_SORT 0x0002u
#define LBS_NOREDRAW 0x0004u
#define LBS_MULTIPLESEL 0x0008u /* each click and each space toggles one item */
#define LBS_OWNERDRAWFIXED 0x0010u
#define LBS_OWNERDRAWVARIABLE 0x0020u /* each item has its own height */
#define LBS_HASSTRINGS 0x0040u
#define LBS_NOINTEGRALHEIGHT 0x0100u  /* without it the height is cut to whole lines */
#define LBS_WANTKEYBOARDINPUT 0x0400u /* the parent decides about keys: WM_VKEYTOITEM, WM_CHARTOITEM */
#define LBS_EXTENDEDSEL 0x0800u       /* ranges with Shift, single items with Control */
#define LBS_DISABLENOSCROLL 0x1000u   /* scroll bars without use are disabled, not hidden */
#define LBS_NODATA 0x2000u            /* only a count; the owner knows the items */
#define LBS_NOSEL 0x4000u

/* Indexes of items begin at 0. */
#define LB_OKAY 0
#define LB_ERR (-1)
#define LB_ERRSPACE (-2)

/* Each comment tells wParam, lParam and the result. The result is LB_ERR for an item that doesn't exist. */
#define LB_ADDSTRING 0x0180u      /* 0, text: its index */
#define LB_INSERTSTRING 0x0181u   /* index, -1 for the end, text: its index; not sorted in */
#define LB_DELETESTRING 0x0182u   /* index: the number of items left */
#define LB_SELITEMRANGEEX 0x0183u /* first, last; if first is greater, the range is deselected */
#define LB_RESETCONTENT 0x0184u
#define LB_SETSEL 0x0185u     /* whether, index or -1 for all; multiple selection only */
#define LB_SETCURSEL 0x0186u  /* index, -1 for none; single selection only */
#define LB_GETSEL 0x0187u     /* index: whether it is selected */
#define LB_GETCURSEL 0x0188u  /* the selected item; with multiple selection, the one with the focus */
#define LB_GETTEXT 0x0189u    /* index, room: its length. Without strings the room gets the word */
#define LB_GETTEXTLEN 0x018Au /* index */
#define LB_GETCOUNT 0x018Bu
#define LB_SELECTSTRING 0x018Cu /* as LB_FINDSTRING, and selects the item */
#define LB_GETTOPINDEX 0x018Eu
#define LB_FINDSTRING 0x018Fu /* the item before the first candidate, a beginning of a text: its index */
#define LB_GETSELCOUNT 0x0190u
#define LB_GETSELITEMS 0x0191u /* size of the room in int, room: the number of items written */
#define LB_GETHORIZONTALEXTENT 0x0193u
#define LB_SETHORIZONTALEXTENT 0x0194u /* width in pixels that can be scrolled to; 0 at first */
#define LB_SETTOPINDEX 0x0197u
#define LB_GETITEMRECT 0x0198u /* index, RECT: whether it can be seen */
#define LB_GETITEMDATA 0x0199u
#define LB_SETITEMDATA 0x019Au  /* index, word: TRUE */
#define LB_SELITEMRANGE 0x019Bu /* whether, first in the low half and last in the high half */
#define LB_SETANCHORINDEX 0x019Cu
#define LB_GETANCHORINDEX 0x019Du
#define LB_SETCARETINDEX 0x019Eu
#define LB_GETCARETINDEX 0x019Fu
#define LB_SETITEMHEIGHT 0x01A0u /* index with LBS_OWNERDRAWVARIABLE, height up to 255 */
#define LB_GETITEMHEIGHT 0x01A1u
#define LB_FINDSTRINGEXACT 0x01A2u /* as LB_FINDSTRING with the whole text; neither heeds case */
#define LB_SETCOUNT 0x01A7u        /* with LBS_NODATA */
#define LB_INITSTORAGE 0x01A8u
#define LB_ITEMFROMPOINT 0x01A9u /* 0, a point of the client area: the item, plus 0x10000 for a point outside */

/* Notifications to the parent: WM_COMMAND with the id and one of these codes; lParam is the list box. */
#define LBN_ERRSPACE (-2)
#define LBN_SELCHANGE 1 /* the user has changed the selection, or with multiple selection moved the focus */
#define LBN_DBLCLK 2
#define LBN_SELCANCEL 3
#define LBN_SETFOCUS 4
#define LBN_KILLFOCUS 5

/* Requests to the parent. The answer to WM_CTLCOLORLISTBOX is a brush for the background, which stays the parent's. The
 * parent may change the context's colours too. 0 gives the default background. */
#define WM_DRAWITEM 0x002Bu
#define WM_MEASUREITEM 0x002Cu
#define WM_DELETEITEM 0x002Du
#define WM_VKEYTOITEM 0x002Eu  /* key and item; -1 for the default, -2 for nothing more, or the item to go to */
#define WM_CHARTOITEM 0x002Fu  /* character and item; likewise */
#define WM_COMPAREITEM 0x0039u /* below 0, 0, above 0 */
#define WM_CTLCOLORLISTBOX 0x0134u

#define ODT_LISTBOX 2u
#define ODA_DRAWENTIRE 1u
#define ODA_SELECT 2u
#define ODA_FOCUS 4u
#define ODS_SELECTED 0x01u
#define ODS_DISABLED 0x04u
#define ODS_FOCUS 0x10u

typedef struct tagDRAWITEMSTRUCT {
  UINT CtlType, CtlID, itemID, itemAction, itemState;
  HWND hwndItem;
  HDC hDC;
  RECT rcItem;
  ULONG_PTR itemData;
} DRAWITEMSTRUCT;

typedef struct tagMEASUREITEMSTRUCT {
  UINT CtlType, CtlID, itemID, itemWidth, itemHeight;
  ULONG_PTR itemData;
} MEASUREITEMSTRUCT;

typedef struct tagDELETEITEMSTRUCT {
  UINT CtlType, CtlID, itemID;
  HWND hwndItem;
  ULONG_PTR itemData;
} DELETEITEMSTRUCT;

typedef struct tagCOMPAREITEMSTRUCT {
  UINT CtlType, CtlID;
  HWND hwndItem;
  UINT itemID1;
  ULONG_PTR itemData1;
  UINT itemID2;
  ULONG_PTR itemData2;
  DWORD dwLocaleId;
} COMPAREITEMSTRUCT;

#ifdef __cplusplus
}
#endif

#endif
