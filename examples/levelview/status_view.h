// The strip along the bottom: what lies under the mouse and which part is shown, on its left; format and length of the
// recording on its right.
#pragma once

#include "look.h"
#include "pane.h"
#include "rulers.h"
#include "scene.h"

#include <vector>

class StatusView : public Pane {
 public:
  StatusView(WqWnd *parent, const Scene &scene, const Look &look);

  void movePointer();

 private:
  struct Cell {
    std::string text;
    std::string widest; // gives the cell its width, so that numbers that change stay in place
  };

  void paint(WqDc &dc, const RECT &dirty) override;
  void resized() override;
  RECT row(LONG index) const;
  std::vector<Cell> underPointer() const;
  static std::string fineTime(double seconds, TimeUnit unit, bool withUnit = true);
  std::string range() const;
  std::string sound() const;
  std::string length() const;

  const Scene &scene_;
  const Look &look_;
};
