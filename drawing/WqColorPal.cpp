// Palettes: the colour table of a BMP file, and the platform's palette made from it, in which shades of the desktop
// replace six greys.

#include "drawing/drawing_private.h"

#include "files/files.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr uint32_t kLogEntries = 256; // entries of the platform's palette
constexpr COLORREF kGreys[] = {0xE6E6E6, 0xE0E0E0, 0xC0C0C0, 0xADADAD, 0x808080, 0x424242};
constexpr COLORREF kWhite = 0xFFFFFF;

// The beginning of a BMP file, for one read.
struct FileStart {
  uint8_t fileHeader[14];
  uint8_t infoHeader[40];
  RGBQUAD entries[WQ_PAL_ENTRIES];
};
static_assert(sizeof(FileStart) == 14 + 40 + 4 * WQ_PAL_ENTRIES);

// Entries beyond the file's end are 0.
// Result: whether the file holds both headers.
bool readStart(const char *path, FileStart *start) {
  *start = {};
  WqFile file;
  WqFile_Init(&file);
  WqFile_Path(&file, path);
  WqFile_ReadOpen(&file);
  const uint32_t size = WqFile_Read(&file, start, sizeof *start);
  WqFile_Close(&file);
  return size >= offsetof(FileStart, entries);
}

// Result: 0 if the file gives no palette.
uint32_t colourCount(const FileStart &start) {
  BITMAPINFOHEADER header;
  std::memcpy(&header, start.infoHeader, sizeof header);
  if (header.biClrUsed != 0) return header.biClrUsed > 256 ? 0 : header.biClrUsed;
  switch (header.biBitCount) {
  case 1: return 2;
  case 4: return 16;
  case 16: return 0;
  default: return 256;
  }
}

void deleteHandle(WqColorPal *palette) {
  if (!palette->handle) return;
  UnrealizeObject(palette->handle);
  wqDelete(palette);
}

void setColour(PALETTEENTRY *entry, COLORREF colour) {
  entry->peRed = static_cast<BYTE>(colour);
  entry->peGreen = static_cast<BYTE>(colour >> 8);
  entry->peBlue = static_cast<BYTE>(colour >> 16);
}

// Computes the replacements of the greys, in the greys' order.
void findReplacements(WqColorPal *palette) {
  const COLORREF face = GetSysColor(COLOR_BTNFACE);
  const COLORREF shadow = GetSysColor(COLOR_BTNSHADOW);
  COLORREF light = GetSysColor(COLOR_BTNHIGHLIGHT);
  if (light == kWhite) light = WqColor_Neutral(face, kWhite); // keeps the two lightest apart from white
  const COLORREF colours[] = {WqColor_Neutral(light, kWhite),
                              0x02000000 | (light & kWhite),
                              face,
                              WqColor_Neutral(face, shadow),
                              shadow,
                              WqColor_Neutral(shadow, GetSysColor(COLOR_3DDKSHADOW))};
  for (size_t i = 0; i < std::size(colours); ++i) palette->replace[i].colour = colours[i];
}

} // namespace

void WqColorPal_Init(WqColorPal *palette, WqWord) {
  *palette = {};
  WqColorPal_Create(palette);
}

void WqColorPal_Term(WqColorPal *palette) { deleteHandle(palette); }

void WqColorPal_Bmp(WqColorPal *palette, const char *path) {
  FileStart start;
  if (!readStart(path, &start)) return;
  const uint32_t count = colourCount(start);
  if (count == 0) return;
  std::copy(std::begin(start.entries), std::end(start.entries), palette->entries);
  palette->baseCount = palette->count = std::min<uint32_t>(count, WQ_PAL_ENTRIES);
}

void WqColorPal_InitCount(WqColorPal *palette) { palette->count = palette->baseCount; }

int32_t WqColorPal_Add(WqColorPal *palette, COLORREF colour) {
  if (palette->count >= WQ_PAL_ENTRIES) return -1;
  const int32_t present = WqColorPal_FindIx(palette, colour);
  if (present >= 0) return present;
  WqColor_RGB(colour, &palette->entries[palette->count]);
  return static_cast<int32_t>(palette->count++);
}

COLORREF WqColorPal_FindData(const WqColorPal *palette, uint32_t index) {
  if (index >= palette->count) return 0;
  const RGBQUAD &entry = palette->entries[index];
  return RGB(entry.rgbRed, entry.rgbGreen, entry.rgbBlue);
}

int32_t WqColorPal_FindIx(const WqColorPal *palette, COLORREF colour) {
  for (uint32_t index = 0; index < palette->count; ++index)
    if (WqColorPal_FindData(palette, index) == (colour & kWhite)) return static_cast<int32_t>(index);
  return -1;
}

void WqColorPal_InitReplace(WqColorPal *palette) {
  for (size_t i = 0; i < std::size(kGreys); ++i) palette->replace[i].index = WqColorPal_FindIx(palette, kGreys[i]);
}

void WqColorPal_Create(WqColorPal *palette) {
  WqColorPal_InitCount(palette);
  alignas(LOGPALETTE) uint8_t room[offsetof(LOGPALETTE, palPalEntry) + kLogEntries * sizeof(PALETTEENTRY)] = {};
  auto *log = reinterpret_cast<LOGPALETTE *>(room);
  for (uint32_t index = 0; index < palette->count; ++index)
    setColour(&log->palPalEntry[index], WqColorPal_FindData(palette, index));
  log->palVersion = 0x300;
  log->palNumEntries = static_cast<WORD>(palette->count);
  deleteHandle(palette);
  WqColorPal_Replace(palette, log);
}

void WqColorPal_Replace(WqColorPal *palette, LOGPALETTE *log) {
  findReplacements(palette);
  for (const WqColorReplace &replace : palette->replace)
    if (replace.index >= 0 && replace.index < log->palNumEntries)
      setColour(&log->palPalEntry[replace.index], replace.colour);
  palette->handle = CreatePalette(log);
}

void WqColorPal_Select(const WqColorPal *palette, HDC dc) {
  if (palette->handle) SelectPalette(dc, palette->handle, FALSE);
}
