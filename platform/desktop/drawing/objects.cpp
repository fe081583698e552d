// Pens, brushes, palettes and the system's own objects: making, describing, selecting and deleting them.

#include "platform/desktop/drawing/objects.h"

#include "platform/desktop/drawing/bitmaps.h"
#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/drawing/regions.h"
#include "platform/desktop/lock.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <span>

namespace platform {

namespace {

size_t stockCount = 0;

constexpr LOGFONTA stockFont(LONG height, LONG width, BYTE charSet, BYTE pitchAndFamily, const char *face) {
  LOGFONTA font{};
  font.lfHeight = height;
  font.lfWidth = width;
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = charSet;
  font.lfPitchAndFamily = pitchAndFamily;
  for (int i = 0; face[i]; ++i) font.lfFaceName[i] = face[i];
  return font;
}

constexpr BYTE kFixedModern = 49, kVariableSwiss = 34, kOemCharSet = 255;

constexpr PALETTEENTRY kSystemPalette[] = {
    {0x00, 0x00, 0x00, 0}, {0x80, 0x00, 0x00, 0}, {0x00, 0x80, 0x00, 0}, {0x80, 0x80, 0x00, 0}, {0x00, 0x00, 0x80, 0},
    {0x80, 0x00, 0x80, 0}, {0x00, 0x80, 0x80, 0}, {0xC0, 0xC0, 0xC0, 0}, {0xC0, 0xDC, 0xC0, 0}, {0xA6, 0xCA, 0xF0, 0},
    {0xFF, 0xFB, 0xF0, 0}, {0xA0, 0xA0, 0xA4, 0}, {0x80, 0x80, 0x80, 0}, {0xFF, 0x00, 0x00, 0}, {0x00, 0xFF, 0x00, 0},
    {0xFF, 0xFF, 0x00, 0}, {0x00, 0x00, 0xFF, 0}, {0xFF, 0x00, 0xFF, 0}, {0x00, 0xFF, 0xFF, 0}, {0xFF, 0xFF, 0xFF, 0},
};

std::shared_ptr<DrawingObject> makeStock(int index) {
  const auto brush = [](COLORREF color) { return std::make_shared<Brush>(BS_SOLID, color); };
  const auto font = [](LONG height, LONG width, BYTE charSet, BYTE pitchAndFamily, const char *face) {
    return std::make_shared<Font>(stockFont(height, width, charSet, pitchAndFamily, face));
  };
  switch (index) {
  case WHITE_BRUSH: return brush(RGB(255, 255, 255));
  case LTGRAY_BRUSH: return brush(RGB(192, 192, 192));
  case GRAY_BRUSH: return brush(RGB(128, 128, 128));
  case DKGRAY_BRUSH: return brush(RGB(64, 64, 64));
  case BLACK_BRUSH: return brush(RGB(0, 0, 0));
  case NULL_BRUSH: return std::make_shared<Brush>(BS_NULL, RGB(0, 0, 0));
  case WHITE_PEN: return std::make_shared<Pen>(PS_SOLID, 0, RGB(255, 255, 255));
  case BLACK_PEN: return std::make_shared<Pen>(PS_SOLID, 0, RGB(0, 0, 0));
  case NULL_PEN: return std::make_shared<Pen>(PS_NULL, 1, RGB(0, 0, 0));
  case OEM_FIXED_FONT: return font(12, 0, kOemCharSet, kFixedModern, "");
  case ANSI_FIXED_FONT: return font(12, 0, ANSI_CHARSET, kFixedModern, "Courier");
  case ANSI_VAR_FONT: return font(12, 0, ANSI_CHARSET, kVariableSwiss, "MS Sans Serif");
  case SYSTEM_FONT: return font(18, 8, SHIFTJIS_CHARSET, kVariableSwiss, "System");
  case DEVICE_DEFAULT_FONT: return font(18, 0, SHIFTJIS_CHARSET, kVariableSwiss, "System");
  case DEFAULT_PALETTE:
    return std::make_shared<Palette>(std::vector(std::begin(kSystemPalette), std::end(kSystemPalette)));
  case SYSTEM_FIXED_FONT: return font(16, 0, SHIFTJIS_CHARSET, kFixedModern, "Courier");
  case DEFAULT_GUI_FONT: return font(-12, 0, SHIFTJIS_CHARSET, kVariableSwiss, "MS Shell Dlg");
  default: return nullptr;
  }
}

// Pens and bitmaps are described whole or not at all; the others as far as there is room.
template <typename Record> int writeWhole(const Record &record, int size, void *description) {
  if (!description) return sizeof record;
  if (size < static_cast<int>(sizeof record)) return 0;
  std::memcpy(description, &record, sizeof record);
  return sizeof record;
}

template <typename Record> int writePart(const Record &record, int size, void *description) {
  if (!description) return sizeof record;
  const int written = std::clamp(size, 0, static_cast<int>(sizeof record));
  std::memcpy(description, &record, static_cast<size_t>(written));
  return written;
}

template <typename Kind> HGDIOBJ exchange(Selected<Kind> &place, DrawingObject &object, HGDIOBJ handle) {
  const Selected<Kind> before = std::exchange(place, {static_cast<Kind *>(&object), handle});
  ++object.selections;
  letGo(*before.object, before.handle);
  return before.handle;
}

std::shared_ptr<Pen> makePen(const LOGPEN &pen) {
  if (pen.lopnStyle == PS_NULL) return std::make_shared<Pen>(PS_NULL, 1, RGB(0, 0, 0));
  const UINT style = pen.lopnStyle <= PS_INSIDEFRAME ? pen.lopnStyle : PS_SOLID;
  const LONG width = std::max<LONG>(pen.lopnWidth.x, -std::numeric_limits<LONG>::max());
  return std::make_shared<Pen>(style, std::abs(width), pen.lopnColor);
}

} // namespace

Handles &drawingHandles() {
  static auto *table = new Handles(1);
  return *table;
}

QRgb colorOfEntry(COLORREF color, const Palette *palette) {
  constexpr COLORREF kByNumber = 0x01000000u, kOfBitmap = 0x10FFu;
  if (color >> 16 == kOfBitmap) return qRgb(0, 0, 0); // a number in the bitmap's own table, which no bitmap here has
  if (!(color & kByNumber)) return pixelOf(color & (kByNumber - 1));
  const std::span<const PALETTEENTRY> entries = palette ? std::span(palette->entries) : std::span(kSystemPalette);
  if (entries.empty()) return qRgb(0, 0, 0);
  const size_t number = LOWORD(color);
  const PALETTEENTRY &entry = entries[number < entries.size() ? number : 0];
  return qRgb(entry.peRed, entry.peGreen, entry.peBlue);
}

size_t countDrawing() { return drawingHandles().count() - stockCount; }

void letGo(DrawingObject &object, HGDIOBJ handle) {
  if (--object.selections == 0 && object.deleted) drawingHandles().close<DrawingObject>(handle);
}

HANDLE openItem(std::shared_ptr<DrawingItem> item) {
  const DesktopLock lock;
  return drawingHandles().open(std::move(item));
}

HANDLE openUncounted(std::shared_ptr<DrawingItem> item) {
  const HANDLE handle = openItem(std::move(item));
  if (handle) ++stockCount;
  return handle;
}

HGDIOBJ openStock(std::shared_ptr<DrawingObject> object) {
  object->stock = true;
  return openUncounted(std::move(object));
}

HGDIOBJ stockObject(int index) {
  static std::array<HGDIOBJ, DEFAULT_GUI_FONT + 1> known{};
  if (index < 0 || index > DEFAULT_GUI_FONT) return nullptr;
  HGDIOBJ &handle = known[static_cast<size_t>(index)];
  if (!handle)
    if (std::shared_ptr<DrawingObject> object = makeStock(index)) handle = openStock(std::move(object));
  return handle;
}

Brush *brushOf(HBRUSH brush) {
  const auto value = reinterpret_cast<uintptr_t>(brush);
  if (value - 1 < 0xFF) brush = GetSysColorBrush(static_cast<int>(value - 1));
  return drawingObject<Brush>(brush);
}

HGDIOBJ Pen::selectInto(Dc &dc, HGDIOBJ handle) { return exchange(dc.pen, *this, handle); }

int Pen::describe(int size, void *description) const {
  return writeWhole(LOGPEN{style, {width, 0}, color}, size, description);
}

HGDIOBJ Brush::selectInto(Dc &dc, HGDIOBJ handle) { return exchange(dc.brush, *this, handle); }

int Brush::describe(int size, void *description) const {
  return writePart(LOGBRUSH{style, color, static_cast<ULONG_PTR>(hatch)}, size, description);
}

HGDIOBJ Font::selectInto(Dc &dc, HGDIOBJ handle) { return exchange(dc.font, *this, handle); }

int Font::describe(int size, void *buffer) const { return writePart(description, size, buffer); }

HGDIOBJ Bitmap::selectInto(Dc &dc, HGDIOBJ handle) {
  if (dc.kind != Dc::Kind::memory || image.isNull() || (user && user != &dc)) return nullptr;
  if (dc.bitmap.object->user == &dc) dc.bitmap.object->user = nullptr;
  if (!stock) user = &dc;
  dc.clipChanged();
  return exchange(dc.bitmap, *this, handle);
}

void Bitmap::settle() {
  if (std::exchange(blank, false)) image.fill(Qt::black);
}

int Bitmap::describe(int size, void *description) const {
  BITMAP record{};
  record.bmWidth = width;
  record.bmHeight = height;
  record.bmWidthBytes = (width * bits + 15) / 16 * 2;
  record.bmPlanes = 1;
  record.bmBitsPixel = static_cast<WORD>(bits);
  return writeWhole(record, size, description);
}

HGDIOBJ Region::selectInto(Dc &dc, HGDIOBJ) {
  return reinterpret_cast<HGDIOBJ>(static_cast<uintptr_t>(selectClip(dc, &region, RGN_COPY)));
}

int Region::describe(int, void *) const { return 0; }

HGDIOBJ Palette::selectInto(Dc &, HGDIOBJ) { return nullptr; }

int Palette::describe(int size, void *description) const {
  return writePart(static_cast<WORD>(entries.size()), size, description);
}

} // namespace platform

using namespace platform;

HPEN CreatePen(int style, int width, COLORREF color) {
  const LOGPEN pen{static_cast<UINT>(style), {width, 0}, color};
  return CreatePenIndirect(&pen);
}

HPEN CreatePenIndirect(const LOGPEN *pen) {
  return locked<HPEN>(nullptr, [&]() -> HPEN {
    if (!pen) return nullptr;
    return openObject<HPEN>(makePen(*pen));
  });
}

HBRUSH CreateSolidBrush(COLORREF color) {
  return locked<HBRUSH>(nullptr, [&] { return openObject<HBRUSH>(std::make_shared<Brush>(BS_SOLID, color)); });
}

// Numbers behind the six hatches up to this one stand for a solid brush.
HBRUSH CreateHatchBrush(int hatch, COLORREF color) {
  constexpr int kLast = 11;
  return locked<HBRUSH>(nullptr, [&]() -> HBRUSH {
    if (hatch < 0 || hatch > kLast) return nullptr;
    if (hatch > HS_DIAGCROSS) return CreateSolidBrush(color);
    return openObject<HBRUSH>(std::make_shared<Brush>(BS_HATCHED, color, hatch));
  });
}

HPALETTE CreatePalette(const LOGPALETTE *palette) {
  return locked<HPALETTE>(nullptr, [&]() -> HPALETTE {
    if (!palette) return nullptr;
    const PALETTEENTRY *first = palette->palPalEntry;
    return openObject<HPALETTE>(std::make_shared<Palette>(std::vector(first, first + palette->palNumEntries)));
  });
}

HPALETTE SelectPalette(HDC dc, HPALETTE palette, BOOL) {
  return locked<HPALETTE>(nullptr, [&]() -> HPALETTE {
    const auto context = dcOf(dc);
    const auto object = drawingObject<Palette>(palette);
    if (!context || !object) return nullptr;
    return static_cast<HPALETTE>(exchange(context->palette, *object, palette));
  });
}

UINT GetPaletteEntries(HPALETTE palette, UINT first, UINT count, PALETTEENTRY *entries) {
  return locked<UINT>(0, [&]() -> UINT {
    const auto object = drawingObject<Palette>(palette);
    if (!object) return 0;
    const auto size = static_cast<UINT>(object->entries.size());
    if (!entries || count == 0) return size;
    if (first >= size) return 0;
    count = std::min(count, size - first);
    std::copy_n(object->entries.begin() + first, count, entries);
    return count;
  });
}

HGDIOBJ GetStockObject(int index) {
  return locked<HGDIOBJ>(nullptr, [&] { return stockObject(index); });
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) {
  return locked<HGDIOBJ>(nullptr, [&]() -> HGDIOBJ {
    const auto context = dcOf(dc);
    const auto chosen = drawingObject(object);
    return context && chosen ? chosen->selectInto(*context, object) : nullptr;
  });
}

int GetObjectA(HANDLE object, int size, void *description) {
  return locked<int>(0, [&]() -> int {
    const auto found = drawingObject(object);
    return found ? found->describe(size, description) : 0;
  });
}

BOOL DeleteObject(HGDIOBJ object) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto found = drawingObject(object);
    if (!found) return closeDc(static_cast<HDC>(object));
    if (found->stock) return TRUE;
    found->deleted = found->selections > 0;
    return found->deleted || drawingHandles().close<DrawingObject>(object);
  });
}

// Palettes need no mapping to the screen's colours, so there is nothing to take back.
BOOL UnrealizeObject(HGDIOBJ object) {
  return locked<BOOL>(FALSE, [&]() -> BOOL { return drawingHandles().look<Object>(object) != nullptr; });
}
