#include "notes.h"

namespace {

constexpr const char *kCaption = "levelview";

} // namespace

void note(const std::string &text) {
  WqLog_Comment(text.c_str());
  WqDbgWnd_Print(text.c_str());
}

void noteOpening(const std::string &file, uint64_t frames, const std::string &refused) {
  note(refused.empty() ? "opened " + file + ": " + std::to_string(frames) + " frames"
                       : "refused " + file + ": " + refused);
}

void warn(const std::string &text) { WqMsgBox_Show(text.c_str(), kCaption, MB_OK | MB_ICONEXCLAMATION); }
