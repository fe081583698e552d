// The fixture of every test that uses the library.
#pragma once

#include "support/handles.h"
#include "wq.h"

#include <gtest/gtest.h>

// Starts and ends the library round a test, and holds that nothing of it is left over.
class LibraryTest : public testing::Test {
 protected:
  void SetUp() override {
    handles_ = openHandles();
    WqMain_Init(nullptr);
  }
  void TearDown() override {
    WqMain_Term();
    EXPECT_EQ(wqMain.allocCount, 0u) << "blocks of WqMem that nobody gave back";
    EXPECT_EQ(openHandles(), handles_) << "handles that nobody closed: of the kernel, views, memory, windows, drawing";
  }

 private:
  std::vector<size_t> handles_;
};
