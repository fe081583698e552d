// Conversions and arithmetic for rectangles and points of the API and of Qt.
#pragma once

#include "platform/winapi/types.h"

#include <QRect>

#include <algorithm>

namespace platform {

// Right and bottom are exclusive, as everywhere in the API.
inline RECT offset(const RECT &rect, LONG dx, LONG dy) {
  return {rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy};
}
inline bool sameRect(const RECT &a, const RECT &b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
// If the rectangles don't meet, right may be less than left, or bottom less than top: the result is empty.
inline RECT intersected(const RECT &a, const RECT &b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}
inline bool isIn(const RECT &inner, const RECT &outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}
inline bool contains(const RECT &rect, POINT point) {
  return point.x >= rect.left && point.x < rect.right && point.y >= rect.top && point.y < rect.bottom;
}
inline QRect toQt(const RECT &rect) { return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top}; }
inline RECT fromQt(const QRect &rect) {
  return {rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

} // namespace platform
