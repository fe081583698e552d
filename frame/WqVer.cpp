// Version numbers of four bytes in a word.

#include "frame/version.h"

#include "text/text.h"

void WqVer_Init(WqVer *version) { version->value = 0; }

void WqVer_Term(WqVer *) {}

int WqVer_Str2Ver(WqVer *version, const char *text) {
  for (int shift = 24;; shift -= 8) {
    uint8_t number;
    text = WqScan_Byte(text, &number);
    version->value = (version->value & ~(UINT32_C(0xFF) << shift)) | static_cast<uint32_t>(number) << shift;
    if (shift == 0) return 1;
    text = WqScan_Space(text);
    if (*text != '.') return 0;
    ++text;
  }
}
