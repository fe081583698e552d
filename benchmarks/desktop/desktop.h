// What the subjects of bench_desktop share.
#pragma once

#include "wq.h"

#include <functional>

// Repeats a piece of work, several samples of many iterations.
// Result: the median, in seconds per iteration.
double secondsPerIteration(const std::function<void()> &work);

// Ends the program unless all is well: a time of work that was not done is worth nothing.
void require(bool isWell, const char *what);

// Subjects: each makes what it needs, answers with its seconds per iteration, and leaves no window behind. They run
// inside WqMain_Init and WqMain_Term.
double layoutChain();
double layoutStar();
double message();
double childWindow();
double timerTick();
