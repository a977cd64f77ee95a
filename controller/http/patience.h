#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace lamp::controller {

/// Lets threads wait in a way that ends when the server does.
class Patience {
 public:
  /// Waits so long, and while `goOn` says so (it is asked several times a second). False when it
  /// was cut short.
  bool wait(std::chrono::milliseconds time, const std::function<bool()>& goOn);
  /// Ends every wait, those to come too.
  void end();
  bool ended() const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable ending_;
  bool ended_ = false;
};

}  // namespace lamp::controller
