// Paper: what a context of a printer draws on. It keeps no pixels. What reaches it is what a page is made of:
// rectangles, paths, text and pictures, so that lines stay lines and text stays text.
//
// The functions of this room that write pixels hand their work to it instead when their canvas is one of paper: they
// have mapped all coordinates, made pens and brushes ready and measured text by then, so that a page agrees with a
// window.
#pragma once

#include <QImage>
#include <QRegion>

#include <span>
#include <vector>

namespace platform {

struct Ink;
struct Pencil;
class TextFont;

// Lines and curves in device coordinates. A pixel's middle lies at a half.
struct PaperPath {
  enum class Step : uint8_t { move, line, curve, close }; // a curve has three points, and closing none
  struct Point {
    double x, y;
  };

  std::vector<Step> steps;
  std::vector<Point> points;

  void move(double x, double y) { add(Step::move, {x, y}); }
  void line(double x, double y) { add(Step::line, {x, y}); }
  void curve(Point a, Point b, Point to) {
    steps.push_back(Step::curve);
    points.insert(points.end(), {a, b, to});
  }
  void close() { steps.push_back(Step::close); }

 private:
  void add(Step step, Point point) {
    steps.push_back(step);
    points.push_back(point);
  }
};

// Characters along a base line, which begins at a point and rises by an angle.
struct PaperText {
  TextFont &font;
  std::span<const uint16_t> codes;
  double x, y;
  double cosine, sine;
  QRgb color;
};

// Each drawing function keeps within clip, a region of device coordinates. Raster operations find white paper.
class Paper {
 public:
  Paper() = default;
  virtual ~Paper() = default;
  Paper(const Paper &) = delete;
  Paper &operator=(const Paper &) = delete;

  // What GetDeviceCaps tells.
  virtual int caps(int index) const = 0;
  // What of the page can be printed on, in device pixels.
  virtual QSize size() const = 0;
  // Whether there is a page to draw on now.
  virtual bool hasPage() const = 0;

  virtual void fill(const QRegion &clip, const QRect &rect, const Ink &ink) = 0;
  // Fills and strokes a path. ink, pencil: null for none. mode: ALTERNATE or WINDING.
  virtual void draw(const QRegion &clip, const PaperPath &path, int mode, const Ink *ink, const Pencil *pencil) = 0;
  virtual void text(const QRegion &clip, const PaperText &text) = 0;
  // image: with alpha.
  virtual void picture(const QRegion &clip, const QRectF &rect, const QImage &image) = 0;
};

} // namespace platform
