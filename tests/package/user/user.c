/* A user of the installed library. */
#include <wq.h>

#include <stdio.h>

int main(void) {
  char number[16];
  WqStr_Int(number, -20);
  int32_t level = 0;
  WqScan_Int(number, &level);
  char name[16] = "";
  LoadStringA(GetModuleHandleA(NULL), 1, name, sizeof name);
  printf("%s %.2f dBV\n", *name ? name : "without a name:", WqUnit_VTodBV(WqUnit_dBVToV(level)));
  return 0;
}
