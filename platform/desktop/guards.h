// Restores state when a procedure of the program throws.
#pragma once

#include <exception>
#include <utility>

namespace platform {

// Runs a body at the end of the scope if the scope ends by an exception.
template <typename Body> class OnThrow {
 public:
  explicit OnThrow(Body body) : body_(std::move(body)), exceptions_(std::uncaught_exceptions()) {}
  ~OnThrow() {
    if (std::uncaught_exceptions() > exceptions_) body_();
  }
  OnThrow(const OnThrow &) = delete;
  OnThrow &operator=(const OnThrow &) = delete;

 private:
  const Body body_;
  const int exceptions_;
};

} // namespace platform
