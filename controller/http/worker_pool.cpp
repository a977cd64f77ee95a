#include "controller/http/worker_pool.h"

namespace lamp::controller {

void WorkerPool::submit(std::function<void()> job) {
  {
    const std::lock_guard lock(mutex_);
    if (!stopping_) {
      jobs_.push_back(std::move(job));
      if (jobs_.size() > idle_ && threads_.size() < most_)
        threads_.emplace_back([this] { work(); });
      waking_.notify_one();
      return;
    }
  }
  job();
}

void WorkerPool::stop() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    waking_.notify_all();
  }
  for (std::thread& thread : threads_) thread.join();
  threads_.clear();
}

void WorkerPool::work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    ++idle_;
    waking_.wait(lock, [this] { return stopping_ || !jobs_.empty(); });
    --idle_;
    if (jobs_.empty()) return;
    const std::function<void()> job = std::move(jobs_.front());
    jobs_.pop_front();
    lock.unlock();
    job();
    lock.lock();
  }
}

}  // namespace lamp::controller
