// Drawing icons. What is below is kept where the mask is white, and turned by the picture; a picture with alpha is
// blended with it instead.

#include "platform/desktop/drawing/blits.h"
#include "platform/desktop/drawing/icons.h"
#include "platform/desktop/drawing/raster.h"
#include "platform/desktop/lock.h"

#include <new>

namespace platform {

namespace {

constexpr QRgb kWhite = 0xFFFFFFFFu, kOpaque = 0xFF000000u;

// A colour over another, each part for itself. It is multiplied by its alpha first, and rounded twice.
QRgb blended(QRgb below, QRgb color) {
  const unsigned alpha = color >> 24;
  const auto part = [&](int low) {
    const unsigned above = ((color >> low & 0xFF) * alpha + 127) / 255;
    return above + ((below >> low & 0xFF) * (255 - alpha) + 127) / 255;
  };
  return kOpaque | part(16) << 16 | part(8) << 8 | part(0);
}

// What becomes of a pixel.
class Effects {
 public:
  Effects(const Canvas &canvas, bool alpha, UINT flags)
      : canvas_(canvas), blends_(alpha && flags & DI_IMAGE), masks_(flags & DI_MASK), pictures_(flags & DI_IMAGE) {}

  QRgb on(QRgb below, QRgb color, QRgb mask) const {
    if (blends_) return shownBlend(blended(below, color));
    if (!pictures_) return mask;
    const QRgb plain = shownColor(color);
    return kOpaque | (masks_ ? (below & mask) ^ plain : plain);
  }

 private:
  QRgb shownBlend(QRgb color) const { return canvas_.mono ? shown(canvas_, fromQt(color)) : color; }
  // On one bit only what is white stays white.
  QRgb shownColor(QRgb color) const { return !canvas_.mono || (color | kOpaque) == kWhite ? color : kOpaque; }

  const Canvas &canvas_;
  const bool blends_, masks_, pictures_;
};

// The columns of a picture that a rectangle shows. Of those that come together in one the last is taken, and of rows
// the first.
std::vector<int> columnsOf(const Way &across, const QRect &area) {
  std::vector<int> columns;
  for (int x = area.left(); x <= area.right(); ++x) columns.push_back(static_cast<int>(across.source(x).last));
  return columns;
}

void drawPicture(const Canvas &canvas, const IconPicture &picture, const Box &box, const QRect &area, UINT flags) {
  const Way across(box.x, {0, picture.size().cx}), down(box.y, {0, picture.size().cy});
  const std::vector<int> columns = columnsOf(across, area);
  const Effects effects(canvas, picture.alpha, flags);
  for (const QRect &clip : *canvas.clip) {
    const QRect part = common(clip, area);
    for (int y = part.top(); y <= part.bottom() && part.width() > 0; ++y) {
      const int from = static_cast<int>(down.source(y).first);
      const auto *const color = reinterpret_cast<const QRgb *>(picture.color.constScanLine(from));
      const auto *const mask = reinterpret_cast<const QRgb *>(picture.mask.constScanLine(from));
      QRgb *const row = canvas.row(y);
      for (int x = part.left(); x <= part.right(); ++x) {
        const int column = columns[static_cast<size_t>(x - area.left())];
        row[x] = effects.on(row[x], color[column], mask[column]);
      }
    }
  }
}

// For paper: what the mask keeps is transparent, and what an icon turns is turned from white.
QImage printed(const IconPicture &picture, const Effects &effects) {
  QImage image(picture.color.size(), QImage::Format_ARGB32);
  if (image.isNull()) throw std::bad_alloc();
  for (int y = 0; y < image.height(); ++y) {
    const auto *const color = reinterpret_cast<const QRgb *>(picture.color.constScanLine(y));
    const auto *const mask = reinterpret_cast<const QRgb *>(picture.mask.constScanLine(y));
    auto *const row = reinterpret_cast<QRgb *>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const QRgb onWhite = effects.on(kWhite, color[x], mask[x]), onBlack = effects.on(kOpaque, color[x], mask[x]);
      const bool kept = (onWhite | kOpaque) == kWhite && (onBlack | kOpaque) == kOpaque;
      row[x] = kept ? 0 : picture.alpha && onWhite != onBlack ? color[x] : onWhite | kOpaque;
    }
  }
  return image;
}

// ground: null for none.
bool drawIcon(Dc &dc, const Icon &icon, const Box &box, UINT flags, const Brush *ground) {
  if (box.empty() || !(flags & DI_NORMAL)) return true;
  const std::optional<Canvas> canvas = dc.canvas();
  if (!canvas) return true;
  const QRect area = common(box.rect(), canvas->clip->boundingRect());
  if (area.isEmpty()) return true;
  if (std::optional<Ink> ink = ground ? inkOf(dc, *canvas, *ground) : std::nullopt) {
    ink->rop2 = R2_COPYPEN;
    fillRect(*canvas, area, *ink);
  }
  if (canvas->paper)
    canvas->paper->picture(*canvas->clip, box.rect(),
                           printed(icon.picture, Effects(*canvas, icon.picture.alpha, flags)));
  else
    drawPicture(*canvas, icon.picture, box, area, flags);
  dc.drawn(area);
  return true;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL DrawIcon(HDC dc, int x, int y, HICON icon) {
  return DrawIconEx(dc, x, y, icon, 0, 0, 0, nullptr, DI_NORMAL | DI_COMPAT | DI_DEFAULTSIZE);
}

BOOL DrawIconEx(HDC dc, int x, int y, HICON handle, int width, int height, UINT, HBRUSH ground, UINT flags) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    const auto icon = iconOf(handle);
    if (!context || !icon) return failWith(icon ? ERROR_INVALID_HANDLE : ERROR_INVALID_CURSOR_HANDLE);
    const bool usual = flags & DI_DEFAULTSIZE;
    if (width == 0) width = usual ? GetSystemMetrics(SM_CXICON) : static_cast<int>(icon->picture.size().cx);
    if (height == 0) height = usual ? GetSystemMetrics(SM_CYICON) : static_cast<int>(icon->picture.size().cy);
    const auto brush = ground ? brushOf(ground) : nullptr;
    return drawIcon(*context, *icon, boxOf(*context, x, y, width, height), flags, brush);
  });
}
