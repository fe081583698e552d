// An interface without behaviour.

#include "sync/sync.h"

void WqSemaphore_Init(WqSemaphore *semaphore) { *semaphore = {}; }

int WqSemaphore_Create(WqSemaphore *, ...) { return 0; }
int WqSemaphore_TryLock(WqSemaphore *, ...) { return 0; }

void WqSemaphore_Lock(WqSemaphore *) {}
void WqSemaphore_Unlock(WqSemaphore *) {}
void WqSemaphore_Term(WqSemaphore *) {}
