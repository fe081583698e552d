// Fonts made ready to draw with: metrics, and characters as masks. Characters are named by their codes in code page
// 932, a byte or lead << 8 | trail, so that a text is drawn without being converted.
#pragma once

#include "platform/desktop/drawing/dc.h"
#include "platform/desktop/drawing/faces.h"

#include <array>

namespace platform {

// What a character covers.
struct Mask {
  int left = 0, top = 0; // from the place on the base line where the character begins; y goes down
  int width = 0, height = 0;
  bool big = false;  // too big to be kept: it has no pixels, see TextFont::fillBig
  size_t pixels = 0; // where its rows begin among those of the font
};

// In device pixels, without escapement.
struct TextMetrics {
  int ascent, descent, internalLeading, externalLeading;
  int average, widest;           // widths of characters
  int underline, underlineWidth; // downwards from the base line to its top
  int strikeOut, strikeOutWidth;
};

class TextFont {
 public:
  // font: its sizes in device pixels.
  explicit TextFont(const LOGFONTA &font);
  ~TextFont();
  TextFont(const TextFont &) = delete;
  TextFont &operator=(const TextFont &) = delete;

  const LOGFONTA &description() const { return description_; }
  const TextMetrics &metrics() const { return metrics_; }
  int height() const { return metrics_.ascent + metrics_.descent; }
  bool fixed() const { return fixed_; }
  bool serif() const { return typeface_->wish().serif; }

  // The file that a character comes from, and its number there, for who takes its outline without a size. face is null
  // where there are no files. Units of the em are em() pixels high, and that times wider() wide.
  struct Source {
    const Face *face;
    FT_UInt glyph;
  };
  Source source(uint16_t code);
  int em() const { return em_; }
  double wider() const { return wider_; }

  // How far the next character begins.
  int advance(uint16_t code) {
    const Glyph &glyph = glyphOf(code);
    return glyph.measured ? glyph.advance : measured(code);
  }
  // smooth: of all alpha values, otherwise of 0 and 255. Good until the next mask is asked for, like its pixels.
  const Mask &mask(uint16_t code, bool smooth) {
    const Glyph &glyph = glyphOf(code);
    return glyph.drawn[smooth] ? glyph.masks[smooth] : made(code, smooth);
  }
  const uint8_t *pixels(const Mask &mask) const { return pixels_.data() + mask.pixels; }

  // Part of a row of a big character: alpha is the same for all its pixels.
  using Row = void (*)(void *target, int x, int y, int count, uint8_t alpha);
  // Gives the rows of a character that begins at a place, as far as they lie within a rectangle.
  void fillBig(uint16_t code, QPoint at, const QRect &limits, Row row, void *target);

 private:
  struct Glyph {
    int advance = 0;
    bool measured = false;
    bool drawn[2] = {false, false};
    Mask masks[2];
  };
  using Page = std::array<Glyph, 256>;
  // A file at this font's size.
  struct Sized {
    FT_Face file;
    FT_Size size;
  };

  Glyph &glyphOf(uint16_t code) {
    std::unique_ptr<Page> &page = pages_[code >> 8];
    if (!page) page = std::make_unique<Page>();
    return (*page)[code & 0xFF];
  }
  int measured(uint16_t code);
  const Mask &made(uint16_t code, bool smooth);
  void rasterize(FT_Outline &shape, const Mask &mask, bool smooth);
  void forgetMasks();

  void readMetrics(FT_Face file);
  void inventMetrics();
  void fitWidth();
  // The outline of a character as it is to be drawn; null for one without.
  FT_Outline *outline(uint16_t code);
  FT_Outline *box(int width);
  // Loads a character from its file, upright; null where no file can be read.
  const Face *load(uint16_t code);
  bool useSize(FT_Face file);

  const LOGFONTA description_;
  const std::shared_ptr<Typeface> typeface_;
  TextMetrics metrics_{};
  int em_ = 0; // the height of its characters
  bool fixed_ = false;
  int cell_ = 0;     // the width of a half-width character of a fixed font
  double wider_ = 1; // what lfWidth makes of widths
  FT_Matrix turn_;   // what escapement makes of outlines
  std::vector<Sized> sizes_;
  std::array<std::unique_ptr<Page>, 256> pages_;
  std::vector<uint8_t> pixels_;
};

// The ready form of a context's font, at the size that its mapping gives.
std::shared_ptr<TextFont> readyFont(Dc &dc);

} // namespace platform
