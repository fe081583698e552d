// A message as a record.

#include "windows/windows.h"

void WqMsg_Init(WqMsg *msg) { *msg = {}; }

void WqMsg_Term(WqMsg *) {}

void WqMsg_Set(WqMsg *msg, HWND hwnd, uint32_t number, WPARAM wParam, LPARAM lParam) {
  *msg = {hwnd, number, wParam, lParam};
}

LRESULT WqMsg_Send(const WqMsg *msg) { return SendMessageA(msg->hwnd, msg->msg, msg->wParam, msg->lParam); }

BOOL WqMsg_Post(const WqMsg *msg) { return PostMessageA(msg->hwnd, msg->msg, msg->wParam, msg->lParam); }
