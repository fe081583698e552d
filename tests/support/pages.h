// Printed documents as others read them: with the tools of poppler, which run on Linux.
#pragma once

#include "platform/platform.h"

#include <cstdint>
#include <string>
#include <vector>

// The text of a document, laid out as it stands on the pages. UTF-8.
std::string textOf(const std::string &file);

// Words with the place where each begins, in device pixels of a resolution: "word 12,34" by lines.
struct Word {
  std::string text;
  double left, top, right, bottom;
};
std::vector<Word> wordsOf(const std::string &file, int dpi);

// A page as a picture without smoothing.
struct PageImage {
  int width = 0, height = 0;
  std::string bytes; // three for each pixel

  COLORREF at(int x, int y) const;
};
PageImage pageOf(const std::string &file, int page, int dpi);

// Widths and heights of the bitmaps in a document: "40x30 ".
std::string bitmapsIn(const std::string &file);
// How many pages it has; -1 for none that can be read.
int pagesIn(const std::string &file);
