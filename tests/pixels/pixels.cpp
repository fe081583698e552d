// One sheet of drawing, to be made on two systems and compared.
//   pixels draw FILE.bmp
//   pixels compare ONE.bmp OTHER.bmp DIFFERENCES.bmp     exit status 1 when what has to be the same is not
// Each row of the sheet is a kind of drawing, each cell a case of it with a random context.

#include "platform/platform.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kWidth = 64, kHeight = 48, kCases = 20;

// The same numbers everywhere.
uint32_t state;
int pick(int lowest, int highest) {
  state = state * 1664525u + 1013904223u;
  return lowest + static_cast<int>((state >> 8) % static_cast<uint32_t>(highest - lowest + 1));
}
bool oneOf(int count) { return pick(1, count) == 1; }
COLORREF color() { return static_cast<COLORREF>(pick(0, 0xFFFFFF)); }
int across() { return pick(-8, kWidth + 8); }
int down() { return pick(-8, kHeight + 8); }
template <size_t kCount> std::array<POINT, kCount> points() {
  std::array<POINT, kCount> all;
  for (POINT &one : all) one.x = across(), one.y = down();
  return all;
}
RECT rect() { // mostly with its edges in order
  const int x = across(), y = down();
  return oneOf(12) ? RECT{across(), down(), x, y} : RECT{x, y, x + pick(0, 50), y + pick(0, 40)};
}

// A cell's context, with objects of its own selected.
class Cell {
 public:
  Cell(HDC screen) : dc(CreateCompatibleDC(screen)), bitmap_(CreateCompatibleBitmap(screen, kWidth, kHeight)) {
    SelectObject(dc, bitmap_);
    const RECT all{0, 0, kWidth, kHeight};
    fill(all, RGB(240, 240, 232));
    SetBkColor(dc, color());
    if (oneOf(2)) SetBkMode(dc, TRANSPARENT);
    if (oneOf(4)) SetROP2(dc, pick(R2_BLACK, R2_WHITE));
    if (oneOf(4)) IntersectClipRect(dc, pick(0, 20), pick(0, 20), pick(30, kWidth), pick(30, kHeight));
    if (oneOf(5)) {
      SetMapMode(dc, MM_ANISOTROPIC);
      SetWindowExtEx(dc, pick(1, 7), pick(1, 7), nullptr);
      SetViewportExtEx(dc, pick(1, 7), pick(1, 7), nullptr);
    }
    use(CreateSolidBrush(color()));
    use(CreatePen(PS_SOLID, 1, color()));
  }
  ~Cell() {
    DeleteDC(dc);
    DeleteObject(bitmap_);
    for (const HGDIOBJ one : objects_) DeleteObject(one);
  }
  Cell(const Cell &) = delete;
  Cell &operator=(const Cell &) = delete;

  void use(HGDIOBJ object) {
    objects_.push_back(object);
    SelectObject(dc, object);
  }
  void fill(const RECT &box, COLORREF with) {
    const HBRUSH brush = CreateSolidBrush(with);
    FillRect(dc, &box, brush);
    DeleteObject(brush);
  }
  void line() {
    MoveToEx(dc, across(), down(), nullptr);
    LineTo(dc, across(), down());
  }
  void pen(int style, int width) { use(CreatePen(style, width, color())); }

  const HDC dc;

 private:
  const HBITMAP bitmap_;
  std::vector<HGDIOBJ> objects_;
};

void blit(Cell &cell, DWORD operation) {
  Cell source(cell.dc);
  for (int i = 0; i < 6; ++i) source.fill(rect(), color());
  BitBlt(cell.dc, across(), down(), pick(1, 60), pick(1, 40), source.dc, pick(-9, 9), pick(-9, 9), operation);
}

constexpr const char *kWords = "Peak \x83\x8C\x83\x78\x83\x8B -12.5 dBV";

void text(Cell &cell) {
  LOGFONTA font{};
  font.lfHeight = -pick(9, 20);
  font.lfWeight = oneOf(3) ? FW_BOLD : FW_NORMAL;
  font.lfCharSet = SHIFTJIS_CHARSET;
  std::strcpy(font.lfFaceName, "IPAGothic");
  cell.use(CreateFontIndirectA(&font));
  SetTextColor(cell.dc, color());
  RECT box{2, 2, 60, 46};
  constexpr UINT kFormats[] = {DT_SINGLELINE | DT_VCENTER | DT_CENTER, DT_WORDBREAK, DT_SINGLELINE | DT_END_ELLIPSIS,
                               DT_WORDBREAK | DT_RIGHT};
  DrawTextA(cell.dc, kWords, -1, &box, kFormats[pick(0, 3)]);
}

struct Kind {
  const char *name;
  int slack; // by how many pixels the edges of what is drawn may differ; 0: all pixels are the same
  void (*draw)(Cell &cell);
};
constexpr Kind kKinds[] = {
    {"lines", 0, [](Cell &cell) { cell.line(), cell.line(); }},
    {"dashed lines", 0, [](Cell &cell) { cell.pen(pick(PS_DASH, PS_DASHDOTDOT), 1), cell.line(), cell.line(); }},
    {"polylines", 0, [](Cell &cell) { Polyline(cell.dc, points<6>().data(), 6); }},
    {"filled rectangles", 0, [](Cell &cell) { cell.fill(rect(), color()), cell.fill(rect(), color()); }},
    {"hatched rectangles", 0,
     [](Cell &cell) {
       cell.use(CreateHatchBrush(pick(HS_HORIZONTAL, HS_DIAGCROSS), color()));
       const RECT box = rect();
       SetBrushOrgEx(cell.dc, pick(0, 7), pick(0, 7), nullptr);
       PatBlt(cell.dc, box.left, box.top, box.right - box.left, box.bottom - box.top, PATCOPY);
     }},
    {"framed rectangles", 0,
     [](Cell &cell) {
       const RECT box = rect();
       const HBRUSH brush = CreateSolidBrush(color());
       FrameRect(cell.dc, &box, brush);
       DeleteObject(brush);
     }},
    {"rectangles", 0,
     [](Cell &cell) {
       if (oneOf(3)) cell.pen(PS_INSIDEFRAME, pick(1, 6));
       const RECT box = rect();
       Rectangle(cell.dc, box.left, box.top, box.right, box.bottom);
     }},
    {"polygons", 0,
     [](Cell &cell) {
       SetPolyFillMode(cell.dc, pick(ALTERNATE, WINDING));
       Polygon(cell.dc, points<6>().data(), 6);
     }},
    {"copies", 0, [](Cell &cell) { blit(cell, SRCCOPY); }},
    {"operations on copies", 0, [](Cell &cell) { blit(cell, oneOf(2) ? SRCAND : SRCPAINT); }},
    {"edges", 0,
     [](Cell &cell) {
       SetMapMode(cell.dc, MM_TEXT);
       RECT box{pick(0, 20), pick(0, 20), pick(30, 60), pick(30, 46)};
       constexpr UINT kEdges[] = {EDGE_RAISED, EDGE_SUNKEN, EDGE_ETCHED, EDGE_BUMP};
       DrawEdge(cell.dc, &box, kEdges[pick(0, 3)], BF_RECT | (oneOf(2) ? BF_MIDDLE : 0) | (oneOf(3) ? BF_SOFT : 0));
     }},
    {"focus rectangles", 0,
     [](Cell &cell) {
       const RECT box = rect();
       DrawFocusRect(cell.dc, &box);
     }},
    {"wide lines", 1, [](Cell &cell) { cell.pen(PS_SOLID, pick(2, 9)), cell.line(); }},
    {"ellipses", 1,
     [](Cell &cell) {
       const RECT box = rect();
       Ellipse(cell.dc, box.left, box.top, box.right, box.bottom);
     }},
    {"round corners", 1,
     [](Cell &cell) {
       const RECT box = rect();
       RoundRect(cell.dc, box.left, box.top, box.right, box.bottom, pick(3, 30), pick(3, 30));
     }},
    {"curves", 1,
     [](Cell &cell) {
       MoveToEx(cell.dc, across(), down(), nullptr);
       PolyBezierTo(cell.dc, points<6>().data(), 6);
     }},
    {"text", 2, text},
};
constexpr int kRows = static_cast<int>(std::size(kKinds)), kColumns = kCases * kWidth, kLines = kRows * kHeight;

// A picture of 24 bits, from the bottom up.
struct Picture {
  std::vector<uint8_t> pixels = std::vector<uint8_t>(size_t{3} * kColumns * kLines);

  uint8_t *at(int x, int y) {
    return &pixels[(static_cast<size_t>(kLines - 1 - y) * kColumns + static_cast<size_t>(x)) * 3];
  }
  bool same(Picture &other, int x, int y) { return std::memcmp(at(x, y), other.at(x, y), 3) == 0; }

  static std::string header() {
    BITMAPINFOHEADER info{sizeof(BITMAPINFOHEADER), kColumns, kLines, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    const uint32_t offset = 14 + sizeof info, size = offset + 3 * kColumns * kLines, none = 0;
    std::string bytes = "BM";
    for (const uint32_t word : {size, none, offset}) bytes.append(reinterpret_cast<const char *>(&word), 4);
    return bytes.append(reinterpret_cast<const char *>(&info), sizeof info);
  }
  bool write(const char *name) const {
    std::ofstream out(name, std::ios::binary);
    out << header() << std::string(pixels.begin(), pixels.end());
    return static_cast<bool>(out.flush());
  }
  bool read(const char *name) {
    std::ifstream in(name, std::ios::binary);
    const std::string all{std::istreambuf_iterator<char>(in), {}}, head = header();
    if (all.size() != head.size() + pixels.size() || all.compare(0, head.size(), head) != 0) return false;
    std::copy(all.begin() + static_cast<std::ptrdiff_t>(head.size()), all.end(), pixels.begin());
    return true;
  }
};

// The two systems have looks of their own: the shades of edges, from light to dark, stand for greys. The two in the
// middle may be one.
COLORREF neutral(COLORREF pixel) {
  constexpr std::pair<int, COLORREF> kShades[] = {{COLOR_BTNHIGHLIGHT, RGB(250, 250, 250)},
                                                  {COLOR_3DLIGHT, RGB(190, 190, 190)},
                                                  {COLOR_BTNFACE, RGB(190, 190, 190)},
                                                  {COLOR_BTNSHADOW, RGB(110, 110, 110)},
                                                  {COLOR_3DDKSHADOW, RGB(50, 50, 50)}};
  for (const auto &[shade, grey] : kShades)
    if (GetSysColor(shade) == pixel) return grey;
  return pixel;
}

int draw(const char *name) {
  Picture picture;
  const HDC screen = GetDC(nullptr);
  for (int row = 0; row < kRows; ++row)
    for (int column = 0; column < kCases; ++column) {
      state = static_cast<uint32_t>(row * kCases + column) * 2654435761u;
      Cell cell(screen);
      kKinds[row].draw(cell);
      SetMapMode(cell.dc, MM_TEXT);
      for (int i = 0; i < kWidth * kHeight; ++i) {
        const COLORREF pixel = neutral(GetPixel(cell.dc, i % kWidth, i / kWidth));
        uint8_t *to = picture.at(column * kWidth + i % kWidth, row * kHeight + i / kWidth);
        to[0] = GetBValue(pixel), to[1] = GetGValue(pixel), to[2] = GetRValue(pixel);
      }
    }
  ReleaseDC(nullptr, screen);
  return picture.write(name) ? 0 : 2;
}

// The edges of all in a cell that isn't ground.
RECT inkOf(Picture &picture, int left, int top) {
  RECT box{kWidth, kHeight, 0, 0};
  constexpr uint8_t kGround[3] = {232, 240, 240};
  for (int i = 0; i < kWidth * kHeight; ++i) {
    const LONG x = i % kWidth, y = i / kWidth;
    if (std::memcmp(picture.at(left + x, top + y), kGround, 3) == 0) continue;
    box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), std::max(box.bottom, y + 1)};
  }
  return box;
}

bool isNear(const RECT &a, const RECT &b, int slack) {
  return std::abs(a.left - b.left) <= slack && std::abs(a.top - b.top) <= slack &&
         std::abs(a.right - b.right) <= slack && std::abs(a.bottom - b.bottom) <= slack;
}

int compare(const char *one, const char *other, const char *differences) {
  Picture a, b, both;
  if (!a.read(one) || !b.read(other)) return std::puts("no such pictures"), 2;
  bool good = true;
  std::printf("%-22s %10s %18s %14s\n", "kind", "same cells", "different pixels", "same edges");
  for (int row = 0; row < kRows; ++row) {
    int cells = 0, pixels = 0, edges = 0;
    for (int column = 0; column < kCases; ++column) {
      const int left = column * kWidth, top = row * kHeight, before = pixels;
      for (int i = 0; i < kWidth * kHeight; ++i) {
        const int x = left + i % kWidth, y = top + i / kWidth;
        const bool same = a.same(b, x, y);
        const uint8_t *from = a.at(x, y);
        uint8_t *to = both.at(x, y);
        for (int k = 0; k < 3; ++k) to[k] = static_cast<uint8_t>(same ? 170 + from[k] / 3 : k == 2 ? 255 : 0);
        pixels += !same;
      }
      cells += pixels == before;
      edges += isNear(inkOf(a, left, top), inkOf(b, left, top), kKinds[row].slack);
    }
    const bool right = edges == kCases && (kKinds[row].slack > 0 || pixels == 0);
    good = good && right;
    std::printf("%-22s %7d/%d %18d %11d/%d%s\n", kKinds[row].name, cells, kCases, pixels, edges, kCases,
                right ? "" : "  WRONG");
  }
  return both.write(differences) ? !good : 2;
}

} // namespace

int main(int count, char **arguments) {
  const std::string what = count > 1 ? arguments[1] : "";
  if (what == "draw" && count == 3) return draw(arguments[2]);
  if (what == "compare" && count == 5) return compare(arguments[2], arguments[3], arguments[4]);
  std::puts("pixels draw FILE.bmp | pixels compare ONE.bmp OTHER.bmp DIFFERENCES.bmp");
  return 2;
}
