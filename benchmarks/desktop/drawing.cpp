// Drawing: a paint pass of an application, and each call alone, on a bitmap in memory.

#include "desktop/desktop.h"

namespace {

constexpr SIZE kArea = {1280, 800};
constexpr uint32_t kFirstColour = 1; // the first of kColours ids
constexpr uint32_t kColours = 16;
constexpr uint32_t kFont = 1;
constexpr char kLatin[] = "Level -12.5 dBV";
constexpr char kJapanese[] = "\x83\x8C\x83\x78\x83\x8B\x91\xAA\x92\xE8"; // five characters
constexpr char kGothic[] = "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E";

uint32_t colourOf(int index) { return kFirstColour + static_cast<uint32_t>(index) % kColours; }

void enterResources() {
  for (uint32_t i = 0; i < kColours; ++i) WqColorTbl_Insert(kFirstColour + i, RGB(i * 15, 255 - i * 10, i * 7));
  WqFont font;
  WqFont_Init(&font);
  WqFont_Param(&font, kGothic, 12, 0);
  WqFont_LogDef(&font);
  WqFontTbl_Insert(kFont, &font);
}

// The place of one of many small shapes.
RECT cellOf(int index, LONG width, LONG height) {
  const LONG x = static_cast<LONG>(index * 37) % (kArea.cx - width),
             y = static_cast<LONG>(index * 23) % (kArea.cy - height);
  return {x, y, x + width, y + height};
}

void drawScene(WqDcDraw *draw) {
  const RECT all = {0, 0, kArea.cx, kArea.cy};
  WqDcDraw_FillRect(draw, &all, colourOf(0));
  for (int i = 0; i < 200; ++i) {
    const RECT rect = cellOf(i, 60, 24);
    WqDcDraw_FillRect(draw, &rect, colourOf(i));
  }
  for (int i = 0; i < 200; ++i) {
    const RECT rect = cellOf(i, 90, 50);
    const POINT from = {rect.left, rect.top}, to = {rect.right, rect.bottom};
    WqDcDraw_InitLine(draw, 1, colourOf(i));
    WqDcDraw_Line(draw, &from, &to);
  }
  WqDcDraw_InitText(draw, kFont, colourOf(7));
  for (int i = 0; i < 50; ++i) {
    const RECT rect = cellOf(i, 120, 16);
    WqDcDraw_Text(draw, kLatin, &rect, DT_LEFT | DT_TOP | DT_SINGLELINE | DT_NOPREFIX);
  }
}

double paintPass() {
  static int passes;
  enterResources();
  WqWnd wnd;
  WqWnd_Init(&wnd);
  WqWnd_Style(&wnd, WS_POPUP | WS_VISIBLE);
  wnd.rect = {0, 0, kArea.cx - 1, kArea.cy - 1};
  wnd.userProc = [](WqWnd *, WqMsg *msg) {
    if (msg->msg != WQM_PAINT) return 0;
    ++passes;
    drawScene(&reinterpret_cast<WqDc *>(msg->wParam)->draw);
    return 1;
  };
  require(WqWnd_Create(&wnd) != nullptr, "a window cannot be made");
  WqWnd_WaitQueEmpty();
  int asked = passes;
  const double seconds = secondsPerIteration([&] {
    ++asked;
    InvalidateRect(wnd.hwnd, nullptr, FALSE);
    UpdateWindow(wnd.hwnd);
  });
  require(passes == asked, "a paint pass was left out");
  DestroyWindow(wnd.hwnd);
  WqWnd_WaitQueEmpty();
  return seconds;
}

// A context that draws on a bitmap in memory, and another one with a picture and its mask as a source.
class Paper {
 public:
  Paper() {
    enterResources();
    const HDC screen = GetDC(nullptr);
    hdc_ = CreateCompatibleDC(screen);
    bitmap_ = CreateCompatibleBitmap(screen, kArea.cx, kArea.cy);
    sprite_ = CreateCompatibleBitmap(screen, 2 * kSprite, kSprite);
    ReleaseDC(nullptr, screen);
    before_ = SelectObject(hdc_, bitmap_);
    PatBlt(hdc_, 0, 0, kArea.cx, kArea.cy, WHITENESS);
    WqDc_Init(&dc_, nullptr);
    WqDc_Get(&dc_, WQ_DC_EXTERNAL);
    dc_.hdc = hdc_;
    WqDcDraw_BackMode(&dc_.draw, TRANSPARENT);
  }
  ~Paper() {
    WqDc_Term(&dc_);
    SelectObject(hdc_, before_);
    DeleteDC(hdc_);
    DeleteObject(bitmap_);
    DeleteObject(sprite_);
  }
  Paper(const Paper &) = delete;
  Paper &operator=(const Paper &) = delete;

  WqDcDraw *draw() { return &dc_.draw; }
  WqDcObj *obj() { return &dc_.obj; }
  HDC hdc() const { return hdc_; }
  HBITMAP sprite() const { return sprite_; }

  static constexpr LONG kSprite = 64;

 private:
  WqDc dc_;
  HDC hdc_;
  HBITMAP bitmap_, sprite_;
  HGDIOBJ before_;
};

void selectAll(Paper &paper) {
  WqDcDraw_InitLine(paper.draw(), 1, colourOf(1));
  WqDcDraw_InitText(paper.draw(), kFont, colourOf(2));
  WqDcObj_SelectBrush(paper.obj(), colourOf(3));
}

void blit(Paper &paper, int index, void (*kind)(const WqBmpDraw *, HDC)) {
  const RECT cell = cellOf(index, Paper::kSprite, Paper::kSprite);
  const POINT from = {0, 0}, to = {cell.left, cell.top};
  const SIZE size = {Paper::kSprite, Paper::kSprite};
  WqBmpDraw sprite;
  WqBmpDraw_Init(&sprite, paper.sprite());
  WqBmpDraw_Param(&sprite, &from, &to, &size);
  kind(&sprite, paper.hdc());
}

void text(Paper &paper, int index, const char *label, UINT format) {
  RECT cell = cellOf(index, 120, 16);
  if (format & DT_CALCRECT)
    WqDcDraw_GetTextRect(paper.draw(), label, &cell, format);
  else
    WqDcDraw_Text(paper.draw(), label, &cell, format);
}

constexpr struct {
  const char *name;
  void (*call)(Paper &paper, int index);
} kCalls[] = {
    {"line, 90 x 50",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 90, 50);
       const POINT from = {cell.left, cell.top}, to = {cell.right, cell.bottom};
       WqDcDraw_Line(paper.draw(), &from, &to);
     }},
    {"line, level, 200",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 200, 1);
       const POINT from = {cell.left, cell.top}, to = {cell.right, cell.top};
       WqDcDraw_Line(paper.draw(), &from, &to);
     }},
    {"polyline, 100 points",
     [](Paper &paper, int) {
       static const auto points = [] {
         std::array<POINT, 100> zigzag;
         for (size_t i = 0; i < zigzag.size(); ++i)
           zigzag[i] = {static_cast<LONG>(10 + i * 9), static_cast<LONG>(i % 2 ? 300 : 340)};
         return zigzag;
       }();
       WqDcDraw_PolyLine(paper.draw(), points.data(), static_cast<int32_t>(points.size()));
     }},
    {"rectangle filled, 60 x 24",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 24);
       WqDcDraw_FillRect(paper.draw(), &cell, colourOf(i));
     }},
    {"rectangle framed, 60 x 24",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 24);
       WqDcDraw_FrameRect(paper.draw(), &cell, colourOf(i));
     }},
    {"rectangle filled, direct colour",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 24);
       WqDcDraw_FillRect(paper.draw(), &cell, 0xFF102030u);
       WqDcObj_Term(paper.obj()); // deletes the brush
       WqDcObj_SelectBrush(paper.obj(), colourOf(3));
     }},
    {"round corners, 60 x 24",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 24);
       const POINT corner = {8, 8};
       WqDcDraw_RoundRect(paper.draw(), &cell, &corner, colourOf(i));
     }},
    {"ellipse, 60 x 24",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 24);
       WqDcDraw_Ellipse(paper.draw(), &cell);
     }},
    {"polygon, 5 points",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 60);
       const POINT star[] = {{cell.left + 30, cell.top},
                             {cell.left + 48, cell.top + 58},
                             {cell.left + 1, cell.top + 22},
                             {cell.left + 59, cell.top + 22},
                             {cell.left + 12, cell.top + 58}};
       WqDcDraw_Polygon(paper.draw(), star, 5);
     }},
    {"curve, 2 pieces",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 120, 60);
       const POINT start = {cell.left, cell.top};
       const POINT points[] = {{cell.left + 20, cell.top + 60}, {cell.left + 40, cell.top},
                               {cell.left + 60, cell.top + 30}, {cell.left + 80, cell.top + 60},
                               {cell.left + 100, cell.top},     {cell.left + 120, cell.top + 60}};
       WqDcDraw_MoveTo(paper.draw(), &start);
       WqDcDraw_PolyBezier(paper.draw(), points, 6);
     }},
    {"edge",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 24);
       WqDcDraw_DrawEdge(paper.draw(), &cell, EDGE_RAISED, BF_RECT | BF_MIDDLE);
     }},
    {"focus frame",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 24);
       WqDcDraw_FocusRect(paper.draw(), &cell);
     }},
    {"push button",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 60, 24);
       WqDcDraw_FrameControl(paper.draw(), &cell, DFC_BUTTON, DFCS_BUTTONPUSH);
     }},
    {"check box",
     [](Paper &paper, int i) {
       const RECT cell = cellOf(i, 13, 13);
       WqDcDraw_FrameControl(paper.draw(), &cell, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_CHECKED);
     }},
    {"text, 15 Latin", [](Paper &paper, int i) { text(paper, i, kLatin, DT_SINGLELINE | DT_NOPREFIX); }},
    {"text, 5 Japanese", [](Paper &paper, int i) { text(paper, i, kJapanese, DT_SINGLELINE | DT_NOPREFIX); }},
    {"text measured, 15 Latin",
     [](Paper &paper, int i) { text(paper, i, kLatin, DT_SINGLELINE | DT_NOPREFIX | DT_CALCRECT); }},
    {"text, words broken",
     [](Paper &paper, int i) { text(paper, i, "peak and level of the left channel", DT_WORDBREAK | DT_NOPREFIX); }},
    {"blit, 64 x 64", [](Paper &paper, int i) { blit(paper, i, WqBmpDraw_SrcCopy); }},
    {"blit with mask, 64 x 64", [](Paper &paper, int i) { blit(paper, i, WqBmpDraw_SrcCopyWithMask); }},
    {"pen selected", [](Paper &paper, int i) { WqDcDraw_InitLine(paper.draw(), 1, colourOf(i)); }},
    {"map made",
     [](Paper &, int) {
       WqDcMap map;
       WqDcMap_Init(&map);
     }},
};

double callAlone(void (*call)(Paper &, int)) {
  Paper paper;
  selectAll(paper);
  int index = 0;
  return secondsPerIteration([&] { call(paper, index++ & 0xFFFF); });
}

} // namespace

void addDrawing(std::vector<Subject> &subjects) {
  subjects.push_back({"paint pass, 1280 x 800", paintPass});
  for (const auto &[name, call] : kCalls) subjects.push_back({name, [call = call] { return callAlone(call); }});
}
