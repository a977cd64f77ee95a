#pragma once

#include <atomic>
#include <cstddef>
#include <utility>

namespace lamp::controller {

/// How many bytes of requests may be held at once, of all clients together.
class MemoryQuota {
 public:
  explicit MemoryQuota(std::size_t most) : most_(most) {}

  /// What one request holds; given back at the end of its life.
  class Share {
   public:
    explicit Share(MemoryQuota& quota) : quota_(quota) {}
    ~Share() { quota_.held_ -= held_; }
    Share(const Share&) = delete;
    Share& operator=(const Share&) = delete;

    /// Takes so much more. False, and nothing is taken, where that is more than there is.
    bool take(std::size_t bytes) {
      if (quota_.held_.fetch_add(bytes) + bytes > quota_.most_) {
        quota_.held_ -= bytes;
        return false;
      }
      held_ += bytes;
      return true;
    }

   private:
    MemoryQuota& quota_;
    std::size_t held_ = 0;
  };

 private:
  const std::size_t most_;
  std::atomic<std::size_t> held_ = 0;
};

}  // namespace lamp::controller
