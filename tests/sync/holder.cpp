// Another process with a named mutex: holder MUTEX hold|open|churn
//   hold    makes the mutex, owned, and waits to be killed
//   open    the same, not owned
//   churn   makes, takes, gives back and closes the mutex without a pause
// It ends by itself after a while, so that a test that failed leaves none behind.

#include "wq.h"

#include <string_view>

int main(int argc, char **argv) {
  const std::string_view mode = argc == 3 ? argv[2] : "";
  WqMutex mutex;
  WqSignal never;
  if (!WqSignal_Create(&never, nullptr, 0) || (mode != "churn" && !WqMutex_Init(&mutex, mode == "hold", argv[1])))
    return 2;
  if (mode != "churn") return static_cast<int>(WqSignal_WaitTime(&never, 60000));
  for (const uint32_t start = GetTickCount(); GetTickCount() - start < 60000; WqMutex_Term(&mutex))
    if (!WqMutex_Init(&mutex, 0, argv[1]) || WqMutex_Lock(&mutex) == WAIT_FAILED || !WqMutex_Unock(&mutex)) return 3;
}
