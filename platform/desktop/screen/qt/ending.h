// The end of the process, at its very beginning.
#pragma once

namespace platform {

// Calls back when the main function has returned, or exit has been called on any thread, before anything of the process
// has been taken down; in a forked child, too. One function for the whole process.
// status: that of exit, null on the return from main.
void whenProcessEnds(void (*ending)(const int *status));

} // namespace platform
