// Formats of data on the clipboard: what stands for them in the program, and by what types other programs know them.
#pragma once

#include "platform/winapi.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// What the handle of a format is.
enum class ClipKind {
  block,  // of global memory
  bitmap, //
  object, // another one to draw with
  own     // the owner's: any number
};
ClipKind clipKindOf(UINT format);

// Formats of which any can be made from any other: text, and pictures. In the order in which they are looked for and made.
std::span<const UINT> clipFamilyOf(UINT format); // with the format; empty for one that has none
bool isClipText(UINT format);

// A registered format. Result: 0 for a name that is none.
UINT registerClipFormat(std::string_view name);
// In code page 932. Empty for a number that has none.
const std::string &clipFormatName(UINT format);

// The types by which a format's data go to other programs; none where they stay in this one.
std::vector<std::string> typesOfClipFormat(UINT format);
// The format that data of a type are; 0 for none. A name that is new gets registered.
UINT clipFormatOfType(std::string_view type);

inline constexpr const char *kTextType = "text/plain", *kUtf8Type = "text/plain;charset=utf-8";
inline constexpr const char *kPngType = "image/png", *kBmpType = "image/bmp";

} // namespace platform
