/* The Windows API for other systems: the types, constants and functions that the library, its tests and its example
 * use, with the documented names, values and record layouts. Text is code page 932.
 *
 * Every subject has its own header, which can also be included alone. */
#ifndef PLATFORM_WINAPI_H
#define PLATFORM_WINAPI_H

/* In reading order. */
/* clang-format off */

/* Needed by all the others. */
#include "platform/winapi/types.h"
#include "platform/winapi/errors.h"
#include "platform/winapi/handles.h"
#include "platform/winapi/rects.h"

/* The system without windows. */
#include "platform/winapi/memory.h"
#include "platform/winapi/program.h"
#include "platform/winapi/text.h"
#include "platform/winapi/time.h"
#include "platform/winapi/files.h"
#include "platform/winapi/folders.h"
#include "platform/winapi/profiles.h"
#include "platform/winapi/sync.h"
#include "platform/winapi/com.h"

/* Windows. */
#include "platform/winapi/windows.h"
#include "platform/winapi/placing.h"
#include "platform/winapi/messages.h"
#include "platform/winapi/input.h"
#include "platform/winapi/keys.h"
#include "platform/winapi/scroll.h"
#include "platform/winapi/painting.h"
#include "platform/winapi/metrics.h"
#include "platform/winapi/icons.h"
#include "platform/winapi/menus.h"
#include "platform/winapi/clipboard.h"
#include "platform/winapi/drops.h"
#include "platform/winapi/controls.h"
#include "platform/winapi/tooltips.h"
#include "platform/winapi/listbox.h"
#include "platform/winapi/boxes.h"
#include "platform/winapi/dialogs.h"
#include "platform/winapi/shell.h"

/* Drawing. */
#include "platform/winapi/colours.h"
#include "platform/winapi/contexts.h"
#include "platform/winapi/objects.h"
#include "platform/winapi/regions.h"
#include "platform/winapi/drawing.h"
#include "platform/winapi/fonts.h"
#include "platform/winapi/bitmaps.h"
#include "platform/winapi/printing.h"

/* Additions to the API. */
#include "platform/winapi/extensions.h"
/* clang-format on */

#endif
