// A command: a record that is sent to a window.

#include "windows/windows.h"

void WqCmd_Init(WqCmd *cmd, HWND target) { *cmd = {target, {}}; }

void WqCmd_Term(WqCmd *cmd) { *cmd = {}; }

void WqCmd_Send(WqCmd *cmd) {
  if (cmd->target) SendMessageA(cmd->target, WQM_COMMAND, reinterpret_cast<WPARAM>(cmd), 0);
}

void WqCmd_Post(WqCmd *cmd) {
  if (cmd->target) PostMessageA(cmd->target, WQM_COMMAND, reinterpret_cast<WPARAM>(cmd), 0);
}
