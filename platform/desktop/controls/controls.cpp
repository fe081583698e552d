// Which controls there are.

#include "platform/winapi/controls.h"

#include "platform/desktop/controls/listbox.h"
#include "platform/desktop/controls/tooltip.h"
#include "platform/desktop/lock.h"
#include "platform/desktop/windows/above.h"
#include "platform/desktop/windows/classes.h"

using namespace platform;

namespace {

void registerTooltip() {
  if (findClass(TOOLTIPS_CLASSA)) return;
  WNDCLASSA tooltip{};
  tooltip.lpfnWndProc = tooltipProcedure;
  tooltip.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  tooltip.lpszClassName = TOOLTIPS_CLASSA;
  RegisterClassA(&tooltip);
}

} // namespace

void above::registerSystemClasses() {
  WNDCLASSA list{};
  list.style = CS_DBLCLKS;
  list.lpfnWndProc = listBoxProcedure;
  list.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  list.lpszClassName = "ListBox";
  RegisterClassA(&list);
}

void InitCommonControls() {
  const INITCOMMONCONTROLSEX all = {sizeof all, ICC_WIN95_CLASSES};
  InitCommonControlsEx(&all);
}

BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX *controls) {
  return locked<BOOL>(FALSE, [&]() -> BOOL {
    if (!controls || controls->dwSize != sizeof *controls) return FALSE;
    if (controls->dwICC & (ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES | ICC_TAB_CLASSES)) registerTooltip();
    return TRUE;
  });
}
