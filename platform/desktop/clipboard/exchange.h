// Data of one format made into another, and into what other programs take and give. Everything here works on its own copy
// and needs no lock, since pictures and long texts take a while.
#pragma once

#include "platform/kernel/globalmem.h"

#include <QImage>

#include <string>

namespace platform {

struct ClipData {
  UINT format = 0;
  BlockBytes block;
  QImage picture; // of a bitmap
  int bits = 0;   // that a pixel of the bitmap has
};

// What the handle of a format stands for. Nothing for a handle that is none.
ClipData clipDataOf(UINT format, HANDLE handle);
inline bool isNone(const ClipData &data) { return !data.block.at && data.picture.isNull(); }

// New data of a format, made from one that is of the same family. Result: null for data that hold nothing of the kind.
HANDLE makeClipData(UINT format, const ClipData &from);
// The locale beside a text.
HANDLE makeClipLocale();
// New data of a format from what another program has given as this type.
HANDLE clipDataFromType(UINT format, const std::string &type, const std::string &bytes);
// Data for another program, as one of the types of their format. Empty for data that hold nothing of the kind.
std::string clipDataAsType(const ClipData &data, const std::string &type);

// For data that nobody shall see any more.
void freeClipData(UINT format, HANDLE handle);

} // namespace platform
