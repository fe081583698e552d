// What the subjects of bench_desktop share.
#pragma once

#include "wq.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

// Repeats a piece of work, several samples of many iterations.
// Result: the median, in seconds per iteration.
double secondsPerIteration(const std::function<void()> &work);

// Ends the program unless all is well: a time of work that was not done is worth nothing.
void require(bool isWell, const char *what);

// What is timed: it makes what it needs, answers with its seconds per iteration, and leaves no window behind. It runs
// inside WqMain_Init and WqMain_Term.
struct Subject {
  std::string name;
  std::function<double()> measure;
};

void addWindows(std::vector<Subject> &subjects);
void addDrawing(std::vector<Subject> &subjects);
void addBars(std::vector<Subject> &subjects);
void addLists(std::vector<Subject> &subjects);
void addBoxes(std::vector<Subject> &subjects);
