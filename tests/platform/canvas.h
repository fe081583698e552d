// Bitmaps to draw on.
#pragma once

#include "platform/platform.h"

// A bitmap in a context, which both go at the end.
struct Canvas {
  explicit Canvas(HANDLE made) : bitmap(made) {
    BITMAP told{};
    GetObjectA(made, sizeof told, &told);
    width = told.bmWidth, height = told.bmHeight;
    SelectObject(dc, made);
  }
  Canvas(int width, int height, UINT bits = 32) : Canvas(CreateBitmap(width, height, 1, bits, nullptr)) {}
  ~Canvas() { DeleteDC(dc), DeleteObject(bitmap); }
  Canvas(const Canvas &) = delete;
  Canvas &operator=(const Canvas &) = delete;

  void fill(COLORREF color) const { fill(CreateSolidBrush(color)); }
  void fill(HBRUSH brush) const { // which goes
    const RECT all{0, 0, width, height};
    FillRect(dc, &all, brush);
    DeleteObject(brush);
  }
  int count(COLORREF color) const {
    int sum = 0;
    for (int i = 0; i < width * height; ++i) sum += GetPixel(dc, i % width, i / width) == color;
    return sum;
  }

  const HDC dc = CreateCompatibleDC(nullptr);
  const HANDLE bitmap;
  int width, height;
};
