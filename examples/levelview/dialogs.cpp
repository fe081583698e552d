#include "dialogs.h"

namespace {

std::string ask(WqFileDialog &dialog, Settings &settings) {
  if (!settings.folder.empty()) WqFileDialog_Dir(&dialog, settings.folder.c_str());
  const bool chosen = WqFileDialog_Show(&dialog) != 0;
  if (chosen) settings.folder = dialog.dir;
  const std::string file = chosen ? dialog.fileName : "";
  WqFileDialog_Term(&dialog);
  return file;
}

} // namespace

std::string askForRecording(Settings &settings) {
  WqFileDialog dialog;
  WqFileDialog_Init(&dialog);
  WqFileDialog_SetOC(&dialog, WQ_FILEDIALOG_OPEN);
  WqFileDialog_Title(&dialog, "Open a recording");
  WqFileDialog_AddExt(&dialog, "Recordings", "wav", 1);
  WqFileDialog_AddExt(&dialog, "All files", "*", 0);
  return ask(dialog, settings);
}

std::string askForPicture(Settings &settings, const std::string &name) {
  WqFileDialog dialog;
  WqFileDialog_Init(&dialog);
  WqFileDialog_SetOC(&dialog, 0);
  dialog.ofn.Flags &= ~static_cast<DWORD>(OFN_FILEMUSTEXIST); // it is a new one
  WqFileDialog_Title(&dialog, "Save a picture of the window");
  WqFileDialog_FileName(&dialog, stemOf(name).c_str());
  WqFileDialog_AddExt(&dialog, "Bitmap", "bmp", 1);
  WqFileDialog_AddExt(&dialog, "PNG", "png", 0);
  return ask(dialog, settings);
}
