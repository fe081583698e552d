// Clipboard formats: the kind of their handles, and the types by which other programs know them.
#pragma once

#include "platform/winapi.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The kind of a format's handle.
enum class ClipKind {
  block,  // global memory
  bitmap, //
  object, // another drawing object
  own     // any number of the owner's
};
ClipKind clipKindOf(UINT format);

// The family of a format, such as all text formats: each can be made from each other one. The order is that of
// preference.
std::span<const UINT> clipFamilyOf(UINT format); // includes the format; empty if it has no family
bool isClipText(UINT format);

// Registers a format, or finds it. Result: 0 for an invalid name.
UINT registerClipFormat(std::string_view name);
// The name of a registered format, in code page 932; empty for any other number.
const std::string &clipFormatName(UINT format);

// The types by which a format's data go to other programs; empty if they stay in this program.
std::vector<std::string> typesOfClipFormat(UINT format);
// The format of a type's data; 0 for none. The name in a type is registered if it is new.
UINT clipFormatOfType(std::string_view type);

inline constexpr const char *kTextType = "text/plain", *kUtf8Type = "text/plain;charset=utf-8";
inline constexpr const char *kPngType = "image/png", *kBmpType = "image/bmp";

} // namespace platform
