// What --report prints, and the first page of a print.
#pragma once

#include "loudness.h"
#include "recording.h"
#include "source.h"

#include <cstdio>
#include <string>
#include <vector>

// What is told of one file.
struct Report {
  std::string name; // in the library's encoding
  SourceInfo info;
  uint64_t frames = 0; // that were measured
  std::vector<Levels> channels;
  std::optional<Loudness> loudness = {}; // which is measured apart, and takes longer

  double milliseconds() const { return static_cast<double>(frames) * 1000.0 / info.rate; }
};

// Reads all of a source, and measures it on all processors.
Report measure(const std::string &name, Source &source);
// The same for what is in memory.
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
