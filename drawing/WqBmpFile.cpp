// Bitmaps from BMP files, and their registry. A file is foreign bytes: the platform gets a description of its own making,
// and sees no pixels before all of them are known to lie in the file.

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

using Bytes = std::span<const uint8_t>;

constexpr uint64_t kOffBitsAt = 10; // in the file header
constexpr uint64_t kInfoAt = 14;
constexpr uint64_t kMasksAt = 54;
constexpr uint32_t kPlainInfo = 40; // bytes of a header without additions

// What the platform is told: colours, or masks in the place of the first three.
struct Info {
  BITMAPINFOHEADER header;
  RGBQUAD colours[256];
};

// The whole of a file, empty if it can't be read. The rows behind a plain header lie on four bytes in memory, as the
// platform has rows.
class Content {
 public:
  explicit Content(const char *path) {
    WqFile file;
    WqFile_Init(&file);
    WqFile_Path(&file, path);
    uint32_t size = 0;
    if (WqFile_ReadOpen(&file) && WqFile_Size(&file, &size) != 0xFFFFFFFF)
      block_ = static_cast<uint8_t *>(WqMem_Alloc(kAhead + size_t{size}));
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

// Result: whether the file goes that far.
bool read(Bytes file, uint64_t at, void *value, size_t size) {
  const Bytes source = from(file, at);
  if (source.size() < size) return false;
  std::memcpy(value, source.data(), size);
  return true;
}

// Result: the bytes that a run-length coded picture takes; 0 when it doesn't end, or leaves its rectangle. Some programs
// fill each row up to four pixels; what is too much the platform leaves out.
size_t codedSize(Bytes codes, const BITMAPINFOHEADER &header) {
  const uint64_t width = (static_cast<uint64_t>(header.biWidth) + 3) / 4 * 4;
  const auto height = static_cast<uint64_t>(header.biHeight);
  uint64_t x = 0, y = 0;
  for (size_t at = 0; at + 2 <= codes.size() && x <= width && y <= height;) {
    const uint32_t count = codes[at], code = codes[at + 1];
    at += 2;
    if (count > 0 || code > 2) { // one colour repeated, or colours one by one, filled up to a word
      const uint32_t pixels = count > 0 ? count : code;
      x += pixels;
      if (y == height) return 0;
      if (count == 0) at += (size_t{pixels} * header.biBitCount + 15) / 16 * 2;
    } else if (code == 0) { // the end of a row
      x = 0;
      ++y;
    } else if (code == 1) {
      return at;
    } else if (at + 2 <= codes.size()) { // a jump
      x += codes[at];
      y += codes[at + 1];
      at += 2;
    }
  }
  return 0;
}

// Result: whether all rows are there.
bool holdsRows(Bytes pixels, const BITMAPINFOHEADER &header) {
  const uint64_t row = (static_cast<uint64_t>(header.biWidth) * header.biBitCount + 31) / 32 * 4;
  const int64_t height = header.biHeight; // below 0 from the top down
  return static_cast<uint64_t>(height < 0 ? -height : height) <= pixels.size() / row;
}

// header: gets the size of a coded picture.
// Result: whether the picture is whole.
bool holdsPicture(Bytes pixels, BITMAPINFOHEADER *header) {
  header->biSizeImage = 0;
  if (header->biCompression != BI_RLE8 && header->biCompression != BI_RLE4) return holdsRows(pixels, *header);
  header->biSizeImage = static_cast<DWORD>(codedSize(pixels, *header));
  return header->biSizeImage != 0;
}

bool isKnown(const BITMAPINFOHEADER &header) {
  if (header.biSize < kPlainInfo || header.biWidth <= 0 || header.biHeight == 0 || header.biPlanes == 0) return false;
  const WORD bits = header.biBitCount;
  switch (header.biCompression) {
  case BI_RGB: return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
  case BI_RLE8: return bits == 8 && header.biHeight > 0;
  case BI_RLE4: return bits == 4 && header.biHeight > 0;
  case BI_BITFIELDS: return bits == 16 || bits == 32;
  default: return false;
  }
}

// Whether each mask is one run of bits, and no two share a bit.
bool areMasks(const uint32_t (&masks)[3], WORD bits) {
  uint64_t used = 0;
  for (const uint32_t mask : masks) {
    const uint32_t lowest = mask & (0 - mask);
    if (mask == 0 || (mask & (mask + lowest)) != 0 || (used & mask) != 0) return false;
    used |= mask;
  }
  return used >> bits == 0;
}

// Reads the header, and the masks or the colours, of which the picture can use.
// behind: gets the place behind all that.
bool readInfo(Bytes file, Info *info, uint64_t *behind) {
  BITMAPINFOHEADER &header = info->header;
  if (!read(file, kInfoAt, &header, sizeof header) || !isKnown(header)) return false;
  *behind = kInfoAt + header.biSize;
  if (header.biCompression == BI_BITFIELDS) {
    uint32_t masks[3];
    *behind = std::max<uint64_t>(*behind, kMasksAt + sizeof masks);
    if (!read(file, kMasksAt, masks, sizeof masks) || !areMasks(masks, header.biBitCount)) return false;
    std::memcpy(info->colours, masks, sizeof masks);
  } else if (header.biBitCount <= 8) {
    const uint64_t colours = WqBmpFile_ColNum(nullptr, &header);
    const auto used = static_cast<size_t>(std::min<uint64_t>(colours, uint64_t{1} << header.biBitCount));
    if (!read(file, *behind, info->colours, used * sizeof(RGBQUAD))) return false;
    *behind += colours * sizeof(RGBQUAD);
  }
  return true;
}

// Result: where the picture is, nothing when it isn't whole anywhere.
std::optional<uint64_t> findPicture(Bytes file, Info *info, uint64_t behind) {
  BITMAPINFOHEADER &header = info->header;
  if (header.biBitCount <= 8 && header.biSize == kPlainInfo && holdsPicture(from(file, behind), &header)) return behind;
  uint32_t offBits;
  if (!read(file, kOffBitsAt, &offBits, sizeof offBits) || offBits < behind) return {};
  return holdsPicture(from(file, offBits), &header) ? std::optional<uint64_t>(offBits) : std::nullopt;
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
  const std::optional<uint64_t> picture = findPicture(content.bytes(), &info, behind);
  if (!picture) return;
  info.header.biSize = kPlainInfo;
  info.header.biClrUsed = 0; // all that the depth allows: those that the file lacks are black
  file->handle = CreateDIBitmap(dc, &info.header, CBM_INIT, from(content.bytes(), *picture).data(),
                                reinterpret_cast<const BITMAPINFO *>(&info), DIB_RGB_COLORS);
}

void WqBmpFile_Delete(WqBmpFile *file) { wqDelete(file); }
void WqBmpFile_Term(WqBmpFile *file) { wqDelete(file); }

void WqBmpTbl_Insert(uint32_t id, const WqBmpFile *file) { wqInsertRecord(&wqMain.bmpTbl, id, file); }
HBITMAP WqBmpTbl_Get(uint32_t id, HDC dc) {
  return wqGetHandle<WqBmpFile>(&wqMain.bmpTbl, id, [dc](WqBmpFile *file) { WqBmpFile_Create(file, dc); });
}
void WqBmpTbl_Remove(uint32_t id) { wqRemoveRecord<WqBmpFile>(&wqMain.bmpTbl, id); }
