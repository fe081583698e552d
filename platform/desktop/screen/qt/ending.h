// Tells of the end of the process, before everything else that happens then.
#pragma once

namespace platform {

// Sets the one function of the process that runs when main has returned or any thread has called exit. Nothing of the
// process has been destroyed then. It runs in a forked child too.
// status: that of exit; null after the return from main.
void whenProcessEnds(void (*ending)(const int *status));

} // namespace platform
