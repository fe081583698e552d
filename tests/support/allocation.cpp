#include "support/allocation.h"

#include <cstddef>

namespace {

// Not thread_local: with mingw, a thread's storage itself comes from malloc.
int callsUntilFailure = 0; // 0 when no failure is ordered
bool failed = false;

bool failsNow() {
  if (callsUntilFailure == 0 || --callsUntilFailure > 0) return false;
  failed = true;
  return true;
}

} // namespace

// The linker sends every call of malloc here, and __real_malloc to the C library.
extern "C" {
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void *__real_realloc(void *block, size_t size);

void *__wrap_malloc(size_t size) { return failsNow() ? nullptr : __real_malloc(size); }
void *__wrap_calloc(size_t count, size_t size) { return failsNow() ? nullptr : __real_calloc(count, size); }
void *__wrap_realloc(void *block, size_t size) { return failsNow() ? nullptr : __real_realloc(block, size); }
}

AllocationFailure::AllocationFailure(int n) {
  failed = false;
  callsUntilFailure = n;
}

AllocationFailure::~AllocationFailure() { callsUntilFailure = 0; }

bool AllocationFailure::happened() {
  callsUntilFailure = 0;
  return failed;
}
