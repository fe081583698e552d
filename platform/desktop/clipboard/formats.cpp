#include "platform/desktop/clipboard/formats.h"

#include "platform/kernel/codepage.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

namespace platform {

namespace {

// Types between programs on this layer: with a registered format's name, or with any other format's number.
constexpr std::string_view kNamedType = "application/x-windows-clipboard; format=\"";
constexpr std::string_view kNumberedType = "application/x-windows-clipboard; number=";

constexpr UINT kFirstRegistered = 0xC000, kLastRegistered = 0xFFFF;
constexpr size_t kLongestName = 255;

// The first format of a family loses nothing.
constexpr UINT kTexts[] = {CF_UNICODETEXT, CF_TEXT, CF_OEMTEXT}, kPictures[] = {CF_DIB, CF_DIBV5, CF_BITMAP};

bool isIn(UINT format, UINT first, UINT last) { return format >= first && format <= last; }

// Whether a format never goes to other programs: its handle means nothing there, or it only accompanies a text.
bool staysHere(UINT format) {
  constexpr UINT kStaying[] = {CF_METAFILEPICT, CF_ENHMETAFILE,     CF_LOCALE,
                               CF_OWNERDISPLAY, CF_DSPMETAFILEPICT, CF_DSPENHMETAFILE};
  const ClipKind kind = clipKindOf(format);
  return kind == ClipKind::bitmap || kind == ClipKind::object ||
         std::count(std::begin(kStaying), std::end(kStaying), format);
}

struct Registered {
  std::vector<std::string> names; // by number, from the first registered one on
  std::map<std::u16string, UINT> numbers;
};

Registered &registered() {
  static auto *all = new Registered;
  return *all;
}

// A type is ASCII and its parameter ends with a quotation mark. So a name's other bytes are written in hexadecimal.
std::string quoted(std::string_view name) {
  constexpr const char *kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= ' ' && byte <= '~' && byte != '"' && byte != '%' && byte != '\\')
      text += c;
    else
      text += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return text;
}

std::string unquoted(std::string_view text) {
  std::string name;
  for (size_t at = 0; at < text.size(); ++at) {
    unsigned byte = 0;
    const char *const digits = text.data() + at + 1;
    if (text[at] != '%' || text.size() - at < 3 || std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) {
      name += text[at];
      continue;
    }
    name += static_cast<char>(byte);
    at += 2;
  }
  return name;
}

} // namespace

ClipKind clipKindOf(UINT format) {
  if (format == CF_BITMAP || format == CF_DSPBITMAP) return ClipKind::bitmap;
  if (format == CF_PALETTE || isIn(format, CF_GDIOBJFIRST, CF_GDIOBJLAST)) return ClipKind::object;
  const bool own = format == CF_OWNERDISPLAY || isIn(format, CF_PRIVATEFIRST, CF_PRIVATELAST);
  return own ? ClipKind::own : ClipKind::block;
}

std::span<const UINT> clipFamilyOf(UINT format) {
  if (isClipText(format)) return kTexts;
  if (std::count(std::begin(kPictures), std::end(kPictures), format)) return kPictures;
  return {};
}

bool isClipText(UINT format) { return std::count(std::begin(kTexts), std::end(kTexts), format) > 0; }

UINT registerClipFormat(std::string_view name) {
  if (name.empty() || name.size() > kLongestName) return 0;
  Registered &all = registered();
  const auto next = static_cast<UINT>(kFirstRegistered + all.names.size());
  const auto [at, isNew] = all.numbers.emplace(foldedName(utf8FromCodePage(name)), next);
  if (!isNew) return at->second;
  if (next > kLastRegistered) {
    all.numbers.erase(at);
    return 0;
  }
  all.names.emplace_back(name);
  return next;
}

const std::string &clipFormatName(UINT format) {
  static const std::string none;
  const std::vector<std::string> &names = registered().names;
  return format >= kFirstRegistered && format - kFirstRegistered < names.size() ? names[format - kFirstRegistered]
                                                                                : none;
}

std::vector<std::string> typesOfClipFormat(UINT format) {
  if (isClipText(format)) return {kUtf8Type, kTextType};
  if (!clipFamilyOf(format).empty()) return {kPngType, kBmpType};
  if (const std::string &name = clipFormatName(format); !name.empty())
    return {std::string(kNamedType) + quoted(utf8FromCodePage(name)) + '"'};
  if (staysHere(format)) return {};
  return {std::string(kNumberedType) + std::to_string(format)};
}

UINT clipFormatOfType(std::string_view type) {
  if (type == kTextType || type == kUtf8Type) return CF_UNICODETEXT;
  if (type == kPngType || type == kBmpType) return CF_DIB;
  if (type.starts_with(kNamedType) && type.ends_with('"') && type.size() > kNamedType.size()) {
    type.remove_prefix(kNamedType.size());
    type.remove_suffix(1);
    return registerClipFormat(codePageFromUtf8(unquoted(type)));
  }
  UINT format = 0;
  if (!type.starts_with(kNumberedType)) return 0;
  type.remove_prefix(kNumberedType.size());
  const bool whole = std::from_chars(type.data(), type.data() + type.size(), format).ptr == type.data() + type.size();
  const bool fits = whole && format < kFirstRegistered && !staysHere(format) && clipFamilyOf(format).empty();
  return fits ? format : 0;
}

} // namespace platform
