// A picture to draw on, and BMP files made to order.
#pragma once

#include "support/desktop.h"
#include "support/library.h"

#include <cstring>

// A black picture in a memory context with a white pen, which a WqDc holds as one set from outside.
class CanvasTest : public LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    const HDC screen = GetDC(nullptr);
    canvas = CreateCompatibleDC(screen), bitmap_ = CreateCompatibleBitmap(screen, 40, 40), ReleaseDC(nullptr, screen);
    before_ = SelectObject(canvas, bitmap_), clear(), SelectObject(canvas, GetStockObject(WHITE_PEN));
    WqDc_Init(&dc, nullptr), WqDc_Get(&dc, WQ_DC_EXTERNAL), dc.hdc = canvas;
  }
  void TearDown() override {
    WqDc_Term(&dc), SelectObject(canvas, before_), DeleteDC(canvas), DeleteObject(bitmap_), LibraryTest::TearDown();
  }
  void clear(DWORD operation = BLACKNESS) const { PatBlt(canvas, 0, 0, 40, 40, operation); }
  // Rows from the top as hexadecimal numbers; a row ends with '/'.
  std::string look(int width = 40, int height = 40) const {
    std::string text;
    for (int i = 0; i < width * height; ++i) {
      char pixel[16];
      wsprintfA(pixel, i % width == width - 1 ? "%X/" : "%X ", GetPixel(canvas, i % width, i / width));
      text += pixel;
    }
    return text;
  }
  // What is selected of a stock object's kind.
  HGDIOBJ selected(int stock) const {
    const HGDIOBJ object = SelectObject(canvas, GetStockObject(stock));
    return SelectObject(canvas, object), object;
  }

  HDC canvas;
  WqDc dc;

 private:
  HBITMAP bitmap_;
  HGDIOBJ before_;
};

// What a client area shows at a place, and one that is filled.
inline COLORREF pixelOf(HWND hwnd, int x, int y) {
  const HDC screen = GetDC(hwnd);
  const COLORREF color = GetPixel(screen, x, y);
  return ReleaseDC(hwnd, screen), color;
}
inline void fillWindow(HWND hwnd, COLORREF color) {
  const RECT all = {0, 0, 1000, 1000};
  const HDC screen = GetDC(hwnd);
  const HBRUSH brush = CreateSolidBrush(color);
  FillRect(screen, &all, brush), DeleteObject(brush), ReleaseDC(hwnd, screen);
}

struct BmpParts {
  LONG width, height;
  WORD bits;
  DWORD used = 0, compression = BI_RGB;
  std::string table = "", pixels = "";
  size_t gap = 0;                     // between them
  DWORD headerSize = 40, offBits = 0; // 0: where the pixels are
};

inline std::string bmpFile(const BmpParts &is) {
  const BITMAPINFOHEADER info{is.headerSize, is.width, is.height, 1, is.bits, is.compression, 0, 0, 0, is.used, 0};
  std::string file = std::string(14, '\0') + std::string(reinterpret_cast<const char *>(&info), sizeof info);
  file += std::string(is.headerSize - sizeof info, '\0') + is.table + std::string(is.gap, '\xEE');
  const DWORD offBits = is.offBits ? is.offBits : static_cast<DWORD>(file.size());
  std::memcpy(&file[10], &offBits, sizeof offBits);
  return file + is.pixels;
}
