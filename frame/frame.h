/* The library's frame: the headers that all families need, and the global block, which needs the families. The
 * library's own files include only those of these headers that they need. */
#ifndef WQ_FRAME_FRAME_H
#define WQ_FRAME_FRAME_H

/* In reading order. */
/* clang-format off */
#include "frame/types.h"
#include "frame/memory.h"
#include "frame/version.h"
#include "frame/system.h"
#include "frame/main.h"
/* clang-format on */

#endif
