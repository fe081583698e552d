// The one place that writes colours to pixels, apart from lines, which step from pixel to pixel themselves.

#include "platform/desktop/drawing/raster.h"

#include <cstring>
#include <cwchar>

namespace platform {

namespace {

constexpr QRgb kBlack = 0xFF000000u, kWhite = 0xFFFFFFFFu, kOpaque = 0xFF000000u;
constexpr QRgb kColorBits = 0xFFFFFFu;

constexpr uint8_t kHatches[][8] = {
    {0x00, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00, 0x00}, {0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08},
    {0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01}, {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80},
    {0x08, 0x08, 0x08, 0xFF, 0x08, 0x08, 0x08, 0x08}, {0x81, 0x42, 0x24, 0x18, 0x18, 0x24, 0x42, 0x81},
};

// The order in which the pixels of an 8 x 8 square become white as a colour gets lighter.
constexpr uint8_t kDitherOrder[8][8] = {
    {63, 31, 55, 23, 61, 29, 53, 21}, {15, 47, 7, 39, 13, 45, 5, 37},   {51, 19, 59, 27, 49, 17, 57, 25},
    {3, 35, 11, 43, 1, 33, 9, 41},    {60, 28, 52, 20, 62, 30, 54, 22}, {12, 44, 4, 36, 14, 46, 6, 38},
    {48, 16, 56, 24, 50, 18, 58, 26}, {0, 32, 8, 40, 2, 34, 10, 42},
};

struct Dithers {
  uint8_t rows[65][8]; // by the number of white pixels
};

constexpr Dithers makeDithers() {
  Dithers dithers{};
  for (int white = 0; white <= 64; ++white)
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x)
        if (kDitherOrder[y][x] < white) dithers.rows[white][y] |= static_cast<uint8_t>(0x80 >> x);
  return dithers;
}

constexpr Dithers kDithers = makeDithers();

// How many of 64 pixels are white in a colour's pattern.
int whiteOf64(QRgb color) {
  const int light = 30 * qRed(color) + 59 * qGreen(color) + 11 * qBlue(color); // up to 100 x 255
  return light < 200 ? 0 : (light - 200) / 400 + 1;
}

QPoint hatchOriginOf(const Canvas &canvas, POINT brushOrigin) {
  return canvas.origin + QPoint(brushOrigin.x & 7, brushOrigin.y & 7);
}

} // namespace

// The number of an operation, less 1, is its table of results: the bit 2 x pen + destination.
Effect effectOf(int rop2, QRgb color) {
  if (rop2 == R2_COPYPEN) return {0, color | kOpaque};
  const int table = std::clamp(rop2, R2_BLACK, R2_WHITE) - 1;
  const auto result = [&](int destination) {
    return (table >> destination & 1 ? ~color : 0u) | (table >> (2 + destination) & 1 ? color : 0u);
  };
  const QRgb onZeros = result(0), onOnes = result(1);
  return {(onZeros ^ onOnes) & ~kOpaque, onZeros | kOpaque};
}

void applyTo(QRgb *pixels, int count, Effect effect) {
  if (!effect.copies()) {
    for (int i = 0; i < count; ++i) pixels[i] = effect.on(pixels[i]);
    return;
  }
  constexpr int kMany = 12;
  static_assert(sizeof(wchar_t) == sizeof(QRgb));
  if (count < kMany)
    std::fill(pixels, pixels + count, effect.turn);
  else // the C library's function takes the widest registers there are
    std::wmemset(reinterpret_cast<wchar_t *>(pixels), static_cast<wchar_t>(effect.turn), static_cast<size_t>(count));
}

QRgb shown(const Canvas &canvas, COLORREF color) {
  const QRgb pixel = pixelOf(color, canvas.palette);
  if (!canvas.mono) return pixel;
  return qRed(pixel) + qGreen(pixel) + qBlue(pixel) > 3 * 255 / 2 ? kWhite : kBlack;
}

QRgb shownOn(const Canvas &canvas, COLORREF color, COLORREF background) {
  const QRgb pixel = pixelOf(color, canvas.palette);
  if (!canvas.mono || pixel == kBlack || pixel == kWhite) return pixel;
  const QRgb nearest = shown(canvas, background);
  return color == background ? nearest : nearest ^ kColorBits;
}

QRgb backgroundShown(const Canvas &canvas, COLORREF color, COLORREF background) {
  if (!canvas.mono) return pixelOf(background, canvas.palette);
  return shownOn(canvas, color, background) ^ (color == background ? 0u : kColorBits);
}

Ink solidInk(const Canvas &canvas, COLORREF color, POINT brushOrigin) {
  Ink ink;
  const int white = canvas.mono ? whiteOf64(pixelOf(color, canvas.palette)) : 0;
  if (!canvas.mono || white % 64 == 0) {
    ink.color = shown(canvas, color);
    return ink;
  }
  ink.hatch = kDithers.rows[white];
  ink.hatchOrigin = hatchOriginOf(canvas, brushOrigin);
  ink.color = kWhite;
  ink.background = kBlack;
  return ink;
}

std::optional<Ink> inkOf(const Dc &dc, const Canvas &canvas, const Brush &brush) {
  if (brush.style == BS_NULL) return std::nullopt;
  Ink ink;
  if (brush.style != BS_HATCHED) ink = solidInk(canvas, brush.color, dc.brushOrigin);
  ink.rop2 = dc.rop2;
  if (brush.style != BS_HATCHED) return ink;
  ink.hatch = kHatches[std::clamp(brush.hatch, HS_HORIZONTAL, HS_DIAGCROSS)];
  ink.hatchOrigin = hatchOriginOf(canvas, dc.brushOrigin);
  ink.color = shownOn(canvas, brush.color, dc.bkColor);
  ink.background = backgroundShown(canvas, brush.color, dc.bkColor);
  ink.transparent = dc.bkMode == TRANSPARENT;
  return ink;
}

std::span<const QRect> clipAt(const Canvas &canvas, int top, int bottom) {
  const std::span<const QRect> all(canvas.clip->begin(), canvas.clip->end());
  if (all.size() == 1) return all;
  const auto first = std::partition_point(all.begin(), all.end(), [=](const QRect &one) { return one.bottom() < top; });
  const auto last = std::partition_point(first, all.end(), [=](const QRect &one) { return one.top() <= bottom; });
  return {first, last};
}

Filler::Filler(const Canvas &canvas, const Ink &ink)
    : canvas_(canvas), ink_(ink), clip_(canvas.clip->boundingRect()), simple_(canvas.clip->rectCount() == 1),
      hatch_(ink.hatch), hatchOrigin_(ink.hatchOrigin), line_(effectOf(ink.rop2, ink.color)),
      gap_(ink.transparent ? effectOf(R2_NOP, 0) : effectOf(ink.rop2, ink.background)) {}

void Filler::rect(const QRect &rect) const {
  if (canvas_.paper) {
    canvas_.paper->fill(*canvas_.clip, rect, ink_);
    return;
  }
  if (simple_) {
    part(common(clip_, rect));
    return;
  }
  for (const QRect &clip : clipAt(canvas_, rect.top(), rect.bottom())) part(common(clip, rect));
}

// Shapes are made of a great many of them.
void Filler::row(int y, int left, int right) const {
  if (!simple_ || hatch_ || canvas_.paper) {
    rect(QRect(QPoint(left, y), QPoint(right - 1, y)));
    return;
  }
  const int from = std::max(left, clip_.left()), to = std::min(right, clip_.right() + 1);
  if (from < to && y >= clip_.top() && y <= clip_.bottom()) applyTo(canvas_.row(y) + from, to - from, line_);
}

void Filler::part(const QRect &rect) const {
  if (rect.isEmpty()) return;
  if (canvas_.paper) {
    canvas_.paper->fill(*canvas_.clip, rect, ink_);
    return;
  }
  if (hatch_) {
    hatchPart(rect);
    return;
  }
  const int count = rect.width();
  QRgb *row = canvas_.row(rect.top()) + rect.left();
  for (int rows = rect.height(); rows > 0; --rows, row += canvas_.pitch) applyTo(row, count, line_);
}

// A hatch is the same again after eight rows.
void Filler::hatchPart(const QRect &rect) const {
  const int count = rect.width();
  const size_t bytes = sizeof(QRgb) * static_cast<size_t>(count);
  const bool copies = line_.copies() && gap_.copies();
  QRgb *row = canvas_.row(rect.top()) + rect.left();
  for (int i = 0; i < rect.height(); ++i, row += canvas_.pitch)
    if (copies && i >= 8)
      std::memcpy(row, row - 8 * canvas_.pitch, bytes);
    else
      hatchRow(row, count, rect.left(), rect.top() + i);
}

void Filler::hatchRow(QRgb *row, int count, int x, int y) const {
  const unsigned bits = hatch_[(y - hatchOrigin_.y()) & 7];
  QRgb keep[8], turn[8];
  for (int i = 0; i < 8; ++i) {
    const Effect &effect = bits & 0x80u >> ((x + i - hatchOrigin_.x()) & 7) ? line_ : gap_;
    keep[i] = effect.keep;
    turn[i] = effect.turn;
  }
  for (; count >= 8; count -= 8, row += 8)
    for (int i = 0; i < 8; ++i) row[i] = (row[i] & keep[i]) ^ turn[i];
  for (int i = 0; i < count; ++i) row[i] = (row[i] & keep[i]) ^ turn[i];
}

void fillRect(const Canvas &canvas, const QRect &rect, const Ink &ink) { Filler(canvas, ink).rect(rect); }

void setPixel(const Canvas &canvas, QPoint at, const Ink &ink) {
  if (ink.hatch || canvas.paper) {
    fillRect(canvas, QRect(at, at), ink);
    return;
  }
  for (const QRect &clip : clipAt(canvas, at.y(), at.y()))
    if (clip.contains(at)) applyTo(canvas.row(at.y()) + at.x(), 1, effectOf(ink.rop2, ink.color));
}

// Rows are many and lie in few places, so that they are dealt out by place first.
void Spans::sortRows() {
  const auto [lowest, highest] =
      std::minmax_element(rows_.begin(), rows_.end(), [](const Row &a, const Row &b) { return a.y < b.y; });
  const int top = lowest->y;
  std::vector<size_t> ends(static_cast<size_t>(highest->y - top) + 2);
  for (const Row &row : rows_) ++ends[static_cast<size_t>(row.y - top) + 1];
  for (size_t i = 1; i < ends.size(); ++i) ends[i] += ends[i - 1];
  std::vector<Row> sorted(rows_.size());
  for (const Row &row : rows_) sorted[ends[static_cast<size_t>(row.y - top)]++] = row;
  auto from = sorted.begin();
  for (const size_t end : ends) {
    const auto to = sorted.begin() + static_cast<std::ptrdiff_t>(end);
    if (to - from > 1) std::sort(from, to);
    from = std::max(from, to);
  }
  rows_ = std::move(sorted);
}

void Spans::settle() {
  if (!std::is_sorted(rows_.begin(), rows_.end())) sortRows();
  size_t kept = 0;
  for (const Row &row : rows_) {
    Row *last = kept ? &rows_[kept - 1] : nullptr;
    if (last && last->y == row.y && row.left <= last->right)
      last->right = std::max(last->right, row.right);
    else
      rows_[kept++] = row;
  }
  rows_.resize(kept);
}

void Spans::remove(const Spans &other) {
  std::vector<Row> left;
  auto hole = other.rows_.begin();
  const auto end = other.rows_.end();
  for (Row row : rows_) {
    while (hole != end && (hole->y < row.y || (hole->y == row.y && hole->right <= row.left))) ++hole;
    for (auto at = hole; at != end && at->y == row.y && at->left < row.right; ++at) {
      if (row.left < at->left) left.push_back({row.y, row.left, at->left});
      row.left = std::max(row.left, at->right);
    }
    if (row.left < row.right) left.push_back(row);
  }
  rows_ = std::move(left);
}

void Spans::fill(const Canvas &canvas, const Ink &ink) const {
  const Filler filler(canvas, ink);
  for (const Row &row : rows_) filler.row(row.y, row.left, row.right);
}

} // namespace platform
