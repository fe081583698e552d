// Device contexts.
#pragma once

#include "platform/desktop/surface.h"
#include "platform/kernel/handles.h"

namespace platform {

// Handles of drawing objects. They are never as small as the numbers of system colours.
Handles &drawingHandles();
// Those that the application made.
size_t countDrawing();

class Brush : public Object {
 public:
  explicit Brush(COLORREF color, bool stock = false) : color(color), stock(stock) {}
  const COLORREF color;
  const bool stock; // stays when it is deleted
};

// A context to draw into a window.
class Dc : public Object {
 public:
  Dc(const WindowRef &window, QPoint origin, QRegion clip)
      : window(window), surface(rootOf(*window).surface), origin(origin), clip(std::move(clip)) {}

  const WindowRef window;
  const std::shared_ptr<Surface> surface;
  const QPoint origin; // of the context's coordinates in the surface
  QRegion clip;        // in the surface
};

// region: limits the context; in coordinates of the surface.
HDC openClientDc(const WindowRef &window, const QRegion &region);
HDC openWholeDc(const WindowRef &window);
bool closeDc(HDC dc);

inline QRgb toQt(COLORREF color) { return qRgb(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF); }
// Fills a rectangle of the context's coordinates.
void fill(Dc &dc, const RECT &rect, COLORREF color);

} // namespace platform
