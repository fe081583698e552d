#include "picture.h"

#include "settings.h"

#include <cstring>
#include <utility>
#include <vector>

namespace {

HBITMAP pictureOf(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  const HDC shown = GetDC(window), memory = CreateCompatibleDC(shown);
  HBITMAP picture = CreateCompatibleBitmap(shown, area.right, area.bottom);
  const HGDIOBJ before = SelectObject(memory, picture);
  const bool copied = BitBlt(memory, 0, 0, area.right, area.bottom, shown, 0, 0, SRCCOPY);
  SelectObject(memory, before);
  if (!copied) DeleteObject(std::exchange(picture, nullptr));
  DeleteDC(memory);
  ReleaseDC(window, shown);
  return picture;
}

// The pixels of a bitmap, 24 bits each, rows from the bottom up. form: gets their form.
std::vector<uint8_t> pixelsOf(HBITMAP bitmap, BITMAPINFOHEADER &form) {
  BITMAP size{};
  if (!GetObjectA(bitmap, sizeof size, &size)) return {};
  form = {sizeof form, size.bmWidth, size.bmHeight, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
  form.biSizeImage = static_cast<DWORD>((size.bmWidth * 3 + 3) / 4 * 4 * size.bmHeight);
  std::vector<uint8_t> pixels(form.biSizeImage);
  BITMAPINFO info{};
  info.bmiHeader = form;
  const HDC screen = GetDC(nullptr);
  const auto rows = static_cast<UINT>(size.bmHeight);
  const bool read = GetDIBits(screen, bitmap, 0, rows, pixels.data(), &info, DIB_RGB_COLORS) == size.bmHeight;
  ReleaseDC(nullptr, screen);
  if (!read) pixels.clear();
  return pixels;
}

bool writeWhole(const std::string &name, const std::vector<uint8_t> &bytes) {
  WqFile file;
  WqFile_Init(&file);
  WqFile_Path(&file, name.c_str());
  if (!WqFile_WriteOpen(&file)) return false;
  const auto size = static_cast<uint32_t>(bytes.size());
  const bool written = WqFile_Write(&file, bytes.data(), size) == size;
  WqFile_Close(&file);
  if (!written) DeleteFileA(name.c_str());
  return written;
}

} // namespace

Picture::Picture(HWND window) : bitmap_(pictureOf(window)) {}

HBITMAP Picture::take() { return std::exchange(bitmap_, nullptr); }

bool Picture::save(const std::string &file) const {
  BITMAPINFOHEADER form{};
  const std::vector<uint8_t> pixels = pixelsOf(bitmap_, form);
  if (pixels.empty()) return false;
  BITMAPFILEHEADER head{};
  head.bfType = 'B' | 'M' << 8;
  head.bfOffBits = sizeof head + sizeof form;
  head.bfSize = head.bfOffBits + form.biSizeImage;
  std::vector<uint8_t> bytes(head.bfOffBits);
  std::memcpy(bytes.data(), &head, sizeof head);
  std::memcpy(bytes.data() + sizeof head, &form, sizeof form);
  bytes.insert(bytes.end(), pixels.begin(), pixels.end());
  return writeWhole(file, bytes);
}

bool savePicture(HWND window, const Picture &picture, const std::string &file) {
  return extensionOf(file) == "bmp" ? picture.save(file) : platformSavePicture(window, file.c_str()) != 0;
}
