#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace lamp::controller {

/// Threads that work off jobs in the order in which they came. A thread is made when a job finds
/// none that is free.
class WorkerPool {
 public:
  explicit WorkerPool(std::size_t most) : most_(most) {}
  ~WorkerPool() { stop(); }
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;

  /// `job` must not throw. After `stop` it is carried out at once, by the caller.
  void submit(std::function<void()> job);
  /// Works off what was submitted and ends the threads.
  void stop();

 private:
  void work();

  const std::size_t most_;
  std::mutex mutex_;
  std::condition_variable waking_;
  std::deque<std::function<void()>> jobs_;
  std::vector<std::thread> threads_;
  std::size_t idle_ = 0;
  bool stopping_ = false;
};

}  // namespace lamp::controller
