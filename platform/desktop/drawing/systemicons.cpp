// The system's own icons and cursors, drawn from shapes at the size that is asked for.
//
// A shape is a line of points, or the area that they enclose, widened by a distance; so one point is a disc. Later
// shapes cover earlier ones. Coordinates are those of a picture of 32 x 32 pixels.

#include "platform/desktop/drawing/icons.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <vector>

namespace platform {

namespace {

constexpr double kGrid = 32;
constexpr QRgb kBlack = 0xFF000000u, kWhite = 0xFFFFFFFFu;

struct Point {
  double x, y;
};

using Points = std::vector<Point>;

double distance(Point at, Point a, Point b) {
  const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
  const double along = length > 0 ? std::clamp(((at.x - a.x) * dx + (at.y - a.y) * dy) / length, 0.0, 1.0) : 0;
  return std::hypot(at.x - a.x - along * dx, at.y - a.y - along * dy);
}

class Shape {
 public:
  Shape(QRgb color, double width, bool closed, Points points)
      : color_(color), points_(std::move(points)), width_(width), closed_(closed) {
    const auto [left, right] =
        std::minmax_element(points_.begin(), points_.end(), [](Point a, Point b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(points_.begin(), points_.end(), [](Point a, Point b) { return a.y < b.y; });
    from_ = {left->x - width, top->y - width};
    to_ = {right->x + width, bottom->y + width};
  }

  bool has(Point at) const {
    if (at.x < from_.x || at.x > to_.x || at.y < from_.y || at.y > to_.y) return false;
    bool inside = false;
    for (size_t i = closed_ ? 0 : 1; i < std::max(points_.size(), size_t{2}); ++i) {
      const Point a = points_[(i + points_.size() - 1) % points_.size()], b = points_[i % points_.size()];
      if (distance(at, a, b) <= width_) return true;
      if ((a.y > at.y) != (b.y > at.y) && at.x < a.x + (at.y - a.y) * (b.x - a.x) / (b.y - a.y)) inside = !inside;
    }
    return closed_ && inside;
  }

  QRgb color() const { return color_; }

 private:
  QRgb color_;
  Points points_;
  double width_;
  bool closed_;
  Point from_{}, to_{};
};

using Shapes = std::vector<Shape>;

Shape line(QRgb color, double width, Points points) { return {color, width, false, std::move(points)}; }
Shape area(QRgb color, double width, Points points) { return {color, width, true, std::move(points)}; }
Shape box(QRgb color, double left, double top, double right, double bottom) {
  return area(color, 0, {{left, top}, {right, top}, {right, bottom}, {left, bottom}});
}
Shape disc(QRgb color, double x, double y, double radius) { return line(color, radius, {{x, y}}); }

Points turned(Points points, double degrees) {
  const double angle = degrees * std::numbers::pi / 180, c = std::cos(angle), s = std::sin(angle);
  constexpr double kMiddle = kGrid / 2;
  for (Point &point : points) {
    const double x = point.x - kMiddle, y = point.y - kMiddle;
    point = {kMiddle + x * c - y * s, kMiddle + x * s + y * c};
  }
  return points;
}

Points placed(Points points, double x, double y, double scale) {
  for (Point &point : points) point = {x + point.x * scale, y + point.y * scale};
  return points;
}

// White with a black edge, so that it is seen on every ground.
Shapes edged(std::initializer_list<Points> areas) {
  Shapes shapes;
  for (const Points &points : areas) shapes.push_back(area(kBlack, 1, points));
  for (const Points &points : areas) shapes.push_back(area(kWhite, 0, points));
  return shapes;
}

// Black lines with a white edge.
Shapes lined(std::initializer_list<Points> lines) {
  Shapes shapes;
  for (const Points &points : lines) shapes.push_back(line(kWhite, 1.5, points));
  for (const Points &points : lines) shapes.push_back(line(kBlack, 0.5, points));
  return shapes;
}

Shapes joined(Shapes first, const Shapes &second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

Points question() {
  return {{11.3, 12.2}, {11.6, 10.4}, {12.7, 8.8},  {14.3, 7.9}, {16.2, 7.6},  {18.2, 8},   {19.8, 9.1},
          {20.6, 10.8}, {20.5, 12.6}, {19.6, 14.2}, {18, 15.5},  {16.7, 16.8}, {16.2, 18.8}};
}

Shapes questionMark(QRgb color) { return {line(color, 1.8, question()), disc(color, 16.2, 23.6, 2.1)}; }

Shapes blueDisc() { return {disc(0xFF123A7Cu, 16, 16, 14.6), disc(0xFF2F6FD0u, 16, 16, 13.3)}; }

Shapes window() {
  constexpr QRgb kFrame = 0xFF3A4258u, kTitle = 0xFF2A5CAAu, kText = 0xFF98A2B6u;
  return {area(kFrame, 1.2, {{4, 6}, {28, 6}, {28, 26}, {4, 26}}),
          box(kTitle, 4, 6, 28, 11),
          box(kWhite, 4, 12, 28, 26),
          disc(kWhite, 21.5, 8.5, 1),
          disc(kWhite, 25, 8.5, 1),
          line(kText, 0.8, {{8, 16}, {18, 16}}),
          line(kText, 0.8, {{8, 19.3}, {24, 19.3}}),
          line(kText, 0.8, {{8, 22.6}, {14, 22.6}})};
}

Shapes stop() {
  return {disc(0xFF8C1010u, 16, 16, 14.6), disc(0xFFD82828u, 16, 16, 13.3), line(kWhite, 2, {{11, 11}, {21, 21}}),
          line(kWhite, 2, {{21, 11}, {11, 21}})};
}

Shapes warning() {
  constexpr QRgb kEdge = 0xFF8A6A00u, kFill = 0xFFFFD21Eu, kMark = 0xFF202020u;
  const Points triangle = {{16, 5}, {28.3, 27}, {3.7, 27}};
  return {area(kEdge, 2.4, triangle), area(kFill, 1.1, triangle),
          area(kMark, 0.6, {{14.6, 11.5}, {17.4, 11.5}, {16.6, 19.6}, {15.4, 19.6}}), disc(kMark, 16, 23.6, 1.7)};
}

Shapes information() {
  return joined(blueDisc(), {disc(kWhite, 16, 8.8, 2.2), line(kWhite, 2, {{16, 14.4}, {16, 23.4}})});
}

Shapes shield() {
  const Points outline = {{16, 3.5}, {27, 7}, {26.4, 15}, {23, 22}, {16, 28.2}, {9, 22}, {5.6, 15}, {5, 7}};
  return {area(0xFF123A7Cu, 1.4, outline), area(0xFF2F6FD0u, 0, outline),
          line(kWhite, 1.7, {{10.8, 15.6}, {14.8, 20}, {21.4, 10.6}})};
}

Points arrow() { return {{1, 1}, {1, 17.2}, {5, 13.6}, {8, 20.4}, {10.6, 19.2}, {7.6, 12.6}, {12.6, 12.6}}; }
Points bothWays() {
  return {{5, 16}, {10, 11}, {10, 15}, {22, 15}, {22, 11}, {27, 16}, {22, 21}, {22, 17}, {10, 17}, {10, 21}};
}
Points upArrow() { return {{16.5, 6}, {21.5, 12}, {18, 12}, {18, 26}, {15, 26}, {15, 12}, {11.5, 12}}; }
Points glass() {
  return {{9, 6}, {23, 6}, {23, 9.5}, {17.2, 16}, {23, 22.5}, {23, 26}, {9, 26}, {9, 22.5}, {14.8, 16}, {9, 9.5}};
}
Points sandAbove() { return {{12.6, 10.6}, {19.4, 10.6}, {16, 14.4}}; }
Points sandBelow() { return {{16, 19.6}, {20.6, 24.4}, {11.4, 24.4}}; }
Points handOutline() {
  return {{14, 5.4},   {15.4, 6.4},  {15.4, 12.4}, {17.4, 11.9}, {18.8, 13},   {20.6, 12.7},
          {21.8, 14},  {23.4, 13.9}, {24.6, 15.4}, {24.6, 20.4}, {22.6, 26.4}, {14.4, 26.4},
          {9.2, 19.4}, {8.4, 16.8},  {9.8, 15.8},  {12.6, 18},   {12.6, 6.4}};
}

Shapes hourglass(double x, double y, double scale) {
  const auto at = [&](const Points &points) { return placed(points, x, y, scale); };
  return joined(edged({at(glass())}), {area(kBlack, 0, at(sandAbove())), area(kBlack, 0, at(sandBelow()))});
}

// Half coordinates: the middles of pixels.
Shapes beam() {
  return lined({{{16.5, 8}, {16.5, 24}},
                {{13, 6.5}, {15.5, 6.5}, {16.5, 7.5}, {17.5, 6.5}, {20, 6.5}},
                {{13, 25.5}, {15.5, 25.5}, {16.5, 24.5}, {17.5, 25.5}, {20, 25.5}}});
}

Shapes forbidden() {
  Points ring;
  for (int i = 0; i < 32; ++i) ring.push_back(turned({{16, 7.5}}, i * 360.0 / 32).front());
  ring.push_back(ring.front());
  const Points across = {{10, 10}, {22, 22}};
  return {line(kBlack, 2.6, ring), line(kBlack, 2.6, across), line(kWhite, 1.4, ring), line(kWhite, 1.4, across)};
}

Shapes hand() {
  return joined(edged({handOutline()}),
                {line(kBlack, 0.5, {{15.4, 12.4}, {15.4, 16}}), line(kBlack, 0.5, {{18.6, 13}, {18.6, 16}}),
                 line(kBlack, 0.5, {{21.6, 14}, {21.6, 16.5}})});
}

struct Drawing {
  bool cursor;
  uintptr_t number;
  POINT hotSpot;
  Shapes (*shapes)();
};

const Drawing kDrawings[] = {
    {false, 32512, {}, window},
    {false, 32513, {}, stop},
    {false, 32514, {}, [] { return joined(blueDisc(), questionMark(kWhite)); }},
    {false, 32515, {}, warning},
    {false, 32516, {}, information},
    {false, 32517, {}, window},
    {false, 32518, {}, shield},
    {true, 32512, {0, 0}, [] { return edged({arrow()}); }},
    {true, 32513, {16, 16}, beam},
    {true, 32514, {16, 16}, [] { return hourglass(0, 0, 1); }},
    {true,
     32515,
     {16, 16},
     [] {
       return lined({{{16.5, 6}, {16.5, 27}}, {{6, 16.5}, {27, 16.5}}});
     }},
    {true, 32516, {16, 5}, [] { return edged({upArrow()}); }},
    {true,
     32640,
     {16, 16},
     [] {
       return edged({bothWays(), turned(bothWays(), 90)});
     }},
    {true, 32641, {0, 0}, [] { return edged({arrow()}); }},
    {true, 32642, {16, 16}, [] { return edged({turned(bothWays(), 45)}); }},
    {true, 32643, {16, 16}, [] { return edged({turned(bothWays(), -45)}); }},
    {true, 32644, {16, 16}, [] { return edged({bothWays()}); }},
    {true, 32645, {16, 16}, [] { return edged({turned(bothWays(), 90)}); }},
    {true,
     32646,
     {16, 16},
     [] {
       return edged({bothWays(), turned(bothWays(), 90)});
     }},
    {true, 32648, {16, 16}, forbidden},
    {true, 32649, {14, 4}, hand},
    {true, 32650, {0, 0}, [] { return joined(edged({arrow()}), hourglass(13, 6, 0.6)); }},
    {true,
     32651,
     {0, 0},
     [] {
       return joined(edged({arrow()}),
                     {line(kBlack, 1.2, placed(question(), 10, 3, 0.8)), disc(kBlack, 23, 22.4, 1.5)});
     }},
};

// The colour of a pixel: what the samples in it show, and how many of them show something.
QRgb sampled(const Shapes &shapes, Point corner, Point step) {
  constexpr int kSamples = 4;
  int covered = 0, red = 0, green = 0, blue = 0;
  for (int i = 0; i < kSamples * kSamples; ++i) {
    const int across = i % kSamples, down = i / kSamples;
    const Point at{corner.x + step.x * (across + 0.5) / kSamples, corner.y + step.y * (down + 0.5) / kSamples};
    const auto top = std::find_if(shapes.rbegin(), shapes.rend(), [&](const Shape &shape) { return shape.has(at); });
    if (top == shapes.rend()) continue;
    ++covered;
    red += qRed(top->color());
    green += qGreen(top->color());
    blue += qBlue(top->color());
  }
  if (covered == 0) return 0;
  const auto mean = [&](int sum) { return (sum + covered / 2) / covered; };
  return qRgba(mean(red), mean(green), mean(blue), covered * 255 / (kSamples * kSamples));
}

class DrawnIcon : public IconSource {
 public:
  explicit DrawnIcon(const Drawing &drawing) : shapes_(drawing.shapes()), hotSpot_(drawing.hotSpot) {}

  SIZE firstSize() const override { return {static_cast<LONG>(kGrid), static_cast<LONG>(kGrid)}; }
  std::optional<IconPicture> pictureFor(SIZE size, Choice) const override {
    constexpr LONG kLargest = 256; // larger ones are stretched
    size = {std::min(size.cx, kLargest), std::min(size.cy, kLargest)};
    const Point step{kGrid / size.cx, kGrid / size.cy};
    IconPicture picture;
    picture.alpha = true;
    picture.color = makePixels(size, QImage::Format_ARGB32);
    for (int y = 0; y < picture.color.height(); ++y)
      for (int x = 0; x < picture.color.width(); ++x)
        picture.color.setPixel(x, y, sampled(shapes_, {x * step.x, y * step.y}, step));
    picture.mask = maskOf(picture.color);
    picture.hotSpot = {static_cast<LONG>(hotSpot_.x / step.x), static_cast<LONG>(hotSpot_.y / step.y)};
    return picture;
  }

 private:
  const Shapes shapes_;
  const POINT hotSpot_;
};

} // namespace

std::shared_ptr<const IconSource> systemIcon(bool cursor, uintptr_t number) {
  static auto *known = new std::map<const Drawing *, std::shared_ptr<const IconSource>>;
  const auto *const drawing = std::find_if(std::begin(kDrawings), std::end(kDrawings), [&](const Drawing &one) {
    return one.cursor == cursor && one.number == number;
  });
  if (drawing == std::end(kDrawings)) return nullptr;
  auto &source = (*known)[drawing];
  if (!source) source = std::make_shared<const DrawnIcon>(*drawing);
  return source;
}

} // namespace platform
