// Runs of characters: measured, and drawn on a canvas.
#pragma once

#include "platform/desktop/drawing/fonts.h"

#include <QVarLengthArray>

#include <span>
#include <string_view>

namespace platform {

using Codes = QVarLengthArray<uint16_t, 256>;
using Run = std::span<const uint16_t>;

// The characters of a text. A lead byte without its trail byte becomes a middle dot, together with the byte after it.
Codes codesOf(std::string_view text);

// In device pixels along the base line.
int64_t widthOf(TextFont &font, Run run);

// Lengths of device pixels in logical units, never negative.
int logicalWidth(const Dc &dc, int64_t pixels);
int logicalHeight(const Dc &dc, int64_t pixels);

// What the runs of one call are drawn with: the context's font, colours and text modes.
class TextPen {
 public:
  explicit TextPen(Dc &dc);
  // Tells the screen what was drawn.
  ~TextPen();
  TextPen(const TextPen &) = delete;
  TextPen &operator=(const TextPen &) = delete;

  TextFont &font() { return *font_; }
  // Draws only within a rectangle of device coordinates.
  void limit(const QRect &rect);
  // Draws a run at a logical point, or at the current position.
  void draw(POINT at, Run run);
  // Draws a line below a part of such a run, which is some device pixels away from its beginning.
  void underline(POINT at, int64_t from, int64_t width);

 private:
  // A place on the base line, in device coordinates, and the part of it that a run takes.
  struct Line {
    double x, y;
    int64_t width;
  };

  Line lineFor(POINT at, int64_t width) const;
  void advance(POINT at, int64_t width);
  QPoint along(const Line &line, int64_t distance) const;
  void fillBand(const Line &line, int64_t from, int64_t to, int top, int bottom, QRgb color);
  void drawCharacter(uint16_t code, QPoint at);
  void drawOnPaper(const Line &line, Run run);
  void drawBig(uint16_t code, QPoint at);
  void drawMask(const Mask &mask, QPoint at);
  void mark(const QRect &rect);

  Dc &dc_;
  const std::shared_ptr<TextFont> font_;
  const std::optional<Canvas> canvas_;
  QRgb color_ = 0;
  QRect limits_; // in the image
  QRect drawn_;  // likewise
  bool upright_;
  double cosine_ = 1, sine_ = 0;
};

} // namespace platform
