/* The public header is C: this file is compiled as C11, uses records and functions of every folder, and runs. */
#include "wq.h"

#include <string.h>

int main(void) {
  char text[64];
  RECT rect;
  WqRect_Set(&rect, 1, 2, 3, 4);
  WqStr_Rect(text, &rect);
  if (strcmp(text, "1,2,3,4") != 0) return 1;

  WqStack stack;
  WqWord word = 0;
  WqMain_Init(NULL);
  WqStack_Init(&stack);
  WqStack_Push(&stack, (WqWord)&rect);
  WqStack_Pop(&stack, &word);
  WqStack_Term(&stack);
  WqMain_Term();
  if (word != (WqWord)&rect || wqMain.allocCount != 0) return 2;

  WqSoundFileWav wav;
  WqSoundFileWav_init(&wav, 1, 0);
  return WqSoundFileWav_open(&wav, "") == 0 && WqUnit_GetRange() == 1.0 ? 0 : 3;
}
