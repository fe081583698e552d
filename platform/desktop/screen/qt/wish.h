// Tells a desktop's late answers from the user's deeds. Qt's events have no cause: an answer to an old request and a
// deed of the user look alike.
//
// A wish is for one thing: a window's place, its state, or the active window. In the program a wish takes effect at
// once. The desktop is asked for it, one request at a time, and only the newest wish counts.
//  - A report that equals the request ends it. Other reports meanwhile are only remembered.
//  - Then follows a pause, which each report starts again. If the last report differs from the wish at its end, the
//    desktop is asked once more where this helps. Otherwise the report is its last word: a deed of the user.
//  - A report without a request or pause is a deed at once. In a pause this is so after the user has pressed a button.
#pragma once

#include "platform/desktop/screen/screen.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace platform {

template <typename Value> class Wish {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kAnswer{400}; // the longest wait for an answer

  struct Rule {
    std::chrono::milliseconds pause; // at least; longer for a desktop that has answered slowly
    bool asksAgain;
    std::function<bool(const Value &)> ask;          // asks the desktop; false if there is nothing to ask
    std::function<void(const Value &, Serial)> tell; // tells the program of a deed
    std::function<void()> wait;                      // has late() called at due()
  };

  Wish(Rule rule, Value start) : rule_(std::move(rule)), wanted_(start), asked_(start), known_(std::move(start)) {}

  // The program has a new wish.
  void want(const Value &value, Serial serial) {
    wanted_ = value;
    serial_ = serial;
    askedAgain_ = false;
    if (phase_ == Phase::asked) return; // the present request ends first
    if (known_ != wanted_) return ask();
    if (phase_ == Phase::pause) enter(Phase::pause, pause_);
  }

  // The desktop reports the current value.
  void told(const Value &value) {
    known_ = value;
    switch (phase_) {
    case Phase::quiet:
      if (known_ != wanted_) deed();
      break;
    case Phase::asked:
      if (known_ != asked_) break;
      pause_ = std::clamp<Clock::duration>(kSlow * (Clock::now() - askedAt_), rule_.pause, kAnswer);
      answered();
      break;
    case Phase::pause:
      if (pressed_ && known_ != wanted_)
        deed();
      else
        enter(Phase::pause, pause_);
      break;
    }
  }

  // The program has done something else that may change this value: the change is no deed of the user.
  void expectAnswer() {
    if (phase_ != Phase::quiet) return;
    askedAgain_ = false;
    enter(Phase::pause, kAnswer);
  }

  // Ends the request for a value that the desktop can't give any more.
  void noAnswer(const Value &value) {
    if (phase_ == Phase::asked && asked_ == value) answered();
  }

  // The user has pressed a mouse button in one of the windows.
  void pressed() { pressed_ = phase_ == Phase::pause; }

  // Sets a value that the desktop decides alone, or that isn't visible yet, as wished and known.
  void settle(const Value &value) {
    known_ = wanted_ = value;
    phase_ = Phase::quiet;
  }
  void settle(const Value &value, Serial serial) {
    serial_ = serial;
    settle(value);
  }

  // Asks the desktop, even if the known value equals the wish.
  void insist() {
    askedAgain_ = false;
    ask();
  }

  // Sets the known value without a report.
  void learn(const Value &value) { known_ = value; }

  // Postpones the decision until another wish is settled.
  void hold(Clock::time_point until) { due_ = std::max(due_, until); }

  // No report has come until due().
  void late(Clock::time_point now) {
    if (phase_ == Phase::quiet || now < due_) return;
    if (phase_ == Phase::asked) return answered();
    if (known_ == wanted_) {
      phase_ = Phase::quiet;
    } else if (rule_.asksAgain && !askedAgain_ && !pressed_) {
      askedAgain_ = true;
      ask();
    } else {
      deed();
    }
  }

  std::optional<Clock::time_point> due() const { return phase_ == Phase::quiet ? std::nullopt : std::optional(due_); }

  const Value &wanted() const { return wanted_; }
  const Value &known() const { return known_; }
  Serial serial() const { return serial_; }
  // Whether neither a request nor a pause is in progress.
  bool isQuiet() const { return phase_ == Phase::quiet; }
  bool isAsked() const { return phase_ == Phase::asked; }

 private:
  enum class Phase { quiet, asked, pause };

  void enter(Phase phase, Clock::duration time) {
    phase_ = phase;
    due_ = Clock::now() + time;
    rule_.wait();
  }

  void ask() {
    asked_ = wanted_;
    pressed_ = false;
    askedAt_ = Clock::now();
    enter(Phase::asked, kAnswer);
    if (!rule_.ask(asked_) && phase_ == Phase::asked) enter(Phase::pause, pause_);
  }

  void answered() {
    if (wanted_ != asked_) return ask();
    pressed_ = false;
    enter(Phase::pause, pause_);
  }

  void deed() {
    wanted_ = known_;
    phase_ = Phase::quiet;
    rule_.tell(known_, serial_);
  }

  static constexpr int kSlow = 3; // a desktop may take this many times its answer's time for further changes

  const Rule rule_;
  Clock::duration pause_ = rule_.pause;
  Clock::time_point askedAt_;
  Phase phase_ = Phase::quiet;
  Value wanted_, asked_, known_;
  Serial serial_ = 0;
  bool askedAgain_ = false; // the present wish
  bool pressed_ = false;    // the user pressed a button during this pause
  Clock::time_point due_;
};

} // namespace platform
