// The strip of levels: peak and RMS of the whole recording, as bars on a scale in dBV and in numbers.
#pragma once

#include "look.h"
#include "pane.h"
#include "scene.h"

#include <array>

class LevelView : public Pane {
 public:
  LevelView(WqWnd *parent, const Scene &scene, const Look &look);

  // The recording has been read.
  void measure();

 private:
  struct Levels { // in dBV
    double peak, rms;
    bool clipped; // full scale is reached
  };

  void paint(WqDc &dc, const RECT &dirty) override;
  void resized() override;
  RECT row(LONG above) const;
  RECT barArea() const;
  void paintScale(WqDc &dc, const RECT &scale) const;
  void paintBars(WqDc &dc, const RECT &cell, const Levels &levels) const;
  void paintNumbers(WqDc &dc, const RECT &row, const char *name, double Levels::*level) const;
  RECT cell(const RECT &row, size_t channel) const;
  LONG barTop(const RECT &cell, double level) const;

  const Scene &scene_;
  const Look &look_;
  std::array<Levels, 2> levels_{};
};
