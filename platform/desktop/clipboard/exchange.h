// Converts clipboard data between formats, and to and from the types of other programs. Everything here works on its
// own copy of the data and needs no lock, since pictures and long texts take a while.
#pragma once

#include "platform/kernel/globalmem.h"

#include <QImage>

#include <string>

namespace platform {

struct ClipData {
  UINT format = 0;
  BlockBytes block;
  QImage picture; // of a bitmap
  int bits = 0;   // per pixel of the bitmap
};

// The data behind the handle of a format; empty for an invalid handle.
ClipData clipDataOf(UINT format, HANDLE handle);
inline bool isNone(const ClipData &data) { return !data.block.at && data.picture.isNull(); }

// New data of a format, made from another format of the same family. Result: null if the source holds no valid data.
HANDLE makeClipData(UINT format, const ClipData &from);
// The data of CF_LOCALE.
HANDLE makeClipLocale();
// New data of a format, from data of a type that another program has given.
HANDLE clipDataFromType(UINT format, const std::string &type, const std::string &bytes);
// Data for another program, as one of their format's types. Empty if the source holds no valid data.
std::string clipDataAsType(const ClipData &data, const std::string &type);

// Frees data that were not handed out.
void freeClipData(UINT format, HANDLE handle);

} // namespace platform
