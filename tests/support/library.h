// The fixture of every test that uses the library.
#pragma once

#include "support/handles.h"
#include "wq.h"

// Starts and ends the library round a test, and holds that nothing of it is left over.
class LibraryTest : public HandlesTest {
 protected:
  void SetUp() override { WqMain_Init(nullptr); }
  void TearDown() override {
    WqMain_Term();
    EXPECT_EQ(wqMain.allocCount, 0u) << "blocks of WqMem that nobody gave back";
  }
};
