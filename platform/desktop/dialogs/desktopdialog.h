// The desktop's own dialogs for files and folders. A window stands for such a dialog that nobody sees: it has the
// caption, keeps the owner disabled, and is what a program finds and may cancel.
#pragma once

#include "platform/desktop/dialogs/dialog.h"
#include "platform/desktop/dialogs/filechoice.h"
#include "platform/winapi/shell.h"

#include <optional>
#include <string>

namespace platform {

// These have no result where the desktop has no such dialog, or the program wants more of it than it can do: then the
// layer's own dialog is to be shown.

// Result: whether the choice counts.
std::optional<BOOL> chooseOnDesktop(const FileChoice &choice, const DialogLook &look);
// Result: the folder's path; empty when none was chosen.
std::optional<std::string> browseOnDesktop(const BROWSEINFOA &how, const DialogLook &look);

} // namespace platform
