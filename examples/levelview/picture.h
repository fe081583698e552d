// Pictures of a window, in memory and in files.
#pragma once

#include "wq.h"

#include <string>

// A window's client area, with the windows in it, as a bitmap of its own.
class Picture {
 public:
  explicit Picture(HWND window);
  ~Picture() { DeleteObject(bitmap_); }
  Picture(const Picture &) = delete;
  Picture &operator=(const Picture &) = delete;

  HBITMAP bitmap() const { return bitmap_; } // null where the platform refuses
  // The bitmap is the caller's from now on.
  HBITMAP take();
  // Writes a BMP file. Result: whether it is written as a whole.
  bool save(const std::string &file) const;

 private:
  HBITMAP bitmap_;
};

// Writes a picture in the format that the file's name tells, BMP or PNG; the platform may know no PNG.
// picture: of the window, taken before. Result: whether it is written.
bool savePicture(HWND window, const Picture &picture, const std::string &file);
