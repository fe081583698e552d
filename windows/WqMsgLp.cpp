// The message loop.

#include "windows/windows.h"

void WqMsgLp_Init(WqMsgLp *loop) { *loop = {}; }

void WqMsgLp_Term(WqMsgLp *) {}

void WqMsgLp_Stop(WqMsgLp *) {}

void WqMsgLp_LoadAccel(WqMsgLp *, WqWord) {}

void WqMsgLp_Start(WqMsgLp *) {
  for (MSG msg; GetMessageA(&msg, nullptr, 0, 0) > 0;) { // less than 0 is a failure, which would repeat
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}
