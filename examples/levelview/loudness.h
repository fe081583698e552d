// Loudness and true peaks, by ITU-R BS.1770-4 and EBU R 128.
#pragma once

#include "source.h"

#include <optional>
#include <vector>

struct Loudness {
  double integrated = 0;         // LUFS; minus infinity for less than 0.4 s, and for silence
  double range = 0;              // LU
  std::vector<double> truePeaks; // of each channel, as parts of full scale, four times oversampled
};

// Reads all of a source. Nothing where the example is built without libebur128, and for what that doesn't take.
std::optional<Loudness> measureLoudness(Source &source);
