// Error codes of the API for errors of this system.
#pragma once

#include "platform/winapi.h"

#include <exception>

namespace platform {

// The code for an errno of a call on a name or a file.
DWORD errorOf(int systemError);

// Both set the last error and answer FALSE, so that a failing function can return them.
BOOL failWith(DWORD error);
BOOL failWithErrno();

// Runs a body that can run out of memory, and answers failure then: no exception may leave a function of the API.
template <typename Result, typename Body> Result guarded(Result failure, Body body) {
  try {
    return body();
  } catch (const std::exception &) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return failure;
  }
}

} // namespace platform
