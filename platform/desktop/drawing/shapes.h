// Shapes: what those with straight and those with round sides have in common.
#pragma once

#include "platform/desktop/drawing/lines.h"
#include "platform/desktop/drawing/polygon.h"

#include <array>

namespace platform {

// A box of logical coordinates in device coordinates, with its edges in order and cut to kFar. Its right and bottom
// edges are outside.
QRect deviceBox(const Dc &dc, int left, int top, int right, int bottom);

// The pixels that filling a box of logical coordinates fills. A box that is turned round begins at its first corner all
// the same, and so lies a pixel further right or down.
QRect filledBox(const Dc &dc, int left, int top, int right, int bottom);

// Draws a polygon in device coordinates. Without an ink it isn't filled, and without a pencil it has no outline. Pixels
// under a wide outline aren't filled before, since a raster operation would show both.
void drawPolygon(const Canvas &canvas, std::span<const POINT> points, int mode, const std::optional<Ink> &ink,
                 const std::optional<Pencil> &pencil);

// Draws a rectangle that fills a box of device coordinates. Without a pencil the last column and row of the box stay
// free.
void drawRectangle(const Canvas &canvas, QRect box, const std::optional<Ink> &ink, const std::optional<Pencil> &pencil);

// The part of the image that a shape between corners may change with its inside and its outline.
QRect reachOf(const Canvas &canvas, std::span<const POINT> corners, const std::optional<Pencil> &pencil);

// The box that the middle of a pen goes along, so that what it draws stays within a box.
QRect insideFrame(QRect box, int width);

// The line round a box as the platform draws it: from the top right corner to the left, down, and back.
std::array<POINT, 4> frameOf(const QRect &box);

} // namespace platform
