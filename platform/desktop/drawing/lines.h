// Lines: a context's pen made ready, and straight lines from point to point with it.
// Points are in device coordinates, as far apart as they like: only what the clip shows costs time.
#pragma once

#include "platform/desktop/drawing/raster.h"
#include "platform/desktop/lock.h"

#include <span>

namespace platform {

// What a pen draws with.
struct Pencil {
  Ink ink;
  Ink gap;                         // between dashes
  std::span<const uint8_t> dashes; // lengths of dashes and gaps in turn; empty for an unbroken line
  int width = 1;                   // in pixels
  bool inside = false;             // frames keep within their rectangle
};

// Nothing for the null pen.
std::optional<Pencil> pencilOf(const Dc &dc, const Canvas &canvas);

// For paper: through the middles of pixels.
PaperPath pathOf(std::span<const POINT> points, bool closed);

// Draws from point to point and leaves the last pixel out.
// closed: comes back to the first point.
void drawLines(const Canvas &canvas, const Pencil &pencil, std::span<const POINT> points, bool closed = false);

// A rectangle round points, in the image, with so many pixels more on each side, as far as it can show.
QRect boundsOf(const Canvas &canvas, std::span<const POINT> points, int more = 0);

// Points of logical coordinates in device coordinates.
std::vector<POINT> toDevice(const Dc &dc, std::span<const POINT> logical);

// Runs a drawing function with a context and its canvas, and tells the screen of the rectangle that it returns.
// Result: whether there is such a context, even if it draws nowhere.
// overwritten: a function that tells which rectangle is going to be filled without a look at its pixels, in device
// coordinates.
template <typename Draw, typename Overwritten> BOOL drawOn(HDC dc, Draw draw, Overwritten overwritten) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context) return FALSE;
    const auto canvas = context->canvas(overwritten(*context));
    if (canvas) context->drawn(common(draw(*context, *canvas), canvas->bounds));
    return TRUE;
  });
}

template <typename Draw> BOOL drawOn(HDC dc, Draw draw) {
  return drawOn(dc, draw, [](const Dc &) { return QRect(); });
}

} // namespace platform
