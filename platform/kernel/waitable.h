// Objects that threads wait for.
#pragma once

#include "platform/kernel/handles.h"

#include <chrono>
#include <optional>

namespace platform {

// The end of a wait on the monotonic clock; nothing for a wait without limit.
using Deadline = std::optional<std::chrono::steady_clock::time_point>;

class Waitable : public Closable {
 public:
  // WAIT_OBJECT_0, WAIT_ABANDONED, WAIT_TIMEOUT or WAIT_FAILED.
  virtual DWORD wait(const Deadline &deadline) = 0;
};

} // namespace platform
