#pragma once

#include <mutex>
#include <shared_mutex>

namespace lamp::controller {

/// A lock for one writer or several readers that lets both in by turns: while a writer waits, new
/// readers wait behind it, so that readers who come and go without a pause never keep it out. For
/// std::lock_guard and std::shared_lock; not recursive in either way.
class FairMutex {
 public:
  void lock() {
    const std::lock_guard turn(turn_);
    data_.lock();
  }
  void unlock() { data_.unlock(); }

  void lock_shared() {
    const std::lock_guard turn(turn_);
    data_.lock_shared();
  }
  void unlock_shared() { data_.unlock_shared(); }

 private:
  std::mutex turn_;
  std::shared_mutex data_;
};

}  // namespace lamp::controller
