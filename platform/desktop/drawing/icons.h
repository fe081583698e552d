// Icons and cursors. Both are pictures with a mask; a cursor has a hot spot besides.
//
// A handle stands for one picture, of the size that was asked for. Where that came from a file or a resource with
// several images, the icon keeps the others within reach, so that whoever shows it elsewhere gets the best one for its
// size.
#pragma once

#include "platform/desktop/drawing/objects.h"

#include <QImage>
#include <QPoint>

#include <memory>
#include <optional>

namespace platform {

struct IconPicture {
  QImage color;       // Format_ARGB32; without alpha, what turns the bits below that the mask has left
  QImage mask;        // Format_RGB32: black where the picture covers what is below it, white elsewhere
  bool alpha = false; // the picture is blended by it, and the mask serves only who asks for the mask
  bool mono = false;  // only black and white, and told of as a single bitmap of double height
  POINT hotSpot{0, 0};

  SIZE size() const { return {color.width(), color.height()}; }
};

// Where pictures of one icon come from.
class IconSource {
 public:
  IconSource() = default;
  virtual ~IconSource() = default;
  IconSource(const IconSource &) = delete;
  IconSource &operator=(const IconSource &) = delete;

  // How a picture is chosen where none has the size: the platform's way, or one that is better made smaller than
  // larger.
  enum class Choice { nearest, larger };

  virtual SIZE firstSize() const = 0;
  // The picture that is best for a size, which it need not have itself. Nothing when it can't be read.
  virtual std::optional<IconPicture> pictureFor(SIZE size, Choice choice = Choice::nearest) const = 0;
};

class Icon : public DrawingItem {
 public:
  Icon(IconPicture picture, bool cursor, std::shared_ptr<const IconSource> source);

  // A square picture to be shown on a desktop, with alpha: this icon's own, or the best one of its source, smoothly
  // scaled where none has the size.
  QImage imageFor(int size) const;
  // The icon's own picture likewise.
  QImage image() const;
  POINT hotSpot() const; // an icon's is its middle

  const IconPicture picture;
  const bool cursor;
  const std::shared_ptr<const IconSource> source; // null for one that was made of bitmaps
  bool shared = false;                            // stays when it is destroyed
};

// Null for a handle that is none.
std::shared_ptr<Icon> iconOf(HICON icon);

// For whoever shows icons and cursors; from any thread. Null images for handles that are none.
QImage iconImage(HICON icon, int size);
struct CursorImage {
  QImage image;
  QPoint hotSpot;
};
CursorImage cursorImage(HCURSOR cursor);

// A handle for LoadImageA; null when there is no such icon.
HICON loadIcon(HINSTANCE instance, LPCSTR name, bool cursor, SIZE size, UINT flags);
// A copy for CopyImage. size: 0 for the icon's own.
HICON copyIcon(HICON icon, SIZE size, UINT flags);

// Memory for pixels. Throws when there is none, and for pictures of sizes that nobody means.
QImage makePixels(SIZE size, QImage::Format format);
// A mask that is white wherever a picture lets something through.
QImage maskOf(const QImage &color);
// A picture in another size.
IconPicture stretched(const IconPicture &picture, SIZE size);

// The system's own icons and cursors, by the numbers that the API gives them. Their handles are these numbers, moved
// out of the way of other handles.
constexpr uintptr_t kSystemIcons = 0x10000;
constexpr uintptr_t kSystemCursors = 0x20000;
// Null for a number that is none. The source is asked for square pictures and draws them.
std::shared_ptr<const IconSource> systemIcon(bool cursor, uintptr_t number);

} // namespace platform
