// Text on a canvas: masks of characters, blended row by row where it is level, and bands for what goes along with it.

#include "platform/desktop/drawing/text.h"

#include "platform/desktop/drawing/lines.h"
#include "platform/desktop/drawing/polygon.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"

#include <climits>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

constexpr uint16_t kBroken = 0x8145; // the middle dot
constexpr UINT kAcross = TA_LEFT | TA_RIGHT | TA_CENTER, kDown = TA_TOP | TA_BOTTOM | TA_BASELINE;

// A number of pixels in logical units, by the extents of one direction. The result is rounded, while a length on its
// way to the device is cut. Where the scale is negative, half a unit is rounded the other way.
int toLogical(int64_t pixels, LONG windowExtent, LONG viewportExtent) {
  if (windowExtent == viewportExtent) return static_cast<int>(std::min<int64_t>(pixels, INT_MAX));
  const double exact = static_cast<double>(pixels) * windowExtent / viewportExtent;
  return static_cast<int>(std::min<double>(std::abs(std::floor(exact + 0.5)), INT_MAX));
}

int whole(double value) { return static_cast<int>(std::floor(std::clamp<double>(value, -kFar, kFar) + 0.5)); }

int near(int64_t value) { return static_cast<int>(std::clamp<int64_t>(value, -kFar, kFar)); }

// A pixel with its four bytes in 16 bits each, so that one multiplication scales them all.
constexpr uint64_t kLanes = 0x00FF00FF00FF00FFu;

uint64_t spread(QRgb pixel) { return (pixel | uint64_t{pixel} << 24) & kLanes; }

QRgb blended(QRgb under, uint64_t color, unsigned alpha) {
  const unsigned over = alpha + (alpha >> 7); // 0 to 256
  const uint64_t lanes = (spread(under) * (256 - over) + color * over) >> 8 & kLanes;
  return static_cast<QRgb>(lanes | lanes >> 24);
}

// Without a branch, since no processor can guess the alpha values of a character.
void blendRow(QRgb *row, const uint8_t *alpha, int count, uint64_t color) {
  for (int i = 0; i < count; ++i) row[i] = blended(row[i], color, alpha[i]);
}

} // namespace

Codes codesOf(std::string_view text) {
  Codes codes;
  codes.reserve(static_cast<qsizetype>(text.size()));
  for (size_t at = 0; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (!isLeadByte(byte)) {
      codes.append(byte);
    } else if (isDoubleByteAt(text, at)) {
      codes.append(static_cast<uint16_t>(byte << 8 | static_cast<unsigned char>(text[++at])));
    } else {
      codes.append(kBroken);
      if (at + 1 < text.size() && text[at + 1] != 0) ++at;
    }
  }
  return codes;
}

int64_t widthOf(TextFont &font, Run run) {
  int64_t width = 0;
  for (const uint16_t code : run) width += font.advance(code);
  return width;
}

int logicalWidth(const Dc &dc, int64_t pixels) { return toLogical(pixels, dc.windowExtent.cx, dc.viewportExtent.cx); }

int logicalHeight(const Dc &dc, int64_t pixels) { return toLogical(pixels, dc.windowExtent.cy, dc.viewportExtent.cy); }

TextPen::TextPen(Dc &dc)
    : dc_(dc), font_(readyFont(dc)), canvas_(dc.canvas()), upright_(font_->description().lfEscapement == 0) {
  if (!upright_) {
    const double angle = static_cast<double>(font_->description().lfEscapement) * std::numbers::pi / 1800;
    cosine_ = std::cos(angle);
    sine_ = std::sin(angle);
  }
  if (!canvas_) return;
  color_ = shownOn(*canvas_, dc.textColor, dc.bkColor);
  limits_ = canvas_->clip->boundingRect();
}

TextPen::~TextPen() {
  if (!drawn_.isEmpty()) dc_.drawn(drawn_);
}

void TextPen::limit(const QRect &rect) {
  if (canvas_) limits_ = common(limits_, rect.translated(canvas_->origin));
}

void TextPen::mark(const QRect &rect) { drawn_ = drawn_.isEmpty() ? rect : drawn_ | rect; }

// The base line goes to the right, and a turn lifts its end. What lies below it is downwards, and a turn moves that to
// the right.
TextPen::Line TextPen::lineFor(POINT at, int64_t width) const {
  const UINT across = dc_.textAlign & kAcross, down = dc_.textAlign & kDown;
  const POINT point = dc_.toDevice(at);
  const auto back = static_cast<double>(across == TA_CENTER ? width / 2 : across == TA_RIGHT ? width : 0);
  const TextMetrics &metrics = font_->metrics();
  const double below = down == TA_BASELINE ? 0 : down == TA_BOTTOM ? -metrics.descent : metrics.ascent;
  return {point.x - back * cosine_ + below * sine_, point.y + back * sine_ + below * cosine_, width};
}

void TextPen::advance(POINT at, int64_t width) {
  const UINT across = dc_.textAlign & kAcross;
  if (across == TA_CENTER) return;
  const double distance = static_cast<double>(across == TA_RIGHT ? -width : width);
  const auto length = [](double pixels, int (*logical)(const Dc &, int64_t), const Dc &dc) {
    const int units = logical(dc, std::abs(whole(pixels)));
    return pixels < 0 ? -int64_t{units} : int64_t{units};
  };
  dc_.position = {near(at.x + length(distance * cosine_, logicalWidth, dc_)),
                  near(at.y - length(distance * sine_, logicalHeight, dc_))};
}

QPoint TextPen::along(const Line &line, int64_t distance) const {
  const auto steps = static_cast<double>(distance);
  return QPoint(whole(line.x + steps * cosine_), whole(line.y - steps * sine_)) + canvas_->origin;
}

// Fills a band along a base line: from and to count along it, top and bottom downwards from it.
void TextPen::fillBand(const Line &line, int64_t from, int64_t to, int top, int bottom, QRgb color) {
  Ink ink;
  ink.color = color;
  if (upright_) {
    const QPoint left = along(line, from), right = along(line, to);
    const QRect band = common(limits_, QRect(left.x(), left.y() + top, right.x() - left.x(), bottom - top));
    fillRect(*canvas_, band, ink);
    mark(band);
    return;
  }
  const auto corner = [&](int64_t distance, int below) {
    const auto steps = static_cast<double>(distance);
    return POINT{whole(line.x + steps * cosine_ + below * sine_), whole(line.y - steps * sine_ + below * cosine_)};
  };
  const POINT corners[] = {corner(from, top), corner(to, top), corner(to, bottom), corner(from, bottom)};
  if (canvas_->paper) {
    canvas_->paper->draw(*canvas_->clip & limits_, pathOf(corners, true), WINDING, &ink, nullptr);
    return;
  }
  Spans spans(limits_);
  addPolygon(spans, corners, WINDING, canvas_->origin);
  spans.fill(*canvas_, ink);
  mark(common(limits_, boundsOf(*canvas_, corners, 1)));
}

void TextPen::draw(POINT at, Run run) {
  if (run.empty()) return;
  if (dc_.textAlign & TA_UPDATECP) at = dc_.position;
  const int64_t width = widthOf(*font_, run);
  const Line line = lineFor(at, width);
  if (dc_.textAlign & TA_UPDATECP) advance(at, width);
  if (!canvas_ || limits_.isEmpty()) return;
  const TextMetrics &metrics = font_->metrics();
  if (dc_.bkMode == OPAQUE)
    fillBand(line, 0, width, -metrics.ascent, metrics.descent, backgroundShown(*canvas_, dc_.textColor, dc_.bkColor));
  int64_t distance = 0;
  if (canvas_->paper) drawOnPaper(line, run);
  for (const uint16_t code : canvas_->paper ? Run() : run) {
    drawCharacter(code, along(line, distance));
    distance += font_->advance(code);
  }
  const auto band = [&](int top, int thickness) { fillBand(line, 0, width, top, top + thickness, color_); };
  if (font_->description().lfUnderline) band(metrics.underline, metrics.underlineWidth);
  if (font_->description().lfStrikeOut) band(metrics.strikeOut, metrics.strikeOutWidth);
}

// A text that lies within its limits, as most do, needs no clip of its own on the page.
void TextPen::drawOnPaper(const Line &line, Run run) {
  const TextMetrics &metrics = font_->metrics();
  const QRect reach(whole(line.x), whole(line.y) - metrics.ascent, near(line.width), font_->height());
  const bool inside = upright_ && limits_.contains(reach);
  const QRegion clip = inside ? *canvas_->clip : *canvas_->clip & limits_;
  canvas_->paper->text(clip, {*font_, run, line.x, line.y, cosine_, sine_, color_});
}

void TextPen::underline(POINT at, int64_t from, int64_t width) {
  if (canvas_ && !limits_.isEmpty()) fillBand(lineFor(at, 0), from, from + width - 1, 1, 2, color_);
}

void TextPen::drawCharacter(uint16_t code, QPoint at) {
  const Mask &mask = font_->mask(code, !canvas_->mono);
  if (mask.big)
    drawBig(code, at);
  else if (mask.width > 0)
    drawMask(mask, at);
}

void TextPen::drawMask(const Mask &mask, QPoint at) {
  const QRect box(at.x() + mask.left, at.y() + mask.top, mask.width, mask.height);
  const QRect shown = common(box, limits_);
  if (shown.isEmpty()) return;
  const uint8_t *pixels = font_->pixels(mask);
  const uint64_t color = spread(color_);
  for (const QRect &clip : *canvas_->clip) {
    const QRect part = common(shown, clip);
    if (part.isEmpty()) continue;
    const uint8_t *alpha = pixels + ptrdiff_t{part.top() - box.top()} * mask.width + (part.left() - box.left());
    QRgb *row = canvas_->row(part.top()) + part.left();
    for (int y = part.top(); y <= part.bottom(); ++y, alpha += mask.width, row += canvas_->pitch)
      blendRow(row, alpha, part.width(), color);
  }
  mark(shown);
}

void TextPen::drawBig(uint16_t code, QPoint at) {
  constexpr uint8_t kHalf = 0x80;
  const auto row = [](void *self, int x, int y, int count, uint8_t alpha) {
    const auto &pen = *static_cast<const TextPen *>(self);
    if (pen.canvas_->mono) alpha = alpha < kHalf ? 0 : 0xFF;
    QRgb *pixels = pen.canvas_->row(y) + x;
    for (int i = 0; i < count; ++i) pixels[i] = blended(pixels[i], spread(pen.color_), alpha);
  };
  for (const QRect &clip : *canvas_->clip) font_->fillBig(code, at, common(clip, limits_), row, this);
  mark(limits_);
}

} // namespace platform

using namespace platform;

BOOL GetTextMetricsA(HDC dc, TEXTMETRICA *metrics) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context || !metrics) return FALSE;
    const std::shared_ptr<TextFont> font = readyFont(*context);
    const LOGFONTA &description = font->description();
    const TextMetrics &pixels = font->metrics();
    const auto across = [&](int length) {
      return static_cast<LONG>(
          std::lround(std::abs(1.0 * length * context->windowExtent.cx / context->viewportExtent.cx)));
    };
    const auto down = [&](int length) {
      return static_cast<LONG>(
          std::lround(std::abs(1.0 * length * context->windowExtent.cy / context->viewportExtent.cy)));
    };
    constexpr BYTE kYes = 0xFF, kProportional = 1, kOutlines = 6, kRoman = 0x10, kSwiss = 0x20, kModern = 0x30;
    *metrics = {};
    metrics->tmHeight = down(font->height());
    metrics->tmAscent = down(pixels.ascent);
    metrics->tmDescent = down(pixels.descent);
    metrics->tmInternalLeading = down(pixels.internalLeading);
    metrics->tmExternalLeading = down(pixels.externalLeading);
    metrics->tmAveCharWidth = across(pixels.average);
    metrics->tmMaxCharWidth = across(pixels.widest);
    metrics->tmWeight = description.lfWeight;
    metrics->tmDigitizedAspectX = metrics->tmDigitizedAspectY = GetDeviceCaps(dc, LOGPIXELSX);
    metrics->tmFirstChar = 0x1E;
    metrics->tmLastChar = 0xFF;
    metrics->tmDefaultChar = 0x1F;
    metrics->tmBreakChar = ' ';
    metrics->tmItalic = description.lfItalic ? kYes : 0;
    metrics->tmUnderlined = description.lfUnderline ? kYes : 0;
    metrics->tmStruckOut = description.lfStrikeOut ? kYes : 0;
    const int family = font->fixed() ? kModern : font->serif() ? kRoman | kProportional : kSwiss | kProportional;
    metrics->tmPitchAndFamily = static_cast<BYTE>(family | kOutlines);
    metrics->tmCharSet = description.lfCharSet == ANSI_CHARSET ? ANSI_CHARSET : SHIFTJIS_CHARSET;
    return TRUE;
  });
}

BOOL GetTextExtentPoint32A(HDC dc, LPCSTR text, int length, SIZE *size) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context || !size || length < 0 || (!text && length > 0)) return FALSE;
    *size = {0, 0};
    if (length == 0) return TRUE;
    const std::shared_ptr<TextFont> font = readyFont(*context);
    const Codes codes = codesOf({text, static_cast<size_t>(length)});
    *size = {logicalWidth(*context, widthOf(*font, codes)), logicalHeight(*context, font->height())};
    return TRUE;
  });
}

BOOL TextOutA(HDC dc, int x, int y, LPCSTR text, int length) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    const auto context = dcOf(dc);
    if (!context || length < 0 || (!text && length > 0)) return FALSE;
    if (length > 0) TextPen(*context).draw({x, y}, codesOf({text, static_cast<size_t>(length)}));
    return TRUE;
  });
}
