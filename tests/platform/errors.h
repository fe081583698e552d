// Calls that fail, and the error that each leaves.
#pragma once

#include "platform/platform.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

constexpr DWORD kUntouched = 777; // no error at all

struct Failing {
  const char *call;
  std::function<bool()> fails;
  DWORD error;
};

inline void expectErrors(const std::vector<Failing> &rows) {
  for (const Failing &row : rows) {
    SetLastError(kUntouched);
    EXPECT_TRUE(row.fails()) << row.call;
    EXPECT_EQ(GetLastError(), row.error) << row.call;
  }
}
