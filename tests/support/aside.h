// Calls on a thread of their own.
#pragma once

#include "platform/platform.h"

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

struct Outcome {
  std::atomic<bool> done{};
  INT_PTR result{}; // and the error after it, once it is done
  DWORD error{};

  bool within(DWORD milliseconds) const {
    for (const DWORD start = GetTickCount(); !done && GetTickCount() - start < milliseconds;) Sleep(1);
    return done;
  }
};

// Nobody waits for the thread, so that a test fails instead of hanging where the call never returns.
inline std::shared_ptr<Outcome> aside(const std::function<INT_PTR()> &call) {
  const auto outcome = std::make_shared<Outcome>();
  std::thread([call, outcome] {
    SetLastError(ERROR_SUCCESS);
    outcome->result = call(), outcome->error = GetLastError();
    outcome->done = true;
  }).detach();
  return outcome;
}
