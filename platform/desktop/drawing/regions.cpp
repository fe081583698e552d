// Regions, and the clip regions of contexts.

#include "platform/desktop/drawing/regions.h"

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/rects.h"

namespace platform {

namespace {

bool combine(QRegion &result, const QRegion &first, const QRegion *second, int mode) {
  if (mode == RGN_COPY) {
    result = first;
    return true;
  }
  if (!second) return false;
  switch (mode) {
  case RGN_AND: result = first & *second; return true;
  case RGN_OR: result = first | *second; return true;
  case RGN_XOR: result = first ^ *second; return true;
  case RGN_DIFF: result = first - *second; return true;
  default: return false;
  }
}

} // namespace

int kindOf(const QRegion &region) {
  return region.isEmpty() ? NULLREGION : region.rectCount() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

int selectClip(Dc &dc, const QRegion *region, int mode) {
  if (!region) {
    if (mode != RGN_COPY) return ERROR;
    dc.clip.reset();
    dc.clipChanged();
    return SIMPLEREGION;
  }
  QRegion result;
  const QRegion before = dc.clip ? *dc.clip : QRegion(dc.extent());
  const bool done = mode == RGN_COPY ? combine(result, *region, nullptr, mode) : combine(result, before, region, mode);
  if (!done) return ERROR;
  dc.clip = std::move(result);
  dc.clipChanged();
  return kindOf(*dc.clip);
}

} // namespace platform

using namespace platform;

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
  return locked<HRGN>(nullptr, [&] {
    return openObject<HRGN>(std::make_shared<Region>(QRegion(rectOf({left, top, right, bottom}))));
  });
}

HRGN CreateRectRgnIndirect(const RECT *rect) {
  return rect ? CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom) : nullptr;
}

int CombineRgn(HRGN result, HRGN first, HRGN second, int mode) {
  return locked<int>(ERROR, [&]() -> int {
    const auto to = drawingObject<Region>(result), a = drawingObject<Region>(first);
    const auto b = drawingObject<Region>(second);
    if (!to || !a) return ERROR;
    QRegion made;
    if (!combine(made, a->region, b ? &b->region : nullptr, mode)) return ERROR;
    to->region = std::move(made);
    return kindOf(to->region);
  });
}

int GetRgnBox(HRGN region, RECT *rect) {
  return locked<int>(ERROR, [&]() -> int {
    const auto found = drawingObject<Region>(region);
    if (!found || !rect) return ERROR;
    *rect = found->region.isEmpty() ? RECT{0, 0, 0, 0} : fromQt(found->region.boundingRect());
    return kindOf(found->region);
  });
}

int SelectClipRgn(HDC dc, HRGN region) { return ExtSelectClipRgn(dc, region, RGN_COPY); }

int ExtSelectClipRgn(HDC dc, HRGN region, int mode) {
  return locked<int>(ERROR, [&]() -> int {
    const auto context = dcOf(dc);
    const auto found = drawingObject<Region>(region);
    if (!context || (region && !found)) return ERROR;
    return selectClip(*context, found ? &found->region : nullptr, mode);
  });
}

int GetClipRgn(HDC dc, HRGN region) {
  return locked<int>(-1, [&]() -> int {
    const auto context = dcOf(dc);
    const auto found = drawingObject<Region>(region);
    if (!context || !found) return -1;
    if (!context->clip) return 0;
    found->region = *context->clip;
    return 1;
  });
}

int ExcludeClipRect(HDC dc, int left, int top, int right, int bottom) {
  return locked<int>(ERROR, [&]() -> int {
    const auto context = dcOf(dc);
    if (!context) return ERROR;
    const QRegion region(context->toDevice(RECT{left, top, right, bottom}));
    return selectClip(*context, &region, RGN_DIFF);
  });
}

int IntersectClipRect(HDC dc, int left, int top, int right, int bottom) {
  return locked<int>(ERROR, [&]() -> int {
    const auto context = dcOf(dc);
    if (!context) return ERROR;
    const QRegion region(context->toDevice(RECT{left, top, right, bottom}));
    return selectClip(*context, &region, context->clip ? RGN_AND : RGN_COPY);
  });
}

int GetClipBox(HDC dc, RECT *rect) {
  return locked<int>(ERROR, [&]() -> int {
    const auto context = dcOf(dc);
    if (!context || !rect) return ERROR;
    const QRegion seen = context->clip ? *context->clip & context->open() : context->open();
    const RECT box = seen.isEmpty() ? RECT{0, 0, 0, 0} : fromQt(seen.boundingRect());
    const POINT from = context->toLogical(POINT{box.left, box.top});
    const POINT to = context->toLogical(POINT{box.right, box.bottom});
    *rect = {from.x, from.y, to.x, to.y};
    return kindOf(seen);
  });
}
