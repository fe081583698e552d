// The system's colours: those of the classic look.

#include "platform/desktop/drawing/objects.h"
#include "platform/desktop/lock.h"

#include <array>
#include <iterator>

namespace platform {

namespace {

constexpr COLORREF kColors[] = {
    RGB(212, 208, 200), RGB(58, 110, 165),  RGB(10, 36, 106),   RGB(128, 128, 128), // scroll bar ... inactive caption
    RGB(212, 208, 200), RGB(255, 255, 255), RGB(0, 0, 0),       RGB(0, 0, 0),       // menu ... menu text
    RGB(0, 0, 0),       RGB(255, 255, 255), RGB(212, 208, 200), RGB(212, 208, 200), // window text ... inactive border
    RGB(128, 128, 128), RGB(10, 36, 106),   RGB(255, 255, 255), RGB(212, 208, 200), // workspace ... button face
    RGB(128, 128, 128), RGB(128, 128, 128), RGB(0, 0, 0),       RGB(212, 208, 200), // button shadow ...
    RGB(255, 255, 255), RGB(64, 64, 64),    RGB(212, 208, 200), RGB(0, 0, 0),       // button highlight ... info text
    RGB(255, 255, 225), RGB(181, 181, 181), RGB(0, 0, 128),     RGB(166, 202, 240), // info background ...
    RGB(192, 192, 192), RGB(10, 36, 106),   RGB(212, 208, 200),                     // ... menu bar
};

std::array<HBRUSH, std::size(kColors)> colorBrushes{};

HBRUSH colorBrush(int index) {
  HBRUSH &brush = colorBrushes[static_cast<size_t>(index)];
  if (!brush) brush = static_cast<HBRUSH>(openStock(std::make_shared<Brush>(BS_SOLID, kColors[index])));
  return brush;
}

} // namespace

} // namespace platform

using namespace platform;

DWORD GetSysColor(int index) { return index >= 0 && index < static_cast<int>(std::size(kColors)) ? kColors[index] : 0; }

HBRUSH GetSysColorBrush(int index) {
  return locked<HBRUSH>(nullptr, [&]() -> HBRUSH {
    return index >= 0 && index < static_cast<int>(std::size(kColors)) ? colorBrush(index) : nullptr;
  });
}
