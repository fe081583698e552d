// Logical and device coordinates. The metric modes measure the screen as the device's numbers give it, so that a map's
// scale is that of GetDeviceCaps and not that of a monitor.

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/lock.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace platform {

namespace {

int rounded(double value) {
  if (std::isnan(value)) return 0;
  constexpr double kLowest = std::numeric_limits<int>::min(), kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(std::floor(value + 0.5), kLowest, kHighest));
}

// One direction of a map. The platform keeps scales and offsets in single precision, which shows in the results; the
// way back is the inverse of both directions together, so each needs the other's scale.
struct Axis {
  float scale, offset;

  Axis(int window, int windowExtent, int viewport, int viewportExtent) {
    const double exact = static_cast<double>(viewportExtent) / windowExtent;
    scale = static_cast<float>(exact);
    offset = static_cast<float>(viewport - exact * window);
  }

  int map(int value) const { return rounded(value * static_cast<double>(scale) + offset); }
  int back(int value, const Axis &other) const {
    const float inverse = other.scale / (scale * other.scale);
    return rounded(value * static_cast<double>(inverse) + -inverse * offset);
  }
};

Axis across(const Dc &dc) { return {dc.windowOrigin.x, dc.windowExtent.cx, dc.viewportOrigin.x, dc.viewportExtent.cx}; }

Axis down(const Dc &dc) { return {dc.windowOrigin.y, dc.windowExtent.cy, dc.viewportOrigin.y, dc.viewportExtent.cy}; }

// How many units of a mode a tenth of a millimetre has.
double unitsPerTenth(int mode) {
  switch (mode) {
  case MM_HIMETRIC: return 10;
  case MM_LOENGLISH: return 100 / 254.0;
  case MM_HIENGLISH: return 1000 / 254.0;
  case MM_TWIPS: return 1440 / 254.0;
  default: return 1;
  }
}

// The length of a unit in one direction, in millimetres.
double unitLength(LONG viewportExtent, LONG windowExtent, int millimetres, int pixels) {
  return std::abs(static_cast<double>(viewportExtent) * millimetres / (static_cast<double>(pixels) * windowExtent));
}

// Shrinks the viewport in one direction until a unit is as long in both.
void keepUnitsEqual(HDC handle, Dc &dc) {
  const double across = unitLength(dc.viewportExtent.cx, dc.windowExtent.cx, GetDeviceCaps(handle, HORZSIZE),
                                   GetDeviceCaps(handle, HORZRES));
  const double down = unitLength(dc.viewportExtent.cy, dc.windowExtent.cy, GetDeviceCaps(handle, VERTSIZE),
                                 GetDeviceCaps(handle, VERTRES));
  LONG &longer = across > down ? dc.viewportExtent.cx : dc.viewportExtent.cy;
  const int least = longer < 0 ? -1 : 1;
  longer = rounded(longer * std::min(across, down) / std::max(across, down));
  if (longer == 0) longer = least;
}

void setMode(HDC handle, Dc &dc, int mode) {
  if (mode == dc.mapMode) return;
  dc.mapMode = mode;
  if (mode == MM_TEXT) {
    dc.windowExtent = dc.viewportExtent = {1, 1};
  } else if (mode != MM_ANISOTROPIC) {
    const double units = unitsPerTenth(mode) * 10;
    dc.windowExtent = {rounded(GetDeviceCaps(handle, HORZSIZE) * units),
                       rounded(GetDeviceCaps(handle, VERTSIZE) * units)};
    dc.viewportExtent = {GetDeviceCaps(handle, HORZRES), -GetDeviceCaps(handle, VERTRES)};
  }
  if (mode == MM_ISOTROPIC) keepUnitsEqual(handle, dc);
}

BOOL setOrigin(HDC dc, POINT Dc::*origin, POINT value, POINT *previous) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context) return FALSE;
    if (previous) *previous = (*context).*origin;
    (*context).*origin = value;
    if (context->mapMode == MM_ISOTROPIC) keepUnitsEqual(dc, *context); // once more: the first time rounded
    return TRUE;
  });
}

// Only the two modes with extents of the application's take them; the others succeed without a change.
BOOL setExtent(HDC dc, SIZE Dc::*extent, SIZE value, SIZE *previous) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context) return FALSE;
    if (previous) *previous = (*context).*extent;
    if (context->mapMode != MM_ISOTROPIC && context->mapMode != MM_ANISOTROPIC) return TRUE;
    if (value.cx == 0 || value.cy == 0) return FALSE;
    (*context).*extent = value;
    if (context->mapMode == MM_ISOTROPIC) keepUnitsEqual(dc, *context);
    return TRUE;
  });
}

BOOL mapAll(HDC dc, POINT (Dc::*map)(POINT) const, POINT *points, int count) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context || (!points && count > 0)) return FALSE;
    for (int i = 0; i < count; ++i) points[i] = ((*context).*map)(points[i]);
    return TRUE;
  });
}

} // namespace

QRect rectOf(const RECT &rect) {
  const auto near = [](LONG edge) { return std::clamp<LONG>(edge, -kFar, kFar); };
  const int left = near(std::min(rect.left, rect.right)), right = near(std::max(rect.left, rect.right));
  const int top = near(std::min(rect.top, rect.bottom)), bottom = near(std::max(rect.top, rect.bottom));
  return {left, top, right - left, bottom - top};
}

bool Dc::unmapped() const {
  return windowExtent.cx == viewportExtent.cx && windowExtent.cy == viewportExtent.cy &&
         windowOrigin.x == viewportOrigin.x && windowOrigin.y == viewportOrigin.y;
}

POINT Dc::toDevice(POINT logical) const {
  if (unmapped()) return logical;
  return {across(*this).map(logical.x), down(*this).map(logical.y)};
}

POINT Dc::toLogical(POINT device) const {
  if (unmapped()) return device;
  const Axis x = across(*this), y = down(*this);
  return {x.back(device.x, y), y.back(device.y, x)};
}

QRect Dc::toDevice(const RECT &rect) const {
  if (unmapped()) return rectOf(rect);
  const POINT a = toDevice(POINT{rect.left, rect.top}), b = toDevice(POINT{rect.right, rect.bottom});
  return rectOf({a.x, a.y, b.x, b.y});
}

int Dc::widthToDevice(int width) const {
  return rounded(std::abs(static_cast<double>(width) * viewportExtent.cx / windowExtent.cx));
}

} // namespace platform

using namespace platform;

int GetMapMode(HDC dc) {
  return locked<int>(0, [&] {
    const auto context = dcOf(dc);
    return context ? context->mapMode : 0;
  });
}

int SetMapMode(HDC dc, int mode) {
  return locked<int>(0, [&]() -> int {
    const auto context = dcOf(dc);
    if (!context || mode < MM_TEXT || mode > MM_ANISOTROPIC) return 0;
    const int before = context->mapMode;
    setMode(dc, *context, mode);
    return before;
  });
}

BOOL SetWindowOrgEx(HDC dc, int x, int y, POINT *previous) {
  return setOrigin(dc, &Dc::windowOrigin, {x, y}, previous);
}

BOOL SetWindowExtEx(HDC dc, int x, int y, SIZE *previous) { return setExtent(dc, &Dc::windowExtent, {x, y}, previous); }

BOOL SetViewportOrgEx(HDC dc, int x, int y, POINT *previous) {
  return setOrigin(dc, &Dc::viewportOrigin, {x, y}, previous);
}

BOOL SetViewportExtEx(HDC dc, int x, int y, SIZE *previous) {
  return setExtent(dc, &Dc::viewportExtent, {x, y}, previous);
}

BOOL LPtoDP(HDC dc, POINT *points, int count) { return mapAll(dc, &Dc::toDevice, points, count); }

BOOL DPtoLP(HDC dc, POINT *points, int count) { return mapAll(dc, &Dc::toLogical, points, count); }
