#include "platform/desktop/dc.h"

#include "platform/desktop/colors.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/update.h"

namespace platform {

Handles &drawingHandles() {
  static auto *table = new Handles(1);
  return *table;
}

size_t countDrawing() { return drawingHandles().count() - countColorBrushes(); }

HDC openClientDc(const WindowRef &window, const QRegion &region) {
  const POINT origin = originInSurface(*window);
  const auto dc = std::make_shared<Dc>(window, QPoint(origin.x, origin.y), region & visibleClient(*window));
  return static_cast<HDC>(static_cast<void *>(drawingHandles().open(dc)));
}

HDC openWholeDc(const WindowRef &window) {
  POINT origin{0, 0};
  if (!window->isTopLevel()) {
    origin = originInSurface(*window->parent);
    origin = {origin.x + window->rect.left, origin.y + window->rect.top};
  }
  const auto dc = std::make_shared<Dc>(window, QPoint(origin.x, origin.y), visibleWhole(*window));
  return static_cast<HDC>(static_cast<void *>(drawingHandles().open(dc)));
}

bool closeDc(HDC dc) { return drawingHandles().close<Dc>(dc); }

void fill(Dc &dc, const RECT &rect, COLORREF color) {
  if (!dc.surface) return;
  const QRegion area = dc.clip & toQt(offset(rect, dc.origin.x(), dc.origin.y()));
  if (area.isEmpty()) return;
  QImage &image = dc.surface->image();
  for (const QRect &part : area &image.rect())
    for (int y = part.top(); y <= part.bottom(); ++y) {
      auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
      std::fill(line + part.left(), line + part.right() + 1, toQt(color));
    }
  dc.surface->drawn(area);
}

} // namespace platform

using namespace platform;

HBRUSH CreateSolidBrush(COLORREF color) {
  return guarded<HBRUSH>(nullptr, [&] {
    return static_cast<HBRUSH>(static_cast<void *>(drawingHandles().open(std::make_shared<Brush>(color))));
  });
}

BOOL DeleteObject(HGDIOBJ object) {
  const auto brush = drawingHandles().get<Brush>(object);
  if (!brush) return FALSE;
  return brush->stock || drawingHandles().close<Brush>(object);
}

int FillRect(HDC dc, const RECT *rect, HBRUSH brush) {
  return locked<int>(0, [&]() -> int {
    const auto context = drawingHandles().get<Dc>(dc);
    const std::optional<COLORREF> color = brushColor(brush);
    if (!context || !rect || !color) return 0;
    fill(*context, *rect, *color);
    return 1;
  });
}

COLORREF GetPixel(HDC dc, int x, int y) {
  return locked<COLORREF>(0xFFFFFFFFu, [&]() -> COLORREF {
    const auto context = drawingHandles().get<Dc>(dc);
    if (!context || !context->surface) return 0xFFFFFFFFu;
    const QPoint at = context->origin + QPoint(x, y);
    if (!context->clip.contains(at) || !context->surface->image().rect().contains(at)) return 0xFFFFFFFFu;
    const QRgb color = context->surface->image().pixel(at);
    return RGB(qRed(color), qGreen(color), qBlue(color));
  });
}

int GetClipBox(HDC dc, RECT *rect) {
  return locked<int>(ERROR, [&]() -> int {
    const auto context = drawingHandles().get<Dc>(dc);
    if (!context || !rect) return ERROR;
    *rect = fromQt(context->clip.boundingRect().translated(-context->origin));
    if (context->clip.isEmpty()) *rect = {0, 0, 0, 0};
    return context->clip.isEmpty() ? NULLREGION : context->clip.rectCount() == 1 ? SIMPLEREGION : COMPLEXREGION;
  });
}
