// The kernel half's functions for tests and tools.

#include "platform/testing.h"

#include "platform/kernel/globalmem.h"
#include "platform/kernel/handles.h"
#include "platform/kernel/mapping.h"
#include "platform/kernel/paths.h"

void platformSetDrive(char letter, UINT type, const char *folder) {
  platform::setDrive(letter, {type, folder ? folder : ""});
}

void platformCountHandles(PlatformHandleCounts *counts) {
  counts->kernel = platform::handles().count();
  counts->views = platform::countViews();
  counts->memory = platform::countBlocks();
}
