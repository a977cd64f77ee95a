#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <unordered_set>

namespace lamp::controller {

/// One connection of a client, as long as its descriptor is open.
struct Link {
  using Clock = std::chrono::steady_clock;

  explicit Link(int socket) : descriptor(socket) {}
  /// What is to happen must have happened by then.
  void expect(std::chrono::seconds within) { deadline = Clock::now() + within; }
  void expectNothing() { deadline = Clock::time_point::max(); }
  /// Whether the client is still there.
  bool clientWaits() const;

  const int descriptor;
  std::atomic<Clock::time_point> deadline = Clock::time_point::max();
};

/// The connections that are open. Safe to use from several threads.
class LinkTable {
 public:
  void add(Link* link);
  void remove(Link* link);
  /// Shuts those whose time is over; the server then finds them ended.
  void endLate();

 private:
  std::mutex mutex_;
  std::unordered_set<Link*> links_;
};

}  // namespace lamp::controller
