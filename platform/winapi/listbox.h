/* The list box: the control of class "LISTBOX", which is there without being asked for. It shows lines, one below the
 * other, of which the user selects one or several.
 *
 * Texts are ended by a NUL and copied. Without LBS_HASSTRINGS a list box that its owner draws holds a word for each item in
 * place of a text. Not served: several columns, tab stops, lists of files. A window class of the program can't have the
 * same name. */
#ifndef PLATFORM_WINAPI_LISTBOX_H
#define PLATFORM_WINAPI_LISTBOX_H

#include "platform/winapi/dialogs.h"
#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LBS_NOTIFY 0x0001u /* the parent hears LBN_... by WM_COMMAND */
#define LBS_SORT 0x0002u
#define LBS_NOREDRAW 0x0004u
#define LBS_MULTIPLESEL 0x0008u /* each click and each blank turns one item on or off */
#define LBS_OWNERDRAWFIXED 0x0010u
#define LBS_OWNERDRAWVARIABLE 0x0020u /* each item has a height of its own */
#define LBS_HASSTRINGS 0x0040u
#define LBS_NOINTEGRALHEIGHT 0x0100u  /* without it the list box is cut to whole lines */
#define LBS_WANTKEYBOARDINPUT 0x0400u /* the parent decides about keys: WM_VKEYTOITEM, WM_CHARTOITEM */
#define LBS_EXTENDEDSEL 0x0800u       /* ranges with Shift, single items with Control */
#define LBS_DISABLENOSCROLL 0x1000u   /* scroll bars without use are disabled, not hidden */
#define LBS_NODATA 0x2000u            /* only a count; the owner draws what it knows of each item */
#define LBS_NOSEL 0x4000u

/* Items count from 0. */
#define LB_OKAY 0
#define LB_ERR (-1)
#define LB_ERRSPACE (-2)

/* wParam and lParam; what is answered. LB_ERR stands for an item that isn't there. */
#define LB_ADDSTRING 0x0180u      /* 0, text: its index */
#define LB_INSERTSTRING 0x0181u   /* where, -1 for the end, text: its index; not sorted in */
#define LB_DELETESTRING 0x0182u   /* index: how many are left */
#define LB_SELITEMRANGEEX 0x0183u /* first, last; the later one first takes the selection away */
#define LB_RESETCONTENT 0x0184u
#define LB_SETSEL 0x0185u     /* whether, index or -1 for all; several selected */
#define LB_SETCURSEL 0x0186u  /* index, -1 for none; one selected */
#define LB_GETSEL 0x0187u     /* index: whether it is selected */
#define LB_GETCURSEL 0x0188u  /* the selected one; with several, the one with the focus */
#define LB_GETTEXT 0x0189u    /* index, room: its length. Without strings the room gets the word */
#define LB_GETTEXTLEN 0x018Au /* index */
#define LB_GETCOUNT 0x018Bu
#define LB_SELECTSTRING 0x018Cu /* as LB_FINDSTRING, and selects it */
#define LB_GETTOPINDEX 0x018Eu
#define LB_FINDSTRING 0x018Fu /* the item before the first looked at, a beginning of a text: its index */
#define LB_GETSELCOUNT 0x0190u
#define LB_GETSELITEMS 0x0191u /* how many, room for that many int: how many it got */
#define LB_GETHORIZONTALEXTENT 0x0193u
#define LB_SETHORIZONTALEXTENT 0x0194u /* pixels that can be scrolled to; 0 at first */
#define LB_SETTOPINDEX 0x0197u
#define LB_GETITEMRECT 0x0198u /* index, RECT: whether it can be seen */
#define LB_GETITEMDATA 0x0199u
#define LB_SETITEMDATA 0x019Au  /* index, word of the program's: TRUE */
#define LB_SELITEMRANGE 0x019Bu /* whether, first and last in two halves */
#define LB_SETANCHORINDEX 0x019Cu
#define LB_GETANCHORINDEX 0x019Du
#define LB_SETCARETINDEX 0x019Eu
#define LB_GETCARETINDEX 0x019Fu
#define LB_SETITEMHEIGHT 0x01A0u /* index with LBS_OWNERDRAWVARIABLE, height up to 255 */
#define LB_GETITEMHEIGHT 0x01A1u
#define LB_FINDSTRINGEXACT 0x01A2u /* the same with the whole text; neither looks at case */
#define LB_SETCOUNT 0x01A7u        /* with LBS_NODATA */
#define LB_INITSTORAGE 0x01A8u
#define LB_ITEMFROMPOINT 0x01A9u /* 0, a point of the client area: the item, and 0x10000 where the point lies outside */

/* What the parent hears: WM_COMMAND with the id and one of these, lParam the list box. */
#define LBN_ERRSPACE (-2)
#define LBN_SELCHANGE 1 /* the user has changed the selection, or moved where several can be selected */
#define LBN_DBLCLK 2
#define LBN_SELCANCEL 3
#define LBN_SETFOCUS 4
#define LBN_KILLFOCUS 5

/* What it is asked. An answer of 0 to WM_CTLCOLORLISTBOX leaves the ground as it is; else it is the brush of the ground,
 * which stays the parent's, with the context's colours as they were set. */
#define WM_DRAWITEM 0x002Bu
#define WM_MEASUREITEM 0x002Cu
#define WM_DELETEITEM 0x002Du
#define WM_VKEYTOITEM 0x002Eu  /* key and item; -1 for the usual, -2 for nothing more, or the item to go to */
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
