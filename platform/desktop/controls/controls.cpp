// The controls of this layer.

#include "platform/winapi/controls.h"

#include "platform/desktop/controls/listbox.h"
#include "platform/desktop/controls/tooltip.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/windows/above.h"

using namespace platform;

void above::registerSystemClasses() { registerOwnClass("ListBox", procedureOf<ListBox>, CS_DBLCLKS); }

void InitCommonControls() {
  const INITCOMMONCONTROLSEX all = {sizeof all, ICC_WIN95_CLASSES};
  InitCommonControlsEx(&all);
}

BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX *controls) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!controls || controls->dwSize != sizeof *controls) return FALSE;
    if (controls->dwICC & (ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES | ICC_TAB_CLASSES))
      registerOwnClass(TOOLTIPS_CLASSA, procedureOf<Tooltip>, 0);
    return TRUE;
  });
}
