// Rectangles and points of the API and of Qt.
#pragma once

#include "platform/winapi/types.h"

#include <QRect>

namespace platform {

// Right and bottom lie outside, as everywhere in the API.
inline RECT offset(const RECT &rect, LONG dx, LONG dy) {
  return {rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy};
}
inline bool sameRect(const RECT &a, const RECT &b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
inline bool contains(const RECT &rect, POINT point) {
  return point.x >= rect.left && point.x < rect.right && point.y >= rect.top && point.y < rect.bottom;
}
inline QRect toQt(const RECT &rect) { return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top}; }
inline RECT fromQt(const QRect &rect) {
  return {rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

} // namespace platform
