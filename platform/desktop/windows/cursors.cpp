// The shape of the pointer over the windows.

#include "platform/desktop/drawing/icons.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/screen/screen.h"

#include <utility>

namespace platform {

namespace {

HCURSOR current = nullptr;

// The desktop's own shape for a cursor of the system.
Qt::CursorShape shapeOf(HCURSOR cursor) {
  switch (reinterpret_cast<uintptr_t>(cursor) - kSystemCursors) {
  case 32512: return Qt::ArrowCursor;
  case 32513: return Qt::IBeamCursor;
  case 32514: return Qt::WaitCursor;
  case 32515: return Qt::CrossCursor;
  case 32516: return Qt::UpArrowCursor;
  case 32642: return Qt::SizeFDiagCursor;
  case 32643: return Qt::SizeBDiagCursor;
  case 32644: return Qt::SizeHorCursor;
  case 32645: return Qt::SizeVerCursor;
  case 32646: return Qt::SizeAllCursor;
  case 32648: return Qt::ForbiddenCursor;
  case 32649: return Qt::PointingHandCursor;
  case 32650: return Qt::BusyCursor;
  case 32651: return Qt::WhatsThisCursor;
  default: return Qt::CustomCursor;
  }
}

Pointer pointerOf(HCURSOR cursor) {
  if (!cursor) return {Qt::BlankCursor, {}, {}};
  const Qt::CursorShape shape = shapeOf(cursor);
  if (shape != Qt::CustomCursor) return {shape, {}, {}};
  CursorImage drawn = cursorImage(cursor);
  return {Qt::ArrowCursor, std::move(drawn.image), drawn.hotSpot};
}

} // namespace

} // namespace platform

using namespace platform;

HCURSOR SetCursor(HCURSOR cursor) {
  return locked<HCURSOR>(nullptr, [&] {
    if (cursor != current) theScreen().setPointer(pointerOf(cursor));
    return std::exchange(current, cursor);
  });
}

HCURSOR GetCursor() {
  return locked<HCURSOR>(nullptr, [] { return current; });
}
