// The double-byte characters of code page 932. No locale takes part: the classes are fixed.
#pragma once

constexpr bool wqIsLeadByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

constexpr bool wqIsTrailByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC);
}

// Whether a double-byte character begins here. A lead byte with anything else behind it counts as a single byte.
inline bool wqIsDoubleByte(const char *text) { return wqIsLeadByte(text[0]) && wqIsTrailByte(text[1]); }
