#include "loader.h"

#include <algorithm>

bool Loader::step() {
  Recording &recording = scene_.recording;
  const bool more = recording.readPiece();
  scene_.peaks.update();
  if (more) {
    const uint64_t percent = UINT64_C(100) * recording.bytes() / recording.samples().byteSize;
    scene_.percent = static_cast<uint32_t>(std::min<uint64_t>(percent, 99));
    return true;
  }
  scene_.percent = 100;
  Visible &visible = scene_.visible;
  visible.setFrames(recording.frames());
  visible.zoom(scene_.startZoom, visible.width() / 2.0);
  if (scene_.startTime) visible.center(*scene_.startTime * recording.rate());
  return false;
}
