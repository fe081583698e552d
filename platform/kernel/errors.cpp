// The last error of each thread.

#include "platform/kernel/errors.h"

#include <cerrno>

namespace {

thread_local DWORD lastError = ERROR_SUCCESS;

struct Pair {
  int systemError;
  DWORD error;
};

constexpr Pair kPairs[] = {
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {ELOOP, ERROR_PATH_NOT_FOUND},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EROFS, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {ETXTBSY, ERROR_SHARING_VIOLATION},
    {EBUSY, ERROR_SHARING_VIOLATION},
    {EEXIST, ERROR_ALREADY_EXISTS},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {ENOSPC, ERROR_DISK_FULL},
    {EDQUOT, ERROR_DISK_FULL},
    {EFBIG, ERROR_DISK_FULL},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
    {EBADF, ERROR_INVALID_HANDLE},
    {ENOTSUP, ERROR_NOT_SUPPORTED},
    {EINVAL, ERROR_INVALID_PARAMETER},
};

} // namespace

namespace platform {

DWORD errorOf(int systemError) {
  for (const Pair &pair : kPairs)
    if (pair.systemError == systemError) return pair.error;
  return ERROR_WRITE_FAULT;
}

BOOL failWith(DWORD error) {
  SetLastError(error);
  return FALSE;
}

BOOL failWithErrno() { return failWith(errorOf(errno)); }

} // namespace platform

DWORD GetLastError() { return lastError; }

void SetLastError(DWORD error) { lastError = error; }
