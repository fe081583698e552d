// Handles that are open.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

// How many there are of each kind: of the kernel, views of files, blocks of memory, windows, drawing objects. Nothing
// where the system doesn't tell.
std::vector<size_t> openHandles();

// Holds that a test leaves none open.
class HandlesTest : public testing::Test {
 protected:
  ~HandlesTest() override {
    EXPECT_EQ(openHandles(), before_) << "handles left open: of the kernel, views, memory, windows, drawing";
  }

 private:
  const std::vector<size_t> before_ = openHandles();
};

// The memory of this program that is in RAM; 0 where that tells nothing.
size_t residentBytes();
