// An input as what lies on the clipboard. Its first byte says what it is: data in a format of the program's, from which
// all other formats are made, or what another program has given as one of the types.

#include "fuzz.h"

#include "platform/desktop/clipboard/exchange.h"
#include "platform/desktop/clipboard/formats.h"

namespace {

using namespace platform;

constexpr size_t kMost = 1 << 16;        // of the input, whose pictures are small then
constexpr int64_t kMostPixels = 1 << 20; // a coded picture can promise far more than its bytes hold
constexpr UINT kFormats[] = {CF_TEXT, CF_OEMTEXT, CF_UNICODETEXT, CF_DIB, CF_DIBV5, CF_BITMAP};

struct Kind {
  UINT format;
  const char *type; // null for the program's own
} const kKinds[] = {{CF_TEXT, nullptr},          {CF_UNICODETEXT, nullptr},   {CF_DIB, nullptr},  {CF_DIBV5, nullptr},
                    {CF_UNICODETEXT, kTextType}, {CF_UNICODETEXT, kUtf8Type}, {CF_DIB, kPngType}, {CF_DIB, kBmpType}};

HANDLE own(const std::string &bytes) {
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  REQUIRE(block);
  if (void *const at = GlobalLock(block)) std::memcpy(at, bytes.data(), bytes.size());
  GlobalUnlock(block);
  return block;
}

bool isHuge(const ClipData &data) {
  int32_t header[3]; // its size, width and height
  if (isClipText(data.format) || data.block.size < sizeof header) return false;
  std::memcpy(header, data.block.at.get(), sizeof header);
  return std::abs(int64_t{header[1]} * header[2]) > kMostPixels;
}

// Texts are always whole, and whatever a program gets as a picture can be one.
void seesAll(UINT format, HANDLE handle, bool fromOthers) {
  const ClipData data = clipDataOf(format, handle);
  if (isHuge(data)) return;
  for (const UINT other : kFormats) {
    if (other == format || clipFamilyOf(other).data() != clipFamilyOf(format).data()) continue;
    const HANDLE made = makeClipData(other, data);
    REQUIRE(made || !fromOthers);
    if (!made) continue;
    REQUIRE(!isNone(clipDataOf(other, made)));
    freeClipData(other, made);
  }
  for (const std::string &type : typesOfClipFormat(format)) {
    const std::string bytes = clipDataAsType(data, type);
    REQUIRE(!bytes.empty() || !fromOthers || isClipText(format));
    const HANDLE again = bytes.empty() ? nullptr : clipDataFromType(format, type, bytes);
    REQUIRE(again || bytes.empty());
    if (again) freeClipData(clipFormatOfType(type), again);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 2 || size > kMost) return 0;
  const Kind &kind = kKinds[data[0] % std::size(kKinds)];
  const std::string bytes(reinterpret_cast<const char *>(data) + 1, size - 1);
  const size_t before = countObjects();
  const HANDLE handle = kind.type ? clipDataFromType(kind.format, kind.type, bytes) : own(bytes);
  if (handle) {
    seesAll(kind.format, handle, kind.type != nullptr);
    freeClipData(kind.format, handle);
  }
  REQUIRE(countObjects() == before);
  return 0;
}
