// A recording on paper: a page with the report as a table, and one with the part of the wave that is shown. Sizes are
// pixels of the display, in which the library lets a page be drawn.
#pragma once

#include "look.h"
#include "report.h"
#include "scene.h"

#include <string>

class Printout {
 public:
  static constexpr int32_t kPages = 2;

  // scene: has been read, and stays.
  Printout(const Scene &scene, const Look &look);

  // Draws a page, from 1 on.
  void draw(WqDc &dc, int32_t page) const;

 private:
  RECT pageArea(const WqDc &dc) const;
  void drawTitle(WqDc &dc, const RECT &row) const;
  void drawFoot(WqDc &dc, const RECT &row, int32_t page) const;
  void drawReport(WqDc &dc, const RECT &area) const;
  void drawWave(WqDc &dc, const RECT &area) const;

  const Scene &scene_;
  const Look &look_;
  const Report report_;
  const std::string time_; // of the print
};

// Prints on the default printer, without asking anybody.
// title: of the document. output: a file for a printer that writes files; empty for the printer's own way.
// Result: why it is not printed; empty when it is.
std::string printUnattended(const Printout &printout, const std::string &title, const std::string &output);
