// Shared by the families of windows: walks that user procedures and callbacks may disturb, layouts that end in spite of
// circles, and the paint step.
#pragma once

#include "windows/windows.h"

#include <utility>

// A walk along a list whose nodes may be removed meanwhile. Walks may be nested. When wqDisconnect removes the current
// node, its successor takes its place.
class WqWalk {
 public:
  explicit WqWalk(WqList *head) : node(head), outer_(std::exchange(innermost_, this)) {}
  ~WqWalk() { innermost_ = outer_; }
  WqWalk(const WqWalk &) = delete;
  WqWalk &operator=(const WqWalk &) = delete;

  // Moves on from a visited node, unless its removal has done so.
  void passOver(const WqList *visited) {
    if (node == visited) node = visited->next;
  }

  // Tells all walks that a node is about to leave its list.
  static void leave(const WqList *leaving) {
    for (WqWalk *walk = innermost_; walk; walk = walk->outer_) walk->passOver(leaving);
  }

  WqList *node;

 private:
  static inline WqWalk *innermost_ = nullptr;
  WqWalk *outer_;
};

// Removes a node from a list that may be walked at present.
// Result: the new head.
inline WqList *wqDisconnect(WqList *node, WqList *head) {
  WqWalk::leave(node);
  return WqList_DisConnect(node, head);
}

// An object whose layout has not ended. The marks lie on the stack, one for each level of the walk.
class WqLayoutMark {
 public:
  explicit WqLayoutMark(const WqWnd *wnd) : wnd_(wnd), outer_(std::exchange(innermost_, this)) {}
  ~WqLayoutMark() { innermost_ = outer_; }
  WqLayoutMark(const WqLayoutMark &) = delete;
  WqLayoutMark &operator=(const WqLayoutMark &) = delete;

  static bool isSet(const WqWnd *wnd) {
    const WqLayoutMark *mark = innermost_;
    while (mark && mark->wnd_ != wnd) mark = mark->outer_;
    return mark != nullptr;
  }

 private:
  friend class WqLayoutPause;
  static inline const WqLayoutMark *innermost_ = nullptr;
  const WqWnd *wnd_;
  const WqLayoutMark *outer_;
};

// Hides all marks while a user procedure runs, so that the procedure can lay out any object.
class WqLayoutPause {
 public:
  WqLayoutPause() : hidden_(std::exchange(WqLayoutMark::innermost_, nullptr)) {}
  ~WqLayoutPause() { WqLayoutMark::innermost_ = hidden_; }
  WqLayoutPause(const WqLayoutPause &) = delete;
  WqLayoutPause &operator=(const WqLayoutPause &) = delete;

 private:
  const WqLayoutMark *hidden_;
};

// Tells the objects in dependants that asked for it to lay themselves out.
void wqTellDependants(WqWnd *wnd);

// Calls the user procedure.
// Result: its answer; 0 without a user procedure.
int32_t wqCallUserProc(WqWnd *wnd, WqMsg *msg);

// Answers WM_PAINT.
// msg: becomes the message that the user procedure got.
void wqPaint(WqWnd *wnd, WqMsg *msg);
