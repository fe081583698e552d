/* Menus. */
#ifndef PLATFORM_WINAPI_MENUS_H
#define PLATFORM_WINAPI_MENUS_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The system menu: its items and their states. The desktop's own frame doesn't show them. */

#define MF_BYCOMMAND 0u
#define MF_BYPOSITION 0x400u
#define MF_ENABLED 0u
#define MF_GRAYED 1u
#define MF_DISABLED 2u
#define MF_SEPARATOR 0x800u
#define MF_DEFAULT 0x1000u
#define SC_SIZE 0xF000u
#define SC_MOVE 0xF010u
#define SC_MINIMIZE 0xF020u
#define SC_MAXIMIZE 0xF030u
#define SC_CLOSE 0xF060u
#define SC_VSCROLL 0xF070u
#define SC_HSCROLL 0xF080u
#define SC_KEYMENU 0xF100u
#define SC_RESTORE 0xF120u

PLATFORM_API HMENU WINAPI GetSystemMenu(HWND window, BOOL revert);
/* Result: the item's state before; all bits set for an unknown item. */
PLATFORM_API BOOL WINAPI EnableMenuItem(HMENU menu, UINT item, UINT flags);
PLATFORM_API UINT WINAPI GetMenuState(HMENU menu, UINT item, UINT flags);

#ifdef __cplusplus
}
#endif

#endif
