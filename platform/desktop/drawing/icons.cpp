// Icons and cursors: loading, making, describing and destroying them.

#include "platform/desktop/drawing/icons.h"

#include "platform/desktop/drawing/bitmaps.h"
#include "platform/desktop/drawing/blits.h"
#include "platform/desktop/drawing/iconfiles.h"
#include "platform/desktop/drawing/images.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/resources.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>
#include <tuple>

namespace platform {

namespace {

constexpr QRgb kWhite = 0xFFFFFFFFu, kBlack = 0xFF000000u;

bool operator==(SIZE a, SIZE b) { return a.cx == b.cx && a.cy == b.cy; }

// Calls a function with each pixel of an image and the one at its place in another.
template <typename Change> void eachPixel(QImage &image, const QImage &other, Change change) {
  for (int y = 0; y < image.height(); ++y) {
    auto *const row = reinterpret_cast<QRgb *>(image.scanLine(y));
    const auto *const beside = reinterpret_cast<const QRgb *>(other.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) change(row[x], beside[x]);
  }
}

// An image of its own, which there must be memory for.
QImage checked(QImage image) {
  if (image.isNull()) throw std::bad_alloc();
  return image;
}

QImage stretchedImage(const QImage &image, SIZE size) {
  QImage result = makePixels(size, image.format());
  stretch(image, result);
  return result;
}

// A picture as it is shown where nothing can be turned: the pixels that would turn what is below them are black.
QImage withAlpha(const IconPicture &picture) {
  QImage image = picture.color;
  if (picture.alpha) return image;
  eachPixel(image, picture.mask, [](QRgb &pixel, QRgb mask) {
    const bool black = (pixel | kBlack) == kBlack;
    pixel = mask == kBlack ? pixel | kBlack : black ? 0 : kBlack;
  });
  return image;
}

SIZE defaultSize(bool cursor) {
  return {GetSystemMetrics(cursor ? SM_CXCURSOR : SM_CXICON), GetSystemMetrics(cursor ? SM_CYCURSOR : SM_CYICON)};
}

// A size of which one part or both aren't told.
SIZE wholeSize(SIZE told, SIZE otherwise) {
  if (told.cx == 0 && told.cy == 0) return otherwise;
  return {told.cx ? told.cx : told.cy, told.cy ? told.cy : told.cx};
}

HICON openIcon(std::shared_ptr<Icon> icon) {
  if (!icon->shared) return openObject<HICON>(std::move(icon));
  return static_cast<HICON>(openUncounted(std::move(icon)));
}

uintptr_t firstNumber(bool cursor) { return cursor ? kSystemCursors : kSystemIcons; }

HICON systemHandle(bool cursor, uintptr_t number) { return reinterpret_cast<HICON>(firstNumber(cursor) + number); }

// The icon of a handle that is a number; made when it is first asked for.
std::shared_ptr<Icon> systemIconOf(uintptr_t handle) {
  static auto *known = new std::map<uintptr_t, std::shared_ptr<Icon>>;
  const auto at = known->find(handle);
  if (at != known->end()) return at->second;
  const bool cursor = handle >= kSystemCursors;
  const auto source = systemIcon(cursor, handle - firstNumber(cursor));
  if (!source) return nullptr;
  auto icon = std::make_shared<Icon>(source->pictureFor(defaultSize(cursor)).value(), cursor, source);
  icon->shared = true;
  return (*known)[handle] = icon;
}

// A resource's number, which may be written as a text behind '#'.
std::optional<uintptr_t> numberOf(LPCSTR name) {
  const auto number = reinterpret_cast<uintptr_t>(name);
  if (number <= 0xFFFF) return number;
  if (*name != '#') return std::nullopt;
  char *end = nullptr;
  const unsigned long written = std::strtoul(name + 1, &end, 10);
  return *end == '\0' && written <= 0xFFFF ? std::optional<uintptr_t>(written) : std::nullopt;
}

std::shared_ptr<const IconSource> resourceIcon(bool cursor, uintptr_t number) {
  static auto *known = new std::map<std::pair<bool, uintptr_t>, std::shared_ptr<const IconSource>>;
  auto &source = (*known)[{cursor, number}];
  const unsigned kind = cursor ? PLATFORM_CURSOR_RESOURCE : PLATFORM_ICON_RESOURCE;
  if (const PlatformResource *found = source ? nullptr : findResource(kind, static_cast<unsigned>(number)))
    source = readIcon(std::span(static_cast<const uint8_t *>(found->bytes), found->size));
  return source;
}

HICON makeIcon(const std::shared_ptr<const IconSource> &source, bool cursor, SIZE size, bool shared = false) {
  const std::optional<IconPicture> picture = source->pictureFor(size);
  if (!picture) return nullptr;
  auto icon = std::make_shared<Icon>(stretched(*picture, size), cursor, source);
  icon->shared = shared;
  return openIcon(std::move(icon));
}

HICON loadFile(LPCSTR name, bool cursor, SIZE size) {
  if (reinterpret_cast<uintptr_t>(name) <= 0xFFFF) return nullptr;
  std::vector<uint8_t> bytes = readWholeFile(name);
  if (bytes.empty()) SetLastError(ERROR_FILE_NOT_FOUND);
  const auto source = readIcon(std::move(bytes));
  return source ? makeIcon(source, cursor, wholeSize(size, source->firstSize())) : nullptr;
}

// One that is shared is made once for each size.
HICON loadShared(const std::shared_ptr<const IconSource> &source, bool cursor, SIZE size) {
  static auto *known = new std::map<std::tuple<const IconSource *, bool, LONG, LONG>, HICON>;
  HICON &handle = (*known)[{source.get(), cursor, size.cx, size.cy}];
  if (!handle) handle = makeIcon(source, cursor, size, true);
  return handle;
}

// The pixels of a bitmap as a mask.
QImage maskFrom(Bitmap &bitmap) {
  QImage mask = checked(bitmap.image.copy());
  eachPixel(mask, mask, [](QRgb &pixel, QRgb) { pixel = pixel == kWhite ? kWhite : kBlack; });
  return mask;
}

// Two halves of a mask: what lets through above, what is turned below.
IconPicture monoPicture(Bitmap &bitmap) {
  const QImage both = maskFrom(bitmap);
  const int height = both.height() / 2;
  IconPicture picture;
  picture.mono = true;
  picture.mask = checked(both.copy(0, 0, both.width(), height));
  picture.color = checked(both.copy(0, height, both.width(), height).convertToFormat(QImage::Format_ARGB32));
  return picture;
}

IconPicture colorPicture(Bitmap &color, Bitmap &mask) {
  IconPicture picture;
  const SIZE size{color.width, color.height};
  picture.color = checked(color.image.convertToFormat(QImage::Format_ARGB32));
  picture.alpha = !color.alpha.empty();
  auto alpha = color.alpha.begin();
  if (picture.alpha)
    eachPixel(picture.color, picture.color,
              [&](QRgb &pixel, QRgb) { pixel = (pixel & ~kBlack) | QRgb{*alpha++} << 24; });
  picture.mask = maskFrom(mask);
  if (mask.width != size.cx || mask.height != size.cy) picture.mask = stretchedImage(picture.mask, size);
  return picture;
}

// A bitmap that has pixels; null for a handle that is none.
std::shared_ptr<Bitmap> pixelsOf(HBITMAP handle) {
  auto bitmap = drawingHandles().get<Bitmap>(handle);
  if (!bitmap || bitmap->image.isNull()) return nullptr;
  bitmap->settle();
  return bitmap;
}

HBITMAP openImages(const QImage &upper, const QImage &lower, int bits) {
  const auto bitmap = makeBitmap(upper.width(), upper.height() + lower.height(), bits);
  if (!bitmap) return nullptr;
  for (int y = 0; y < bitmap->height; ++y) {
    const bool above = y < upper.height();
    const auto *const from = above ? upper.constScanLine(y) : lower.constScanLine(y - upper.height());
    std::memcpy(bitmap->image.scanLine(y), from, sizeof(QRgb) * static_cast<size_t>(bitmap->width));
  }
  bitmap->blank = false;
  return openObject<HBITMAP>(bitmap);
}

HBITMAP openColor(const IconPicture &picture) {
  QImage opaque = picture.color;
  std::vector<uint8_t> alpha;
  eachPixel(opaque, opaque, [&](QRgb &pixel, QRgb) {
    if (picture.alpha) alpha.push_back(static_cast<uint8_t>(qAlpha(pixel)));
    pixel |= kBlack;
  });
  const HBITMAP handle = openImages(opaque, {}, 32);
  if (const auto bitmap = drawingHandles().get<Bitmap>(handle)) bitmap->alpha = std::move(alpha);
  return handle;
}

bool destroyIcon(HICON handle) {
  const auto icon = iconOf(handle);
  if (!icon) return failWith(ERROR_INVALID_CURSOR_HANDLE);
  return icon->shared || drawingHandles().close<Icon>(handle);
}

} // namespace

QImage makePixels(SIZE size, QImage::Format format) {
  constexpr int64_t kMost = int64_t{1} << 26;
  if (int64_t{size.cx} * size.cy > kMost) throw std::bad_alloc();
  return checked(QImage(static_cast<int>(size.cx), static_cast<int>(size.cy), format));
}

QImage maskOf(const QImage &color) {
  QImage mask = makePixels({color.width(), color.height()}, QImage::Format_RGB32);
  eachPixel(mask, color, [](QRgb &pixel, QRgb beside) { pixel = qAlpha(beside) == 255 ? kBlack : kWhite; });
  return mask;
}

// Cursors keep pointing at what they point at.
IconPicture stretched(const IconPicture &picture, SIZE size) {
  const SIZE before = picture.size();
  if (before == size) return picture;
  IconPicture result = picture;
  result.color = stretchedImage(picture.color, size);
  result.mask = stretchedImage(picture.mask, size);
  result.hotSpot = {static_cast<LONG>(int64_t{picture.hotSpot.x} * size.cx / before.cx),
                    static_cast<LONG>(int64_t{picture.hotSpot.y} * size.cy / before.cy)};
  return result;
}

Icon::Icon(IconPicture picture, bool cursor, std::shared_ptr<const IconSource> source)
    : picture(std::move(picture)), cursor(cursor), source(std::move(source)) {}

QImage Icon::image() const { return withAlpha(picture); }

QImage Icon::imageFor(int size) const {
  const SIZE wanted{size, size};
  std::optional<IconPicture> best;
  if (source && !(picture.size() == wanted)) best = source->pictureFor(wanted, IconSource::Choice::larger);
  QImage found = withAlpha(best.value_or(picture));
  if (found.width() == size && found.height() == size) return found;
  return found.scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
      .convertToFormat(QImage::Format_ARGB32);
}

POINT Icon::hotSpot() const {
  if (cursor) return picture.hotSpot;
  return {picture.size().cx / 2, picture.size().cy / 2};
}

std::shared_ptr<Icon> iconOf(HICON icon) {
  const auto number = reinterpret_cast<uintptr_t>(icon);
  constexpr uintptr_t kEnd = kSystemCursors + 0x10000;
  return number >= kSystemIcons && number < kEnd ? systemIconOf(number) : drawingHandles().get<Icon>(icon);
}

QImage iconImage(HICON icon, int size) {
  return locked<QImage>({}, [&]() -> QImage {
    const auto found = iconOf(icon);
    if (!found || size <= 0) return {};
    return found->imageFor(size);
  });
}

CursorImage cursorImage(HCURSOR cursor) {
  return locked<CursorImage>({}, [&]() -> CursorImage {
    const auto found = iconOf(cursor);
    if (!found) return {};
    const POINT spot = found->hotSpot();
    return {found->image(), QPoint(static_cast<int>(spot.x), static_cast<int>(spot.y))};
  });
}

HICON loadIcon(HINSTANCE instance, LPCSTR name, bool cursor, SIZE size, UINT flags) {
  if (flags & LR_DEFAULTSIZE) {
    const SIZE usual = defaultSize(cursor);
    size = {size.cx ? size.cx : usual.cx, size.cy ? size.cy : usual.cy};
  }
  if (flags & LR_LOADFROMFILE) return loadFile(name, cursor, size);
  const std::optional<uintptr_t> number = numberOf(name);
  const bool known = number && (!instance || instance == GetModuleHandleA(nullptr));
  const auto source = !known ? nullptr : instance ? resourceIcon(cursor, *number) : systemIcon(cursor, *number);
  if (!source) {
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return nullptr;
  }
  size = wholeSize(size, source->firstSize());
  if (!(flags & LR_SHARED)) return makeIcon(source, cursor, size);
  return !instance && size == defaultSize(cursor) ? systemHandle(cursor, *number) : loadShared(source, cursor, size);
}

HICON copyIcon(HICON handle, SIZE size, UINT flags) {
  const auto icon = iconOf(handle);
  if (!icon) {
    SetLastError(ERROR_INVALID_CURSOR_HANDLE);
    return nullptr;
  }
  const SIZE own = icon->picture.size(),
             wanted = wholeSize(size, flags & LR_DEFAULTSIZE ? defaultSize(icon->cursor) : own);
  if (flags & LR_COPYRETURNORG && wanted == own) return handle;
  std::optional<IconPicture> best;
  if (flags & LR_COPYFROMRESOURCE && icon->source && !(wanted == own)) best = icon->source->pictureFor(wanted);
  const HICON copy = openObject<HICON>(
      std::make_shared<Icon>(stretched(best.value_or(icon->picture), wanted), icon->cursor, icon->source));
  if (copy && flags & LR_COPYDELETEORG) destroyIcon(handle);
  return copy;
}

} // namespace platform

using namespace platform;

HICON LoadIconA(HINSTANCE instance, LPCSTR name) {
  return locked<HICON>(nullptr, [&] { return loadIcon(instance, name, false, {0, 0}, LR_SHARED | LR_DEFAULTSIZE); });
}

HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name) {
  return locked<HCURSOR>(nullptr, [&] { return loadIcon(instance, name, true, {0, 0}, LR_SHARED | LR_DEFAULTSIZE); });
}

HICON CopyIcon(HICON icon) {
  return locked<HICON>(nullptr, [&] { return copyIcon(icon, {0, 0}, 0); });
}

BOOL DestroyIcon(HICON icon) {
  return locked<BOOL>(FALSE, [&]() -> BOOL { return destroyIcon(icon); });
}

BOOL DestroyCursor(HCURSOR cursor) { return DestroyIcon(cursor); }

HICON CreateIconIndirect(ICONINFO *info) {
  return locked<HICON>(nullptr, [&]() -> HICON {
    const auto mask = info ? pixelsOf(info->hbmMask) : nullptr;
    const auto color = info && info->hbmColor ? pixelsOf(info->hbmColor) : nullptr;
    if (!mask || (info->hbmColor ? !color : mask->height < 2)) {
      SetLastError(ERROR_INVALID_PARAMETER);
      return nullptr;
    }
    IconPicture picture = color ? colorPicture(*color, *mask) : monoPicture(*mask);
    picture.hotSpot = {static_cast<LONG>(info->xHotspot), static_cast<LONG>(info->yHotspot)};
    return openIcon(std::make_shared<Icon>(std::move(picture), !info->fIcon, nullptr));
  });
}

BOOL GetIconInfo(HICON handle, ICONINFO *info) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto icon = iconOf(handle);
    if (!icon || !info) return failWith(icon ? ERROR_INVALID_PARAMETER : ERROR_INVALID_CURSOR_HANDLE);
    const IconPicture &picture = icon->picture;
    const POINT spot = icon->hotSpot();
    *info = {!icon->cursor, static_cast<DWORD>(spot.x), static_cast<DWORD>(spot.y),
             openImages(picture.mask, picture.mono ? picture.color : QImage(), 1),
             picture.mono ? nullptr : openColor(picture)};
    if (info->hbmMask && (picture.mono || info->hbmColor)) return TRUE;
    DeleteObject(info->hbmMask);
    DeleteObject(info->hbmColor);
    return failWith(ERROR_NOT_ENOUGH_MEMORY);
  });
}

HCURSOR CreateCursor(HINSTANCE, int xHotspot, int yHotspot, int width, int height, const void *mask,
                     const void *picture) {
  if (width <= 0 || height <= 0 || !mask || !picture) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  return locked<HCURSOR>(nullptr, [&]() -> HCURSOR {
    const HBITMAP upper = CreateBitmap(width, height, 1, 1, mask), lower = CreateBitmap(width, height, 1, 1, picture);
    const auto above = pixelsOf(upper), below = pixelsOf(lower);
    DeleteObject(upper);
    DeleteObject(lower);
    if (!above || !below) return nullptr;
    IconPicture made;
    made.mono = true;
    made.mask = maskFrom(*above);
    made.color = checked(maskFrom(*below).convertToFormat(QImage::Format_ARGB32));
    made.hotSpot = {xHotspot, yHotspot};
    return openIcon(std::make_shared<Icon>(std::move(made), true, nullptr));
  });
}
