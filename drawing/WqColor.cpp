// Colour arithmetic on the channels of platform colours. Their top bytes have no effect.

#include "drawing/drawing.h"

namespace {

constexpr uint32_t kPaletteRelative = 0x02000000;

constexpr int kShifts[] = {16, 8, 0}; // for blue, green and red

constexpr uint32_t channel(COLORREF colour, int shift) { return colour >> shift & 0xFF; }

} // namespace

COLORREF WqColor_Neutral(COLORREF colour, COLORREF other) {
  uint32_t neutral = kPaletteRelative;
  for (const int shift : kShifts) neutral |= (channel(colour, shift) + channel(other, shift)) / 2 << shift;
  return neutral;
}

COLORREF WqColor_BW(COLORREF colour) {
  const auto value =
      static_cast<uint32_t>(channel(colour, 16) * 0.1 + channel(colour, 0) * 0.3 + channel(colour, 8) * 0.6);
  return kPaletteRelative | value << 16 | value << 8 | value;
}

void WqColor_RGB(COLORREF colour, void *entry) {
  auto *bytes = static_cast<uint8_t *>(entry);
  for (const int shift : kShifts) *bytes++ = static_cast<uint8_t>(channel(colour, shift));
}

void WqColorSet_Init(WqWord, WqWord) {}

void WqColorSet_Term(WqWord) {}
