#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace support {

/// A second thread in strict turns with the one that owns this object: exactly one of both runs at
/// any time, so that code that blocks until the user acts can be driven by a linear script.
class Lockstep {
 public:
  Lockstep();
  Lockstep(const Lockstep&) = delete;
  Lockstep& operator=(const Lockstep&) = delete;
  /// Ends the worker, which must be waiting at its outermost level.
  ~Lockstep();

  /// From the owner: runs @p task on the worker, and returns when it ended or when something that
  /// it called waits in serveUntil. Tasks must not throw.
  void run(std::function<void()> task);

  /// From the worker: gives the turn back and works on the owner's tasks until @p done holds.
  void serveUntil(const std::function<bool()>& done);

  bool onWorker() const { return std::this_thread::get_id() == worker_.get_id(); }

 private:
  enum class Turn { owner, worker };

  std::mutex mutex_;
  std::condition_variable changed_;
  Turn turn_ = Turn::owner;
  std::function<void()> task_;
  bool stop_ = false;
  std::thread worker_;  // last: it uses the others
};

}  // namespace support
