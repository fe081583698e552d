// The wave's window: its drawing, and the line that follows the mouse. While the recording is read, it tells how far
// that is.
#pragma once

#include "pane.h"
#include "wave_drawing.h"

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

  WaveDrawing drawing() const { return {scene_, scene_.visible, look_, client()}; }
  RECT wave() const { return drawing().lanes(); }
  void paintProgress(WqDc &dc) const;

  const Scene &scene_;
  const Look &look_;
  Control &control_;
  double grabbed_ = 0; // the frame that the mouse holds
};
