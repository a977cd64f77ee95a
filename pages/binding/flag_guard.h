#pragma once

#include <utility>

namespace lamp {

/// Gives a flag a value for as long as it lives, however its block is left: a flag set by hand
/// would stay set behind an exception.
class FlagGuard {
 public:
  FlagGuard(bool& flag, bool value) : flag_(flag), before_(std::exchange(flag, value)) {}
  FlagGuard(const FlagGuard&) = delete;
  FlagGuard& operator=(const FlagGuard&) = delete;
  ~FlagGuard() { flag_ = before_; }

 private:
  bool& flag_;
  bool before_;
};

}  // namespace lamp
