// What --report prints, and the first page of a print.
#pragma once

#include "recording.h"

#include <cstdio>
#include <string>
#include <vector>

// The levels of one channel, as parts of full scale.
struct Levels {
  double peak = 0;
  double rms = 0;
};

// What is told of one file.
struct Report {
  std::string name; // in the library's encoding
  WqPcmBuf format;  // without data
  uint32_t frames;
  uint32_t bytes;
  uint32_t declaredBytes;
  uint32_t foundBytes;
  std::vector<Levels> channels;

  double milliseconds() const { return frames * 1000.0 / format.sampleRate; }
};

Report measure(const std::string &name, const Recording &recording);

// A figure of a report.
struct Figure {
  const char *key;  // in the text
  const char *name; // in a table
  std::string value;
};

// Those of a whole file, and those of one channel. Levels count against the range of WqUnit.
std::vector<Figure> formatFigures(const Report &report);
std::vector<Figure> levelFigures(const Levels &levels);

// All of them, one `key: value' a line.
std::string reportText(const Report &report);

// Prints a line for each file, with the levels of its loudest channel.
void printTable(const std::vector<Report> &reports, std::FILE *out);
