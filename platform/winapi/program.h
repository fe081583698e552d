/* The program: its arguments, environment, standard streams, modules and resources. */
#ifndef PLATFORM_WINAPI_PROGRAM_H
#define PLATFORM_WINAPI_PROGRAM_H

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The command line as arguments in code page 932. In contrast, argv of main holds UTF-8 from the shell. */
PLATFORM_API int *__p___argc(void);
PLATFORM_API char ***__p___argv(void);
#define __argc (*__p___argc())
#define __argv (*__p___argv())

/* The value of an environment variable, in code page 932. Result: its length; the room needed if size is too small; 0
 * if there is no such variable. */
PLATFORM_API DWORD WINAPI GetEnvironmentVariableA(LPCSTR name, LPSTR value, DWORD size);

/* The standard streams as files, and whether a file is a terminal. */
#define STD_INPUT_HANDLE ((DWORD)-10)
#define STD_OUTPUT_HANDLE ((DWORD)-11)
#define STD_ERROR_HANDLE ((DWORD)-12)

PLATFORM_API HANDLE WINAPI GetStdHandle(DWORD stream);
PLATFORM_API BOOL WINAPI GetConsoleMode(HANDLE file, LPDWORD mode);

/* Modules. A null name stands for the program itself. */

typedef intptr_t(WINAPI *FARPROC)(void);

PLATFORM_API HMODULE WINAPI GetModuleHandleA(LPCSTR name);
PLATFORM_API HMODULE WINAPI LoadLibraryA(LPCSTR name);
PLATFORM_API FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name);
PLATFORM_API BOOL WINAPI FreeLibrary(HMODULE module);

/* Resources. */

PLATFORM_API int WINAPI LoadStringA(HINSTANCE instance, UINT id, LPSTR text, int size);

#ifdef __cplusplus
}
#endif

#endif
