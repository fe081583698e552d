/* The basis of all headers of the library: the platform's types, the export mark, and the word type. */
#ifndef WQ_FRAME_TYPES_H
#define WQ_FRAME_TYPES_H

#include <stddef.h>
#include <stdint.h>

#include "platform/platform.h"

/* Exported functions and data. WQ_SHARED is defined for a shared library and its users, WQ_BUILDING inside it. */
#if defined(WQ_SHARED) && defined(WQ_BUILDING)
#define WQ_API PLATFORM_EXPORT
#elif defined(WQ_SHARED)
#define WQ_API PLATFORM_IMPORT
#else
#define WQ_API
#endif

/* Lets the compiler check the arguments of a formatted print. */
#ifdef __GNUC__
#define WQ_PRINTF(formatAt, argumentsAt) __attribute__((format(printf, formatAt, argumentsAt)))
#else
#define WQ_PRINTF(formatAt, argumentsAt)
#endif

/* A word that may hold a pointer: 32 bits in 32-bit memory, 64 in 64-bit memory. */
typedef uintptr_t WqWord;

#endif
