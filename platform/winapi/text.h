/* Text, as bytes in code page 932: formatted print, double-byte characters, conversion. */
#ifndef PLATFORM_WINAPI_TEXT_H
#define PLATFORM_WINAPI_TEXT_H

#include <stdarg.h>

#include "platform/winapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Formatted print of at most 1023 bytes and a NUL. Supported are %c %d %i %u %x %X %s %%, the flags - # 0, width,
 * precision and the sizes h and l. */
PLATFORM_API int WINAPIV wsprintfA(LPSTR text, LPCSTR format, ...);
PLATFORM_API int WINAPI wvsprintfA(LPSTR text, LPCSTR format, va_list arguments);

/* Whether a byte is the lead byte of a double-byte character. */
PLATFORM_API BOOL WINAPI IsDBCSLeadByte(BYTE byte);

#define CP_ACP 0u
#define CP_UTF8 65001u

/* Convert between UTF-16 and a code page: CP_ACP, which is 932, or CP_UTF8. Length -1 takes the text with its NUL. Size
 * 0 asks for the room needed. Result: the units written or needed; 0 if the room is too small. */
PLATFORM_API int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, WCHAR *wide, int size);
PLATFORM_API int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, const WCHAR *wide, int length, LPSTR text,
                                            int size, LPCSTR defaultCharacter, BOOL *usedDefault);
/* The code page of the terminal: CP_UTF8. */
PLATFORM_API UINT WINAPI GetConsoleOutputCP(void);

#ifdef __cplusplus
}
#endif

#endif
