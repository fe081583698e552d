// The bar across the top: what the viewer can do, as buttons.
#pragma once

#include "look.h"
#include "pane.h"
#include "scene.h"

class Bar : public Pane {
 public:
  Bar(WqWnd *parent, const Look &look, Control &control);

  // Makes the buttons, once there is a window.
  void build();

 private:
  void paint(WqDc &dc, const RECT &dirty) override;
  void notified(uint32_t event, WqMbbBtn &button) override;

  const Look &look_;
  Control &control_;
  uint32_t held_ = 0; // ticks since the button that is down was pressed
};
