#include "loudness.h"

std::optional<Loudness> measureLoudness(Source &) { return std::nullopt; }
