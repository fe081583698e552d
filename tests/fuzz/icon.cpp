// An input as an icon or cursor file: it makes icons of the sizes that are asked for, which draw within their
// rectangle, and whose bitmaps make the same icon again; or none.

#include "memory_file.h"

#include <vector>

namespace {

constexpr int kSheet = 40;
constexpr COLORREF kGround = RGB(0x30, 0x60, 0x90);

// A bitmap to draw on.
struct Sheet {
  Sheet() {
    bitmap = CreateBitmap(kSheet, kSheet, 1, 32, nullptr);
    SelectObject(dc, bitmap);
  }
  // What drawing makes of one colour.
  std::vector<COLORREF> drawn(HICON icon, int x, int y, int width, int height) const {
    const RECT all{0, 0, kSheet, kSheet};
    const HBRUSH brush = CreateSolidBrush(kGround);
    FillRect(dc, &all, brush);
    DeleteObject(brush);
    REQUIRE(DrawIconEx(dc, x, y, icon, width, height, 0, nullptr, DI_NORMAL));
    std::vector<COLORREF> pixels;
    for (int i = 0; i < kSheet * kSheet; ++i) pixels.push_back(GetPixel(dc, i % kSheet, i / kSheet));
    return pixels;
  }
  HDC dc = CreateCompatibleDC(nullptr);
  HBITMAP bitmap;
};

SIZE sizeOf(HBITMAP bitmap) {
  BITMAP told;
  REQUIRE(GetObjectA(bitmap, sizeof told, &told) == sizeof told);
  return {told.bmWidth, told.bmHeight};
}

void seesIcon(HICON icon, int size, BOOL isIcon, const Sheet &sheet) {
  ICONINFO info;
  REQUIRE(GetIconInfo(icon, &info) && info.fIcon == isIcon);
  const SIZE mask = sizeOf(info.hbmMask);
  REQUIRE(size == 0 || (mask.cx == size && mask.cy == (info.hbmColor ? size : 2 * size)));
  REQUIRE(!info.hbmColor || (sizeOf(info.hbmColor).cx == mask.cx && sizeOf(info.hbmColor).cy == mask.cy));

  constexpr int kAt = 7, kWidth = 11, kHeight = 18;
  const std::vector<COLORREF> pixels = sheet.drawn(icon, kAt, kAt, kWidth, kHeight);
  for (int i = 0; i < kSheet * kSheet; ++i) {
    const int x = i % kSheet - kAt, y = i / kSheet - kAt;
    const bool inside = x >= 0 && x < kWidth && y >= 0 && y < kHeight;
    REQUIRE(inside || pixels[static_cast<size_t>(i)] == kGround);
  }
  const HICON again = CreateIconIndirect(&info);
  REQUIRE(again);
  REQUIRE(sheet.drawn(again, -3, -2, 0, 0) == sheet.drawn(icon, -3, -2, 0, 0));
  REQUIRE(DestroyIcon(again));
  REQUIRE(DeleteObject(info.hbmMask));
  REQUIRE(!info.hbmColor || DeleteObject(info.hbmColor));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static const File file;
  static const Sheet sheet;
  file.fill(Bytes(data, size));
  const size_t before = countObjects();
  for (const UINT type : {IMAGE_ICON, IMAGE_CURSOR})
    for (const int wanted : {0, 16, 33}) {
      const HANDLE made = LoadImageA(nullptr, file.name(), type, wanted, wanted, LR_LOADFROMFILE);
      if (!made) continue;
      seesIcon(static_cast<HICON>(made), wanted, type == IMAGE_ICON, sheet);
      REQUIRE(DestroyIcon(static_cast<HICON>(made)));
    }
  REQUIRE(countObjects() == before);
  return 0;
}
