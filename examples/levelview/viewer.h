// The viewer's window: the bar across its top, the wave with an overview below it, levels on its right, a status strip
// along the bottom.
#pragma once

#include "bar.h"
#include "copier.h"
#include "level_view.h"
#include "look.h"
#include "overview.h"
#include "printout.h"
#include "scene.h"
#include "settings.h"
#include "status_view.h"
#include "wave_view.h"

#include <optional>
#include <string>

class Viewer final : private Control {
 public:
  // scene: with an opened recording; the viewer looks at it as long as there is a window. settings: give the place of
  // the window, and take it when the window ends.
  Viewer(Scene &scene, Settings &settings);
  Viewer(const Viewer &) = delete;
  Viewer &operator=(const Viewer &) = delete;

  // Shows the window, reads the recording, and stays until the user closes the window, which may be while it is read.
  // Result: whether there was a window.
  bool run();
  // Writes a picture of the window with a client area of this size, without waiting for anybody.
  // Result: whether the picture was written.
  bool snapshot(const std::string &pictureFile, const SIZE &size);

 private:
  void show(const Visible &visible) override;
  void point(std::optional<LONG> pointer) override;
  void carryOut(Command command) override;

  void placePanes();
  bool open();
  bool load();
  bool replace(const std::string &file);
  void take(const std::string &file);
  void takeDropped(HDROP drop);
  void savePicture();
  void print();
  void rememberPlace();
  void zoomAt(double factor, LONG pixel);
  void turnWheel(const WqWheel &wheel);
  bool pressKey(WPARAM key);
  static int32_t frameProc(WqWnd *wnd, WqMsg *msg);
  static int32_t drawPage(WqPrinter *printer, int32_t page);

  Scene &scene_;
  Settings &settings_;
  const Look look_;
  // Window objects stay where they are until the library ends, so the viewer stays too.
  struct Frame {
    explicit Frame(Viewer *owner) : viewer(owner) { WqWnd_Init(&wnd); }
    WqWnd wnd; // first, so that the window object leads to the viewer
    Viewer *viewer;
  } frame_;
  Bar bar_;
  StatusView status_;
  LevelView levels_;
  Overview overview_;
  WaveView wave_;
  Copier copier_;
  bool loading_ = false;
  struct Print { // one under way
    Printout printout;
    bool begun = false; // the user has accepted a printer
    int32_t pages = 0;  // that were drawn
  };
  std::optional<Print> print_;
};
