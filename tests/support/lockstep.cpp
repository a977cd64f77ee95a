#include "tests/support/lockstep.h"

#include <utility>

namespace support {

Lockstep::Lockstep() : worker_([this] { serveUntil([this] { return stop_; }); }) {}

Lockstep::~Lockstep() {
  run([this] { stop_ = true; });
  worker_.join();
}

void Lockstep::run(std::function<void()> task) {
  std::unique_lock lock(mutex_);
  task_ = std::move(task);
  turn_ = Turn::worker;
  changed_.notify_all();
  changed_.wait(lock, [this] { return turn_ == Turn::owner; });
}

void Lockstep::serveUntil(const std::function<bool()>& done) {
  while (!done()) {
    std::unique_lock lock(mutex_);
    // At its very start the worker has nothing to give back: a task may be waiting already.
    if (!task_) {
      turn_ = Turn::owner;
      changed_.notify_all();
    }
    changed_.wait(lock, [this] { return turn_ == Turn::worker && task_; });
    const std::function<void()> task = std::exchange(task_, nullptr);
    lock.unlock();
    task();
  }
  if (!stop_) return;
  const std::lock_guard lock(mutex_);
  turn_ = Turn::owner;
  changed_.notify_all();
}

}  // namespace support
