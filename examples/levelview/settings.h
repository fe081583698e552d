// What levelview remembers.
#pragma once

#include "wq.h"

#include <string>

struct Settings {
  double range = 1.0;   // volts
  std::string lastFile; // in full
  RECT place{};         // of the window when it is not maximized; empty for none
  bool maximized = false;
  std::string folder;     // where the dialogs for files begin; empty for the current one
  bool debug = false;     // this run has a debug window, whose place is kept
  std::string debugPlace; // the place as it is kept, for runs without one

  // file: a settings file; empty for levelview.ini in the user's folder for settings.
  void load(const std::string &file);
  // Result: whether the settings could be kept.
  bool save(const std::string &file);
};

// A file's name with its folder, without it, and without that and its extension; and the extension in small letters.
std::string fullName(const std::string &file);
std::string nameIn(const std::string &file);
std::string stemOf(const std::string &file);
std::string extensionOf(const std::string &file);
