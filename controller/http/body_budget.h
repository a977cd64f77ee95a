#pragma once

#include <atomic>
#include <cstddef>

namespace lamp::controller {

/// How many bytes of requests may be held at once, of all clients together.
class BodyBudget {
 public:
  explicit BodyBudget(std::size_t most) : most_(most) {}

  /// What one request holds; given back at the end of the scope.
  class Share {
   public:
    explicit Share(BodyBudget& budget) : budget_(budget) {}
    ~Share() { budget_.held_ -= held_; }
    Share(const Share&) = delete;
    Share& operator=(const Share&) = delete;

    /// Takes so much more. False, and nothing is taken, where that is more than there is.
    bool take(std::size_t bytes) {
      if (budget_.held_.fetch_add(bytes) + bytes > budget_.most_) {
        budget_.held_ -= bytes;
        refused_ = true;
        return false;
      }
      held_ += bytes;
      return true;
    }
    /// Whether `take` answered false.
    bool refused() const { return refused_; }

   private:
    BodyBudget& budget_;
    std::size_t held_ = 0;
    bool refused_ = false;
  };

 private:
  const std::size_t most_;
  std::atomic<std::size_t> held_ = 0;
};

}  // namespace lamp::controller
