// Makes a drive of a kind (DRIVE_...), with no medium in it.
// Result: whether this system lets a test do so.
#pragma once

#include "wq.h"

#ifdef _WIN32
inline bool makeDrive(char, UINT) { return false; }
#else
#include "platform/testing.h"
inline bool makeDrive(char letter, UINT type) { return platformSetDrive(letter, type, "/none"), true; }
#endif
