#include "controller/http/patience.h"

#include <algorithm>

namespace lamp::controller {

bool Patience::wait(std::chrono::milliseconds time, const std::function<bool()>& goOn) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds kLook{100};
  const Clock::time_point until = Clock::now() + time;
  std::unique_lock lock(mutex_);
  while (!ended_ && Clock::now() < until) {
    ending_.wait_until(lock, std::min(until, Clock::now() + kLook));
    if (!goOn()) return false;
  }
  return !ended_;
}

void Patience::end() {
  const std::lock_guard lock(mutex_);
  ended_ = true;
  ending_.notify_all();
}

bool Patience::ended() const {
  const std::lock_guard lock(mutex_);
  return ended_;
}

}  // namespace lamp::controller
