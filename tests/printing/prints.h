// Tests that print: in a folder of their own, which is the current one meanwhile.
#pragma once

#include "support/desktop.h"
#include "support/files.h"
#include "support/handles.h"
#include "support/pages.h"

#include <filesystem>

// Whether there is a printer that writes PDF files.
inline bool hasFilePrinter() {
  const HDC dc = CreateDCA("WINSPOOL", "PDF", nullptr, nullptr);
  if (dc) DeleteDC(dc);
  return dc != nullptr && !onWindows(); // there one could ask for a file's name
}

// Frees what a print dialog has given.
inline void freeAnswer(PRINTDLGA &dialog) {
  if (dialog.hDC) DeleteDC(dialog.hDC);
  for (HGLOBAL *const block : {&dialog.hDevMode, &dialog.hDevNames}) {
    if (*block) GlobalFree(*block);
    *block = nullptr;
  }
  dialog.hDC = nullptr;
}

class PrintFolder {
 public:
  PrintFolder() { std::filesystem::current_path(folder_.path()); }
  ~PrintFolder() { std::filesystem::current_path(before_); }
  PrintFolder(const PrintFolder &) = delete;
  PrintFolder &operator=(const PrintFolder &) = delete;

  // The names in it, hidden ones too, in order: "a.pdf b.pdf ".
  static std::string names() {
    std::vector<std::string> found;
    for (const auto &entry : std::filesystem::directory_iterator("."))
      found.push_back(entry.path().filename().string());
    std::sort(found.begin(), found.end());
    std::string all;
    for (const std::string &name : found) all += name + " ";
    return all;
  }

 private:
  const std::filesystem::path before_ = std::filesystem::current_path();
  const TempFolder folder_;
};
