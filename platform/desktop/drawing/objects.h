// The objects that contexts draw with. One that is deleted while contexts have it selected keeps its handle, and goes
// when the last of them lets it go.
#pragma once

#include "platform/kernel/handles.h"

#include <QImage>
#include <QRegion>

#include <memory>
#include <vector>

namespace platform {

struct Dc;
class TextFont; // a font made ready to draw with; see fonts.h

// Handles of drawing objects, contexts and icons. They are never as small as the numbers of system colours. All is done
// with them under the desktop lock, so that looking one up costs no lock of the table's and no share in the object.
Handles &drawingHandles();
// Those that the application made.
size_t countDrawing();

class DrawingObject;

// What such a handle stands for.
class DrawingItem : public Object {
 public:
  // Itself, if it is an object that contexts draw with.
  virtual DrawingObject *drawingObject() { return nullptr; }
};

class DrawingObject : public DrawingItem {
 public:
  DrawingObject *drawingObject() final { return this; }
  // Selects it into a context. Result: what SelectObject answers.
  virtual HGDIOBJ selectInto(Dc &dc, HGDIOBJ handle) = 0;
  // Writes what GetObjectA tells of it, and returns its size; without a buffer only the size.
  virtual int describe(int size, void *description) const = 0;

  bool stock = false;   // the system's own: it stays when it is deleted
  bool deleted = false; // by the application, and still selected
  int selections = 0;   // contexts that have it selected
};

class Pen : public DrawingObject {
 public:
  Pen(UINT style, int width, COLORREF color) : style(style), width(width), color(color) {}
  HGDIOBJ selectInto(Dc &dc, HGDIOBJ handle) override;
  int describe(int size, void *description) const override;

  const UINT style;
  const int width; // in logical units; 0 is one pixel
  const COLORREF color;
};

class Brush : public DrawingObject {
 public:
  Brush(UINT style, COLORREF color, int hatch = 0) : style(style), color(color), hatch(hatch) {}
  HGDIOBJ selectInto(Dc &dc, HGDIOBJ handle) override;
  int describe(int size, void *description) const override;

  const UINT style; // BS_SOLID, BS_NULL, BS_HATCHED
  const COLORREF color;
  const int hatch;
};

class Font : public DrawingObject {
 public:
  explicit Font(const LOGFONTA &description) : description(description) {}
  HGDIOBJ selectInto(Dc &dc, HGDIOBJ handle) override;
  int describe(int size, void *description) const override;

  const LOGFONTA description;
  std::shared_ptr<TextFont> ready; // made on first use
};

// Pixels, kept as words 0xFFRRGGBB whatever the depth. A bitmap of one bit holds only black and white.
class Bitmap : public DrawingObject {
 public:
  Bitmap(int width, int height, int bits) : width(width), height(height), bits(bits) {}
  HGDIOBJ selectInto(Dc &dc, HGDIOBJ handle) override;
  int describe(int size, void *description) const override;

  // Makes a blank one's pixels black.
  void settle();

  const int width, height;
  const int bits;     // a pixel has; one with others than 1 or 32 has no image, and no context takes it
  QImage image;       // Format_RGB32
  bool blank = false; // new and black, but its memory holds anything yet
  // Of the pixels as the bitmap was made, for who makes an icon of it; none when there was none, and as soon as
  // anything is drawn on it.
  std::vector<uint8_t> alpha;
  Dc *user = nullptr; // the one context that has it selected
};

class Region : public DrawingObject {
 public:
  explicit Region(QRegion region) : region(std::move(region)) {}
  HGDIOBJ selectInto(Dc &dc, HGDIOBJ handle) override;
  int describe(int size, void *description) const override;

  QRegion region;
};

class Palette : public DrawingObject {
 public:
  explicit Palette(std::vector<PALETTEENTRY> entries) : entries(std::move(entries)) {}
  HGDIOBJ selectInto(Dc &dc, HGDIOBJ handle) override;
  int describe(int size, void *description) const override;

  const std::vector<PALETTEENTRY> entries;
};

// A selected object, which the handle keeps alive at least as long as it is selected. A later selection gives it back.
template <typename Kind> struct Selected {
  Kind *object = nullptr;
  HGDIOBJ handle = nullptr;
};

// For a context that is about to select another object or to go.
void letGo(DrawingObject &object, HGDIOBJ handle);

HANDLE openItem(std::shared_ptr<DrawingItem> item);
// Gives an object a handle of the type that the API uses for its kind.
template <typename Handle> Handle openObject(std::shared_ptr<DrawingItem> item) {
  return static_cast<Handle>(static_cast<void *>(openItem(std::move(item))));
}

// The same for an object that stays, and that the application is not asked for.
HANDLE openUncounted(std::shared_ptr<DrawingItem> item);
// And for one of the system's own.
HGDIOBJ openStock(std::shared_ptr<DrawingObject> object);
// The object of a stock number; null for a number that is none.
HGDIOBJ stockObject(int index);
// A brush by handle, or by a system colour's number plus 1. Null when it is neither.
Brush *brushOf(HBRUSH brush);
// The object of a handle; null for one of another kind.
template <typename Kind> Kind *drawingObject(HANDLE handle) { return drawingHandles().look<Kind>(handle); }
// The same for an object of any kind.
inline DrawingObject *drawingObject(HANDLE handle) {
  auto *const item = static_cast<DrawingItem *>(drawingHandles().look<Object>(handle));
  return item ? item->drawingObject() : nullptr;
}

// A colour that the application names by its number in a palette.
QRgb colorOfEntry(COLORREF color, const Palette *palette);
// A colour of the application as pixels hold it. palette: where it finds one that is named by its number; null for the
// system's own palette.
inline QRgb pixelOf(COLORREF color, const Palette *palette = nullptr) {
  constexpr COLORREF kPlain = 0x01000000u; // from here on the top byte says what the others mean
  if (color >= kPlain) return colorOfEntry(color, palette);
  return qRgb(GetRValue(color), GetGValue(color), GetBValue(color));
}
inline COLORREF fromQt(QRgb color) { return RGB(qRed(color), qGreen(color), qBlue(color)); }

} // namespace platform
