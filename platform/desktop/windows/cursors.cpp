// Icons and cursors of the system.

#include "platform/desktop/lock.h"
#include "platform/desktop/screen/screen.h"

#include <utility>

namespace platform {

namespace {

bool isNumber(LPCSTR name) { return reinterpret_cast<uintptr_t>(name) <= 0xFFFF; }

// Icons and cursors of the system are numbers of their own; an instance has none.
constexpr uintptr_t kSystemIcons = 0x10000;
constexpr uintptr_t kSystemCursors = 0x20000;

Qt::CursorShape shapeOf(HCURSOR cursor) {
  switch (reinterpret_cast<uintptr_t>(cursor) - kSystemCursors) {
  case 32513: return Qt::IBeamCursor;
  case 32514: return Qt::WaitCursor;
  case 32515: return Qt::CrossCursor;
  case 32642: return Qt::SizeFDiagCursor;
  case 32643: return Qt::SizeBDiagCursor;
  case 32644: return Qt::SizeHorCursor;
  case 32645: return Qt::SizeVerCursor;
  case 32646: return Qt::SizeAllCursor;
  case 32649: return Qt::PointingHandCursor;
  default: return Qt::ArrowCursor;
  }
}

HCURSOR currentCursor = nullptr;

} // namespace

} // namespace platform

using namespace platform;

HICON LoadIconA(HINSTANCE instance, LPCSTR name) {
  if (!instance && isNumber(name)) return reinterpret_cast<HICON>(kSystemIcons + reinterpret_cast<uintptr_t>(name));
  SetLastError(ERROR_FILE_NOT_FOUND);
  return nullptr;
}

HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name) {
  if (!instance && isNumber(name)) return reinterpret_cast<HCURSOR>(kSystemCursors + reinterpret_cast<uintptr_t>(name));
  SetLastError(ERROR_FILE_NOT_FOUND);
  return nullptr;
}

HCURSOR SetCursor(HCURSOR cursor) {
  return locked<HCURSOR>(nullptr, [&] {
    if (cursor != currentCursor) theScreen().setPointer({cursor ? shapeOf(cursor) : Qt::BlankCursor, {}, {}});
    return std::exchange(currentCursor, cursor);
  });
}
