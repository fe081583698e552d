// Device contexts: what they draw on, what is selected, how coordinates are mapped, where they may draw.
//
// Three systems of coordinates: logical ones, which the application uses; device ones, which begin at the top left
// corner of the window or bitmap; and pixels of the image, which holds a whole top-level window. From device to image
// only `origin` is added.
#pragma once

#include "platform/desktop/drawing/objects.h"
#include "platform/desktop/drawing/paper.h"
#include "platform/desktop/drawing/surface.h"

#include <optional>

namespace platform {

// The pixels that one drawing call works on, or the paper, which has none. Good until the end of the call.
struct Canvas {
  QRgb *bits;          // of the top left pixel
  qsizetype pitch;     // words from one row to the next
  QRect bounds;        // of the image
  const QRegion *clip; // where pixels may change, in the image, within bounds
  QPoint origin;       // of the device coordinates in the image
  bool mono;           // pixels are to be only black and white
  Paper *paper = nullptr;
  const Palette *palette = nullptr; // for colours that are named by numbers; null for the system's own

  QRgb *row(int y) const { return bits + y * pitch; }
};

// Coordinates are cut to this distance. No image reaches so far, and the sum of two such numbers doesn't overflow.
constexpr int kFar = 1 << 28;

// A rectangle whose edges come in any order, with its edges in order and cut to kFar.
QRect rectOf(const RECT &rect);

struct Dc : DrawingItem {
  enum class Kind { display, window, memory, paper };

  Dc();
  ~Dc() override;

  Kind kind = Kind::display;
  HWND window = nullptr;            // of a context that is to be released; null for one that is to be deleted
  std::shared_ptr<Surface> surface; // of a window's context
  QPoint origin;                    // of the device coordinates in the surface
  QRegion visible;                  // the part of the surface that the context draws on
  QRect readable;                   // the part of the surface whose pixels other contexts get
  Selected<Bitmap> bitmap;          // of a memory context
  std::shared_ptr<Paper> paper;     // of a printer's context

  Selected<Pen> pen;
  Selected<Brush> brush;
  Selected<Font> font;
  Selected<Palette> palette;
  std::optional<QRegion> clip; // set by the application, in device coordinates

  int rop2 = R2_COPYPEN;
  int bkMode = OPAQUE;
  COLORREF bkColor = RGB(255, 255, 255);
  COLORREF textColor = RGB(0, 0, 0);
  UINT textAlign = TA_LEFT | TA_TOP;
  int polyFillMode = ALTERNATE;
  POINT brushOrigin{0, 0}; // in device coordinates
  POINT position{0, 0};    // logical

  int mapMode = MM_TEXT;
  POINT windowOrigin{0, 0}, viewportOrigin{0, 0};
  SIZE windowExtent{1, 1}, viewportExtent{1, 1};

  // From logical to device coordinates, rounded as the platform rounds, and back.
  POINT toDevice(POINT logical) const;
  POINT toLogical(POINT device) const;
  // A logical rectangle in device coordinates, its edges in order and cut as by rectOf.
  QRect toDevice(const RECT &rect) const;
  // A logical width in device pixels, never negative.
  int widthToDevice(int width) const;
  // Whether logical coordinates are device coordinates.
  bool unmapped() const;

  // The whole image or paper, in device coordinates; of a context without one the screen.
  QRect extent();
  // The part of that which the context draws on as long as the application sets no clip.
  QRegion open();
  // What to draw on; nothing when the context draws nowhere or everything is clipped away.
  // overwritten: the rectangle that the call is going to fill without a look at its pixels, in device coordinates. A
  // new bitmap is black, but nobody blackens one that is overwritten as a whole.
  std::optional<Canvas> canvas(const QRect &overwritten = {});
  // The image that it draws on, whatever is clipped away; null for the display.
  QImage *image();
  // Where other contexts can read from it, in the image.
  QRect bounds();
  // Tells the screen that pixels of the image changed.
  void drawn(const QRect &image);

  // Takes the cached clip back, after a change of bitmap, clip or visible.
  void clipChanged() { clipKnown_ = false; }

 private:
  QImage *target();
  void findClip(const QRect &image);
  std::optional<Canvas> paperCanvas();

  bool clipKnown_ = false;
  QSize clipSize_;
  QRegion clipInImage_;
};

inline Dc *dcOf(HDC dc) { return drawingObject<Dc>(dc); }

// A context of a window. surface: null for the screen's own window. origin: of the device coordinates in the surface.
// visible: where it may draw, likewise. readable: where its pixels may be read.
HDC openWindowDc(HWND window, const std::shared_ptr<Surface> &surface, QPoint origin, QRegion visible,
                 const QRect &readable);
// A context that draws on paper.
HDC openPaperDc(std::shared_ptr<Paper> paper);
bool closeDc(HDC dc);
// Closes a context that stands for a window or the screen; others it leaves alone.
bool releaseDc(HDC dc);

// Fills a rectangle of device coordinates with one colour, whatever the context's modes are.
void fill(Dc &dc, const RECT &rect, COLORREF color);
// The same with two colours, of every other pixel each.
void fillMixed(Dc &dc, const RECT &rect, COLORREF color, COLORREF other);

} // namespace platform
