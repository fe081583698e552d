/* The whole interface of the library.
 *
 * A flat set of functions over plain records. These rules hold wherever a function does not say otherwise:
 *
 * - Records, buffers and texts belong to the caller. A pointer must not be null unless its description allows it.
 * - Text is bytes in code page 932 (Shift-JIS) with a NUL at the end. Lengths count bytes, without the NUL.
 * - Truth values are 1 and 0. A failure gives a result of 0 or null. Errors have no other sign, and no function throws.
 * - A record is used by one thread at a time. Functions without a record keep no state unless they say so.
 *
 * Every description has the same order: the function, its parameters, its result, bad input, and the threads that may
 * call it if the last rule above doesn't hold. */
#ifndef WQ_H
#define WQ_H

#include "frame/types.h"

/* In reading order. */
/* clang-format off */
#include "containers/containers.h"
#include "text/text.h"
#include "files/files.h"
#include "audio/audio.h"
#include "sync/sync.h"
#include "drawing/drawing.h"
#include "windows/windows.h"
#include "buttonbar/buttonbar.h"
#include "printing/printing.h"
#include "frame/frame.h"
/* clang-format on */

#endif
