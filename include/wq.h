/* The whole interface of the library.
 *
 * A flat set of functions over plain records. These rules hold wherever a function does not say otherwise:
 *
 * - Records, buffers and texts belong to the caller. A pointer must not be null unless its description allows it.
 * - Text is bytes in code page 932 (Shift-JIS) with a NUL at the end. Lengths count bytes, without the NUL.
 * - Truth values are 1 and 0. A failure is told by a result of 0 or null. Nothing else tells of
 *   errors, and nothing is thrown.
 * - A record is used by one thread at a time. Functions without a record keep no state unless they say so.
 *
 * Each description has one order: what the function does; its parameters; its result; what bad input gets; which
 * threads may call it where the last rule above does not hold. */
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
#include "frame/frame.h"
/* clang-format on */

#endif
