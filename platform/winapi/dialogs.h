/* Dialogs: messages to them, the controls in them, and the dialogs that choose files. */
#ifndef PLATFORM_WINAPI_DIALOGS_H
#define PLATFORM_WINAPI_DIALOGS_H

#include "platform/winapi/messages.h"
#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Messages between dialogs and their controls. */

#define WM_GETDLGCODE 0x0087u
#define WM_INITDIALOG 0x0110u
#define WM_COMMAND 0x0111u /* wParam: id and notification; lParam: the control, or 0 for a key */
#define DM_GETDEFID 0x0400u
#define DC_HASDEFID 0x534B

#define DLGC_WANTARROWS 0x0001u
#define DLGC_WANTALLKEYS 0x0004u
#define DLGC_HASSETSEL 0x0008u
#define DLGC_DEFPUSHBUTTON 0x0010u
#define DLGC_UNDEFPUSHBUTTON 0x0020u
#define DLGC_RADIOBUTTON 0x0040u
#define DLGC_WANTCHARS 0x0080u
#define DLGC_STATIC 0x0100u
#define DLGC_BUTTON 0x2000u

#define WS_GROUP 0x00020000u /* a control that begins a group; arrow keys stay in it */
#define WS_TABSTOP 0x00010000u

#define DWLP_MSGRESULT 0 /* the place for a dialog procedure's answer */

PLATFORM_API int WINAPI GetDlgCtrlID(HWND control);

/* Buttons. */

#define BS_PUSHBUTTON 0u
#define BS_DEFPUSHBUTTON 1u
#define BS_AUTOCHECKBOX 3u
#define BS_AUTORADIOBUTTON 9u /* of a group, from one with WS_GROUP to the next, one is checked */
#define BS_TYPEMASK 15u
#define BM_GETCHECK 0x00F0u
#define BM_SETCHECK 0x00F1u
#define BM_GETSTATE 0x00F2u
#define BM_SETSTYLE 0x00F4u
#define BM_CLICK 0x00F5u
#define BST_UNCHECKED 0u
#define BST_CHECKED 1u
#define BST_PUSHED 4u
#define BST_FOCUS 8u
#define BN_CLICKED 0

/* Texts, and fields to edit one line. Positions are bytes. */

#define SS_LEFT 0u
#define SS_ICON 3u
#define SS_TYPEMASK 31u
#define SS_NOPREFIX 128u
#define SS_EDITCONTROL 0x2000u /* breaks words that are wider than the control */
#define STM_SETICON 0x0170u
#define ES_AUTOHSCROLL 128u
#define ES_NUMBER 0x2000u /* takes digits only */
#define EM_GETSEL 0x00B0u
#define EM_SETSEL 0x00B1u
#define EM_LIMITTEXT 0x00C5u
#define EN_CHANGE 0x0300

/* Boxes with a list to choose from, which drops down. Rows count from 0; one that isn't there is answered with
 * CB_ERR. */

#define CB_ERR (-1)
#define CB_GETCOUNT 0x0146u
#define CB_GETCURSEL 0x0147u
#define CB_GETLBTEXT 0x0148u /* lParam: room for the text of row wParam; its length */
#define CB_GETLBTEXTLEN 0x0149u
#define CB_SETCURSEL 0x014Eu    /* the parent isn't told */
#define CB_SHOWDROPDOWN 0x014Fu /* wParam: whether the list shall be open */
#define CB_GETDROPPEDSTATE 0x0157u
#define CBN_SELCHANGE 1

/* Choosing files. */

typedef UINT_PTR(CALLBACK *LPOFNHOOKPROC)(HWND, UINT, WPARAM, LPARAM);

typedef struct tagOFNA {
  DWORD lStructSize; /* of the whole record, or OPENFILENAME_SIZE_VERSION_400A */
  HWND hwndOwner;
  HINSTANCE hInstance;
  LPCSTR lpstrFilter; /* pairs of a text and patterns, such as "*.wav;*.aif", and an empty text at the end */
  LPSTR lpstrCustomFilter;
  DWORD nMaxCustFilter;
  DWORD nFilterIndex; /* index of the pair, from 1 */
  LPSTR lpstrFile;    /* in: the name at first; out: the path */
  DWORD nMaxFile;     /* bytes of room in lpstrFile */
  LPSTR lpstrFileTitle;
  DWORD nMaxFileTitle;
  LPCSTR lpstrInitialDir;
  LPCSTR lpstrTitle;
  DWORD Flags;
  WORD nFileOffset;    /* offset of the name in the path */
  WORD nFileExtension; /* offset of the extension, behind the point; 0 without one */
  LPCSTR lpstrDefExt;  /* without a point */
  LPARAM lCustData;
  LPOFNHOOKPROC lpfnHook;
  LPCSTR lpTemplateName;
  void *pvReserved;
  DWORD dwReserved;
  DWORD FlagsEx;
} OPENFILENAMEA;

#define OPENFILENAME_SIZE_VERSION_400A ((DWORD)offsetof(OPENFILENAMEA, pvReserved))

#define OFN_READONLY 0x00000001u /* in and out: whether its box is checked */
#define OFN_OVERWRITEPROMPT 0x00000002u
#define OFN_HIDEREADONLY 0x00000004u
#define OFN_NOCHANGEDIR 0x00000008u
#define OFN_ENABLEHOOK 0x00000020u
#define OFN_ENABLETEMPLATE 0x00000040u /* templates have no effect */
#define OFN_ENABLETEMPLATEHANDLE 0x00000080u
#define OFN_NOVALIDATE 0x00000100u
#define OFN_ALLOWMULTISELECT 0x00000200u /* several names come as the folder, then the names, each with a NUL */
#define OFN_EXTENSIONDIFFERENT 0x00000400u
#define OFN_PATHMUSTEXIST 0x00000800u
#define OFN_FILEMUSTEXIST 0x00001000u /* counts for opening */
#define OFN_CREATEPROMPT 0x00002000u
#define OFN_NONETWORKBUTTON 0x00020000u
#define OFN_EXPLORER 0x00080000u

/* A hook procedure gets WM_INITDIALOG, with the OPENFILENAMEA in lParam, and then WM_NOTIFY with this record. Its
 * window is a child of the dialog. */

typedef struct _OFNOTIFYA {
  NMHDR hdr; /* from the dialog */
  OPENFILENAMEA *lpOFN;
  LPSTR pszFile;
} OFNOTIFYA;

#define CDN_INITDONE ((UINT)-601)
#define CDN_SELCHANGE ((UINT)-602)
#define CDN_FOLDERCHANGE ((UINT)-603)
#define CDN_FILEOK ((UINT)-606) /* an answer other than 0, in DWLP_MSGRESULT, keeps the dialog open */
#define CDN_TYPECHANGE ((UINT)-607)

/* Sent to the dialog. wParam: bytes of room; lParam: the room. Result: the bytes needed. */
#define CDM_GETSPEC 0x0464u
#define CDM_GETFILEPATH 0x0465u
#define CDM_GETFOLDERPATH 0x0466u

#define CDERR_STRUCTSIZE 0x0001u
#define CDERR_INITIALIZATION 0x0002u
#define CDERR_MEMALLOCFAILURE 0x0009u
#define CDERR_NOHOOK 0x000Bu
#define FNERR_INVALIDFILENAME 0x3002u
#define FNERR_BUFFERTOOSMALL 0x3003u

/* Ids of the controls in these dialogs, and in that of printers, which has its own below. */
#define chx1 0x0410 /* read-only */
#define stc2 0x0441
#define stc3 0x0442
#define stc4 0x0443
#define lst1 0x0460  /* the folder */
#define cmb1 0x0470  /* the filters */
#define cmb2 0x0471  /* the present folder */
#define cmb13 0x047C /* the name */

/* Let the user choose a file, in the desktop's own dialog if it has one. A template needs the layer's dialog, and so
 * does a hook that makes controls or changes the dialog. Result: FALSE if the user cancels, and on failure:
 * CommDlgExtendedError isn't 0 then. If the room for the path is too small, its first two bytes hold the size
 * needed.
 * The current folder becomes that of the file, unless OFN_NOCHANGEDIR is set. Without a display the result is FALSE. */
PLATFORM_API BOOL WINAPI GetOpenFileNameA(OPENFILENAMEA *choice);
PLATFORM_API BOOL WINAPI GetSaveFileNameA(OPENFILENAMEA *choice);
PLATFORM_API DWORD WINAPI CommDlgExtendedError(void);

#ifdef __cplusplus
}
#endif

#endif
