// Shared by the subjects of bench_desktop.
#pragma once

#include "wq.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

// Repeats some work, in several samples of many iterations.
// Result: the median, in seconds per iteration.
double secondsPerIteration(const std::function<void()> &work);

// Ends the program if a condition fails: a time of work that was not done is worthless.
void require(bool isWell, const char *what);

// A subject makes everything that it needs, returns its seconds per iteration, and leaves no window behind. It runs
// between WqMain_Init and WqMain_Term.
struct Subject {
  std::string name;
  std::function<double()> measure;
};

void addWindows(std::vector<Subject> &subjects);
void addDrawing(std::vector<Subject> &subjects);
void addBars(std::vector<Subject> &subjects);
void addLists(std::vector<Subject> &subjects);
void addBoxes(std::vector<Subject> &subjects);
