// Characters by FreeType: measured and drawn once per font, at whole pixels, and then kept.

#include "platform/desktop/drawing/fonts.h"

#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"

#include FT_OUTLINE_H
#include FT_SIZES_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

namespace platform {

namespace {

constexpr int kDefaultHeight = 16;   // 12 points on the screen
constexpr int kHighest = 32767;      // of characters, in pixels
constexpr int kHinted = 256;         // higher characters are drawn without hints
constexpr FT_Pos kBig = 0x10000;     // pixels of a mask that is not kept
constexpr size_t kKept = 1 << 20;    // pixels of all masks of a font
constexpr LONG kFullTurn = 3600;     // in tenths of a degree
constexpr FT_Fixed kSlant = 0x0366A; // 12 degrees

int rounded(double value) { return static_cast<int>(std::floor(value + 0.5)); }

FT_Pos down(FT_Pos position) { return position & ~FT_Pos{63}; }
FT_Pos up(FT_Pos position) { return down(position + 63); }

// What counts of a description, in one form for all that mean the same.
LOGFONTA normal(const LOGFONTA &font, int height, int width) {
  LOGFONTA result{};
  result.lfHeight = height;
  result.lfWidth = width;
  result.lfEscapement = font.lfEscapement % kFullTurn;
  result.lfWeight = Wish(font).bold ? FW_BOLD : FW_NORMAL;
  result.lfItalic = font.lfItalic != 0;
  result.lfUnderline = font.lfUnderline != 0;
  result.lfStrikeOut = font.lfStrikeOut != 0;
  result.lfCharSet = font.lfCharSet;
  result.lfPitchAndFamily = font.lfPitchAndFamily;
  std::memcpy(result.lfFaceName, font.lfFaceName, strnlen(font.lfFaceName, LF_FACESIZE - 1));
  return result;
}

bool same(const LOGFONTA &a, const LOGFONTA &b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// A length of a font's description in device pixels, cut to a whole number as the platform does it.
int scaled(LONG length, LONG windowExtent, LONG viewportExtent) {
  const int64_t pixels =
      std::abs(int64_t{length}) * std::abs(int64_t{viewportExtent}) / std::abs(int64_t{windowExtent});
  const int cut = static_cast<int>(std::min<int64_t>(pixels, kHighest));
  return length < 0 ? -cut : cut;
}

// The height of characters for an lfHeight, which tells that height when it is negative, and else the one of the whole
// cell.
// cell: its height for characters of 1. A cell that would come out higher than what was asked for is that of a size
// less.
int emOf(LONG height, double cell) {
  if (height < 0) return std::min<int>(-height, kHighest);
  if (height == 0) height = kDefaultHeight;
  const int nearest = std::clamp(rounded(height / cell), 1, kHighest);
  return nearest > 1 && rounded(nearest * cell) > height ? nearest - 1 : nearest;
}

// The same font is often made anew for each picture, so those used last stay ready.
std::shared_ptr<TextFont> sharedFont(const LOGFONTA &font) {
  constexpr size_t kReady = 32;
  static auto *ready = new std::vector<std::shared_ptr<TextFont>>; // the last used one at the end
  auto found =
      std::find_if(ready->begin(), ready->end(), [&](const auto &one) { return same(one->description(), font); });
  if (found == ready->end()) {
    auto made = std::make_shared<TextFont>(font);
    if (ready->size() == kReady) ready->erase(ready->begin());
    ready->push_back(std::move(made));
  } else {
    std::rotate(found, found + 1, ready->end());
  }
  return ready->back();
}

} // namespace

TextFont::TextFont(const LOGFONTA &font) : description_(font), typeface_(typefaceFor(Wish(font))) {
  const double angle = static_cast<double>(font.lfEscapement) * 2 * std::numbers::pi / kFullTurn;
  const auto fixed = [](double value) { return static_cast<FT_Fixed>(std::lround(value * 0x10000)); };
  turn_ = {fixed(std::cos(angle)), fixed(-std::sin(angle)), fixed(std::sin(angle)), fixed(std::cos(angle))};
  const Face *face = typeface_->main();
  if (face)
    readMetrics(face->file);
  else
    inventMetrics();
  fitWidth();
  if (face && face->addBold) {
    ++metrics_.average;
    ++metrics_.widest;
  }
}

TextFont::~TextFont() {
  const DesktopLock lock;
  for (const Sized &sized : sizes_) FT_Done_Size(sized.size);
}

void TextFont::readMetrics(FT_Face file) {
  const auto *os2 = static_cast<const TT_OS2 *>(FT_Get_Sfnt_Table(file, FT_SFNT_OS2));
  const auto *lines = static_cast<const TT_HoriHeader *>(FT_Get_Sfnt_Table(file, FT_SFNT_HHEA));
  double ascent = file->ascender, descent = -file->descender;
  if (os2 && os2->usWinAscent + os2->usWinDescent != 0) {
    ascent = os2->usWinAscent;
    descent = os2->usWinDescent;
  }
  const double units = std::max<int>(1, file->units_per_EM), cell = std::max(1.0, ascent + descent);
  em_ = emOf(description_.lfHeight, cell / units);
  const auto pixels = [&](double length) { return rounded(length * em_ / units); };

  metrics_.ascent = pixels(ascent);
  metrics_.descent = pixels(descent);
  metrics_.internalLeading = std::max(0, pixels(cell - units));
  if (lines) {
    const double line = lines->Line_Gap - (cell - (lines->Ascender - lines->Descender));
    metrics_.externalLeading = std::max(0, pixels(line));
  }
  metrics_.widest = pixels(static_cast<double>(file->bbox.xMax - file->bbox.xMin));
  // FreeType gives the middle of the line, and the platform puts its line round the top of that
  const double underline = -(file->underline_position + file->underline_thickness / 2.0);
  metrics_.underlineWidth = std::max(1, pixels(file->underline_thickness));
  metrics_.underline = pixels(underline) - metrics_.underlineWidth / 2;
  metrics_.strikeOutWidth = std::max(1, os2 ? pixels(os2->yStrikeoutSize) : metrics_.underlineWidth);
  metrics_.strikeOut = -(os2 ? pixels(os2->yStrikeoutPosition) : em_ / 3) - metrics_.strikeOutWidth / 2;

  fixed_ = typeface_->main()->fixed;
  metrics_.average = std::max(1, os2 ? pixels(os2->xAvgCharWidth) : em_ / 2);
  const Face *letter = fixed_ ? load('x') : nullptr;
  if (letter) metrics_.average = std::max(1, static_cast<int>(letter->file->glyph->advance.x + 32) >> 6);
}

// Without any font, characters are boxes.
void TextFont::inventMetrics() {
  const int height = description_.lfHeight == 0 ? kDefaultHeight : description_.lfHeight;
  em_ = std::max(1, std::abs(height));
  metrics_.ascent = em_ - em_ / 5;
  metrics_.descent = em_ / 5;
  metrics_.average = (em_ + 1) / 2;
  metrics_.widest = em_;
  metrics_.underline = metrics_.underlineWidth = metrics_.strikeOutWidth = 1;
  metrics_.strikeOut = -(em_ / 3);
  fixed_ = true;
}

void TextFont::fitWidth() {
  if (description_.lfWidth > 0) {
    wider_ = static_cast<double>(description_.lfWidth) / metrics_.average;
    metrics_.average = static_cast<int>(description_.lfWidth);
    metrics_.widest = rounded(metrics_.widest * wider_);
  }
  cell_ = metrics_.average;
}

bool TextFont::useSize(FT_Face file) {
  const auto known = std::find_if(sizes_.begin(), sizes_.end(), [&](const Sized &one) { return one.file == file; });
  if (known != sizes_.end()) return FT_Activate_Size(known->size) == 0;
  sizes_.reserve(sizes_.size() + 1); // nothing may fail between the making of a size and its keeping
  Sized made{file, nullptr};
  if (FT_New_Size(file, &made.size) != 0) return false;
  sizes_.push_back(made);
  return FT_Activate_Size(made.size) == 0 && FT_Set_Pixel_Sizes(file, 0, static_cast<FT_UInt>(em_)) == 0;
}

TextFont::Source TextFont::source(uint16_t code) {
  const char16_t character = characterOf(code);
  const Face *face = typeface_->with(character);
  if (!face) face = typeface_->main();
  return {face, face ? FT_Get_Char_Index(face->file, character) : 0}; // 0 is the mark of a missing one
}

const Face *TextFont::load(uint16_t code) {
  const auto [face, glyph] = source(code);
  if (!face || !useSize(face->file)) return nullptr;
  const FT_Int32 flags = FT_LOAD_NO_BITMAP | (em_ > kHinted ? FT_LOAD_NO_HINTING : FT_LOAD_DEFAULT);
  return FT_Load_Glyph(face->file, glyph, flags) == 0 ? face : nullptr;
}

int TextFont::measured(uint16_t code) {
  const Face *face = load(code);
  const bool wide = code > 0xFF;
  int advance = wide ? 2 * cell_ : cell_;
  if (face) {
    const FT_GlyphSlot slot = face->file->glyph;
    const bool missing = slot->glyph_index == 0;
    // full width is twice half width, even where halves of a pixel were rounded up
    if (fixed_)
      advance = (missing && wide) || slot->linearHoriAdvance > FT_Fixed{0xC000} * em_ ? 2 * cell_ : cell_;
    else if (missing && wide)
      advance = rounded(em_ * wider_);
    else
      advance = static_cast<int>(std::ceil(static_cast<int>((slot->advance.x + 32) >> 6) * wider_ - 1e-9));
    if (face->addBold) ++advance;
  }
  Glyph &glyph = glyphOf(code);
  glyph.measured = true;
  return glyph.advance = std::max(0, advance);
}

FT_Outline *TextFont::outline(uint16_t code) {
  const Face *face = load(code);
  const FT_GlyphSlot slot = face ? face->file->glyph : nullptr;
  const bool missing = !slot || slot->glyph_index == 0;
  FT_Outline *outline = slot && slot->format == FT_GLYPH_FORMAT_OUTLINE ? &slot->outline : nullptr;
  if (missing && (!outline || outline->n_points == 0)) return code > ' ' ? box(advance(code)) : nullptr;
  if (!outline) return nullptr;
  if (face->addBold) FT_Outline_Embolden(outline, std::max<FT_Pos>(48, FT_Pos{em_} * 64 / 24));
  if (face->addSlant) {
    const FT_Matrix slant = {0x10000, kSlant, 0, 0x10000};
    FT_Outline_Transform(outline, &slant);
  }
  if (wider_ != 1) {
    const FT_Matrix widen = {std::lround(wider_ * 0x10000), 0, 0, 0x10000};
    FT_Outline_Transform(outline, &widen);
  }
  if (description_.lfEscapement != 0) FT_Outline_Transform(outline, &turn_);
  return outline;
}

// A frame of one pixel round the place of a character that no file has.
FT_Outline *TextFont::box(int width) {
  static FT_Vector points[8];
  static char tags[8];
  static short ends[2] = {3, 7};
  static FT_Outline outline = {2, 8, points, tags, ends, FT_OUTLINE_EVEN_ODD_FILL};
  std::fill(std::begin(tags), std::end(tags), char{FT_CURVE_TAG_ON});
  for (int ring = 0; ring < 2; ++ring) {
    const FT_Pos inset = FT_Pos{64} * (ring + 1), right = FT_Pos{width} * 64 - inset,
                 top = FT_Pos{metrics_.ascent} * 64 - inset;
    const FT_Vector corners[] = {{inset, inset - 64}, {right, inset - 64}, {right, top}, {inset, top}};
    std::copy(std::begin(corners), std::end(corners), points + ptrdiff_t{4} * ring);
  }
  if (description_.lfEscapement != 0) FT_Outline_Transform(&outline, &turn_);
  return &outline;
}

void TextFont::forgetMasks() {
  for (const std::unique_ptr<Page> &page : pages_)
    if (page)
      for (Glyph &glyph : *page) glyph.drawn[false] = glyph.drawn[true] = false;
  pixels_.clear();
}

const Mask &TextFont::made(uint16_t code, bool smooth) {
  Mask mask;
  FT_BBox box{};
  FT_Outline *shape = freeType() ? outline(code) : nullptr;
  if (shape) FT_Outline_Get_CBox(shape, &box);
  const FT_Pos width = (up(box.xMax) - down(box.xMin)) / 64, height = (up(box.yMax) - down(box.yMin)) / 64;
  mask.big = width * height > kBig;
  if (width > 0 && height > 0 && !mask.big) {
    mask.left = static_cast<int>(down(box.xMin) / 64);
    mask.top = static_cast<int>(-up(box.yMax) / 64);
    mask.width = static_cast<int>(width);
    mask.height = static_cast<int>(height);
    FT_Outline_Translate(shape, -down(box.xMin), -down(box.yMin));
    const auto size = static_cast<size_t>(width * height);
    if (pixels_.size() + size > kKept) forgetMasks();
    mask.pixels = pixels_.size();
    pixels_.resize(mask.pixels + size);
    rasterize(*shape, mask, smooth);
  }
  Glyph &glyph = glyphOf(code);
  glyph.drawn[smooth] = true;
  return glyph.masks[smooth] = mask;
}

void TextFont::rasterize(FT_Outline &shape, const Mask &mask, bool smooth) {
  uint8_t *pixels = pixels_.data() + mask.pixels;
  const size_t pitch = smooth ? static_cast<size_t>(mask.width) : (static_cast<size_t>(mask.width) + 7) / 8;
  std::vector<uint8_t> bits(smooth ? 0 : pitch * static_cast<size_t>(mask.height));
  FT_Bitmap bitmap{};
  bitmap.width = static_cast<unsigned>(mask.width);
  bitmap.rows = static_cast<unsigned>(mask.height);
  bitmap.pitch = static_cast<int>(pitch);
  bitmap.buffer = smooth ? pixels : bits.data();
  bitmap.num_grays = 256;
  bitmap.pixel_mode = smooth ? FT_PIXEL_MODE_GRAY : FT_PIXEL_MODE_MONO;
  FT_Outline_Get_Bitmap(freeType(), &shape, &bitmap);
  for (size_t y = 0; !smooth && y < bitmap.rows; ++y)
    for (size_t x = 0; x < bitmap.width; ++x) *pixels++ = bits[y * pitch + x / 8] & 0x80 >> x % 8 ? 0xFF : 0;
}

void TextFont::fillBig(uint16_t code, QPoint at, const QRect &limits, Row row, void *target) {
  FT_Outline *shape = outline(code);
  if (!shape || limits.isEmpty()) return;
  // the raster's origin is the lower left corner of the limits
  FT_Outline_Translate(shape, (FT_Pos{at.x()} - limits.left()) * 64, (FT_Pos{limits.bottom()} + 1 - at.y()) * 64);
  FT_BBox box;
  FT_Outline_Get_CBox(shape, &box);
  if (box.xMax <= 0 || box.yMax <= 0 || box.xMin >= FT_Pos{limits.width()} * 64 ||
      box.yMin >= FT_Pos{limits.height()} * 64)
    return;
  struct Context {
    const QRect &limits;
    Row row;
    void *target;
  } context{limits, row, target};
  FT_Raster_Params params{};
  params.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT | FT_RASTER_FLAG_CLIP;
  params.clip_box = {0, 0, limits.width(), limits.height()};
  params.user = &context;
  params.gray_spans = [](int y, int count, const FT_Span *spans, void *user) {
    const auto &to = *static_cast<const Context *>(user);
    for (int i = 0; i < count; ++i)
      to.row(to.target, to.limits.left() + spans[i].x, to.limits.bottom() - y, spans[i].len, spans[i].coverage);
  };
  FT_Outline_Render(freeType(), shape, &params);
}

std::shared_ptr<TextFont> readyFont(Dc &dc) {
  Font &font = *dc.font.object;
  const int height = scaled(font.description.lfHeight, dc.windowExtent.cy, dc.viewportExtent.cy);
  const int width =
      height == 0 ? 0 : std::abs(scaled(font.description.lfWidth, dc.windowExtent.cx, dc.viewportExtent.cx));
  const LOGFONTA *made = font.ready ? &font.ready->description() : nullptr;
  if (!made || made->lfHeight != height || made->lfWidth != width)
    font.ready = sharedFont(normal(font.description, height, width));
  return font.ready;
}

} // namespace platform

using namespace platform;

HFONT CreateFontIndirectA(const LOGFONTA *font) {
  return locked<HFONT>(nullptr, [&]() -> HFONT {
    if (!font) return nullptr;
    LOGFONTA description = *font;
    description.lfFaceName[LF_FACESIZE - 1] = 0;
    return openObject<HFONT>(std::make_shared<Font>(description));
  });
}
