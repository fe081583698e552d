/* A user of the installed library. */
#include <wq.h>

#include <stdio.h>

int main(void) {
  char number[16];
  WqStr_Int(number, -20);
  int32_t level = 0;
  WqScan_Int(number, &level);
  printf("level %.2f dBV\n", WqUnit_VTodBV(WqUnit_dBVToV(level)));
  return 0;
}
