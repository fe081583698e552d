// A lock between processes, by name.

#include "sync/sync.h"

#include "text/text.h"

namespace {

void setName(WqMutex *mutex, const char *name) {
  mutex->name[sizeof mutex->name - 1] = '\0';
  WqStr_nCopy(mutex->name, name, sizeof mutex->name - 1);
}

} // namespace

int WqMutex_Init(WqMutex *mutex, int owned, const char *name) {
  setName(mutex, name);
  mutex->handle = CreateMutexA(nullptr, owned, mutex->name);
  return mutex->handle != nullptr;
}

int WqMutex_Open(WqMutex *mutex, const char *name) {
  setName(mutex, name);
  mutex->handle = OpenMutexA(MUTEX_ALL_ACCESS, FALSE, mutex->name);
  return mutex->handle != nullptr;
}

int WqMutex_IsExist(const char *name) {
  const HANDLE handle = OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name);
  if (!handle) return 0;
  CloseHandle(handle);
  return 1;
}

uint32_t WqMutex_Lock(WqMutex *mutex) { return WaitForSingleObject(mutex->handle, INFINITE); }

BOOL WqMutex_Unock(WqMutex *mutex) { return ReleaseMutex(mutex->handle); }

void WqMutex_Term(WqMutex *mutex) {
  if (mutex->handle) CloseHandle(mutex->handle);
  mutex->handle = nullptr;
}
