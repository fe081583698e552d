// Handles that are open.
#pragma once

#include <cstddef>
#include <vector>

// How many there are of each kind: of the kernel, views of files, blocks of memory, windows, drawing objects. Nothing
// where the system doesn't tell.
std::vector<size_t> openHandles();

// The memory of this program that is in RAM; 0 where that tells nothing.
size_t residentBytes();
