// The signal that --make writes.
#pragma once

// Writes five seconds at 48 kHz, 16 bits: 1 kHz at half of full scale on the first channel, a logarithmic sweep from
// 20 Hz to 20 kHz at the same level on the second.
// Result: whether the file was written.
bool makeTestSignal(const char *fileName);
