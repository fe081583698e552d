/* The library's frame: what all families lean on, and the global block, which leans on them. Inside the library each
 * file includes the one of these headers that it needs. */
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
