// The wave area: a lane for each channel between its rulers, and the line that follows the mouse. While the recording is
// read, it tells how far that is.
#pragma once

#include "lane.h"
#include "look.h"
#include "pane.h"
#include "rulers.h"
#include "scene.h"

class WaveView : public Pane {
 public:
  WaveView(WqWnd *parent, const Scene &scene, const Look &look, Control &control);

  // A screen position as a pixel of the wave.
  LONG pixelAt(POINT screen) const;
  // The line is somewhere else now, or gone.
  void movePointer(std::optional<LONG> from, std::optional<LONG> to);

 private:
  void paint(WqDc &dc, const RECT &dirty) override;
  void resized() override;
  void moved(const POINT &at) override;
  void left() override { control_.point(std::nullopt); }
  void pressed(const POINT &at) override;
  void dragged(const POINT &at) override;

  RECT wave() const; // the lanes together
  Lane lane(size_t channel) const;
  void paintProgress(WqDc &dc) const;
  void paintRulers(WqDc &dc) const;
  void paintLevels(WqDc &dc, const Lane &lane) const;
  void paintLanes(WqDc &dc, const RECT &dirty);
  void paintGrid(WqDc &dc, const Lane &lane, const RECT &dirty, const Ticks &times) const;

  const Scene &scene_;
  const Look &look_;
  Control &control_;
  double grabbed_ = 0; // the frame that the mouse holds
};
