// The drawing of the wave: a lane for each channel between its rulers, in a window or on paper.
#pragma once

#include "lane.h"
#include "look.h"
#include "rulers.h"
#include "scene.h"

class WaveDrawing {
 public:
  // scene: has been read. visible: what is shown, by pixels of the lanes. area: all of the drawing.
  WaveDrawing(const Scene &scene, const Visible &visible, const Look &look, const RECT &area)
      : scene_(scene), visible_(visible), look_(look), area_(area) {}

  RECT lanes() const; // together
  // dirty: what is drawn at least.
  void paint(WqDc &dc, const RECT &dirty) const;

 private:
  Lane lane(size_t channel) const;
  void paintRulers(WqDc &dc) const;
  void paintLevels(WqDc &dc, const Lane &lane) const;
  void paintLanes(WqDc &dc, const RECT &dirty) const;
  void paintGrid(WqDc &dc, const Lane &lane, const RECT &dirty, const Ticks &times) const;

  const Scene &scene_;
  const Visible &visible_;
  const Look &look_;
  const RECT area_;
};
