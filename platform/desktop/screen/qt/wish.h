// The rule by which a desktop's late answers are told from the user's deeds. Qt's events don't say why they come: what
// the program asked for a while ago and what the user does look alike.
//
// A wish is for one thing: a window's place, its state, or which window is active. What the program wants takes effect in
// the program at once; here it is asked of the desktop, one request at a time, and only the newest counts.
//  - An answer that is what was asked for ends the request. Other reports meanwhile only become known.
//  - Then follows a pause, which each report begins anew. At its end, what is known and not wanted is asked for once more
//    if the thing is such that it helps, or it is the desktop's last word: a deed of the user, told to the program.
//  - A report while nothing is under way is a deed at once; during the pause too, once the user has pressed a button.
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
  static constexpr std::chrono::milliseconds kAnswer{400}; // how long an answer is waited for

  struct Rule {
    std::chrono::milliseconds pause; // at least: a desktop that has been slow to answer gets longer
    bool asksAgain;
    std::function<bool(const Value &)> ask;          // of the desktop; false when there is nothing to ask
    std::function<void(const Value &, Serial)> tell; // the program
    std::function<void()> wait;                      // until due(); then late() is to be called
  };

  Wish(Rule rule, Value start) : rule_(std::move(rule)), wanted_(start), asked_(start), known_(std::move(start)) {}

  // The program wants something new.
  void want(const Value &value, Serial serial) {
    wanted_ = value;
    serial_ = serial;
    askedAgain_ = false;
    if (phase_ == Phase::asked) return; // what is under way comes first
    if (known_ != wanted_) return ask();
    if (phase_ == Phase::pause) enter(Phase::pause, pause_);
  }

  // The desktop tells what is.
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

  // The program has done something else that the desktop may answer with a change here: no deed of the user's.
  void expectAnswer() {
    if (phase_ != Phase::quiet) return;
    askedAgain_ = false;
    enter(Phase::pause, kAnswer);
  }

  // What may be asked for just now can't be any more.
  void noAnswer(const Value &value) {
    if (phase_ == Phase::asked && asked_ == value) answered();
  }

  // The user has pressed a button of the mouse in one of the windows.
  void pressed() { pressed_ = phase_ == Phase::pause; }

  // What the desktop alone decides, or nobody sees yet: it is so, whatever was wanted.
  void settle(const Value &value) {
    known_ = wanted_ = value;
    phase_ = Phase::quiet;
  }
  void settle(const Value &value, Serial serial) {
    serial_ = serial;
    settle(value);
  }

  // Asks for what is wanted, although it may be so.
  void insist() {
    askedAgain_ = false;
    ask();
  }

  // What is, without a report.
  void learn(const Value &value) { known_ = value; }

  // Another thing has to be settled first.
  void hold(Clock::time_point until) { due_ = std::max(due_, until); }

  // Nothing has come until due().
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
  // Whether the desktop has had its time to answer.
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

  static constexpr int kSlow = 3; // times its answer's time a desktop may take for what else comes of a request

  const Rule rule_;
  Clock::duration pause_ = rule_.pause;
  Clock::time_point askedAt_;
  Phase phase_ = Phase::quiet;
  Value wanted_, asked_, known_;
  Serial serial_ = 0;
  bool askedAgain_ = false; // for this wish
  bool pressed_ = false;    // a button, during this pause
  Clock::time_point due_;
};

} // namespace platform
