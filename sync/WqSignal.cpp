// A manual-reset flag that threads wait for.

#include "sync/sync.h"

void WqSignal_Init(WqSignal *signal) { signal->handle = nullptr; }

int WqSignal_Create(WqSignal *signal, const char *name, int set) {
  signal->handle = CreateEventA(nullptr, TRUE, set, name);
  return signal->handle != nullptr;
}

BOOL WqSignal_SetGo(WqSignal *signal) { return SetEvent(signal->handle); }

BOOL WqSignal_SetStop(WqSignal *signal) { return ResetEvent(signal->handle); }

uint32_t WqSignal_Wait(WqSignal *signal) { return WqSignal_WaitTime(signal, INFINITE); }

uint32_t WqSignal_WaitTime(WqSignal *signal, uint32_t milliseconds) {
  return WaitForSingleObject(signal->handle, milliseconds);
}

void WqSignal_Term(WqSignal *signal) {
  if (signal->handle) CloseHandle(signal->handle);
  signal->handle = nullptr;
}
