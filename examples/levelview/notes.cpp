#include "notes.h"

namespace {

constexpr const char *kCaption = "levelview";

} // namespace

void note(const std::string &text) {
  WqLog_Comment(text.c_str());
  WqDbgWnd_Print(text.c_str());
}

void noteOpening(const std::string &file, const Recording &recording, const std::string &refused) {
  note(refused.empty() ? "opened " + file + ": " + std::to_string(recording.foundFrames()) + " frames"
                       : "refused " + file + ": " + refused);
}

void warn(const std::string &text) { WqMsgBox_Show(text.c_str(), kCaption, MB_OK | MB_ICONEXCLAMATION); }
