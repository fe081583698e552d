// What levelview remembers.
#pragma once

#include "wq.h"

#include <string>

struct Settings {
  double range = 1.0;   // volts
  std::string lastFile; // in full
  RECT place{};         // of the window when it is not maximized; empty for none
  bool maximized = false;

  // file: a settings file; empty for levelview.ini in the user's folder for settings.
  void load(const std::string &file);
  // Result: whether the settings could be kept.
  bool save(const std::string &file);
};

// A file's name with its folder.
std::string fullName(const std::string &file);
