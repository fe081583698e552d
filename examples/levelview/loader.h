// Reads an opened recording piece by piece, and measures each piece while the processor still has it at hand.
#pragma once

#include "scene.h"

class Loader {
 public:
  explicit Loader(Scene &scene) : scene_(scene) {}

  // Takes in one piece, and tells the scene how far it is.
  // Result: whether that was not the last one.
  bool step();

 private:
  Scene &scene_;
};
