// Buttons, boxes, arrows and marks in the classic look. The marks are made of rows of pixels in the square that fits
// into the middle of the control; at the usual sizes they are those of the platform.

#include "platform/desktop/drawing/edges.h"
#include "platform/desktop/drawing/polygon.h"

#include <iterator>

namespace platform {

namespace {

constexpr int kBlack = -1, kWhite = -2; // beside the system colours: what a menu mask is made of

// The square in a control, and its pixels by column and row.
class Face {
 public:
  Face(const Dc &dc, const Canvas &canvas, const RECT &rect)
      : dc_(dc), canvas_(canvas), size_(std::min(rect.right - rect.left, rect.bottom - rect.top)),
        x_(rect.left + (rect.right - rect.left - size_) / 2), y_(rect.top + (rect.bottom - rect.top - size_) / 2) {}

  int size() const { return size_; }
  void move(int x, int y) {
    x_ += x;
    y_ += y;
  }
  void fill(int x, int y, int width, int height, int color) const {
    if (width > 0 && height > 0) fillRectangle({x_ + x, y_ + y, x_ + x + width, y_ + y + height}, color);
  }
  void fillRectangle(const RECT &rect, int color) const {
    if (color >= 0) {
      fillSystem(dc_, canvas_, rect, color);
      return;
    }
    const QRect box = filledBox(dc_, rect.left, rect.top, rect.right, rect.bottom).translated(canvas_.origin);
    fillRect(canvas_, box, solidInk(canvas_, color == kWhite ? RGB(255, 255, 255) : RGB(0, 0, 0), dc_.brushOrigin));
  }
  // Fills with every other pixel light, as a button is that stays down.
  void fillChecked(const RECT &rect) const {
    static constexpr uint8_t kEveryOther[8] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA};
    Ink ink;
    ink.hatch = kEveryOther;
    ink.hatchOrigin = canvas_.origin + QPoint(dc_.brushOrigin.x & 7, dc_.brushOrigin.y & 7);
    ink.color = shown(canvas_, GetSysColor(COLOR_BTNHIGHLIGHT));
    ink.background = shown(canvas_, GetSysColor(COLOR_BTNFACE));
    const QRect box = filledBox(dc_, rect.left, rect.top, rect.right, rect.bottom).translated(canvas_.origin);
    fillRect(canvas_, box, ink);
  }
  // Draws a frame of some width: left and top in one colour, right and bottom in another.
  void frame(const RECT &rect, int width, int light, int dark) const {
    fillRectangle({rect.left, rect.top, rect.right, rect.top + width}, light);
    fillRectangle({rect.left, rect.top, rect.left + width, rect.bottom}, light);
    fillRectangle({rect.right - width, rect.top, rect.right, rect.bottom}, dark);
    fillRectangle({rect.left, rect.bottom - width, rect.right, rect.bottom}, dark);
  }
  RECT square() const { return {x_, y_, x_ + size_, y_ + size_}; }
  void edge(const RECT &rect, UINT type, UINT flags) const { drawEdge(dc_, canvas_, rect, type, flags); }

 private:
  const Dc &dc_;
  const Canvas &canvas_;
  int size_, x_, y_;
};

// A check mark in columns of its thickness: down to the right, and twice as far up again.
void drawCheck(const Face &face, int left, int top, int length, int color) {
  const int thick = (length + 2) / 3;
  for (int i = 0; i < length; ++i) {
    const int up = i < thick - 1 ? thick - 2 - i : i - (thick - 1);
    face.fill(left + i, top + length - thick - up, 1, thick, color);
  }
}

// A dot of some size in the middle.
void drawDot(const Face &face, int size, int color) {
  const int start = (face.size() - size + (size % 2 == 0)) / 2;
  const EllipseRows rows(std::max(size, 1), std::max(size, 1));
  for (int y = 0; y < size; ++y) face.fill(start + rows.margin(y), start + y, size - 2 * rows.margin(y), 1, color);
}

enum class Direction { up, down, left, right };

// An arrow: rows of 1, 3, 5, ... pixels, away from its point.
void drawArrow(const Face &face, Direction direction, int color) {
  const int size = face.size();
  const int rows = std::max(3, size * 262 / 1000);
  const int middle = size * 472 / 1000;
  const int nearPoint = rows == 3 ? size / 3 : size * 522 / 1000 - rows + 1;
  for (int i = 0; i < rows; ++i) {
    const int across = middle - i, width = 2 * i + 1;
    switch (direction) {
    case Direction::up: face.fill(across, nearPoint + i, width, 1, color); break;
    case Direction::down: face.fill(across, size - 2 - nearPoint - i, width, 1, color); break;
    case Direction::left: face.fill(nearPoint + i, across, 1, width, color); break;
    case Direction::right: face.fill(size - 2 - nearPoint - i, across, 1, width, color); break;
    }
  }
}

// The signs of a title bar in 7 rows of 8 pixels, the left one in the highest bit.
constexpr uint8_t kSigns[][7] = {
    {0xC3, 0x66, 0x3C, 0x18, 0x3C, 0x66, 0xC3}, // close
    {0x00, 0x00, 0x00, 0x00, 0x00, 0x7E, 0x7E}, // minimize
    {0xFF, 0xFF, 0x81, 0x81, 0x81, 0x81, 0xFF}, // maximize
    {0x3F, 0x3F, 0x21, 0xFD, 0xFF, 0x84, 0xFC}, // restore
    {0x3C, 0x66, 0x06, 0x0C, 0x18, 0x00, 0x18}, // help
};

void drawSign(const Face &face, UINT sign, int color) {
  const int width = (face.size() * 4 + 3) / 7, height = std::max(1, width - 1);
  const int left = (face.size() - width) / 2, top = (face.size() - height) / 2;
  const auto start = [](int size, int cell, int cells) { return (size * cell + cells - 1) / cells; };
  for (int row = 0; row < 7; ++row)
    for (int from = 0, to = 0; from < 8; from = to + 1) {
      const auto set = [&](int column) { return column < 8 && kSigns[sign][row] & 0x80 >> column; };
      for (to = from; set(to);) ++to;
      const int x = start(width, from, 8), y = start(height, row, 7);
      face.fill(left + x, top + y, start(width, to, 8) - x, start(height, row + 1, 7) - y, color);
    }
}

// One that is inactive casts a light shadow.
template <typename Draw> void drawMark(Face face, UINT state, Draw draw) {
  if (!(state & DFCS_INACTIVE)) {
    draw(face, COLOR_BTNTEXT);
    return;
  }
  face.move(1, 1);
  draw(face, COLOR_BTNHIGHLIGHT);
  face.move(-1, -1);
  draw(face, COLOR_BTNSHADOW);
}

UINT modesOf(UINT state) { return (state & DFCS_FLAT ? BF_FLAT : 0u) | (state & DFCS_MONO ? BF_MONO : 0u); }

RECT inside(const RECT &rect, LONG margin) { return inset(rect, {margin, margin, margin, margin}); }

constexpr int kEdge = 2; // the width of a button's edge

// A push button without anything on it. raised: how it looks when nobody pushes it.
void drawButton(const Face &face, const RECT &rect, UINT state, UINT raised) {
  const bool down = state & (DFCS_PUSHED | DFCS_CHECKED);
  face.edge(rect, down ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | modesOf(state) | (down ? BF_SOFT : raised));
  if (state & DFCS_CHECKED)
    face.fillChecked(inside(rect, kEdge));
  else
    face.fillRectangle(inside(rect, kEdge), COLOR_BTNFACE);
}

void drawCheckBox(const Face &face, UINT state) {
  const RECT box = face.square();
  const int line = std::max(1, (face.size() + 8) / 16);
  const bool third = state & DFCS_BUTTON3STATE && state & DFCS_CHECKED, gray = state & (DFCS_PUSHED | DFCS_INACTIVE);
  if (state & DFCS_FLAT) {
    face.frame(box, line, COLOR_BTNSHADOW, COLOR_BTNSHADOW);
    face.frame(inside(box, line), line, COLOR_BTNFACE, COLOR_BTNFACE);
  } else if (state & DFCS_MONO) {
    face.frame(box, line, COLOR_WINDOWFRAME, COLOR_WINDOWFRAME);
    face.frame(inside(box, line), line, COLOR_WINDOW, COLOR_WINDOW);
  } else {
    face.frame(box, line, COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT);
    face.frame(inside(box, line), line, COLOR_3DDKSHADOW, COLOR_3DLIGHT);
  }
  if (third && !gray)
    face.fillChecked(inside(box, 2 * line));
  else
    face.fillRectangle(inside(box, 2 * line), gray ? COLOR_BTNFACE : COLOR_WINDOW);
  const int margin = 2 * line + 1;
  const int color = third || state & DFCS_INACTIVE ? COLOR_BTNSHADOW : COLOR_WINDOWTEXT;
  if (state & DFCS_CHECKED) drawCheck(face, margin, margin, face.size() - 2 * margin, color);
}

// A round one: two rings with a light and a dark half each, like the edges of the others.
void drawRadioButton(const Face &face, UINT state) {
  const int size = face.size(), outer = size - (size - 1) / 8, start = (size - outer + 1) / 2;
  const int ring = size < 18 ? 1 : 2;
  const bool plain = state & (DFCS_FLAT | DFCS_MONO), gray = state & (DFCS_PUSHED | DFCS_INACTIVE);
  const auto disc = [&](int margin, int light, int dark) {
    const int width = outer - 2 * margin;
    if (width <= 0) return;
    const EllipseRows rows(width, width);
    for (int y = 0; y < width; ++y) {
      const int from = rows.margin(y), to = width - from, turn = std::clamp(width - 1 - y, from, to);
      face.fill(start + margin + from, start + margin + y, turn - from, 1, light);
      face.fill(start + margin + turn, start + margin + y, to - turn, 1, dark);
    }
  };
  disc(0, plain ? COLOR_WINDOWFRAME : COLOR_BTNSHADOW, plain ? COLOR_WINDOWFRAME : COLOR_BTNHIGHLIGHT);
  disc(1, plain ? COLOR_WINDOWFRAME : COLOR_3DDKSHADOW, plain ? COLOR_WINDOWFRAME : COLOR_3DLIGHT);
  const int ground = gray ? COLOR_BTNFACE : COLOR_WINDOW;
  disc(1 + ring, ground, ground);
  const int color = state & DFCS_INACTIVE ? COLOR_BTNSHADOW : COLOR_WINDOWTEXT;
  if (state & DFCS_CHECKED) drawDot(face, size * 3 / 8, color);
}

bool drawButtonControl(const Face &face, const RECT &rect, UINT state) {
  switch (state & 0xFF) {
  case DFCS_BUTTONPUSH: drawButton(face, rect, state, BF_SOFT); return true;
  case DFCS_BUTTONCHECK:
  case DFCS_BUTTON3STATE: drawCheckBox(face, state); return true;
  case DFCS_BUTTONRADIO: drawRadioButton(face, state); return true;
  default: return false;
  }
}

bool drawCaption(Face face, const RECT &rect, UINT state) {
  const UINT sign = state & 0xFF;
  if (sign >= std::size(kSigns)) return false;
  drawButton(face, rect, state, BF_SOFT);
  if (state & DFCS_PUSHED) face.move(1, 1);
  drawMark(face, state, [sign](const Face &at, int color) { drawSign(at, sign, color); });
  return true;
}

// Three grooves across the bottom right corner.
void drawGrip(const Dc &dc, const Canvas &canvas, const RECT &rect) {
  const int size = std::min(rect.right - rect.left, rect.bottom - rect.top);
  const Face face(dc, canvas, {rect.right - size, rect.bottom - size, rect.right, rect.bottom});
  face.fillRectangle(rect, COLOR_BTNFACE);
  const int light = size < 19 ? 1 : 2, dark = (size + 2) / 8;
  for (const int groove : {(5 * size + 4) / 16, size / 2, 3 * size / 4})
    for (int up = 0; up < size; ++up) {
      const int x = groove + up, y = size - 1 - up;
      face.fill(x, y, std::min(light, size - x), 1, COLOR_BTNHIGHLIGHT);
      face.fill(x + light, y, std::min(dark, size - x - light), 1, COLOR_BTNSHADOW);
    }
}

bool drawScroll(const Dc &dc, const Canvas &canvas, const RECT &rect, UINT state) {
  constexpr std::pair<UINT, Direction> kArrows[] = {{DFCS_SCROLLUP, Direction::up},
                                                    {DFCS_SCROLLDOWN, Direction::down},
                                                    {DFCS_SCROLLLEFT, Direction::left},
                                                    {DFCS_SCROLLRIGHT, Direction::right},
                                                    {DFCS_SCROLLCOMBOBOX, Direction::down}};
  if ((state & 0xFF) == DFCS_SCROLLSIZEGRIP) {
    drawGrip(dc, canvas, rect);
    return true;
  }
  for (const auto &[number, direction] : kArrows) {
    if (number != (state & 0xFF)) continue;
    Face face(dc, canvas, rect);
    drawButton(face, rect, state, state & DFCS_INACTIVE ? BF_SOFT : 0u);
    if (state & DFCS_PUSHED) face.move(1, 1);
    drawMark(face, state, [way = direction](const Face &at, int color) { drawArrow(at, way, color); });
    return true;
  }
  return false;
}

void drawMenuArrow(const Face &face) {
  const int size = face.size(), steps = (size + 3) / 4;
  const int middle = size <= 16 ? (size + 1) / 2 : size / 2;
  for (int i = 0; i < steps; ++i)
    face.fill((3 * size + 4) / 8 + i, middle - steps + 1 + i, 1, 2 * (steps - i) - 1, kBlack);
}

// Black on white: a mask that the application draws in the colours of its menu.
bool drawMenu(const Face &face, const RECT &rect, UINT state) {
  const int size = face.size();
  if ((state & 0xFF) > DFCS_MENUBULLET) return false;
  face.fillRectangle(rect, kWhite);
  switch (state & 0xFF) {
  case DFCS_MENUARROW: drawMenuArrow(face); break;
  case DFCS_MENUCHECK: drawCheck(face, size / 4, size * 2 / 7, size / 2, kBlack); break;
  case DFCS_MENUBULLET: drawDot(face, (3 * size + 1) / 10, kBlack); break;
  }
  return true;
}

bool drawControl(const Dc &dc, const Canvas &canvas, const RECT &rect, UINT type, UINT state) {
  const Face face(dc, canvas, rect);
  switch (type) {
  case DFC_BUTTON: return drawButtonControl(face, rect, state);
  case DFC_CAPTION: return drawCaption(face, rect, state);
  case DFC_SCROLL: return drawScroll(dc, canvas, rect, state);
  case DFC_MENU: return drawMenu(face, rect, state);
  default: return false;
  }
}

} // namespace

} // namespace platform

using namespace platform;

BOOL DrawFrameControl(HDC dc, RECT *rect, UINT type, UINT state) {
  if (!rect) return FALSE;
  constexpr LONG kWidest = 1 << 16; // marks are made row by row
  BOOL result = FALSE;
  drawOn(dc, [&](Dc &context, const Canvas &canvas) {
    result = drawControl(context, canvas, within(*rect, kWidest), type, state);
    return deviceBox(context, rect->left, rect->top, rect->right, rect->bottom).translated(canvas.origin);
  });
  const bool framed = type == DFC_CAPTION || (type == DFC_SCROLL && (state & 0xFF) != DFCS_SCROLLSIZEGRIP) ||
                      (type == DFC_BUTTON && (state & 0xFF) == DFCS_BUTTONPUSH);
  if (result && framed && state & DFCS_ADJUSTRECT) *rect = inside(*rect, kEdge);
  return result;
}
