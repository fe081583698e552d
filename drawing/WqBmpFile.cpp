// Bitmaps from BMP files, and their registry. Files are hostile input: the platform gets a header that is made here,
// and no pixels before all of them are known to lie in the file.

#include "drawing/drawing_private.h"

#include "files/files.h"
#include "frame/main.h"
#include "frame/memory.h"
#include "text/double_byte.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>

namespace {

using Bytes = std::span<uint8_t>; // of a copy of the file

constexpr uint64_t kOffBitsAt = 10; // in the file header
constexpr uint64_t kInfoAt = 14;
constexpr uint64_t kMasksAt = 54;
constexpr uint32_t kPlainInfo = 40;    // bytes of a header without extensions
constexpr uint32_t kCoreInfo = 12;     // bytes of the oldest header, with fewer fields and colours of three bytes
constexpr uint8_t kEndMark[] = {0, 1}; // ends a run-length coded picture

// The header for the platform, with colours, or with masks in place of the first three colours.
struct Info {
  BITMAPINFOHEADER header;
  RGBQUAD colours[256];
};

// The content of a file, empty if it can't be read. Rows behind a plain header are aligned to four bytes in memory, as
// the platform wants. Behind the file there is room for an end mark.
class Content {
 public:
  explicit Content(const char *path) {
    WqFile file;
    WqFile_Init(&file);
    WqFile_Path(&file, path);
    uint32_t size = 0;
    if (WqFile_ReadOpen(&file) && WqFile_Size(&file, &size) != 0xFFFFFFFF) {
      const size_t room = kAhead + size_t{size} + sizeof kEndMark;
      if (room > size) block_ = static_cast<uint8_t *>(WqMem_Alloc(room)); // the sum wraps in 32 bits
    }
    if (block_) bytes_ = {block_ + kAhead, WqFile_Read(&file, block_ + kAhead, size)};
    WqFile_Close(&file);
  }
  ~Content() { WqMem_Free(block_); }
  Content(const Content &) = delete;
  Content &operator=(const Content &) = delete;

  Bytes bytes() const { return bytes_; }

 private:
  static constexpr size_t kAhead = 2;
  uint8_t *block_ = nullptr;
  Bytes bytes_;
};

Bytes from(Bytes bytes, uint64_t at) { return at < bytes.size() ? bytes.subspan(static_cast<size_t>(at)) : Bytes(); }

// Result: whether the file is long enough.
bool read(Bytes file, uint64_t at, void *value, size_t size) {
  const Bytes source = from(file, at);
  if (source.size() < size) return false;
  std::memcpy(value, source.data(), size);
  return true;
}

// One code of a run-length coded picture: pixels along a row, the end of a row, or a jump.
struct Code {
  size_t size; // in bytes
  uint32_t right, up;
  bool draws, endsRow;
};

// codes: at least two bytes.
Code firstCode(Bytes codes, WORD bits) {
  const uint8_t count = codes[0], kind = codes[1];
  if (count > 0) return {2, count, 0, true, false};
  if (kind > 2)
    return {2 + (size_t{kind} * bits + 15) / 16 * 2, kind, 0, true, false}; // single pixels, padded to a word
  if (kind < 2) return {2, 0, 1, false, true};
  return codes.size() < 4 ? Code{4, 0, 0, false, false} : Code{4, codes[2], codes[3], false, false};
}

// The extent of a picture's codes.
struct Codes {
  size_t size; // up to the end mark, or behind the last complete code
  bool ended;  // an end mark was found
  bool inside; // in the picture's rectangle, with rows padded to four pixels, as some programs do
};

// codes: up to the end of the file.
Codes readCodes(Bytes codes, const BITMAPINFOHEADER &header) {
  const uint64_t width = (static_cast<uint64_t>(header.biWidth) + 3) / 4 * 4;
  const auto height = static_cast<uint64_t>(header.biHeight);
  Codes result{0, false, true};
  uint64_t x = 0, y = 0;
  while (result.size + 2 <= codes.size() && !result.ended) {
    const Bytes rest = from(codes, result.size);
    const Code code = firstCode(rest, header.biBitCount);
    if (code.size > rest.size()) break;
    x = code.endsRow ? 0 : x + code.right;
    y += code.up;
    result.ended = std::equal(std::begin(kEndMark), std::end(kEndMark), rest.data());
    result.inside = result.inside && (result.ended || (x <= width && y + code.draws <= height));
    if (!result.ended) result.size += code.size;
  }
  return result;
}

// Puts an end mark behind the last complete code. There may be one already; the codes behind aren't read.
// header: gets the size of the picture.
void endCodes(Bytes codes, BITMAPINFOHEADER *header) {
  const size_t size = readCodes(codes, *header).size;
  std::copy(std::begin(kEndMark), std::end(kEndMark), codes.data() + size);
  header->biSizeImage = static_cast<DWORD>(size + sizeof kEndMark);
}

// Result: whether all rows are in the file.
bool holdsRows(Bytes pixels, const BITMAPINFOHEADER &header) {
  const uint64_t row = (static_cast<uint64_t>(header.biWidth) * header.biBitCount + 31) / 32 * 4;
  const int64_t height = header.biHeight; // below 0 for rows from the top down
  return static_cast<uint64_t>(height < 0 ? -height : height) <= pixels.size() / row;
}

bool isCoded(const BITMAPINFOHEADER &header) {
  return header.biCompression == BI_RLE8 || header.biCompression == BI_RLE4;
}

// Result: whether a picture begins here with all its rows. A coded picture needs only a beginning, unless wholeCodes is
// set.
bool beginsPicture(Bytes pixels, const BITMAPINFOHEADER &header, bool wholeCodes) {
  if (!isCoded(header)) return holdsRows(pixels, header);
  const Codes codes = readCodes(pixels, header);
  return wholeCodes ? codes.ended && codes.inside : codes.ended || codes.size > 0;
}

bool isKnown(const BITMAPINFOHEADER &header) {
  if (header.biSize < kPlainInfo && header.biSize != kCoreInfo) return false;
  if (header.biWidth <= 0 || header.biHeight == 0 || header.biPlanes == 0) return false;
  const WORD bits = header.biBitCount;
  switch (header.biCompression) {
  case BI_RGB: return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
  case BI_RLE8: return bits == 8 && header.biHeight > 0;
  case BI_RLE4: return bits == 4 && header.biHeight > 0;
  case BI_BITFIELDS: return bits == 16 || bits == 32;
  default: return false;
  }
}

// Whether each mask is one run of bits, and no two masks share a bit.
bool areMasks(const uint32_t (&masks)[3], WORD bits) {
  uint64_t used = 0;
  for (const uint32_t mask : masks) {
    const uint32_t lowest = mask & (0 - mask);
    if (mask == 0 || (mask & (mask + lowest)) != 0 || (used & mask) != 0) return false;
    used |= mask;
  }
  return used >> bits == 0;
}

// Reads a header of either kind. Fields that the oldest one lacks are 0.
bool readHeader(Bytes file, BITMAPINFOHEADER *header) {
  BITMAPCOREHEADER core;
  *header = {};
  if (!read(file, kInfoAt, &core, sizeof core)) return false;
  if (core.bcSize != kCoreInfo) return read(file, kInfoAt, header, sizeof *header) && isKnown(*header);
  header->biSize = core.bcSize;
  header->biWidth = core.bcWidth;
  header->biHeight = core.bcHeight;
  header->biPlanes = core.bcPlanes;
  header->biBitCount = core.bcBitCount;
  return isKnown(*header);
}

// Reads the colours that the picture can use.
// behind: is moved behind all colours of the file.
bool readColours(Bytes file, Info *info, uint64_t *behind) {
  const uint64_t most = uint64_t{1} << info->header.biBitCount;
  const bool isCore = info->header.biSize == kCoreInfo;
  const size_t entry = isCore ? sizeof(RGBTRIPLE) : sizeof(RGBQUAD);
  const uint64_t colours = isCore ? most : WqBmpFile_ColNum(nullptr, &info->header);
  const Bytes table = from(file, *behind);
  const auto used = static_cast<size_t>(std::min(colours, most));
  if (table.size() < used * entry) return false;
  for (size_t i = 0; i < used; ++i) std::memcpy(&info->colours[i], &table[i * entry], entry);
  *behind += colours * entry;
  return true;
}

// Reads the header, and the masks or the colours.
// behind: gets the place behind the header, the masks and the colours.
bool readInfo(Bytes file, Info *info, uint64_t *behind) {
  BITMAPINFOHEADER &header = info->header;
  if (!readHeader(file, &header)) return false;
  *behind = kInfoAt + header.biSize;
  if (header.biCompression == BI_BITFIELDS) {
    uint32_t masks[3];
    *behind = std::max<uint64_t>(*behind, kMasksAt + sizeof masks);
    if (!read(file, kMasksAt, masks, sizeof masks) || !areMasks(masks, header.biBitCount)) return false;
    std::memcpy(info->colours, masks, sizeof masks);
  }
  return header.biBitCount > 8 || readColours(file, info, behind);
}

// The place of the picture: behind the colours, or else where the file header says. An incomplete coded picture behind
// the colours could be a gap that looks like codes, so the place in the file header is tried before it.
// Result: nothing if there is no picture.
std::optional<uint64_t> findPicture(Bytes file, const BITMAPINFOHEADER &header, uint64_t behind) {
  const bool plain = header.biBitCount <= 8 && header.biSize == kPlainInfo;
  if (plain && beginsPicture(from(file, behind), header, true)) return behind;
  uint32_t offBits = 0;
  read(file, kOffBitsAt, &offBits, sizeof offBits);
  const uint64_t told = offBits != 0 ? offBits : behind;
  if (told >= behind && beginsPicture(from(file, told), header, false)) return told;
  if (plain && beginsPicture(from(file, behind), header, false)) return behind;
  return std::nullopt;
}

} // namespace

void WqBmpFile_Init(WqBmpFile *file, const char *path) {
  *file = {};
  wqCopyFitting(file->path, path);
}

uint32_t WqBmpFile_ColNum(const void *, const BITMAPINFOHEADER *header) {
  if (header->biClrUsed != 0) return header->biClrUsed;
  switch (header->biBitCount) {
  case 4: return 16;
  case 8: return 256;
  case 16: return 0x10000;
  default: return 2;
  }
}

void WqBmpFile_Create(WqBmpFile *file, HDC dc) {
  file->handle = nullptr;
  const Content content(file->path);
  Info info = {};
  uint64_t behind;
  if (!readInfo(content.bytes(), &info, &behind)) return;
  const std::optional<uint64_t> at = findPicture(content.bytes(), info.header, behind);
  if (!at) return;
  const Bytes picture = from(content.bytes(), *at);
  info.header.biSize = kPlainInfo;
  info.header.biClrUsed = 0; // the full table of the depth; colours that the file lacks are black
  info.header.biSizeImage = 0;
  if (isCoded(info.header)) endCodes(picture, &info.header);
  file->handle = CreateDIBitmap(dc, &info.header, CBM_INIT, picture.data(), reinterpret_cast<const BITMAPINFO *>(&info),
                                DIB_RGB_COLORS);
}

void WqBmpFile_Delete(WqBmpFile *file) { wqDelete(file); }
void WqBmpFile_Term(WqBmpFile *file) { wqDelete(file); }

void WqBmpTbl_Insert(uint32_t id, const WqBmpFile *file) { wqInsertRecord(&wqMain.bmpTbl, id, file); }
HBITMAP WqBmpTbl_Get(uint32_t id, HDC dc) {
  return wqGetHandle<WqBmpFile>(&wqMain.bmpTbl, id, [dc](WqBmpFile *file) { WqBmpFile_Create(file, dc); });
}
void WqBmpTbl_Remove(uint32_t id) { wqRemoveRecord<WqBmpFile>(&wqMain.bmpTbl, id); }
