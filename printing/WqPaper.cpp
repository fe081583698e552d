// The size of a page, from its device.

#include "printing/printing.h"

namespace {

constexpr int32_t kParts = 100; // of a millimetre

} // namespace

void WqPaper_Init(WqPaper *paper) { *paper = {}; }

void WqPaper_Term(WqPaper *paper) { *paper = {}; }

void WqPaper_Size(WqPaper *paper, HDC hdc) {
  paper->width = hdc ? GetDeviceCaps(hdc, HORZSIZE) * kParts : 0;
  paper->height = hdc ? GetDeviceCaps(hdc, VERTSIZE) * kParts : 0;
}

void WqPaper_Zoom(WqPaper *paper, double percent) { paper->zoom = percent; }
