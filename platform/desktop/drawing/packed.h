// Pictures in one piece: a header, colours and pixels as they lie on the clipboard, or a whole file.
#pragma once

#include "platform/desktop/drawing/objects.h"

#include <span>
#include <string>

namespace platform {

// A bitmap for contexts of the screen; null for bytes that hold no whole picture.
std::shared_ptr<Bitmap> bitmapOfDib(std::span<const uint8_t> dib);

// The pixels of a bitmap with 1 bit or with 32. masks: whether the header tells with 32 bits where the colours lie, as
// the platform's own does.
std::string dibOfImage(const QImage &image, int bits, bool masks);

// The same pixels behind a header of another size, that of a BITMAPINFOHEADER or of a BITMAPV5HEADER. Empty for bytes
// that hold no whole picture.
constexpr DWORD kInfoHeader = 40, kV5Header = 124;
std::string dibWithHeader(std::span<const uint8_t> dib, DWORD headerSize);

// From a BMP or PNG file; what is transparent becomes white. Empty for other files and for such as are cut.
std::string dibOfFile(std::span<const uint8_t> file);

// Files.
std::string bmpOfDib(std::span<const uint8_t> dib);
std::string pngOfImage(const QImage &image);

} // namespace platform
