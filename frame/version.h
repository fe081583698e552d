/* Version numbers. */
#ifndef WQ_FRAME_VERSION_H
#define WQ_FRAME_VERSION_H

#include "frame/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- WqVer: version numbers -------------------------------------------------------------------------------------- */

/* Four numbers of 8 bits. 1.2.3.4 has 1 in the top byte and 4 in the bottom byte, so versions can be compared as
 * words. */
typedef struct WqVer {
  uint32_t value;
} WqVer;

/* Sets the version to 0. */
WQ_API void WqVer_Init(WqVer *version);

/* Does nothing. */
WQ_API void WqVer_Term(WqVer *version);

/* Reads "1.2.3.4"; white space may stand around the dots, and any text behind.
 * Result: 1; 0 if a dot is missing, with the numbers in front of it stored. */
WQ_API int WqVer_Str2Ver(WqVer *version, const char *text);

#ifdef __cplusplus
}
#endif

#endif
