// The strip below the wave: the whole recording, all channels in one, with what is in the wave area marked. The mouse
// moves that about.
#pragma once

#include "ids.h"
#include "look.h"
#include "pane.h"
#include "scene.h"

class Overview : public Pane {
 public:
  Overview(WqWnd *parent, const Scene &scene, const Look &look, Control &control);

 private:
  void paint(WqDc &dc, const RECT &dirty) override;
  void resized() override { tip(TIP_OVERVIEW, client()); }
  void pressed(const POINT &at) override { dragged(at); }
  void dragged(const POINT &at) override;

  RECT area() const;
  Visible whole() const;

  const Scene &scene_;
  const Look &look_;
  Control &control_;
};
