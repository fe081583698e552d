/* The shell: the dialog for folders. A folder comes as a list of items, which the caller frees. */
#ifndef PLATFORM_WINAPI_SHELL_H
#define PLATFORM_WINAPI_SHELL_H

#include "platform/winapi/com.h"
#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct _SHITEMID {
  WORD cb; /* bytes of the item, this member included; 0 ends the list */
  BYTE abID[1];
} SHITEMID;

typedef struct _ITEMIDLIST {
  SHITEMID mkid;
} ITEMIDLIST;
typedef ITEMIDLIST *LPITEMIDLIST;
typedef const ITEMIDLIST *LPCITEMIDLIST;

typedef int(CALLBACK *BFFCALLBACK)(HWND, UINT, LPARAM, LPARAM);

typedef struct _browseinfoA {
  HWND hwndOwner;
  LPCITEMIDLIST pidlRoot; /* the topmost folder to choose from; null for all drives */
  LPSTR pszDisplayName;   /* room for MAX_PATH bytes, or null */
  LPCSTR lpszTitle;       /* a text above the folders */
  UINT ulFlags;           /* BIF_... */
  BFFCALLBACK lpfn;
  LPARAM lParam; /* for the callback */
  int iImage;
} BROWSEINFOA;

#define BIF_RETURNONLYFSDIRS 0x0001u
#define BIF_STATUSTEXT 0x0004u
#define BIF_NEWDIALOGSTYLE 0x0040u

/* Calls of the callback: the dialog is ready; another folder is selected, and lParam is its list. */
#define BFFM_INITIALIZED 1u
#define BFFM_SELCHANGED 2u
/* Messages that the callback may send to the dialog. */
#define BFFM_SETSTATUSTEXTA 0x0464u /* lParam: a text, shown with BIF_STATUSTEXT */
#define BFFM_ENABLEOK 0x0465u       /* lParam: whether OK can be pressed */
#define BFFM_SETSELECTIONA 0x0466u  /* wParam TRUE: lParam is a path; FALSE: a list */

/* Result: null if the user chooses nothing, and without a display. The caller frees the list with the shell's
 * allocator. */
PLATFORM_API LPITEMIDLIST WINAPI SHBrowseForFolderA(BROWSEINFOA *how);
/* path: room for MAX_PATH bytes; empty on failure. */
PLATFORM_API BOOL WINAPI SHGetPathFromIDListA(LPCITEMIDLIST list, LPSTR path);

/* The shell's allocator: one object that is never destroyed. */

#ifdef __cplusplus
}

struct IMalloc {
  virtual HRESULT WINAPI QueryInterface(const void *id, void **object) = 0; /* finds no other interface */
  virtual DWORD WINAPI AddRef() = 0;
  virtual DWORD WINAPI Release() = 0;
  virtual void *WINAPI Alloc(SIZE_T size) = 0;
  virtual void *WINAPI Realloc(void *memory, SIZE_T size) = 0;
  virtual void WINAPI Free(void *memory) = 0;
  virtual SIZE_T WINAPI GetSize(void *memory) = 0;
  virtual int WINAPI DidAlloc(void *memory) = 0;
  virtual void WINAPI HeapMinimize() = 0;
};

extern "C" {
#else
typedef struct IMalloc IMalloc;
typedef struct IMallocVtbl {
  HRESULT(WINAPI *QueryInterface)(IMalloc *self, const void *id, void **object);
  DWORD(WINAPI *AddRef)(IMalloc *self);
  DWORD(WINAPI *Release)(IMalloc *self);
  void *(WINAPI *Alloc)(IMalloc *self, SIZE_T size);
  void *(WINAPI *Realloc)(IMalloc *self, void *memory, SIZE_T size);
  void(WINAPI *Free)(IMalloc *self, void *memory);
  SIZE_T(WINAPI *GetSize)(IMalloc *self, void *memory);
  int(WINAPI *DidAlloc)(IMalloc *self, void *memory);
  void(WINAPI *HeapMinimize)(IMalloc *self);
} IMallocVtbl;
struct IMalloc {
  const IMallocVtbl *lpVtbl;
};
#endif

PLATFORM_API HRESULT WINAPI SHGetMalloc(IMalloc **allocator);

#ifdef __cplusplus
}
#endif

#endif
