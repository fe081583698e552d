#include "platform/desktop/clipboard/exchange.h"

#include "platform/desktop/clipboard/formats.h"
#include "platform/desktop/drawing/packed.h"
#include "platform/kernel/codepage.h"

#include <cstring>

namespace platform {

namespace {

constexpr LCID kLocale = 0x0411; // the locale of code page 932

HANDLE blockOf(const void *bytes, size_t size) {
  const HGLOBAL block = size > 0 ? GlobalAlloc(GMEM_MOVEABLE, size) : nullptr;
  if (!block) return nullptr;
  std::memcpy(GlobalLock(block), bytes, size);
  GlobalUnlock(block);
  return block;
}
HANDLE blockOf(const std::string &bytes) { return blockOf(bytes.data(), bytes.size()); }

// The text of any text format, up to its NUL.
std::u16string textOf(const ClipData &data) {
  const std::span<const uint8_t> bytes = data.block.span();
  if (data.format == CF_UNICODETEXT) {
    std::u16string text(bytes.size() / sizeof(char16_t), u'\0');
    if (!text.empty()) std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
    text.resize(std::min(text.size(), text.find(u'\0')));
    return text;
  }
  const std::string_view text(reinterpret_cast<const char *>(bytes.data()), bytes.size());
  return utf16FromText(text.substr(0, text.find('\0')));
}

HANDLE blockOfText(UINT format, const std::u16string &text) {
  if (format == CF_UNICODETEXT) return blockOf(text.c_str(), (text.size() + 1) * sizeof(char16_t));
  const std::string bytes = textFromUtf16(text);
  return blockOf(bytes.c_str(), bytes.size() + 1);
}

HANDLE makeText(UINT format, const ClipData &from) {
  if (from.format == CF_UNICODETEXT && from.block.size < sizeof(char16_t)) return nullptr;
  if (format != CF_UNICODETEXT && from.format != CF_UNICODETEXT) // both are code page 932
    return blockOf(from.block.at.get(), from.block.size);
  return blockOfText(format, textOf(from));
}

HANDLE makePicture(UINT format, const ClipData &from) {
  if (format == CF_BITMAP) {
    const auto bitmap = bitmapOfDib(from.block.span());
    return bitmap ? openObject<HBITMAP>(bitmap) : nullptr;
  }
  const std::string dib =
      from.picture.isNull() ? std::string() : dibOfImage(from.picture, from.bits == 1 ? 1 : 32, true);
  if (format == CF_DIB && !dib.empty()) return blockOf(dib);
  const std::span<const uint8_t> bytes =
      dib.empty() ? from.block.span() : std::span(reinterpret_cast<const uint8_t *>(dib.data()), dib.size());
  return blockOf(dibWithHeader(bytes, format == CF_DIBV5 ? kV5Header : kInfoHeader));
}

std::string pictureAsType(const ClipData &data, const std::string &type) {
  if (!data.picture.isNull()) {
    if (type == kPngType) return pngOfImage(data.picture);
    const std::string dib = dibOfImage(data.picture, data.bits == 1 ? 1 : 32, false);
    return bmpOfDib({reinterpret_cast<const uint8_t *>(dib.data()), dib.size()});
  }
  if (type == kBmpType) return bmpOfDib(data.block.span());
  const auto bitmap = bitmapOfDib(data.block.span());
  return bitmap ? pngOfImage(bitmap->image) : std::string();
}

// Texts of other programs end lines with LF, the clipboard's text formats with CR LF.
std::string withoutReturns(std::string text) {
  size_t to = 0;
  for (size_t at = 0; at < text.size(); ++at)
    if (text[at] != '\r' || at + 1 == text.size() || text[at + 1] != '\n') text[to++] = text[at];
  text.resize(to);
  return text;
}

std::u16string withReturns(const std::u16string &text) {
  std::u16string lines;
  lines.reserve(text.size() + text.size() / 16);
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] == u'\n' && (at == 0 || text[at - 1] != u'\r')) lines += u'\r';
    lines += text[at];
  }
  return lines;
}

} // namespace

ClipData clipDataOf(UINT format, HANDLE handle) {
  ClipData data{format, {}, {}, 0};
  if (clipKindOf(format) == ClipKind::bitmap) {
    const auto bitmap = drawingHandles().get<Bitmap>(handle);
    if (!bitmap || bitmap->image.isNull()) return data;
    bitmap->settle();
    data.picture = bitmap->image;
    data.bits = bitmap->bits;
  } else if (clipKindOf(format) != ClipKind::object) {
    data.block = bytesOf(handle);
  }
  return data;
}

HANDLE makeClipData(UINT format, const ClipData &from) {
  if (isNone(from)) return nullptr;
  return isClipText(format) ? makeText(format, from) : makePicture(format, from);
}

HANDLE makeClipLocale() { return blockOf(&kLocale, sizeof kLocale); }

HANDLE clipDataFromType(UINT format, const std::string &type, const std::string &bytes) {
  if (isClipText(format)) return blockOfText(format, withReturns(utf16FromUtf8(bytes)));
  if (type == kPngType || type == kBmpType)
    return blockOf(dibOfFile({reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size()}));
  return blockOf(bytes);
}

std::string clipDataAsType(const ClipData &data, const std::string &type) {
  if (isNone(data)) return {};
  if (isClipText(data.format)) return withoutReturns(utf8FromUtf16(textOf(data)));
  if (type == kPngType || type == kBmpType) return pictureAsType(data, type);
  const std::span<const uint8_t> bytes = data.block.span();
  return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

void freeClipData(UINT format, HANDLE handle) {
  const ClipKind kind = clipKindOf(format);
  if (kind == ClipKind::bitmap || kind == ClipKind::object)
    DeleteObject(handle);
  else
    GlobalFree(handle);
}

} // namespace platform
