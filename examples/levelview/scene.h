// What the panes of the viewer show, and what they ask for.
#pragma once

#include "peaks.h"
#include "recording.h"
#include "visible.h"

#include <optional>
#include <string>

struct Scene {
  std::string name; // of the file, without its folder, in the library's encoding
  Recording recording;
  Peaks peaks{recording.samples()};
  uint32_t percent = 0; // of the file that is read; the wave is there from 100 on
  Visible visible;
  double startZoom = 1;            // how the view begins,
  std::optional<double> startTime; // and at which second its middle lies
  std::optional<LONG> pointer;     // the mouse over the wave, a pixel as `visible' counts them

  bool ready() const { return percent == 100; }
  // Another recording, which is opened and not read yet, takes the place of the one that is there.
  void replace(Recording &opened, const std::string &itsName) {
    recording.swap(opened);
    peaks.clear();
    name = itsName;
    percent = 0;
    visible.setFrames(0);
    startZoom = 1;
    startTime.reset();
    pointer.reset();
  }
};

// What the buttons of the bar do, in its order. Resources are numbered by it.
enum class Command : uint16_t { open, zoomIn, zoomOut, all, start, end, copy, picture, print };

// What a user's hand in one pane changes for all of them.
class Control {
 public:
  virtual void show(const Visible &visible) = 0;
  virtual void point(std::optional<LONG> pointer) = 0;
  virtual void carryOut(Command command) = 0;

 protected:
  ~Control() = default;
};
