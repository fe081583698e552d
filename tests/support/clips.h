// Data on the clipboard, as tests put them there and look at them.
#pragma once

#include "platform/platform.h"

#include <cstring>
#include <string>

inline HGLOBAL clipOf(const std::string &bytes) {
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  if (void *const at = GlobalLock(block)) std::memcpy(at, bytes.data(), bytes.size()), GlobalUnlock(block);
  return block;
}

// With its NUL. The second holds UTF-16.
inline std::string narrow(const std::string &text) { return std::string(text.c_str(), text.size() + 1); }
inline std::string wide(const std::u16string &text) {
  return {reinterpret_cast<const char *>(text.c_str()), (text.size() + 1) * 2};
}

inline std::string bytesOfClip(HANDLE data) {
  if (!data) return "none";
  const auto *const bytes = static_cast<const char *>(GlobalLock(data));
  const std::string copy = bytes ? std::string(bytes, GlobalSize(data)) : "no block";
  GlobalUnlock(data);
  return copy;
}

// Opens the clipboard for a look. "none" where there are no data.
inline std::string lookAt(UINT format) {
  if (!OpenClipboard(nullptr)) return "not open";
  const std::string bytes = bytesOfClip(GetClipboardData(format));
  CloseClipboard();
  return bytes;
}

inline std::string clipFormats() {
  if (!OpenClipboard(nullptr)) return "not open";
  std::string all;
  for (UINT format = 0; (format = EnumClipboardFormats(format)) != 0;)
    all += (all.empty() ? "" : " ") + std::to_string(format);
  CloseClipboard();
  return all;
}

inline void emptyClipboard(HWND owner = nullptr) { OpenClipboard(owner), EmptyClipboard(), CloseClipboard(); }

// Puts one thing there, or a promise, and nothing else.
inline HANDLE putClip(HWND owner, UINT format, HANDLE data) {
  if (!OpenClipboard(owner)) return nullptr;
  EmptyClipboard();
  const HANDLE given = SetClipboardData(format, data);
  CloseClipboard();
  return given;
}
