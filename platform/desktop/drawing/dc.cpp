// Contexts: making and closing them, their modes, and what they draw on.

#include "platform/desktop/drawing/dc.h"

#include "platform/desktop/drawing/above.h"
#include "platform/desktop/drawing/bitmaps.h"
#include "platform/desktop/drawing/raster.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/screen/screen.h"

#include <algorithm>
#include <cstring>

namespace platform {

namespace {

template <typename Kind> Selected<Kind> stockSelection(int index) {
  const HGDIOBJ handle = stockObject(index);
  return {drawingObject<Kind>(handle), handle};
}

constexpr int kRasterCaps = RC_BITBLT | RC_BITMAP64 | RC_GDI20_OUTPUT | RC_DI_BITMAP | RC_DIBTODEV | RC_BIGFONT |
                            RC_STRETCHBLT | RC_FLOODFILL | RC_STRETCHDIB | RC_DEVBITS;

// What a new context has selected.
struct Defaults {
  Selected<Pen> pen = stockSelection<Pen>(BLACK_PEN);
  Selected<Brush> brush = stockSelection<Brush>(WHITE_BRUSH);
  Selected<Font> font = stockSelection<Font>(SYSTEM_FONT);
  Selected<Palette> palette = stockSelection<Palette>(DEFAULT_PALETTE);
  Selected<Bitmap> bitmap = {drawingObject<Bitmap>(emptyBitmap()), emptyBitmap()};
};

const Defaults &defaults() {
  static const auto *all = new Defaults;
  return *all;
}

// Sets a mode when it is one of those that the platform knows, from 1 up, and returns the one before.
int setMode(HDC dc, int Dc::*mode, int value, int highest) {
  return locked<int>(0, [&]() -> int {
    const auto context = dcOf(dc);
    return context && value >= 1 && value <= highest ? std::exchange((*context).*mode, value) : 0;
  });
}

template <typename Value> Value getMode(HDC dc, Value Dc::*mode) {
  return locked<Value>(0, [&]() -> Value {
    const auto context = dcOf(dc);
    return context ? (*context).*mode : 0;
  });
}

// All bits set is the failure of what takes every value.
template <typename Value> Value setValue(HDC dc, Value Dc::*place, Value value) {
  return locked<Value>(~Value{0}, [&]() -> Value {
    const auto context = dcOf(dc);
    return context ? std::exchange((*context).*place, value) : ~Value{0};
  });
}

} // namespace

Dc::Dc() : pen(defaults().pen), brush(defaults().brush), font(defaults().font), palette(defaults().palette) {
  for (DrawingObject *object :
       std::initializer_list<DrawingObject *>{pen.object, brush.object, font.object, palette.object})
    ++object->selections;
}

Dc::~Dc() {
  letGo(*pen.object, pen.handle);
  letGo(*brush.object, brush.handle);
  letGo(*font.object, font.handle);
  letGo(*palette.object, palette.handle);
  if (!bitmap.object) return;
  if (bitmap.object->user == this) bitmap.object->user = nullptr;
  letGo(*bitmap.object, bitmap.handle);
}

QImage *Dc::target() {
  if (kind == Kind::memory) return &bitmap.object->image;
  return surface ? &surface->image() : nullptr;
}

QImage *Dc::image() {
  if (kind == Kind::memory) bitmap.object->settle();
  return target();
}

QRect Dc::extent() {
  if (paper) return {QPoint(), paper->size()};
  if (const QImage *own = target()) return own->rect().translated(-origin);
  const SIZE screen = theScreen().info().size;
  return {0, 0, screen.cx, screen.cy};
}

QRegion Dc::open() { return kind == Kind::window ? visible.translated(-origin) : QRegion(extent()); }

QRect Dc::bounds() {
  const QImage *image = target();
  if (!image) return {};
  return kind == Kind::window ? readable & image->rect() : image->rect();
}

void Dc::findClip(const QRect &image) {
  clipSize_ = image.size();
  clipInImage_ = kind == Kind::window ? visible & image : QRegion(image);
  if (clip) clipInImage_ &= clip->translated(origin);
  clipKnown_ = true;
}

std::optional<Canvas> Dc::paperCanvas() {
  if (!paper->hasPage()) return std::nullopt;
  const QRect all = extent();
  if (!clipKnown_ || clipSize_ != all.size()) findClip(all);
  if (clipInImage_.isEmpty()) return std::nullopt;
  return Canvas{nullptr, 0, all, &clipInImage_, QPoint(), false, paper.get(), palette.object};
}

std::optional<Canvas> Dc::canvas(const QRect &overwritten) {
  if (paper) return paperCanvas();
  QImage *image = target();
  const QRect all = image ? image->rect() : QRect();
  if (all.isEmpty()) return std::nullopt;
  if (!clipKnown_ || clipSize_ != all.size()) findClip(all);
  if (clipInImage_.isEmpty()) return std::nullopt;
  const bool whole =
      !overwritten.isNull() && overwritten.translated(origin).contains(all) && clipInImage_ == QRegion(all);
  ownPixels(*image, !whole);
  if (kind == Kind::memory) bitmap.object->alpha.clear();
  if (kind == Kind::memory && bitmap.object->blank) {
    if (whole)
      bitmap.object->blank = false;
    else
      bitmap.object->settle();
  }
  return Canvas{reinterpret_cast<QRgb *>(image->bits()),
                image->bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb)),
                all,
                &clipInImage_,
                origin,
                kind == Kind::memory && bitmap.object->bits == 1,
                nullptr,
                palette.object};
}

void Dc::drawn(const QRect &image) {
  if (kind == Kind::window && surface) surface->drawn(image);
}

HDC openWindowDc(HWND window, const std::shared_ptr<Surface> &surface, QPoint origin, QRegion visible,
                 const QRect &readable) {
  const auto dc = std::make_shared<Dc>();
  dc->kind = surface ? Dc::Kind::window : Dc::Kind::display;
  dc->window = window;
  dc->surface = surface;
  dc->origin = origin;
  dc->visible = std::move(visible);
  dc->readable = readable;
  return openObject<HDC>(dc);
}

HDC openPaperDc(std::shared_ptr<Paper> paper) {
  const auto dc = std::make_shared<Dc>();
  dc->kind = Dc::Kind::paper;
  dc->paper = std::move(paper);
  return openObject<HDC>(dc);
}

bool closeDc(HDC dc) {
  const DesktopLock lock;
  return drawingHandles().close<Dc>(dc);
}

bool releaseDc(HDC dc) {
  const auto context = dcOf(dc);
  return context && context->window && closeDc(dc);
}

namespace {

// prepare: gives the ink what it has beside its colour.
template <typename Prepare> void fillPrepared(Dc &dc, const RECT &rect, COLORREF color, Prepare prepare) {
  const QRect device = rectOf(rect);
  const std::optional<Canvas> canvas = dc.canvas(device);
  if (!canvas) return;
  const QRect area = device.translated(canvas->origin);
  Ink ink;
  ink.color = shown(*canvas, color);
  prepare(*canvas, ink);
  fillRect(*canvas, area, ink);
  dc.drawn(area);
}

} // namespace

void fill(Dc &dc, const RECT &rect, COLORREF color) {
  fillPrepared(dc, rect, color, [](const Canvas &, Ink &) {});
}

void fillMixed(Dc &dc, const RECT &rect, COLORREF color, COLORREF other) {
  static constexpr uint8_t kEveryOther[8] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA};
  fillPrepared(dc, rect, color, [other](const Canvas &canvas, Ink &ink) {
    ink.hatch = kEveryOther;
    ink.hatchOrigin = canvas.origin;
    ink.background = shown(canvas, other);
  });
}

} // namespace platform

using namespace platform;

HDC CreateDCA(LPCSTR driver, LPCSTR device, LPCSTR, const void *mode) {
  return locked<HDC>(nullptr, [&]() -> HDC {
    if (driver && qstricmp(driver, "DISPLAY") == 0) return openObject<HDC>(std::make_shared<Dc>());
    std::shared_ptr<Paper> paper = above::paperOf(device, static_cast<const DEVMODEA *>(mode));
    return paper ? openPaperDc(std::move(paper)) : nullptr;
  });
}

HDC CreateCompatibleDC(HDC dc) {
  return locked<HDC>(nullptr, [&]() -> HDC {
    if (dc && !dcOf(dc)) return nullptr;
    const auto context = std::make_shared<Dc>();
    context->kind = Dc::Kind::memory;
    context->bitmap = defaults().bitmap;
    ++context->bitmap.object->selections;
    return openObject<HDC>(context);
  });
}

BOOL DeleteDC(HDC dc) {
  return locked<BOOL>(FALSE, [&] { return closeDc(dc); });
}

int GetDeviceCaps(HDC dc, int index) {
  return locked<int>(0, [&]() -> int {
    const auto context = dcOf(dc);
    if (!context) return 0;
    if (context->paper) return context->paper->caps(index);
    const ScreenInfo info = theScreen().info();
    const SIZE screen = info.size;
    const int perInch = info.pixelsPerInch;
    const auto millimetres = [perInch](LONG pixels) { return (pixels * 254 + 5 * perInch) / (10 * perInch); };
    switch (index) {
    case TECHNOLOGY: return DT_RASDISPLAY;
    case HORZSIZE: return millimetres(screen.cx);
    case VERTSIZE: return millimetres(screen.cy);
    case HORZRES: return screen.cx;
    case VERTRES: return screen.cy;
    case BITSPIXEL: return 32;
    case PLANES: return 1;
    case NUMCOLORS: return -1; // more than a palette has
    case RASTERCAPS: return kRasterCaps;
    case LOGPIXELSX:
    case LOGPIXELSY: return perInch;
    default: return 0;
    }
  });
}

int GetROP2(HDC dc) { return getMode(dc, &Dc::rop2); }

int SetROP2(HDC dc, int mode) { return setMode(dc, &Dc::rop2, mode, R2_WHITE); }

int GetBkMode(HDC dc) { return getMode(dc, &Dc::bkMode); }

int SetBkMode(HDC dc, int mode) { return setMode(dc, &Dc::bkMode, mode, OPAQUE); }

int SetPolyFillMode(HDC dc, int mode) { return setMode(dc, &Dc::polyFillMode, mode, WINDING); }

COLORREF SetBkColor(HDC dc, COLORREF color) { return setValue(dc, &Dc::bkColor, color); }

COLORREF GetTextColor(HDC dc) { return getMode(dc, &Dc::textColor); }

COLORREF SetTextColor(HDC dc, COLORREF color) { return setValue(dc, &Dc::textColor, color); }

UINT SetTextAlign(HDC dc, UINT align) { return setValue(dc, &Dc::textAlign, align); }

BOOL SetBrushOrgEx(HDC dc, int x, int y, POINT *previous) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context) return FALSE;
    if (previous) *previous = context->brushOrigin;
    context->brushOrigin = {x, y};
    return TRUE;
  });
}
