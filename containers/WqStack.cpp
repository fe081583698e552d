// A stack of words on a list whose head is the top.

#include "containers/containers.h"

void WqStack_Init(WqStack *stack) { *stack = {}; }

void WqStack_Term(WqStack *stack) { WqList_RemoveAll(stack->head); }

int WqStack_Push(WqStack *stack, WqWord value) {
  WqList *node = WqList_AddP(stack->head, value);
  if (!node) return 0;
  stack->head = node;
  ++stack->count;
  return 1;
}

int WqStack_Pop(WqStack *stack, WqWord *value) {
  if (!stack->head) return 0;
  *value = stack->head->data;
  stack->head = WqList_Remove(stack->head, stack->head);
  --stack->count;
  return 1;
}
